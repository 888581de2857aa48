#pragma once

#include <QDockWidget>
#include <array>

#include "shell/MessageModel.h"

class QLineEdit;
class QToolButton;
class QTreeView;

namespace shell {

/// The message dock: all that the module, the importers and the shell tell, to be filtered, copied and saved. From its
/// construction to its end it takes the messages of the whole program.
class MessageDock : public QDockWidget {
    Q_OBJECT
  public:
    explicit MessageDock(QWidget* parent = nullptr);
    ~MessageDock() override;

    [[nodiscard]] MessageModel& model() { return model_; }
    /// The rows that are shown and selected (all shown without a selection), fields with tabs between.
    [[nodiscard]] QString text() const;

  public slots:
    void copy();
    void save();
    void clear() { model_.clear(); }

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QWidget* makeBar();
    QToolButton* makeButton(const QString& name, void (MessageDock::*slot)());
    void makeView();
    void languageChange();
    void showCounts();
    void keepNewestVisible();

    MessageModel model_;
    MessageFilter filter_;
    QTreeView* view_ = nullptr;
    QLineEdit* text_ = nullptr;
    std::array<QToolButton*, kGrades> grades_{};
    QToolButton *copy_ = nullptr, *save_ = nullptr, *clear_ = nullptr;
    bool atEnd_ = true;
};

}  // namespace shell
