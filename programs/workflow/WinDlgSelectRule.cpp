#include "programs/workflow/WinDlgSelectRule.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "programs/frame/ui/CEditButton.h"
#include "programs/frame/ui/DialogParts.h"
#include "programs/frame/ui/RecordTable.h"
#include "programs/workflow/ParameterGroups.h"
#include "programs/workflow/PickerResults.h"
#include "programs/workflow/WinDlgEditAndSelectPara.h"

namespace {

constexpr int kCaseRules = 124;
enum Column { InUse, Note, Parameters, Choose, RuleNumber, GroupNumber, Formula, Columns };
constexpr int kWidths[Columns] = {30, 370, 210, 30, 0, 0, 200};

void setUp(RecordTable& table) {
    table.setColumnCount(Columns);
    table.setColumnHidden(RuleNumber, true);
    table.setColumnHidden(GroupNumber, true);
    table.verticalHeader()->hide();
    table.selectWholeRows();
    table.horizontalHeader()->setHighlightSections(false);
    table.horizontalHeader()->setStretchLastSection(true);
}

void showParameters(RecordTable& table, int row, int group, const QString& line) {
    table.setText(row, GroupNumber, QString::number(group));
    table.setText(row, Parameters, line);
    table.item(row, Parameters)
        ->setToolTip(group > 0 ? WinDlgSelectRule::tr("参数组 %1").arg(group) + "\n" + line : line);
}

}  // namespace

WinDlgSelectRule::WinDlgSelectRule(int caseNo, int rNo, int rTypeNo, const QString& rTypeCode, const QString& location,
                                   QWidget* parent)
    : QDialog(parent),
      textLabel_Rly(named<QLabel>("textLabel_Rly", this)),
      tabWidget_Rule(named<QTabWidget>("tabWidget_Rule", this)),
      check_InAllRly(named<QCheckBox>("check_InAllRly", this)),
      pushButton_Back(named<QPushButton>("pushButton_Back", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)),
      caseNo_(caseNo),
      rNo_(rNo),
      session_("WinDlgSelectRule", {{"RLY_CASEINF", kCaseRules}}, "_TEM_TM") {
    setObjectName("WinDlgSelectRule");
    textLabel_Rly->setText(location);
    textLabel_Rly->setToolTip(rTypeCode);
    layOut();
    RuleSelection::leaveOutParts(caseNo, rTypeNo, PartFlg);
    parts_ = RuleSelection::read(caseNo, rNo, rTypeNo, PartFlg);
    for (const PartChoice& part : std::as_const(parts_)) addPage(part);
    session_.open();
    languageChange();
    connectAll();
}

void WinDlgSelectRule::layOut() {
    textLabel_Rly->setWordWrap(true);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(textLabel_Rly);
    rows->addWidget(tabWidget_Rule, 1);
    rows->addWidget(check_InAllRly);
    rows->addWidget(buttonRow(pushButton_Back, pushButton_Cancel));
    resize(940, 460);
}

void WinDlgSelectRule::addPage(const PartChoice& part) {
    auto* page = new QWidget;
    const Page parts = {named<QCheckBox>("checkBox_tbRule1_Valid", page), new RecordTable(page, "table_tdRule1_Rule"),
                        new QLabel(page)};
    pages_ << parts;
    auto* top = new QHBoxLayout;
    top->addWidget(parts.checkBox_tbRule1_Valid);
    top->addStretch();
    top->addWidget(parts.inUse);
    auto* rows = new QVBoxLayout(page);
    rows->addLayout(top);
    rows->addWidget(parts.table_tdRule1_Rule, 1);
    tabWidget_Rule->addTab(page, {});
    parts.checkBox_tbRule1_Valid->setChecked(part.PValid);
    parts.checkBox_tbRule1_Valid->setEnabled(!part.rules.isEmpty());
    RecordTable& table = *parts.table_tdRule1_Rule;
    setUp(table);
    table.setRowCount(int(part.rules.size()));
    for (int row = 0; row < table.rowCount(); ++row) fillRow(table, row, part.rules[row]);
    for (const int column : {InUse, Note, Parameters, Formula}) table.setColumnReadOnly(column, true);
    table.setEnabled(part.PValid);
    if (table.rowCount() > 0) table.selectRow(0);
}

void WinDlgSelectRule::fillRow(RecordTable& table, int row, const RuleChoice& rule) {
    table.setCheck(row, InUse, rule.RValid);
    table.setText(row, Note, rule.Note);
    table.setText(row, Formula, rule.Formula);
    table.item(row, Note)->setToolTip(rule.Note);
    table.item(row, Formula)->setToolTip(rule.Formula);
    table.setText(row, RuleNumber, QString::number(rule.RuleNo));
    showParameters(table, row, rule.ParNo, rule.parameters);
    auto* button = new CTableButton(&table, TableEditorItem::Always);
    table.setItem(row, Choose, button);
    connect(button, &CTableButton::ButtonClickSingal, this, &WinDlgSelectRule::SelectPara);
}

