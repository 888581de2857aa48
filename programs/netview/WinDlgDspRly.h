#pragma once

#include <QDialog>

class QLineEdit;
class QListWidget;
class QPushButton;

/// Picks the relay type whose relays the relay dialog walks.
class WinDlgDspRly : public QDialog {
    Q_OBJECT
  public:
    static int iSelRTypeNo;  ///< below 0: all relays

    explicit WinDlgDspRly(QWidget* parent = nullptr);

  public slots:
    void PushButton_Cancel_clicked();
    void PushButton_Ensure_clicked();
    void ListBox_selected(int row);

  private:
    void languageChange();
    void layOut();
    void fill();

    QListWidget* listBox_RlyType;
    QLineEdit* lineEdit_RlyType;
    QPushButton* pushButton_Ensure;
    QPushButton* pushButton_Cancel;
};
