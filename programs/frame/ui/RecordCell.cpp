#include "programs/frame/ui/RecordCell.h"

#include <QLineEdit>

#include "platform/host/ui/NumberCell.h"
#include "programs/frame/ui/RecordTable.h"
#include "programs/frame/ui/TableEditorItem.h"

namespace {

TableEditorItem* ownEditor(const RecordTable* table, const QModelIndex& index) {
    return dynamic_cast<TableEditorItem*>(table->item(index.row(), index.column()));
}

}  // namespace

RecordCell::RecordCell(RecordTable* table) : QStyledItemDelegate(table), table_(table) {}

QWidget* RecordCell::createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    if (TableEditorItem* own = ownEditor(table_, index)) return own->createEditor(parent);
    if (table_->isNumberColumn(index.column())) return host::NumberCell::numberEdit(parent);
    return QStyledItemDelegate::createEditor(parent, option, index);
}

void RecordCell::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (const TableEditorItem* own = ownEditor(table_, index)) return own->showIn(editor);
    QStyledItemDelegate::setEditorData(editor, index);
}

void RecordCell::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    const QVariant before = index.data();
    if (TableEditorItem* own = ownEditor(table_, index))
        own->takeFrom(editor);
    else
        QStyledItemDelegate::setModelData(editor, model, index);
    if (index.data() != before) emit table_->valueChanged(index.row(), index.column());
}

bool RecordCell::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    const QVariant before = index.data(Qt::CheckStateRole);
    const bool taken = QStyledItemDelegate::editorEvent(event, model, option, index);
    if (index.data(Qt::CheckStateRole) != before) emit table_->valueChanged(index.row(), index.column());
    return taken;
}

void RecordCell::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (table_->isNumberColumn(index.column())) option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
    table_->adjustStyle(option, index);
}
