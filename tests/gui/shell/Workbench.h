#pragma once

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTimer>
#include <functional>
#include <memory>

#include "platform/host/diagram/DiagramView.h"
#include "shell/Appearance.h"
#include "shell/MainWindow.h"
#include "shell/Menus.h"
#include "shell/MessageDock.h"

/// Waits for something with the event loop running. \return whether it came
inline bool waitFor(const std::function<bool()>& done, int ms = 30000) {
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < ms) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
}

/// Runs something that opens modal windows, and deals with each as it comes; one that is still there after dealing is
/// dealt with again. \return how many came
inline int withModals(const std::function<void()>& act, const std::function<void(QWidget&)>& deal) {
    QTimer timer;
    int dealt = 0;
    const QWidget* last = nullptr;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QWidget* window = QApplication::activeModalWidget();
        if (!window || !window->isVisible()) return void(last = nullptr);
        if (window != last) ++dealt;
        last = window;
        deal(*window);
    });
    timer.start(30);
    act();
    return dealt;
}

inline void reject(QWidget& window) {
    if (auto* dialog = qobject_cast<QDialog*>(&window)) dialog->reject();
}

/// What to do with the modal window of a name when it is in front: closes it, opens another one or lets it work.
struct Visit {
    const char* name;
    std::function<void(QWidget&)> act;
    std::function<bool(QWidget&)> isReady = [](QWidget&) { return true; };
};

/// Goes through modal windows that open each other, in their order; whatever comes too late is closed.
inline void visit(const std::function<void()>& act, const QVector<Visit>& visits, int ms = 60000) {
    qsizetype next = 0;
    QElapsedTimer clock;
    clock.start();
    withModals(act, [&](QWidget& window) {
        if (next == visits.size() || clock.elapsed() > ms) return reject(window);
        const Visit& visit = visits[next];
        if (window.objectName() != visit.name || !visit.isReady(window)) return;
        ++next;
        visit.act(window);
    });
    EXPECT_EQ(next, visits.size()) << (next < visits.size() ? visits[next].name : "");
}

/// Presses a button once this event is over, since what it opens goes on until it is closed.
inline void pressLater(const QWidget& window, const char* name) {
    auto* button = window.findChild<QAbstractButton*>(name);
    ASSERT_TRUE(button && button->isEnabled()) << name;
    QTimer::singleShot(0, button, &QAbstractButton::click);
}

inline bool isEnabled(const QWidget& window, const char* button) {
    return window.findChild<QAbstractButton*>(button)->isEnabled();
}

/// The main window on a demonstration project of its own.
class Workbench : public testing::Test {
  protected:
    static constexpr char project[] = "演示";

    void SetUp() override {
        shell::applyLanguage(*qApp, "zh");
        shell::applyTheme(*qApp, shell::Theme::Light);
        window = std::make_unique<shell::MainWindow>();
        window->show();
    }
    void TearDown() override {
        window.reset();
        shell::applyLanguage(*qApp, "zh");
    }

    /// Opens the demonstration, which is made the first time.
    void openDemonstration() {
        QSignalSpy shown(window.get(), &shell::MainWindow::projectShown);
        window->openDemonstration();
        ASSERT_TRUE(waitFor([&] { return shown.count() > 0; }));
    }
    void selectCase(int index) const {
        part<QComboBox>("comboBox_Case")->setCurrentIndex(index);
        emit part<QComboBox>("comboBox_Case")->activated(index);
    }
    /// \param mode  0 to edit relays, 1 to calculate
    void selectMode(int mode) const {
        part<QComboBox>("comboBox_Mode")->setCurrentIndex(mode);
        emit part<QComboBox>("comboBox_Mode")->activated(mode);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QAction& moduleAction(const char* name) const { return *(*window->menus().module())[name]; }
    template <class T>
    T* part(const QString& name) const {
        return window->findChild<T*>(name);
    }
    [[nodiscard]] QString messages() const {
        QCoreApplication::processEvents();
        return window->messages().text();
    }

    std::unique_ptr<shell::MainWindow> window;
};
