#include "programs/workflow/WinDlgselectSYS.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "programs/frame/ui/DialogParts.h"
#include "programs/workflow/ModeSelection.h"
#include "programs/workflow/PickerResults.h"

WinDlgselectSYS::WinDlgselectSYS(QWidget* parent)
    : ChoiceDialog("listBox_gBSysmode1_Sys", "listBox_gBSysmode2_Sys", parent),
      groupBox_All(named<QGroupBox>("groupBox_Sysmode1", this)),
      groupBox_Selected(named<QGroupBox>("groupBox_Sysmode2", this)) {
    setObjectName("WinDlgselectSYS");
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(lists(groupBox_All, groupBox_Selected), 1);
    rows->addWidget(buttonRow(pushButton_Ensure, pushButton_Cancel));
    resize(640, 420);
    languageChange();
    QVector<Entry> entries;
    for (const OfferedMode& mode : offeredModes()) {
        entries.append({mode.SysName, mode.SysName});
        numbers_.append(mode.SysNo);
    }
    offer(entries);
    connectAll();
    lineEdit_Filter->setFocus();
}

void WinDlgselectSYS::languageChange() {
    setWindowTitle(tr("选择运行方式"));
    groupBox_All->setTitle(tr("待选择运行方式"));
    groupBox_Selected->setTitle(tr("选择的运行方式"));
    nameParts();
}

void WinDlgselectSYS::connectAll() {
    connect(listBox_All, &QListWidget::doubleClicked, this,
            [this](const QModelIndex& index) { listBox_AllSys_DoubleClicked(index.row()); });
    connect(listBox_Chosen, &QListWidget::doubleClicked, this,
            [this](const QModelIndex& index) { listBox_SysSelected_DoubleClicked(index.row()); });
    connect(pushButton_Add, &QPushButton::clicked, this, &WinDlgselectSYS::PushButton_Add_Clicked);
    connect(pushButton_Delete, &QPushButton::clicked, this, &WinDlgselectSYS::PushButton_Delete_Clicked);
    connect(pushButton_DelAll, &QPushButton::clicked, this, &WinDlgselectSYS::PushButton_DelAll_Clicked);
    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDlgselectSYS::PushButton_Back_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgselectSYS::PushButton_Cancel_Clicked);
}

void WinDlgselectSYS::listBox_AllSys_DoubleClicked(int index) { take(index); }
void WinDlgselectSYS::listBox_SysSelected_DoubleClicked(int index) { putBack(index); }
void WinDlgselectSYS::PushButton_Add_Clicked() { takeSelected(); }
void WinDlgselectSYS::PushButton_Delete_Clicked() { putBackSelected(); }
void WinDlgselectSYS::PushButton_DelAll_Clicked() { putBackAll(); }

void WinDlgselectSYS::PushButton_Back_Clicked() {
    QList<int> picked;
    for (const int row : chosen()) picked.append(numbers_[row]);
    replaceSelectedSys(picked);
    accept();
}

void WinDlgselectSYS::PushButton_Cancel_Clicked() { reject(); }
