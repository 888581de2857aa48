#pragma once

#include <QDialog>

#include "programs/frame/Export.h"

class QLabel;
class QLineEdit;
class QPushButton;

/// Asks for the module's password. The host opens it when it wants to.
class MORVANE_EXPORT WinDlgLogIn : public QDialog {
    Q_OBJECT
  public:
    static int iLogIn_User_PurView;  ///< -1 before the first login, the user's right after a good one, 0 after Cancel

    explicit WinDlgLogIn(QWidget* parent = nullptr, const char* name = nullptr, bool modal = false,
                         Qt::WindowFlags flags = {});

  public slots:
    void PushButton_Ok_Clicked();
    void PushButton_Cancel_Clicked();
    void reject() override;

  private:
    void languageChange();

    QLabel* textLabel_PassWord;
    QLineEdit* lineEdit_PassWord;
    QPushButton* pushButton_Ensure;
    QPushButton* pushButton_Cancel;
};
