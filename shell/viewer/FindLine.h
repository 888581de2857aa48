#pragma once

#include <QVector>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QToolButton;

namespace shell {

/// Finds a text in an edit: the hits are counted as one types, Enter and Shift+Enter go through them and round the end,
/// Esc ends.
class FindLine : public QWidget {
    Q_OBJECT
  public:
    explicit FindLine(QPlainTextEdit* edit, QWidget* parent = nullptr);
    /// Shows the line; a text that is selected is the one to find.
    void start();
    void findNext() { step(1); }
    void findPrevious() { step(-1); }
    /// To be called when the edit has another text.
    void textChanged();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void collect();
    void searchFromHere();
    void step(int by);
    void showHit();

    QPlainTextEdit* edit_;
    QLineEdit* text_;
    QLabel* count_;
    QToolButton* previous_;
    QToolButton* next_;
    QVector<int> hits_;  ///< positions in the text
    int current_ = -1;
};

}  // namespace shell
