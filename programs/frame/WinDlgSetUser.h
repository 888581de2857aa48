#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

/// Sets or clears the module's password.
class WinDlgSetUser : public QDialog {
    Q_OBJECT
  public:
    explicit WinDlgSetUser(QWidget* parent = nullptr);

  public slots:
    void PushButton_Ensure_Clicked();
    void PushButton_Cancel_Clicked();

  private:
    void languageChange();
    void layOut();
    void refuse(const QString& text, QLineEdit* entry);

    QLabel* textLabel_OldPassWord;
    QLineEdit* lineEdit_OldPassWord;
    QLabel* textLabel_NewPassWord;
    QLineEdit* lineEdit_NewPassWord;
    QLabel* textLabel_EnsurePassWord;
    QLineEdit* lineEdit_EnsurePassWord;
    QPushButton* pushButton_Ensure;
    QPushButton* pushButton_Cancel;
};
