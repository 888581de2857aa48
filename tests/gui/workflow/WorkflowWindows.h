#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QPushButton>
#include <QSqlRecord>
#include <QTest>
#include <functional>
#include <stdexcept>

#include "tests/flow/DemoStudy.h"
#include "tests/gui/Screenshot.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << text.toStdString(); }

/// A part of a window by its object name.
template <class Widget>
Widget& part(const QWidget& window, const char* name) {
    auto* found = window.findChild<Widget*>(name);
    if (!found) throw std::runtime_error(name);
    return *found;
}

inline void press(const QWidget& window, const char* button) {
    QTest::mouseClick(&part<QPushButton>(window, button), Qt::LeftButton);
}

/// All rows of a table as one text, in the order of the rows' texts.
inline QString contents(const QString& table) {
    QStringList rows;
    sql::Query query;
    query.exec("SELECT * FROM " + table);
    while (query.next()) {
        QStringList cells;
        for (int column = 0; column < query.cursor().record().count(); ++column) cells << query.raw(column);
        rows << cells.join(',');
    }
    rows.sort();
    return rows.join('\n');
}

/// The demonstration network with the real programs; windows without a screen.
class WorkflowWindows : public DemoStudy {
  protected:
    void SetUp() override {
        DemoStudy::SetUp();
        for (const char* name : {"VASKEL.EXE", "QORDEN.EXE", "HALDERN.EXE"}) mend(name);
    }
    /// Puts the real program in its place.
    void mend(const QString& name) const {
        QFile::remove(places.programDir + name);
        ASSERT_TRUE(QFile::link(QString(MORVANE_BIN_DIR "/") + name, places.programDir + name));
    }
    /// What went wrong since the last call, "|" between messages.
    std::string said() {
        const std::string all = errors.join('|').toStdString();
        errors.clear();
        return all;
    }

    /// Does something with the next modal dialog, which is closed afterwards if it still stands. To be called before
    /// what opens the dialog.
    template <class Act>
    static void whenOpen(Act act, int tries = 200) {
        QTimer::singleShot(10, qApp, [act, tries] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog && tries > 0) return whenOpen(act, tries - 1);
            ASSERT_TRUE(dialog) << "no dialog opened";
            act(*dialog);
            if (dialog->isVisible()) dialog->reject();
        });
    }
    /// Lets events run until something holds. \return false when it does not in time
    static bool waitFor(const std::function<bool()>& holds, int ms = 20000) {
        return QTest::qWaitFor([&] { return holds(); }, ms);
    }
    static QString value(const QString& text, const QVariantList& values = {}, const QString& connection = {}) {
        return sql::scalar(connection, text, values, "-").toString();
    }
};
