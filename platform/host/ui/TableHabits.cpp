#include "platform/host/ui/TableHabits.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMap>
#include <QSettings>
#include <QTableView>

namespace host {

namespace {

QString quoted(const QString& text) {
    if (!text.contains('\t') && !text.contains('\n')) return text;
    return '"' + QString(text).replace('"', "\"\"") + '"';
}

}  // namespace

QSettings tableSettings() { return QSettings(QSettings::IniFormat, QSettings::UserScope, "morvane", "tables"); }

QString tabbedLine(const QStringList& cells) {
    QStringList texts;
    for (const QString& cell : cells) texts << quoted(cell);
    return texts.join('\t');
}

TableHabits::TableHabits(QTableView* table) : QObject(table), table_(table) {
    table->installEventFilter(this);
    connect(table->horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
        if (QGuiApplication::mouseButtons() != Qt::NoButton) changed_ = true;
    });
}

QString TableHabits::selectedText() const {
    QMap<int, QMap<int, QString>> rows;
    if (!table_->selectionModel()) return {};
    for (const QModelIndex& index : table_->selectionModel()->selectedIndexes())
        if (!table_->isColumnHidden(index.column()) && !table_->isRowHidden(index.row()))
            rows[table_->verticalHeader()->visualIndex(index.row())]
                [table_->horizontalHeader()->visualIndex(index.column())] = index.data().toString();
    QStringList lines;
    for (const auto& row : std::as_const(rows)) lines << tabbedLine(row.values());
    return lines.join('\n');
}

bool TableHabits::eventFilter(QObject* watched, QEvent* event) {
    if (watched != table_) return false;
    if (event->type() == QEvent::Show) restoreWidths();
    if (event->type() == QEvent::Hide) saveWidths();
    if (event->type() != QEvent::KeyPress || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) return false;
    QGuiApplication::clipboard()->setText(selectedText());
    return true;
}

QString TableHabits::key() const {
    return QString(table_->window()->metaObject()->className()) + '/' + table_->objectName();
}

void TableHabits::restoreWidths() {
    const QVariantList widths = tableSettings().value(key()).toList();
    if (changed_ || table_->objectName().isEmpty() || !table_->model() ||
        widths.size() != table_->model()->columnCount())
        return;
    for (int column = 0; column < widths.size(); ++column)
        if (const int width = widths[column].toInt(); width > 0 && !table_->isColumnHidden(column))
            table_->setColumnWidth(column, width);
}

void TableHabits::saveWidths() const {
    if (!changed_ || table_->objectName().isEmpty() || !table_->model()) return;
    QVariantList widths;
    for (int column = 0; column < table_->model()->columnCount(); ++column) widths << table_->columnWidth(column);
    tableSettings().setValue(key(), widths);
}

void setTabChain(std::initializer_list<QWidget*> widgets) {
    QWidget* before = nullptr;
    for (QWidget* widget : widgets) {
        if (before) QWidget::setTabOrder(before, widget);
        before = widget;
    }
}

}  // namespace host
