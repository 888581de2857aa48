#include "programs/netview/WinDlgDefineDspDz.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "platform/host/ui/TableHabits.h"
#include "programs/frame/Messages.h"
#include "programs/frame/ui/DialogParts.h"
#include "programs/netview/SettingNames.h"

namespace {

constexpr int kTypeTable = 113;
enum Column { OldName, NewName, Key, Columns };

}  // namespace

WinDlgDefineDspDz::WinDlgDefineDspDz(QWidget* parent)
    : QDialog(parent),
      textLabel_RType(named<QLabel>("textLabel_RType", this)),
      comboBox_RType(named<QComboBox>("comboBox_RType", this)),
      table_DspDz(named<QTableWidget>("table_DspDz", this)),
      pushButton_Enure(named<QPushButton>("pushButton_Enure", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)),
      session_("WinDlgDefineDspDz", {{"RTYPE", kTypeTable}}, "_TEM") {
    setObjectName("WinDlgDefineDspDz");
    layOut();
    languageChange();
    const QVector<NamedType> types = SettingNames::types();
    for (qsizetype k = 1; k < types.size(); ++k) comboBox_RType->addItem(types[k].RTypeCode, types[k].RTypeNo);
    ComboBox_RType_Changed(0);
    connect(comboBox_RType, &QComboBox::activated, this, &WinDlgDefineDspDz::ComboBox_RType_Changed);
    connect(pushButton_Enure, &QPushButton::clicked, this, &WinDlgDefineDspDz::PushButton_Ensure_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgDefineDspDz::PushButton_Cancel_Clicked);
    // without the copy Cancel could not take anything back
    if (session_.open()) return;
    table_DspDz->setEnabled(false);
    pushButton_Enure->setEnabled(false);
}

void WinDlgDefineDspDz::layOut() {
    table_DspDz->setColumnCount(Columns);
    table_DspDz->setColumnHidden(Key, true);
    table_DspDz->verticalHeader()->hide();
    table_DspDz->horizontalHeader()->setHighlightSections(false);
    table_DspDz->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table_DspDz->horizontalHeader()->setMinimumSectionSize(80);
    table_DspDz->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                                 QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    table_DspDz->setTabKeyNavigation(false);
    new host::TableHabits(table_DspDz);
    textLabel_RType->setBuddy(comboBox_RType);
    auto* head = new QHBoxLayout;
    head->addWidget(textLabel_RType);
    head->addWidget(comboBox_RType, 1);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(head);
    rows->addWidget(table_DspDz);
    rows->addWidget(buttonRow(pushButton_Enure, pushButton_Cancel));
    setMinimumSize(275, 240);
    resize(330, 310);
}

void WinDlgDefineDspDz::languageChange() {
    setWindowTitle(tr("定值名定义"));
    textLabel_RType->setText(tr("保护类型:"));
    table_DspDz->setHorizontalHeaderLabels({tr("原定值名"), tr("新定值名"), {}});
    pushButton_Enure->setText(tr("确定"));
    pushButton_Cancel->setText(tr("取消"));
}

void WinDlgDefineDspDz::ComboBox_RType_Changed(int index) {
    if (index == iLastItem || index >= comboBox_RType->count()) return;
    if (!save()) return comboBox_RType->setCurrentIndex(iLastItem);
    iLastItem = index;
    iRTypeNo = comboBox_RType->itemData(index).toInt();
    fill();
}

void WinDlgDefineDspDz::fill() {
    const QVector<NamedSetting> settings = SettingNames::of(iRTypeNo);
    table_DspDz->setRowCount(0);
    table_DspDz->setRowCount(int(settings.size()));
    for (int row = 0; row < table_DspDz->rowCount(); ++row) {
        auto* old = new QTableWidgetItem(settings[row].name);
        old->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        table_DspDz->setItem(row, OldName, old);
        table_DspDz->setItem(row, NewName, new QTableWidgetItem(settings[row].name));
        table_DspDz->setItem(row, Key, new QTableWidgetItem(QString::number(settings[row].DzNo)));
    }
}

bool WinDlgDefineDspDz::save() {
    table_DspDz->setCurrentCell(0, 0);  // closes an open editor
    QVector<NamedSetting> settings;
    for (int row = 0; row < table_DspDz->rowCount(); ++row)
        settings.append(
            {table_DspDz->item(row, Key)->text().toInt(), table_DspDz->item(row, NewName)->text().trimmed()});
    const QString why = SettingNames::whyNot(settings);
    ReportError(why, 0);
    return why.isEmpty() && SettingNames::store(iRTypeNo, settings);
}

void WinDlgDefineDspDz::PushButton_Ensure_Clicked() {
    if (!save()) return;
    session_.commit();
    accept();
}

void WinDlgDefineDspDz::PushButton_Cancel_Clicked() { reject(); }

void WinDlgDefineDspDz::reject() {
    if (session_.isOpen()) session_.restore();
    QDialog::reject();
}
