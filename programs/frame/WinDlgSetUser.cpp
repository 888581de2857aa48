#include "programs/frame/WinDlgSetUser.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "programs/frame/Messages.h"
#include "programs/frame/UserStore.h"
#include "programs/frame/ui/DialogParts.h"

WinDlgSetUser::WinDlgSetUser(QWidget* parent)
    : QDialog(parent),
      textLabel_OldPassWord(named<QLabel>("textLabel_OldPassWord", this)),
      lineEdit_OldPassWord(named<QLineEdit>("lineEdit_OldPassWord", this)),
      textLabel_NewPassWord(named<QLabel>("textLabel_NewPassWord", this)),
      lineEdit_NewPassWord(named<QLineEdit>("lineEdit_NewPassWord", this)),
      textLabel_EnsurePassWord(named<QLabel>("textLabel_EnsurePassWord", this)),
      lineEdit_EnsurePassWord(named<QLineEdit>("lineEdit_EnsurePassWord", this)),
      pushButton_Ensure(named<QPushButton>("pushButton_Ensure", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)) {
    setObjectName("WinDlgSetUser");
    lineEdit_NewPassWord->setEchoMode(QLineEdit::Password);
    lineEdit_EnsurePassWord->setEchoMode(QLineEdit::Password);
    layOut();
    languageChange();
    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDlgSetUser::PushButton_Ensure_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgSetUser::PushButton_Cancel_Clicked);
}

void WinDlgSetUser::layOut() {
    auto* form = new QFormLayout;
    form->addRow(textLabel_OldPassWord, lineEdit_OldPassWord);
    form->addRow(textLabel_NewPassWord, lineEdit_NewPassWord);
    form->addRow(textLabel_EnsurePassWord, lineEdit_EnsurePassWord);
    lineEdit_OldPassWord->setMinimumWidth(180);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(form);
    rows->addStretch();
    rows->addWidget(buttonRow(pushButton_Ensure, pushButton_Cancel));
}

void WinDlgSetUser::languageChange() {
    setWindowTitle(tr("用户管理"));
    textLabel_OldPassWord->setText(tr("原密码"));
    textLabel_NewPassWord->setText(tr("新密码:"));
    textLabel_EnsurePassWord->setText(tr("确认密码:"));
    pushButton_Ensure->setText(tr("确定"));
    pushButton_Cancel->setText(tr("取消"));
}

void WinDlgSetUser::refuse(const QString& text, QLineEdit* entry) {
    ReportError(text, 0);
    entry->setFocus();
    entry->selectAll();
}

void WinDlgSetUser::PushButton_Ensure_Clicked() {
    using UserStore::Change;
    switch (UserStore::change(lineEdit_OldPassWord->text(), lineEdit_NewPassWord->text(),
                              lineEdit_EnsurePassWord->text())) {
        case Change::Done:
            return accept();
        case Change::WrongOld:
            return refuse(tr("原密码错误，不能修改密码"), lineEdit_OldPassWord);
        case Change::WrongLength:
            return refuse(tr("密码长度应为6位，或不填"), lineEdit_NewPassWord);
        case Change::Differ:
            return refuse(tr("新密码与确认密码不同"), lineEdit_EnsurePassWord);
        case Change::NotStorable:
            return refuse(tr("密码末尾不能有空格，也不能有GBK字符集以外的字符"), lineEdit_NewPassWord);
        case Change::Failed:
            return refuse(tr("不能保存密码"), lineEdit_NewPassWord);
    }
}

void WinDlgSetUser::PushButton_Cancel_Clicked() { reject(); }
