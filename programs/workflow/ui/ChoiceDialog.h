#pragma once

#include <QDialog>
#include <QVector>

class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

/// A dialog with a list to choose from and a list of what was chosen. Double click or Enter takes an entry over, Delete
/// takes it out; a line above the list keeps the entries with all words typed.
class ChoiceDialog : public QDialog {
    Q_OBJECT
  public:
    struct Entry {
        QString label;
        QString key;  ///< entries of one key are taken once
    };

  protected:
    /// \param all, chosen  object names of the two lists
    ChoiceDialog(const char* all, const char* chosen, QWidget* parent);

    void offer(const QVector<Entry>& entries);
    /// Takes over the entry of a row; one whose key stands there already is passed over.
    void take(int row);
    void putBack(int chosenRow);
    void takeSelected();
    void putBackSelected();
    void putBackAll();
    /// Rows of the entries taken over, in the order of the list.
    [[nodiscard]] const QVector<int>& chosen() const { return chosen_; }
    /// Makes a row the current one, also where the filter hid it.
    void showRow(int row);

    /// The two lists in their boxes, with the three buttons between them.
    QHBoxLayout* lists(QGroupBox* all, QGroupBox* chosen);
    /// Texts of the buttons and of the counts.
    void nameParts();
    void keyPressEvent(QKeyEvent* event) override;

    QListWidget* listBox_All;
    QListWidget* listBox_Chosen;
    QLineEdit* lineEdit_Filter;
    QPushButton* pushButton_Add;
    QPushButton* pushButton_Delete;
    QPushButton* pushButton_DelAll;
    QPushButton* pushButton_Ensure;
    QPushButton* pushButton_Cancel;

  private:
    void filter(const QString& text);
    void moveCurrent(int step);
    void showCounts();

    QLabel* offered_;
    QLabel* taken_;
    QVector<Entry> entries_;
    QVector<int> chosen_;
    int shown_ = 0;  ///< entries that the filter leaves
};
