#pragma once

#include <QWidget>
#include <functional>

class QLabel;
class QLineEdit;
class QListWidget;

namespace shell {

/// Finds elements of the diagram by a part of their name: the hits as one types, Enter for the first or chosen one,
/// arrow keys to choose, Esc to end.
class FindBar : public QWidget {
    Q_OBJECT
  public:
    using Find = std::function<QStringList(const QString& text)>;
    explicit FindBar(Find find, QWidget* parent = nullptr);
    void start();

  signals:
    void chosen(const QString& name);
    void ended();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void search(const QString& text);
    void choose(int row);
    bool takeKey(int key);
    void languageChange();

    Find find_;
    QLineEdit* text_ = nullptr;
    QLabel* count_ = nullptr;
    QListWidget* hits_ = nullptr;
};

}  // namespace shell
