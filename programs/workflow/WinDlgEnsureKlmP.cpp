#include "programs/workflow/WinDlgEnsureKlmP.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>

#include "platform/host/ui/TableHabits.h"
#include "programs/frame/ui/DialogParts.h"
#include "programs/frame/ui/PaintTable.h"
#include "programs/reports/BookViewer.h"
#include "programs/reports/CBookWriter.h"

namespace {

enum Column { Note, New, Old, RuleNo, Columns };

QColor refusedColour(const QWidget& widget) {
    const bool dark = widget.palette().color(QPalette::Base).lightness() < 128;
    return QColor(dark ? 0xff8f85 : 0xb3261e);
}

void mark(QTableWidgetItem& item, bool refused, const QWidget& table, const QString& why) {
    item.setForeground(refused ? QBrush(refusedColour(table)) : QBrush());
    item.setToolTip(refused ? why : QString());
}

}  // namespace

WinDlgEnsureKlmP::WinDlgEnsureKlmP(int rTypeNo, const QString& typeText, int caseNo, const QString& workDir,
                                   QWidget* parent)
    : QDialog(parent),
      groupBox_Position(named<QGroupBox>("groupBox_Position", this)),
      textLabel_gBPos_Type(named<QLabel>("textLabel_gBPos_Type", groupBox_Position)),
      textLabel_gBPos_TypeCode(named<QLabel>("textLabel_gBPos_TypeCode", groupBox_Position)),
      table_gBPos_Pos(new PaintTable(0, 1, groupBox_Position, "table_gBPos_Pos")),
      groupBox_KlmP(named<QGroupBox>("groupBox_KlmP", this)),
      table_gBKlmp_Para(new RecordTable(0, Columns, groupBox_KlmP, "table_gBKlmp_Para")),
      textLabel_Complaint(named<QLabel>("textLabel_Complaint", groupBox_KlmP)),
      pushButton_CalResult(named<QPushButton>("pushButton_CalResult", this)),
      pushButton_Ensure(named<QPushButton>("pushButton_Ensure", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)),
      rTypeNo_(rTypeNo),
      caseNo_(caseNo),
      typeText_(typeText),
      workDir_(workDir),
      parameters_(rTypeNo, caseNo, workDir) {
    setObjectName("WinDlgEnsureKlmP");
    layOut();
    languageChange();
    open();
    connectAll();
}

void WinDlgEnsureKlmP::layOut() {
    auto* type = new QHBoxLayout;
    type->addWidget(textLabel_gBPos_Type);
    type->addWidget(textLabel_gBPos_TypeCode, 1);
    auto* position = new QVBoxLayout(groupBox_Position);
    position->addLayout(type);
    position->addWidget(table_gBPos_Pos);
    auto* values = new QVBoxLayout(groupBox_KlmP);
    values->addWidget(table_gBKlmp_Para);
    values->addWidget(textLabel_Complaint);
    textLabel_Complaint->setWordWrap(true);
    textLabel_Complaint->hide();
    table_gBPos_Pos->setReadOnly(true);
    table_gBPos_Pos->setSelectionMode(QAbstractItemView::NoSelection);  // the painted place is the one shown
    table_gBPos_Pos->horizontalHeader()->setStretchLastSection(true);
    table_gBPos_Pos->paintColumn = 0;
    table_gBKlmp_Para->setColumnHidden(RuleNo, true);
    table_gBKlmp_Para->horizontalHeader()->setSectionResizeMode(Note, QHeaderView::Stretch);
    for (const int column : {New, Old}) table_gBKlmp_Para->setNumberColumn(column);
    auto* sides = new QSplitter(this);
    sides->setChildrenCollapsible(false);
    sides->addWidget(groupBox_Position);
    sides->addWidget(groupBox_KlmP);
    sides->setStretchFactor(1, 1);
    sides->setSizes({280, 620});
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(sides, 1);
    auto* buttons = buttonRow(pushButton_Ensure, pushButton_Cancel);
    buttons->addButton(pushButton_CalResult, QDialogButtonBox::ResetRole);
    pushButton_CalResult->setAutoDefault(false);
    rows->addWidget(buttons);
    host::setTabChain({table_gBPos_Pos, table_gBKlmp_Para, pushButton_CalResult, pushButton_Ensure, pushButton_Cancel});
    resize(920, 520);
}

