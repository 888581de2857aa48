#include "programs/workflow/WinDlgSaveDZ.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "platform/host/ui/TableHabits.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/ui/CMorvaneObject.h"
#include "programs/frame/ui/DialogParts.h"
#include "programs/workflow/CaseSettings.h"
#include "programs/workflow/SettingStore.h"
#include "programs/workflow/ui/SettingTable.h"
#include "programs/workflow/ui/SettingTableBar.h"

namespace {

QWidget* underLabel(QLabel* label, QWidget* table) {
    auto* part = new QWidget(table->parentWidget());
    auto* rows = new QVBoxLayout(part);
    rows->setContentsMargins({});
    rows->addWidget(label);
    rows->addWidget(table);
    label->setBuddy(table);
    return part;
}

}  // namespace

WinDlgSaveDZ::WinDlgSaveDZ(int rTypeNo, QWidget* parent)
    : QDialog(parent),
      radioButton_Yici(named<QRadioButton>("radioButton_Yici", this)),
      radioButton_Erci(named<QRadioButton>("radioButton_Erci", this)),
      buttonGroup_Dz(new QButtonGroup(this)),
      textLabel_Newdz(named<QLabel>("textLabel_Newdz", this)),
      textLabel_OldDz(named<QLabel>("textLabel_OldDz", this)),
      table_Newdz(new SettingTable(this, "table_Newdz")),
      table_OldDz(new SettingTable(this, "table_OldDz")),
      bar_(new SettingTableBar(table_Newdz, this)),
      pushButton_SaveChangeHB(named<QPushButton>("pushButton_SaveChangeHB", this)),
      pushButton_SaveNotChangeHB(named<QPushButton>("pushButton_SaveNotChangeHB", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)),
      rTypeNo_(rTypeNo) {
    setObjectName("WinDlgSaveDZ");
    buttonGroup_Dz->setObjectName("buttonGroup_Dz");
    buttonGroup_Dz->addButton(radioButton_Yici, 0);
    buttonGroup_Dz->addButton(radioButton_Erci, 1);
    radioButton_Yici->setChecked(true);
    layOut();
    languageChange();
    setUpTables();
    connectAll();
    DspTables();
}

void WinDlgSaveDZ::layOut() {
    auto* top = new QHBoxLayout;
    for (QRadioButton* radio : {radioButton_Yici, radioButton_Erci}) top->addWidget(radio);
    top->addSpacing(24);
    top->addWidget(bar_, 1);
    auto* tables = new QSplitter(Qt::Vertical, this);
    tables->setChildrenCollapsible(false);
    tables->addWidget(underLabel(textLabel_Newdz, table_Newdz));
    tables->addWidget(underLabel(textLabel_OldDz, table_OldDz));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* button : {pushButton_SaveChangeHB, pushButton_SaveNotChangeHB, pushButton_Cancel}) {
        button->setAutoDefault(false);  // Enter in a table must not overwrite settings
        buttons->addWidget(button);
    }
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(top);
    rows->addWidget(tables, 1);
    rows->addLayout(buttons);
    host::setTabChain({radioButton_Yici, radioButton_Erci, bar_, table_Newdz, table_OldDz, pushButton_SaveChangeHB,
                       pushButton_SaveNotChangeHB, pushButton_Cancel});
    rememberPlace(this, {1200, 800});
}

void WinDlgSaveDZ::languageChange() {
    setWindowTitle(tr("保存定值"));
    radioButton_Yici->setText(tr("一次值"));
    radioButton_Erci->setText(tr("二次值"));
    textLabel_Newdz->setText(tr("新定值"));
    textLabel_OldDz->setText(tr("原定值"));
    pushButton_SaveChangeHB->setText(tr("保存并修改后备定值"));
    pushButton_SaveChangeHB->setToolTip(tr("新定值成为当前定值，原定值成为后备定值"));
    pushButton_SaveNotChangeHB->setText(tr("保存并不改变后备定值"));
    pushButton_SaveNotChangeHB->setToolTip(tr("新定值成为当前定值，后备定值不变"));
    pushButton_Cancel->setText(tr("取消"));
}

void WinDlgSaveDZ::connectAll() {
    connect(buttonGroup_Dz, &QButtonGroup::idClicked, this, &WinDlgSaveDZ::RadioButton_YiEr_Clicked);
    connect(pushButton_SaveChangeHB, &QPushButton::clicked, this, &WinDlgSaveDZ::Button_SaveChangeHB_Clicked);
    connect(pushButton_SaveNotChangeHB, &QPushButton::clicked, this, &WinDlgSaveDZ::Button_SaveNotChangeHB_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgSaveDZ::Button_Cancel_Clicked);
    table_Newdz->keepTogetherWith(*table_OldDz);
}

void WinDlgSaveDZ::setUpTables() {
    const int parts = readRelayTypes().value(rTypeNo_).NPart;
    table_Newdz->setColumns({.parts = parts, .values = SettingColumns::Values::New, .zerosCount = true});
    table_OldDz->setColumns({.parts = parts, .values = SettingColumns::Values::Old, .changes = false});
    for (SettingTable* table : {table_Newdz, table_OldDz}) table->setSelectionBehavior(QAbstractItemView::SelectRows);
}

void WinDlgSaveDZ::DspTables() {
    const QVector<CaseSettingRow> rows = CaseSettings::rows(rTypeNo_, radioButton_Yici->isChecked());
    table_Newdz->setRows(rows);
    table_OldDz->setRows(rows);
    for (QPushButton* button : {pushButton_SaveChangeHB, pushButton_SaveNotChangeHB}) {
        button->setEnabled(!rows.isEmpty());
        if (rows.isEmpty()) button->setToolTip(tr("没有可以保存的定值"));
    }
}

void WinDlgSaveDZ::RadioButton_YiEr_Clicked(int) { DspTables(); }
void WinDlgSaveDZ::Button_SaveChangeHB_Clicked() { leave(SettingStore::saveChangingBackup()); }
void WinDlgSaveDZ::Button_SaveNotChangeHB_Clicked() { leave(SettingStore::saveKeepingBackup()); }
void WinDlgSaveDZ::Button_Cancel_Clicked() { reject(); }

void WinDlgSaveDZ::leave(bool saved) { saved ? reject() : ReportError(tr("定值没有保存，保护的定值没有改变"), 0); }

void WinDlgSaveDZ::reject() {
    CMorvaneObject::iRlyDspFlg = 1;
    QDialog::reject();
}