void WinDlgSelectRule::languageChange() {
    setWindowTitle(tr("整定原则设定"));
    const QStringList titles = {tr("一段"), tr("二段"), tr("三段"), tr("四段"), tr("五段")};
    for (int page = 0; page < pages_.size(); ++page) {
        tabWidget_Rule->setTabText(page, titles.value(parts_[page].part - 1));
        pages_[page].checkBox_tbRule1_Valid->setText(tr("本段整定"));
        QTableWidget& table = *pages_[page].table_tdRule1_Rule;
        table.setHorizontalHeaderLabels(
            {tr("选择"), tr("原则描述"), tr("参数描述和参数值"), " ", {}, {}, tr("计算公式")});
        for (const int column : {InUse, Note, Parameters, Choose, Formula})
            table.setColumnWidth(column,
                                 std::max(kWidths[column], table.horizontalHeader()->sectionSizeHint(column) + 8));
        showState(page);
    }
    check_InAllRly->setText(tr("整定规则设定应用于本作业所有保护"));
    check_InAllRly->setToolTip(tr("其他保护采用同样的整定原则和参数组，它们整定哪些段不变"));
    pushButton_Back->setText(tr("确定"));
    pushButton_Cancel->setText(tr("取消"));
    pushButton_Back->setEnabled(session_.isOpen());
    pushButton_Back->setToolTip(session_.isOpen() ? QString() : tr("作业的整定原则正在别处修改，不能改变"));
    fitRows();
}

void WinDlgSelectRule::connectAll() {
    for (int page = 0; page < pages_.size(); ++page) {
        RecordTable* table = pages_[page].table_tdRule1_Rule;
        connect(pages_[page].checkBox_tbRule1_Valid, &QCheckBox::clicked, this,
                &WinDlgSelectRule::CheckBox_Valid_Clicked);
        connect(table, &RecordTable::valueChanged, this, [this, page] { showState(page); });
        // once all columns of a change have their widths
        connect(table->horizontalHeader(), &QHeaderView::sectionResized, table, &QTableView::resizeRowsToContents,
                Qt::QueuedConnection);
    }
    connect(pushButton_Back, &QPushButton::clicked, this, &WinDlgSelectRule::Button_Back_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgSelectRule::Button_Cancel_Clicked);
}

void WinDlgSelectRule::fitRows() {
    for (const Page& page : std::as_const(pages_)) page.table_tdRule1_Rule->resizeRowsToContents();
}

void WinDlgSelectRule::showState(int page) {
    const Page& at = pages_[page];
    int inUse = 0;
    const int rules = at.table_tdRule1_Rule->rowCount();
    for (int row = 0; row < rules; ++row) inUse += at.table_tdRule1_Rule->isChecked(row, InUse);
    at.checkBox_tbRule1_Valid->setToolTip(rules == 0 ? tr("本段没有整定原则") : QString());
    at.inUse->setText(rules == 0  ? tr("本段没有整定原则")
                      : inUse > 0 ? tr("采用 %1 条，共 %2 条").arg(inUse).arg(rules)
                                  : tr("没有采用任何原则，本段不会有定值"));
}

void WinDlgSelectRule::CheckBox_Valid_Clicked() {
    const Page& page = pages_[tabWidget_Rule->currentIndex()];
    page.table_tdRule1_Rule->setEnabled(page.checkBox_tbRule1_Valid->isChecked());
}

void WinDlgSelectRule::SelectPara(int row) {
    RecordTable& table = *pages_[tabWidget_Rule->currentIndex()].table_tdRule1_Rule;
    const int rule = table.text(row, RuleNumber).toInt();
    WinDlgEditAndSelectPara window(caseNo_, rNo_, rule, table.text(row, GroupNumber).toInt(), this);
    window.exec();
    showParameters(table, row, ChosenParNo, parameterLines({rule}).value({rule, ChosenParNo}));
    table.resizeRowToContents(row);
}

QVector<PartChoice> WinDlgSelectRule::formParts() const {
    QVector<PartChoice> parts = parts_;
    for (int page = 0; page < parts.size(); ++page) {
        const RecordTable& table = *pages_[page].table_tdRule1_Rule;
        parts[page].PValid = pages_[page].checkBox_tbRule1_Valid->isChecked();
        for (int row = 0; row < table.rowCount(); ++row) {
            parts[page].rules[row].RValid = table.isChecked(row, InUse);
            parts[page].rules[row].ParNo = table.text(row, GroupNumber).toInt();
        }
    }
    return parts;
}

void WinDlgSelectRule::Button_Back_Clicked() {
    if (!RuleSelection::store(caseNo_, rNo_, formParts(), check_InAllRly->isChecked())) return;
    session_.commit();
    accept();
}

void WinDlgSelectRule::Button_Cancel_Clicked() { reject(); }

void WinDlgSelectRule::reject() {
    if (session_.isOpen()) session_.restore();
    QDialog::reject();
}