void WinDlgEnsureKlmP::languageChange() {
    setWindowTitle(tr("灵敏度参量确认"));
    groupBox_Position->setTitle(tr("保护位置"));
    textLabel_gBPos_Type->setText(tr("保护类型:"));
    textLabel_gBPos_TypeCode->setText(typeText_);
    table_gBPos_Pos->setHorizontalHeaderLabels({tr("保护位置")});
    groupBox_KlmP->setTitle(tr("灵敏度校验用参量"));
    table_gBKlmp_Para->setHorizontalHeaderLabels({tr("参量描述"), tr("新参量值"), tr("原参量值"), {}});
    for (const int column : {New, Old})
        table_gBKlmp_Para->setColumnWidth(
            column, qMax(120, table_gBKlmp_Para->horizontalHeader()->sectionSizeHint(column) + 24));
    pushButton_CalResult->setText(tr("故障计算结果浏览"));
    pushButton_Ensure->setText(tr("确定"));
    pushButton_Cancel->setText(tr("取消"));
}

void WinDlgEnsureKlmP::connectAll() {
    // Queued: a refused value takes the current row back, which must come after the mouse has set it.
    connect(table_gBPos_Pos, qOverload<int, int>(&RecordTable::currentChanged), this,
            &WinDlgEnsureKlmP::TablePos_Clicked, Qt::QueuedConnection);
    connect(table_gBKlmp_Para, &RecordTable::valueChanged, this, [this] { complain({}); });
    connect(pushButton_CalResult, &QPushButton::clicked, this, &WinDlgEnsureKlmP::Button_CalResult_Clicked);
    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDlgEnsureKlmP::Button_OK_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgEnsureKlmP::Button_Cancel_Clicked);
}

void WinDlgEnsureKlmP::open() {
    const bool opened = parameters_.open();
    // Without the copy Cancel could not take anything back.
    for (QWidget* part : {static_cast<QWidget*>(table_gBPos_Pos), static_cast<QWidget*>(table_gBKlmp_Para),
                          static_cast<QWidget*>(pushButton_Ensure)})
        part->setEnabled(opened);
    pushButton_Ensure->setToolTip(opened ? QString() : tr("不能保存参量，原因见信息窗口"));
    const auto& places = parameters_.places();
    table_gBPos_Pos->setRowCount(int(places.size()));
    for (int row = 0; row < int(places.size()); ++row) table_gBPos_Pos->setText(row, 0, places[row].label);
    markUnusable();
    if (!places.isEmpty()) showPlace(0);
}

void WinDlgEnsureKlmP::markUnusable() {
    const auto& places = parameters_.places();
    for (int row = 0; row < table_gBPos_Pos->rowCount(); ++row)
        mark(*table_gBPos_Pos->item(row, 0), places[row].lacksValue(), *table_gBPos_Pos,
             tr("有参量没有算出值，其灵敏度没有结果"));
}

void WinDlgEnsureKlmP::markParameters() {
    for (int row = 0; row < table_gBKlmp_Para->rowCount(); ++row) {
        const QString text = table_gBKlmp_Para->text(row, New);
        const auto& stored = parameters_.places()[shown_].parameters[row];
        mark(*table_gBKlmp_Para->item(row, New), !SensitivityParameters::isUsable(text), *table_gBKlmp_Para,
             !stored.isStored       ? tr("没有存储这一参量，不能确认")
             : text == stored.value ? tr("该参量没有算出值")
                                    : tr("参量应为大于零的数值"));
    }
}

