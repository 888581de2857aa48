#pragma once

#include <QFileSystemWatcher>
#include <QMainWindow>
#include <QTimer>
#include <memory>

class QLabel;
class QPlainTextEdit;

namespace shell {

class CellFormat;
class FindLine;

/// Shows a calculation book: finds, copies, prints, zooms, and reads the file again when it changes.
class BookWindow : public QMainWindow {
    Q_OBJECT
  public:
    explicit BookWindow(QWidget* parent = nullptr);
    ~BookWindow() override;

    /// A file that cannot be read is told in the window.
    void open(const QString& file);
  public slots:
    void reload();
    void print();
    /// \param steps  points; 0: the size of the beginning
    void zoom(int steps);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void addActions();
    void layOut();
    void showText(const QString& text);
    void showState(const QString& whyNot, int invalid);
    void watch();
    void setSize(qreal points);

    QString file_;
    QLabel* trouble_;
    QPlainTextEdit* edit_;
    FindLine* find_;
    QLabel* state_;
    QLabel* invalid_;
    std::unique_ptr<CellFormat> cells_;  ///< where the font alone does not align the columns
    qreal points_ = 0;
    QFileSystemWatcher watcher_;
    QTimer changed_;
};

}  // namespace shell
