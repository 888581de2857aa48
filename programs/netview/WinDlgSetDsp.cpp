#include "programs/netview/WinDlgSetDsp.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "platform/host/ui/TableHabits.h"
#include "programs/frame/ui/CMorvaneObject.h"
#include "programs/frame/ui/DialogParts.h"

namespace {

using DisplayConfiguration::Row;

constexpr int kDisplayTable = 158;
enum Column { Name, Number, Key, Columns };

QTableWidgetItem* fixed(const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return item;
}

void setNumber(QTableWidget& table, int row, int number) {
    table.item(row, Name)->setCheckState(number > 0 ? Qt::Checked : Qt::Unchecked);
    table.item(row, Number)->setText(number > 0 ? QString::number(number) : QString());
}

void fill(QTableWidget& table, const QVector<Row>& rows) {
    table.setRowCount(0);
    table.setRowCount(int(rows.size()));
    for (int row = 0; row < table.rowCount(); ++row) {
        table.setItem(row, Name, fixed(rows[row].name));
        table.setItem(row, Number, fixed({}));
        table.item(row, Number)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        table.setItem(row, Key, fixed(rows[row].key));
        setNumber(table, row, rows[row].number);
    }
}

QVector<Row> rowsOf(const QTableWidget& table) {
    QVector<Row> rows;
    for (int row = 0; row < table.rowCount(); ++row)
        rows.append(
            {table.item(row, Name)->text(), table.item(row, Number)->text().toInt(), table.item(row, Key)->text()});
    return rows;
}

void setHeads(QTableWidget& table, const QString& name, const QString& number) {
    table.setHorizontalHeaderLabels({name, number, {}});
    table.setColumnWidth(Number, table.horizontalHeader()->sectionSizeHint(Number) + 24);
}

void toggle(QTableWidget& table, int row) {
    QVector<Row> rows = rowsOf(table);
    DisplayConfiguration::toggle(rows, row);
    for (int at = 0; at < table.rowCount(); ++at) setNumber(table, at, rows[at].number);
}

void setUp(QTableWidget& table) {
    table.setColumnCount(Columns);
    table.setColumnHidden(Key, true);
    table.verticalHeader()->hide();
    table.horizontalHeader()->setHighlightSections(false);
    table.horizontalHeader()->setSectionResizeMode(Name, QHeaderView::Stretch);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.setTabKeyNavigation(false);
    new host::TableHabits(&table);
}

}  // namespace

WinDlgSetDsp::WinDlgSetDsp(QWidget* parent)
    : QDialog(parent),
      radioButton_RlySet(named<QRadioButton>("radioButton_RlySet", this)),
      radioButton_RlyDz(named<QRadioButton>("radioButton_RlyDz", this)),
      radioButton_NoDsp(named<QRadioButton>("radioButton_NoDsp", this)),
      checkBox_DspAss(named<QCheckBox>("checkBox_DspAss", this)),
      checkBox_DspLoc(named<QCheckBox>("checkBox_DspLoc", this)),
      table_RlyType(named<QTableWidget>("table_RlyType", this)),
      table_RlyDz(named<QTableWidget>("table_RlyDz", this)),
      pushButton_Ensure(named<QPushButton>("pushButton_Ensure", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)),
      session_("WinDlgSetDsp", {{"RLY_RLYDSP", kDisplayTable}}, "_TEM") {
    setObjectName("WinDlgSetDsp");
    setUp(*table_RlyType);
    setUp(*table_RlyDz);
    layOut();
    languageChange();
    open();
    connectAll();
}

void WinDlgSetDsp::layOut() {
    auto* kinds = new QHBoxLayout;
    for (QRadioButton* button : {radioButton_RlySet, radioButton_RlyDz, radioButton_NoDsp}) kinds->addWidget(button);
    kinds->addStretch();
    auto* options = new QHBoxLayout;
    for (QCheckBox* box : {checkBox_DspAss, checkBox_DspLoc}) options->addWidget(box);
    options->addStretch();
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(kinds);
    rows->addLayout(options);
    rows->addWidget(table_RlyType, 3);
    rows->addWidget(table_RlyDz, 2);
    rows->addWidget(buttonRow(pushButton_Ensure, pushButton_Cancel));
    setMinimumSize(340, 420);
    resize(400, 600);
}

void WinDlgSetDsp::languageChange() {
    setWindowTitle(tr("保护显示配置"));
    radioButton_RlySet->setText(tr("保护配置"));
    radioButton_RlyDz->setText(tr("保护定值"));
    radioButton_NoDsp->setText(tr("不显示"));
    checkBox_DspAss->setText(tr("提示保护配合"));
    checkBox_DspLoc->setText(tr("显示保护类型"));
    setHeads(*table_RlyType, tr("保护类型"), tr("保护显示顺序"));
    setHeads(*table_RlyDz, tr("定值名称"), tr("定值显示顺序"));
    pushButton_Ensure->setText(tr("确定"));
    pushButton_Cancel->setText(tr("取消"));
}

