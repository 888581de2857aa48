#include "programs/workflow/ui/SettingTable.h"

#include <QHeaderView>
#include <QSet>

#include "platform/host/ui/NumberCell.h"
#include "platform/host/ui/TableHabits.h"

using Content = SettingModel::Content;

/// Draws the cells of a SettingTable: numbers to the right, marks.
class SettingCell : public host::NumberCell {
  public:
    explicit SettingCell(SettingTable* table) : NumberCell(table), table_(table) {}

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        const bool number = table_->model_->content(index.column()).isNumber();
        number ? NumberCell::initStyleOption(option, index) : QStyledItemDelegate::initStyleOption(option, index);
        const int row = table_->shown_->mapToSource(index).row();
        if (table_->isPainted(row, index.column())) CellMarks::adjustPainted(option);
    }

  private:
    SettingTable* table_;
};

namespace {

int givenWidth(Content content) {
    return content.kind == Content::Label ? 100 : content.kind == Content::Unit ? 0 : 80;
}

}  // namespace

SettingTable::SettingTable(QWidget* parent, const char* name)
    : TypingTable(parent), model_(new SettingModel(this)), shown_(new SettingFilter(model_, this)) {
    setObjectName(name);
    setModel(shown_);
    setItemDelegate(new SettingCell(this));
    startTyping();
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    horizontalHeader()->setSortIndicatorClearable(true);
    setSortingEnabled(true);
    new host::TableHabits(this);
    connectAll();
    arrangeColumns();
}

void SettingTable::connectAll() {
    connect(model_, &SettingModel::typed, this, &SettingTable::valueChanged);
    connect(model_, &QAbstractItemModel::modelReset, this, [this] { fitRows(0, model_->rowCount() - 1); });
    connect(model_, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) { fitRows(first, last); });
    connect(model_, &QAbstractItemModel::dataChanged, this, &SettingTable::fitCells);
    connect(shown_, &QAbstractItemModel::rowsInserted, this, &SettingTable::findPaint);
    connect(shown_, &QAbstractItemModel::rowsRemoved, this, &SettingTable::findPaint);
    connect(model_, &QAbstractItemModel::rowsRemoved, this, &SettingTable::findPaint);  // what shows goes before it
    connect(shown_, &QAbstractItemModel::layoutChanged, this, &SettingTable::findPaint);
    connect(shown_, &QAbstractItemModel::modelReset, this, &SettingTable::findPaint);
    const auto place = [this](const QModelIndex& index) { return shown_->mapToSource(index); };
    connect(this, &QTableView::clicked, this,
            [=, this](const QModelIndex& index) { emit cellClicked(place(index).row(), index.column()); });
    connect(this, &QTableView::doubleClicked, this,
            [=, this](const QModelIndex& index) { emit cellDoubleClicked(place(index).row(), index.column()); });
}

void SettingTable::setColumns(const SettingColumns& columns) {
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    model_->setColumns(columns);
    arrangeColumns();
}

// The unit stands behind the name, whatever its number.
void SettingTable::arrangeColumns() {
    QHeaderView* header = horizontalHeader();
    for (int column = 0; column < model_->columnCount(); ++column) {
        header->moveSection(header->visualIndex(column), column);
        const Content::Kind kind = model_->content(column).kind;
        setColumnHidden(column, kind == Content::Relay || kind == Content::Cdz);
    }
    header->moveSection(header->visualIndex(model_->unitColumn()), SettingModel::FirstValue);
    fitted_.assign(size_t(model_->columnCount()), 0);
    for (int column = 0; column < model_->columnCount(); ++column)
        widen(column, std::max(givenWidth(model_->content(column)), header->sectionSizeHint(column)));
    fitRows(0, model_->rowCount() - 1);
}

void SettingTable::widen(int column, int wanted) {
    if (isColumnHidden(column) || wanted <= fitted_[size_t(column)]) return;
    fitted_[size_t(column)] = wanted;
    setColumnWidth(column, wanted);
}

void SettingTable::fitRows(int firstRow, int lastRow) {
    if (firstRow <= lastRow) fitCells(model_->index(firstRow, 0), model_->index(lastRow, int(fitted_.size()) - 1));
}

void SettingTable::fitCells(const QModelIndex& first, const QModelIndex& last) {
    for (int column = first.column(); column <= last.column(); ++column)
        widen(column, wantedWidth(column, first.row(), last.row()));
}

// Digits are all of one width, so the longest number is the widest; of places and names each is measured once.
int SettingTable::wantedWidth(int column, int firstRow, int lastRow) const {
    const bool number = model_->content(column).isNumber();
    QString longest;
    int width = 0;
    QSet<QString> seen;
    for (int row = firstRow; row <= lastRow; ++row) {
        const QString text = model_->index(row, column).data().toString();
        if (number && text.size() > longest.size()) longest = text;
        if (number || text.isEmpty() || seen.contains(text)) continue;
        seen.insert(text);
        width = std::max(width, fontMetrics().horizontalAdvance(text));
    }
    if (number) width = fontMetrics().horizontalAdvance(longest);
    const bool marked = model_->mayWarn(model_->content(column));
    return width + fontMetrics().height() + (marked ? style()->pixelMetric(QStyle::PM_SmallIconSize) + 8 : 0);
}

int SettingTable::row() const { return shown_->mapToSource(currentIndex()).row(); }
int SettingTable::column() const { return currentIndex().column(); }
int SettingTable::currentRelay() const { return row() < 0 ? -1 : rows()[row()].RNo; }

void SettingTable::setCurrentCell(int row, int column) {
    const QModelIndex at = shown_->mapFromSource(model_->index(row, column));
    if (at.isValid()) setCurrentIndex(at);
}

QString SettingTable::text(int row, int column) const { return model_->index(row, column).data().toString(); }

void SettingTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    emit currentChanged(shown_->mapToSource(current).row(), current.column());
}

void SettingTable::paintRelay(int rNo, int column, bool allRows) {
    paintedRelay_ = rNo;
    paintedColumn_ = column;
    paintsAllRows_ = allRows;
    findPaint();
}

void SettingTable::clearPaint() { paintRelay(-1, -1, false); }

void SettingTable::findPaint() {
    std::vector<int> marked;
    for (int at = 0; paintedRelay_ >= 0 && at < shown_->rowCount(); ++at) {
        const int row = shown_->mapToSource(shown_->index(at, 0)).row();
        if (rows()[row].RNo == paintedRelay_) marked.push_back(row);
        if (!marked.empty() && !paintsAllRows_) break;
    }
    paint(marked, paintedColumn_);
    viewport()->update();
}

void SettingTable::setStation(const QString& station) {
    SettingOrder order = shown_->order();
    order.station = station;
    shown_->setOrder(order);
}

void SettingTable::setOnlyChanged(bool only) {
    SettingOrder order = shown_->order();
    order.onlyChanged = only;
    shown_->setOrder(order);
}

QStringList SettingTable::stations() const {
    QSet<QString> found;
    for (const CaseSettingRow& row : rows())
        if (!row.station.isEmpty()) found.insert(row.station);
    QStringList names(found.begin(), found.end());
    std::sort(names.begin(), names.end(), [](const auto& a, const auto& b) { return a.localeAwareCompare(b) < 0; });
    return names;
}
