#include "programs/netview/WinDlgDspRly.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "programs/frame/ui/DialogParts.h"
#include "programs/netview/SettingNames.h"

int WinDlgDspRly::iSelRTypeNo = -1;

namespace {

constexpr int kAll = -1;

}  // namespace

WinDlgDspRly::WinDlgDspRly(QWidget* parent)
    : QDialog(parent),
      listBox_RlyType(named<QListWidget>("listBox_RlyType", this)),
      lineEdit_RlyType(named<QLineEdit>("lineEdit_RlyType", this)),
      pushButton_Ensure(named<QPushButton>("pushButton_Ensure", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)) {
    setObjectName("WinDlgDspRly");
    lineEdit_RlyType->setReadOnly(true);
    lineEdit_RlyType->setFocusPolicy(Qt::NoFocus);
    layOut();
    languageChange();
    connect(listBox_RlyType, &QListWidget::currentRowChanged, this, &WinDlgDspRly::ListBox_selected);
    connect(listBox_RlyType, &QListWidget::itemDoubleClicked, this, &WinDlgDspRly::PushButton_Ensure_clicked);
    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDlgDspRly::PushButton_Ensure_clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgDspRly::PushButton_Cancel_clicked);
    fill();
}

void WinDlgDspRly::layOut() {
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(lineEdit_RlyType);
    rows->addWidget(listBox_RlyType);
    rows->addWidget(buttonRow(pushButton_Ensure, pushButton_Cancel));
    setMinimumSize(240, 240);
    resize(290, 370);
}

void WinDlgDspRly::languageChange() {
    setWindowTitle(tr("保护类型选择"));
    pushButton_Ensure->setText(tr("确定"));
    pushButton_Cancel->setText(tr("取消"));
}

void WinDlgDspRly::fill() {
    const auto add = [this](const QString& text, int type) {
        auto* item = new QListWidgetItem(text, listBox_RlyType);
        item->setData(Qt::UserRole, type);
        if (type == iSelRTypeNo || type == kAll) listBox_RlyType->setCurrentItem(item);
    };
    add(tr("全部"), kAll);
    for (const NamedType& type : SettingNames::types()) add(type.RTypeCode, type.RTypeNo);
    listBox_RlyType->setFocus();
}

void WinDlgDspRly::ListBox_selected(int row) {
    if (const QListWidgetItem* item = listBox_RlyType->item(row)) lineEdit_RlyType->setText(item->text());
}

void WinDlgDspRly::PushButton_Ensure_clicked() {
    if (const QListWidgetItem* item = listBox_RlyType->currentItem()) iSelRTypeNo = item->data(Qt::UserRole).toInt();
    accept();
}

void WinDlgDspRly::PushButton_Cancel_clicked() { reject(); }
