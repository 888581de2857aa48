#include "shell/WinDlgSettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "shell/ServerFile.h"
#include "shell/Settings.h"

namespace shell {

namespace {

constexpr const char* kLanguages[] = {"", "zh", "en"};

}  // namespace

WinDlgSettings::WinDlgSettings(Settings& settings, QWidget* parent) : QDialog(parent), settings_(settings) {
    setObjectName("WinDlgSettings");
    setWindowTitle(tr("设置"));
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(makeAppearance());
    rows->addWidget(makeServer());
    textLabel_Reason = new QLabel(this);
    textLabel_Reason->setObjectName("textLabel_Reason");
    textLabel_Reason->setWordWrap(true);
    rows->addWidget(textLabel_Reason);
    rows->addStretch();
    auto* buttons = new QDialogButtonBox(this);
    pushButton_Ensure = buttons->addButton(tr("确定"), QDialogButtonBox::AcceptRole);
    pushButton_Ensure->setObjectName("pushButton_Ensure");
    buttons->addButton(tr("取消"), QDialogButtonBox::RejectRole)->setObjectName("pushButton_Cancel");
    rows->addWidget(buttons);
    readServer();
    check();
    connect(buttons, &QDialogButtonBox::accepted, this, &WinDlgSettings::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(radioButton_Host, &QRadioButton::toggled, this, &WinDlgSettings::check);
    connect(lineEdit_Host, &QLineEdit::textChanged, this, &WinDlgSettings::check);
}

QGroupBox* WinDlgSettings::makeAppearance() {
    auto* group = new QGroupBox(tr("界面"), this);
    auto* form = new QFormLayout(group);
    comboBox_Language = new QComboBox(group);
    comboBox_Language->setObjectName("comboBox_Language");
    comboBox_Language->addItems({tr("随系统"), QStringLiteral("中文"), QStringLiteral("English")});
    for (int i = 0; i < 3; ++i)
        if (settings_.language() == kLanguages[i]) comboBox_Language->setCurrentIndex(i);
    comboBox_Theme = new QComboBox(group);
    comboBox_Theme->setObjectName("comboBox_Theme");
    comboBox_Theme->addItems({tr("随系统"), tr("浅色"), tr("深色")});
    comboBox_Theme->setCurrentIndex(int(settings_.theme()));
    checkBox_LogIn = new QCheckBox(tr("打开设有口令的工程时要求登录"), group);
    checkBox_LogIn->setObjectName("checkBox_LogIn");
    checkBox_LogIn->setChecked(settings_.loginAtOpening());
    form->addRow(tr("语言(&L):"), comboBox_Language);
    form->addRow(tr("颜色(&T):"), comboBox_Theme);
    form->addRow(checkBox_LogIn);
    return group;
}

QGroupBox* WinDlgSettings::makeServer() {
    auto* group = new QGroupBox(tr("数据库服务器"), this);
    auto* form = new QFormLayout(group);
    radioButton_Embedded = new QRadioButton(tr("内置，只供本用户使用"), group);
    radioButton_Host = new QRadioButton(tr("另外的服务器"), group);
    radioButton_Host->setObjectName("radioButton_Host");
    lineEdit_Host = new QLineEdit(group);
    lineEdit_Host->setObjectName("lineEdit_Host");
    spinBox_Port = new QSpinBox(group);
    spinBox_Port->setRange(1, 65535);
    lineEdit_User = new QLineEdit(group);
    lineEdit_User->setObjectName("lineEdit_User");
    lineEdit_PassWord = new QLineEdit(group);
    lineEdit_PassWord->setObjectName("lineEdit_PassWord");
    lineEdit_PassWord->setEchoMode(QLineEdit::Password);
    form->addRow(radioButton_Embedded);
    form->addRow(radioButton_Host);
    form->addRow(tr("主机(&H):"), lineEdit_Host);
    form->addRow(tr("端口(&P):"), spinBox_Port);
    form->addRow(tr("用户(&U):"), lineEdit_User);
    form->addRow(tr("口令(&W):"), lineEdit_PassWord);
    return group;
}

void WinDlgSettings::readServer() {
    QString error;
    const server::Settings server = server::readSettings(&error);
    textLabel_Reason->setText(error);
    (server.embedded ? radioButton_Embedded : radioButton_Host)->setChecked(true);
    lineEdit_Host->setText(server.host.isEmpty() ? server.socket : server.host);
    spinBox_Port->setValue(server.port);
    lineEdit_User->setText(server.user);
    lineEdit_PassWord->setText(server.password);
}

void WinDlgSettings::check() {
    const bool own = radioButton_Host->isChecked();
    for (QWidget* field : {static_cast<QWidget*>(lineEdit_Host), static_cast<QWidget*>(spinBox_Port),
                           static_cast<QWidget*>(lineEdit_User), static_cast<QWidget*>(lineEdit_PassWord)}) {
        field->setEnabled(own);
        field->setToolTip(own ? QString() : tr("选“另外的服务器”后可填"));
    }
    const bool named = !own || !lineEdit_Host->text().trimmed().isEmpty();
    pushButton_Ensure->setEnabled(named);
    pushButton_Ensure->setToolTip(named ? QString() : tr("填写服务器的主机"));
}

bool WinDlgSettings::writeServer() {
    QString error;
    const server::Settings before = server::readSettings(&error);
    server::Settings server = before;
    server.embedded = radioButton_Embedded->isChecked();
    const QString place = lineEdit_Host->text();
    server.host = place.startsWith('/') ? QString() : place;
    server.socket = place.startsWith('/') ? place : QString();
    server.port = spinBox_Port->value();
    server.user = lineEdit_User->text();
    server.password = lineEdit_PassWord->text();
    const bool same = server.embedded == before.embedded &&
                      (server.embedded ||
                       (server.host == before.host && server.socket == before.socket && server.port == before.port &&
                        server.user == before.user && server.password == before.password));
    if (same && error.isEmpty()) return true;
    serverChanged_ = true;
    if (writeServerSettings(server, &error)) return true;
    textLabel_Reason->setText(error);
    return false;
}

void WinDlgSettings::accept() {
    if (!writeServer()) return;
    settings_.setLanguage(kLanguages[comboBox_Language->currentIndex()]);
    settings_.setTheme(Theme(comboBox_Theme->currentIndex()));
    settings_.setLoginAtOpening(checkBox_LogIn->isChecked());
    QDialog::accept();
}

}  // namespace shell