void WinDlgSetDsp::connectAll() {
    connect(radioButton_NoDsp, &QRadioButton::clicked, this, &WinDlgSetDsp::RadioButtonNoDsp_chlicked);
    connect(radioButton_RlySet, &QRadioButton::clicked, this, &WinDlgSetDsp::RadioButtonRlySet_chlicked);
    connect(radioButton_RlyDz, &QRadioButton::clicked, this, &WinDlgSetDsp::RadioButtonRlyDz_chlicked);
    connect(table_RlyType, &QTableWidget::cellClicked, this, &WinDlgSetDsp::TableRType_clicked);
    connect(table_RlyType, &QTableWidget::currentCellChanged, this, &WinDlgSetDsp::showType);
    connect(table_RlyDz, &QTableWidget::cellClicked, this, &WinDlgSetDsp::TableRlyDz_clicked);
    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDlgSetDsp::PushButton_Ensure_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgSetDsp::PushButton_Cancel_Clicked);
    table_RlyType->installEventFilter(this);
    table_RlyDz->installEventFilter(this);
}

void WinDlgSetDsp::open() {
    fill(*table_RlyType, DisplayConfiguration::types());
    if (table_RlyType->rowCount() > 0) {
        table_RlyType->selectRow(0);
        iCurRType = table_RlyType->item(0, Key)->text().toInt();
        fill(*table_RlyDz, DisplayConfiguration::settings(iCurRType));
    }
    const DisplayConfiguration::Options options = DisplayConfiguration::options();
    radioButton_NoDsp->setChecked(options.AllDsp == 0);
    radioButton_RlySet->setChecked(options.AllDsp == 1);
    radioButton_RlyDz->setChecked(options.AllDsp == 2);
    checkBox_DspAss->setChecked(options.RlyAss);
    checkBox_DspLoc->setChecked(options.RlyLoc);
    // without the copy Cancel could not take anything back
    if (session_.open()) return;
    for (QWidget* widget : {static_cast<QWidget*>(table_RlyType), static_cast<QWidget*>(table_RlyDz),
                            static_cast<QWidget*>(pushButton_Ensure)})
        widget->setEnabled(false);
}

bool WinDlgSetDsp::eventFilter(QObject* watched, QEvent* event) {
    const bool space = event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
    auto* table = space ? qobject_cast<QTableWidget*>(watched) : nullptr;
    if (!table || table->currentRow() < 0) return QDialog::eventFilter(watched, event);
    table == table_RlyType ? TableRType_clicked(table->currentRow(), Name)
                           : TableRlyDz_clicked(table->currentRow(), Name);
    return true;
}

void WinDlgSetDsp::RadioButtonNoDsp_chlicked() { radioButton_NoDsp->setChecked(true); }
void WinDlgSetDsp::RadioButtonRlySet_chlicked() { radioButton_RlySet->setChecked(true); }
void WinDlgSetDsp::RadioButtonRlyDz_chlicked() { radioButton_RlyDz->setChecked(true); }

void WinDlgSetDsp::TableRType_clicked(int row, int column) {
    table_RlyType->selectRow(row);
    if (column == Name) toggle(*table_RlyType, row);
    showType(row);
}

void WinDlgSetDsp::TableRlyDz_clicked(int row, int column) {
    if (column == Name) toggle(*table_RlyDz, row);
}

void WinDlgSetDsp::showType(int row) {
    const int type = row < 0 ? iCurRType : table_RlyType->item(row, Key)->text().toInt();
    if (type == iCurRType) return;
    if (iCurRType != 0 && !DisplayConfiguration::storeSettings(iCurRType, rowsOf(*table_RlyDz))) return;
    iCurRType = type;
    fill(*table_RlyDz, DisplayConfiguration::settings(type));
}

DisplayConfiguration::Options WinDlgSetDsp::chosen() const {
    const int kind = radioButton_RlySet->isChecked() ? 1 : radioButton_RlyDz->isChecked() ? 2 : 0;
    return {kind, checkBox_DspAss->isChecked(), checkBox_DspLoc->isChecked()};
}

void WinDlgSetDsp::PushButton_Ensure_Clicked() {
    const DisplayConfiguration::Options options = chosen();
    if (!DisplayConfiguration::store(iCurRType, rowsOf(*table_RlyDz), rowsOf(*table_RlyType), options)) return;
    CMorvaneObject::iRlyDspAss = options.RlyAss;
    CMorvaneObject::iRlyDspLoc = options.RlyLoc;
    session_.commit();
    accept();
}

void WinDlgSetDsp::PushButton_Cancel_Clicked() { reject(); }

void WinDlgSetDsp::reject() {
    if (session_.isOpen()) session_.restore();
    QDialog::reject();
}
