#include "programs/frame/ui/RecordTable.h"

#include "platform/host/ui/TableHabits.h"
#include "programs/frame/ui/RecordCell.h"
#include "programs/frame/ui/TableEditorItem.h"

RecordTable::RecordTable(QWidget* parent, const char* name) : TypingTable(parent) { setUp(name); }

RecordTable::RecordTable(int rows, int columns, QWidget* parent, const char* name)
    : TypingTable(rows, columns, parent) {
    setUp(name);
}

void RecordTable::setUp(const char* name) {
    setObjectName(name ? name : "RecordTable");
    setItemDelegate(new RecordCell(this));
    startTyping();
    new host::TableHabits(this);
}

QTableWidgetItem* RecordTable::itemAt(int row, int column) {
    if (QTableWidgetItem* found = item(row, column)) return found;
    auto* made = new QTableWidgetItem;
    QTableWidget::setItem(row, column, made);
    return made;
}

QString RecordTable::text(int row, int column) const {
    const QTableWidgetItem* found = item(row, column);
    return found ? found->text() : QString();
}

void RecordTable::setText(int row, int column, const QString& text) { itemAt(row, column)->setText(text); }

void RecordTable::setItem(int row, int column, QTableWidgetItem* cell) {
    openEditorOf(row, column, false);
    QTableWidget::setItem(row, column, cell);
    if (const auto* own = dynamic_cast<TableEditorItem*>(cell); own && own->editType() == TableEditorItem::Always)
        openEditorOf(row, column, true);
}

void RecordTable::openEditorOf(int row, int column, bool open) {
    QTableWidgetItem* cell = item(row, column);
    if (!cell || !dynamic_cast<TableEditorItem*>(cell)) return;
    if (open && !isPersistentEditorOpen(cell)) openPersistentEditor(cell);
    if (!open && isPersistentEditorOpen(cell)) closePersistentEditor(cell);
}

void RecordTable::setCheck(int row, int column, bool checked, const QString& text) {
    QTableWidgetItem* cell = itemAt(row, column);
    cell->setFlags((cell->flags() | Qt::ItemIsUserCheckable) & ~Qt::ItemIsEditable);
    cell->setText(text);
    cell->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
}

bool RecordTable::isChecked(int row, int column) const {
    const QTableWidgetItem* found = item(row, column);
    return found && found->checkState() == Qt::Checked;
}

void RecordTable::setReadOnly(bool readOnly) {
    setEditTriggers(readOnly ? EditTriggers(NoEditTriggers)
                             : DoubleClicked | EditKeyPressed | AnyKeyPressed | SelectedClicked);
}

void RecordTable::setRowReadOnly(int row, bool readOnly) {
    for (int column = 0; column < columnCount(); ++column)
        itemAt(row, column)->setFlags(itemAt(row, column)->flags().setFlag(Qt::ItemIsEditable, !readOnly));
}

void RecordTable::setColumnReadOnly(int column, bool readOnly) {
    for (int row = 0; row < rowCount(); ++row)
        itemAt(row, column)->setFlags(itemAt(row, column)->flags().setFlag(Qt::ItemIsEditable, !readOnly));
}

void RecordTable::setNumberColumn(int column, bool numbers) {
    if (numbers)
        numberColumns_ << column;
    else
        numberColumns_.remove(column);
    viewport()->update();
}

void RecordTable::selectWholeRows() {
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
}

void RecordTable::selectRow(int row) {
    if (row < 0 || row >= rowCount()) return;
    int column = 0;
    while (column < columnCount() - 1 && isColumnHidden(column)) ++column;
    setCurrentCell(row, column);
    QTableWidget::selectRow(row);
    scrollTo(model()->index(row, column));
}

void RecordTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableWidget::currentChanged(current, previous);
    const auto follows = [this](const QModelIndex& index) {
        const auto* own = index.isValid() ? dynamic_cast<TableEditorItem*>(item(index.row(), index.column())) : nullptr;
        return own && own->editType() == TableEditorItem::WhenCurrent;
    };
    if (follows(previous)) openEditorOf(previous.row(), previous.column(), false);
    if (follows(current)) openEditorOf(current.row(), current.column(), true);
    emit currentChanged(current.row(), current.column());
}
