#include "programs/workflow/WinDlgEditAndSelectPara.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "programs/frame/ui/DialogParts.h"
#include "programs/frame/ui/RecordTable.h"
#include "programs/workflow/PickerResults.h"

namespace {

constexpr int kParameterTable = 103;
enum Column { Tick, Number, FirstValue };
constexpr int kStored = Qt::UserRole;  ///< number of a group in the database, on its number cell

void setWidths(QTableWidget& table) {
    for (int column = 0; column < table.columnCount(); ++column)
        table.setColumnWidth(
            column, std::max(column < FirstValue ? 60 : 70, table.horizontalHeader()->sectionSizeHint(column) + 12));
}

}  // namespace

WinDlgEditAndSelectPara::WinDlgEditAndSelectPara(int caseNo, int rNo, int ruleNo, int parNo, QWidget* parent)
    : QDialog(parent),
      table_Para(new RecordTable(this, "table_Para")),
      pushButton_Add(named<QPushButton>("pushButton_Add", this)),
      pushButton_Delete(named<QPushButton>("pushButton_Delete", this)),
      pushButton_Ensure(named<QPushButton>("pushButton_Ensure", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)),
      rule_(named<QLabel>("textLabel_Rule", this)),
      scope_(new QLabel(this)),
      caseNo_(caseNo),
      rNo_(rNo),
      ruleNo_(ruleNo),
      parNo_(parNo),
      before_(ParameterGroups::read(ruleNo, parNo)),
      session_("WinDlgEditAndSelectPara", {{"PARAINF", kParameterTable}}, "_TEM") {
    setObjectName("WinDlgEditAndSelectPara");
    ChosenParNo = parNo;
    layOut();
    open();
    languageChange();
    connectAll();
}

void WinDlgEditAndSelectPara::layOut() {
    rule_->setWordWrap(true);
    scope_->setWordWrap(true);
    table_Para->verticalHeader()->hide();
    auto* edit = new QHBoxLayout;
    edit->addWidget(pushButton_Add);
    edit->addWidget(pushButton_Delete);
    edit->addStretch();
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(rule_);
    rows->addWidget(table_Para, 1);
    rows->addLayout(edit);
    rows->addWidget(scope_);
    rows->addWidget(buttonRow(pushButton_Ensure, pushButton_Cancel));
    for (QPushButton* button : {pushButton_Add, pushButton_Delete}) button->setAutoDefault(false);
    resize(std::clamp(180 + 84 * int(before_.names.size()), 480, 900), 360);
}

void WinDlgEditAndSelectPara::languageChange() {
    setWindowTitle(tr("参数组选择"));
    rule_->setText(before_.Note + (before_.Formula.isEmpty() ? QString() : "\n" + before_.Formula));
    scope_->setText(tr("参数组属于整定原则，修改后对所有作业的保护都有效。"));
    table_Para->setHorizontalHeaderLabels(QStringList{tr("选择"), tr("参数组号")} + before_.names);
    setWidths(*table_Para);
    pushButton_Add->setText(tr("增加"));
    pushButton_Delete->setText(tr("删除"));
    pushButton_Ensure->setText(tr("确定"));
    pushButton_Cancel->setText(tr("取消"));
    showButtons();
}

void WinDlgEditAndSelectPara::connectAll() {
    connect(table_Para, &RecordTable::valueChanged, this, &WinDlgEditAndSelectPara::CheckBox_Clicked);
    connect(pushButton_Add, &QPushButton::clicked, this, &WinDlgEditAndSelectPara::PushButton_Add_Clicked);
    connect(pushButton_Delete, &QPushButton::clicked, this, &WinDlgEditAndSelectPara::PushButton_Delete_Clicked);
    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDlgEditAndSelectPara::Button_OK_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgEditAndSelectPara::Button_Cancel_Clicked);
}

void WinDlgEditAndSelectPara::open() {
    table_Para->setColumnCount(FirstValue + int(before_.names.size()));
    for (int column = Number; column < table_Para->columnCount(); ++column) table_Para->setNumberColumn(column);
    for (const ParameterGroup& group : std::as_const(before_.groups)) addRow(group);
    if (table_Para->rowCount() > 0)
        table_Para->setCurrentCell(0, table_Para->columnCount() > FirstValue ? FirstValue : 0);
    // without the copy Cancel could not take anything back
    if (!session_.open()) table_Para->setEnabled(false);
}

