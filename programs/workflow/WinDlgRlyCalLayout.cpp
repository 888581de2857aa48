#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QToolButton>

#include "platform/host/ui/TableHabits.h"
#include "programs/frame/ui/DialogParts.h"
#include "programs/frame/ui/PaintTable.h"
#include "programs/workflow/WinDlgRlyCal.h"
#include "programs/workflow/ui/RunProgress.h"
#include "programs/workflow/ui/RunTables.h"
#include "programs/workflow/ui/SettingPictures.h"
#include "programs/workflow/ui/SettingTable.h"
#include "programs/workflow/ui/SettingTableBar.h"

namespace {

QVBoxLayout* column(QWidget* holder) {
    auto* rows = new QVBoxLayout(holder);
    rows->setContentsMargins(0, 0, 0, 0);
    return rows;
}

QWidget* titled(QWidget* parent, QLabel* title, QWidget* content, QLayout* below = nullptr) {
    auto* holder = new QWidget(parent);
    QVBoxLayout* rows = column(holder);
    rows->addWidget(title);
    rows->addWidget(content, 1);
    if (below) rows->addLayout(below);
    return holder;
}

constexpr int kWhole = 1000;  // more than there is room: the splitter shares out what there is

QSplitter* split(const char* name, Qt::Orientation way, QWidget* first, int share, QWidget* second, int rest) {
    auto* splitter = new QSplitter(way);
    splitter->setObjectName(name);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(first);
    splitter->addWidget(second);
    splitter->setSizes({share * kWhole, rest * kWhole});
    splitter->setStretchFactor(0, share);
    splitter->setStretchFactor(1, rest);
    rememberSizes(splitter, "WinDlgRlyCal");
    return splitter;
}

}  // namespace

void WinDlgRlyCal::layOut() {
    auto* settings = new QWidget(this);
    QVBoxLayout* above = column(settings);
    auto* head = new QHBoxLayout;
    head->addWidget(label_RlyObj);
    head->addStretch();
    head->addWidget(new SettingTableBar(table_RlyObj, this));
    above->addLayout(head);
    above->addWidget(table_RlyObj, 1);
    auto* below = split("splitter_Below", Qt::Horizontal, resultSide(), 11, pictureSide(), 9);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(split("splitter_Tables", Qt::Vertical, settings, 2, below, 3), 1);
    rows->addWidget(modeRow());
    rows->addWidget(progress_);
    rows->addWidget(buttons());
    setMinimumSize(900, 600);
    rememberPlace(this, {1440, 920});
    host::setTabChain({table_RlyObj, table_RDzTm, table_Klm, tabWidget_Right, pushButton_KlmSys, pushButton_CalKlm,
                       pushButton_BuildCalBook, toolButton_Book, pushButton_Next, pushButton_Ensure,
                       pushButton_Cancel});
}

QWidget* WinDlgRlyCal::resultSide() {
    auto* reason = new QHBoxLayout;
    reason->addWidget(label_KlmReason, 1);
    reason->addWidget(pushButton_OtherPara);
    label_KlmReason->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return split("splitter_Results", Qt::Vertical, titled(this, label_RDzTm, table_RDzTm), 3,
                 titled(this, label_Klm, table_Klm, reason), 2);
}

QWidget* WinDlgRlyCal::pictureSide() {
    tabWidget_Right->addTab(pictures_, QString());
    tabWidget_Right->addTab(list_WithoutResult, QString());
    list_WithoutResult->setWordWrap(true);
    list_WithoutResult->setSelectionMode(QAbstractItemView::ExtendedSelection);
    return tabWidget_Right;
}

QWidget* WinDlgRlyCal::modeRow() {
    auto* holder = new QWidget(this);
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(label_KlmSys);
    row->addWidget(lineEdit_KlmSys, 1);
    row->addWidget(pushButton_KlmSys);
    row->addWidget(pushButton_CalKlm);
    label_KlmSys->setBuddy(pushButton_KlmSys);
    lineEdit_KlmSys->setReadOnly(true);
    lineEdit_KlmSys->setFocusPolicy(Qt::ClickFocus);
    return holder;
}

QWidget* WinDlgRlyCal::buttons() {
    auto* holder = new QWidget(this);
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(pushButton_BuildCalBook);
    row->addWidget(toolButton_Book);
    row->addStretch();
    for (QPushButton* button : {pushButton_Next, pushButton_Ensure, pushButton_Cancel}) row->addWidget(button);
    for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
    pushButton_Next->setDefault(true);
    return holder;
}

void WinDlgRlyCal::languageChange() {
    setWindowTitle(tr("计算窗口"));
    label_RlyObj->setText(tr("待整定保护"));
    label_RDzTm->setText(tr("定值中间结果"));
    label_Klm->setText(tr("灵敏度校验结果"));
    label_KlmSys->setText(tr("灵敏度参量计算用运行方式"));
    pushButton_KlmSys->setText(tr("选择运行方式"));
    pushButton_CalKlm->setText(tr("计算灵敏度参量"));
    pushButton_OtherPara->setText(tr("换用另一参量"));
    pushButton_BuildCalBook->setText(tr("生成计算书"));
    pushButton_Ensure->setText(tr("确定"));
    tabWidget_Right->setTabText(0, tr("图形"));
    setUpBookMenu();
    showWithoutResult();
}

void WinDlgRlyCal::setUpTables() {
    SettingColumns columns;
    columns.parts = type_.NPart;
    columns.values = SettingColumns::Values::New;
    columns.editable = true;
    table_RlyObj->setColumns(columns);
    run_tables::setUpResults(
        *table_RDzTm,
        {tr("保护安装位置"), tr("定值名称"), tr("段号"), tr("整定原则"), tr("定值结果"), {}, {}, tr("参数修改"), {}});
    run_tables::setUpSensitivities(*table_Klm, {tr("保护安装位置"),
                                                tr("定值名称"),
                                                tr("段号"),
                                                tr("灵敏度"),
                                                tr("参量一描述"),
                                                tr("参量一"),
                                                tr("参量二描述"),
                                                tr("参量二"),
                                                {},
                                                {}});
    editTriggers_ = table_RlyObj->editTriggers();
}