void WinDlgEnsureKlmP::showPlace(int row) {
    const QSignalBlocker quiet(table_gBPos_Pos);
    DspPara(row);
    complain(parameters_.places()[row].lacksValue() ? tr("该参量没有算出值") + ": " + lacking().join("，") : QString());
    table_gBPos_Pos->paintRows.assign(PaintTable::maxPaintRows, -1);
    table_gBPos_Pos->paintRows[0] = row;
    table_gBPos_Pos->selectRow(row);
    table_gBPos_Pos->viewport()->update();
}

QStringList WinDlgEnsureKlmP::lacking() const {
    QStringList notes;
    for (const auto& parameter : parameters_.places()[shown_].parameters)
        if (parameter.lacksValue()) notes << parameter.Note;
    return notes;
}

void WinDlgEnsureKlmP::DspPara(int row) {
    shown_ = row;
    const auto& all = parameters_.places()[row].parameters;
    table_gBKlmp_Para->setRowCount(0);
    table_gBKlmp_Para->setRowCount(int(all.size()));
    for (int at = 0; at < int(all.size()); ++at) {
        const QString texts[] = {all[at].Note, all[at].value, all[at].before, QString::number(all[at].RuleNo)};
        for (int column = 0; column < Columns; ++column) table_gBKlmp_Para->setText(at, column, texts[column]);
        table_gBKlmp_Para->item(at, Note)->setToolTip(all[at].Note);
        if (!all[at].isStored) table_gBKlmp_Para->setRowReadOnly(at, true);
    }
    for (const int column : {Note, Old}) table_gBKlmp_Para->setColumnReadOnly(column, true);
    markParameters();
    if (!all.isEmpty()) table_gBKlmp_Para->setCurrentCell(0, New);
}

bool WinDlgEnsureKlmP::SavePara(int row) {
    table_gBKlmp_Para->endEdit();
    QStringList values;
    for (int at = 0; at < table_gBKlmp_Para->rowCount(); ++at) values << table_gBKlmp_Para->text(at, New);
    const int refused = parameters_.SavePara(row, values);
    markParameters();
    if (refused == -1) {
        markUnusable();
        return true;
    }
    if (refused >= 0) {
        complain(tr("参量类型错误或数值小于等于零"));
        editValue(refused);
    }
    return false;
}

void WinDlgEnsureKlmP::editValue(int row) {
    table_gBKlmp_Para->setFocus();
    table_gBKlmp_Para->setCurrentCell(row, New);
}

void WinDlgEnsureKlmP::complain(const QString& text) {
    textLabel_Complaint->setText(text);
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, refusedColour(*this));
    textLabel_Complaint->setPalette(colours);
    textLabel_Complaint->setVisible(!text.isEmpty());
}

// The colours of what is refused are not of the palette.
void WinDlgEnsureKlmP::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() != QEvent::PaletteChange || shown_ < 0) return;
    complain(textLabel_Complaint->text());
    markParameters();
    markUnusable();
}

void WinDlgEnsureKlmP::TablePos_Clicked() {
    const int row = table_gBPos_Pos->currentRow();
    if (row < 0 || row == shown_) return;
    if (SavePara(shown_)) return showPlace(row);
    const QSignalBlocker quiet(table_gBPos_Pos);
    table_gBPos_Pos->selectRow(shown_);
}

void WinDlgEnsureKlmP::Button_OK_Clicked() {
    if (!SavePara(shown_)) return;
    if (parameters_.confirm()) return accept();
    complain(tr("不能保存参量，原因见信息窗口"));
}

void WinDlgEnsureKlmP::Button_Cancel_Clicked() { reject(); }

void WinDlgEnsureKlmP::reject() {
    parameters_.cancel();
    QDialog::reject();
}

void WinDlgEnsureKlmP::Button_CalResult_Clicked() {
    CBookWriter book(caseNo_, rTypeNo_, typeText_, QStringLiteral("灵敏度计算用故障量计算"));
    if (book.WriteKlmBook(workDir_)) showBook(workDir_ + "CalRef.ROT");
}