void WinDlgEditAndSelectPara::addRow(const ParameterGroup& group) {
    const int row = table_Para->rowCount();
    table_Para->insertRow(row);
    table_Para->setCheck(row, Tick, group.chosen);
    table_Para->setText(row, Number, group.number);
    table_Para->item(row, Number)->setData(kStored, group.stored);
    for (int at = 0; at < before_.names.size(); ++at) table_Para->setText(row, FirstValue + at, group.values.value(at));
}

void WinDlgEditAndSelectPara::showButtons() {
    const bool editable = session_.isOpen();
    const QString blocked = editable ? QString() : tr("参数组正在别处修改，不能改变");
    const QString none = before_.names.isEmpty() ? tr("该整定原则没有参数") : QString();
    pushButton_Add->setEnabled(editable && none.isEmpty());
    pushButton_Add->setToolTip(editable ? none : blocked);
    pushButton_Delete->setEnabled(editable && table_Para->rowCount() > 0);
    pushButton_Delete->setToolTip(editable && table_Para->rowCount() == 0 ? tr("没有参数组") : blocked);
    pushButton_Ensure->setEnabled(editable);
    pushButton_Ensure->setToolTip(blocked);
}

void WinDlgEditAndSelectPara::PushButton_Add_Clicked() {
    table_Para->endEdit();
    const int last = table_Para->rowCount() - 1;
    addRow({0, QString::number(table_Para->text(last, Number).toInt() + 1), {}, false});
    table_Para->setCurrentCell(last + 1, FirstValue);
    table_Para->setFocus();
    showButtons();
}

void WinDlgEditAndSelectPara::PushButton_Delete_Clicked() {
    table_Para->endEdit();
    const int row = table_Para->currentRow();
    if (row < 0 || !agreesToDelete(row)) return;
    table_Para->removeRow(row);
    for (int at = 0; at < table_Para->rowCount(); ++at) table_Para->setText(at, Number, QString::number(at + 1));
    showButtons();
}

bool WinDlgEditAndSelectPara::agreesToDelete(int row) {
    const int stored = table_Para->item(row, Number)->data(kStored).toInt();
    if (stored == 0) return true;
    const auto users = ParameterGroups::usersFrom(ruleNo_, stored, caseNo_, rNo_);
    if (users.relays == 0) return true;
    const QString text =
        tr("有 %1 个作业的 %2 套保护采用第 %3 组或其后的参数组。删除后各组重新编号，它们将采用别的参数。"
           "\n确定删除吗？")
            .arg(users.cases)
            .arg(users.relays)
            .arg(stored);
    return QMessageBox::question(this, windowTitle(), text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) ==
           QMessageBox::Yes;
}

void WinDlgEditAndSelectPara::CheckBox_Clicked(int row, int col) {
    if (col != Tick || !table_Para->isChecked(row, Tick)) return;
    for (int other = 0; other < table_Para->rowCount(); ++other)
        if (other != row) table_Para->setCheck(other, Tick, false);
}

ParameterGroups WinDlgEditAndSelectPara::formGroups() const {
    ParameterGroups form = before_;
    form.groups.clear();
    for (int row = 0; row < table_Para->rowCount(); ++row) {
        ParameterGroup group;
        group.number = table_Para->text(row, Number);
        for (int at = 0; at < form.names.size(); ++at) group.values << table_Para->text(row, FirstValue + at);
        group.chosen = table_Para->isChecked(row, Tick);
        form.groups << group;
    }
    return form;
}

void WinDlgEditAndSelectPara::Button_OK_Clicked() {
    table_Para->endEdit();
    const ParameterGroups form = formGroups();
    if (!form.check() || !form.store(ruleNo_)) return;
    ChosenParNo = form.chosen();
    session_.commit();
    accept();
}

void WinDlgEditAndSelectPara::Button_Cancel_Clicked() { reject(); }

void WinDlgEditAndSelectPara::reject() {
    ChosenParNo = parNo_;
    if (session_.isOpen()) session_.restore();
    QDialog::reject();
}
