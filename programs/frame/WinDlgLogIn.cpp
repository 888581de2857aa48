#include "programs/frame/WinDlgLogIn.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "programs/frame/Messages.h"
#include "programs/frame/UserStore.h"
#include "programs/frame/ui/DialogParts.h"

int WinDlgLogIn::iLogIn_User_PurView = -1;

WinDlgLogIn::WinDlgLogIn(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags)
    : QDialog(parent, flags),
      textLabel_PassWord(named<QLabel>("textLabel_PassWord", this)),
      lineEdit_PassWord(named<QLineEdit>("lineEdit_PassWord", this)),
      pushButton_Ensure(named<QPushButton>("pushButton_Ensure", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)) {
    setObjectName(name ? name : "WinDlgLogIn");
    setModal(modal);
    textLabel_PassWord->setBuddy(lineEdit_PassWord);
    lineEdit_PassWord->setEchoMode(QLineEdit::Password);
    lineEdit_PassWord->setMinimumWidth(180);

    auto* form = new QFormLayout;
    form->addRow(textLabel_PassWord, lineEdit_PassWord);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(form);
    rows->addStretch();
    rows->addWidget(buttonRow(pushButton_Ensure, pushButton_Cancel));
    languageChange();

    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDlgLogIn::PushButton_Ok_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgLogIn::PushButton_Cancel_Clicked);
}

void WinDlgLogIn::languageChange() {
    setWindowTitle(tr("继电保护模块用户登录"));
    textLabel_PassWord->setText(tr("请输入密码:"));
    pushButton_Ensure->setText(tr("确定"));
    pushButton_Cancel->setText(tr("取消"));
}

void WinDlgLogIn::PushButton_Ok_Clicked() {
    const std::optional<int> right = UserStore::logIn(lineEdit_PassWord->text());
    if (!right) {
        ReportError(tr("密码错误"), 0);
        lineEdit_PassWord->setFocus();
        return lineEdit_PassWord->selectAll();
    }
    iLogIn_User_PurView = *right;
    accept();
}

void WinDlgLogIn::PushButton_Cancel_Clicked() { reject(); }

void WinDlgLogIn::reject() {
    iLogIn_User_PurView = 0;
    QDialog::reject();
}
