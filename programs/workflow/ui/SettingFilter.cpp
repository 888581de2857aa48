#include "programs/workflow/ui/SettingFilter.h"

#include <QHash>
#include <cmath>
#include <limits>

namespace {

using Content = SettingModel::Content;

/// Texts that are no numbers come first.
double number(double value) { return std::isnan(value) ? -std::numeric_limits<double>::infinity() : value; }

/// A setting that had no value changed more than any other.
double share(const std::optional<SettingChange>& change) {
    return !change ? 0 : change->share.value_or(std::numeric_limits<double>::infinity());
}

/// Places of texts in their order; equal ones have the same.
template <class TextOf>
QVector<double> ranks(const QVector<CaseSettingRow>& rows, TextOf textOf) {
    QHash<QString, double> rank;
    for (const CaseSettingRow& row : rows) rank.insert(textOf(row), 0);
    QStringList texts = rank.keys();
    std::sort(texts.begin(), texts.end(), [](const auto& a, const auto& b) { return a.localeAwareCompare(b) < 0; });
    for (qsizetype at = 0; at < texts.size(); ++at) rank[texts[at]] = double(at);
    QVector<double> keys;
    for (const CaseSettingRow& row : rows) keys << rank.value(textOf(row));
    return keys;
}

}  // namespace

SettingFilter::SettingFilter(SettingModel* settings, QObject* parent)
    : QSortFilterProxyModel(parent), settings_(settings) {
    // before the base hears of them
    const auto forget = [this] { keys_.clear(); };
    connect(settings, &QAbstractItemModel::modelReset, this, forget);
    connect(settings, &QAbstractItemModel::rowsInserted, this, forget);
    connect(settings, &QAbstractItemModel::rowsRemoved, this, forget);
    connect(settings, &QAbstractItemModel::dataChanged, this, forget);
    setSourceModel(settings);
}

void SettingFilter::setOrder(const SettingOrder& order) {
    const bool another = order != order_;
    order_ = order;
    apply();
    if (another) emit orderChanged(order_);
}

void SettingFilter::sort(int column, Qt::SortOrder direction) {
    SettingOrder order = order_;
    order.sorted = column >= 0;
    order.key = settings_->content(std::max(column, 0));
    order.direction = direction;
    setOrder(order);
}

// The base sorts by the first column in name only, which no change of a value touches.
void SettingFilter::apply() {
    keys_.clear();
    const int column = order_.sorted ? 0 : -1;
    const Qt::SortOrder direction = order_.sorted ? order_.direction : Qt::AscendingOrder;
    if (sortColumn() == column && sortOrder() == direction) return invalidate();
    invalidateFilter();
    QSortFilterProxyModel::sort(column, direction);
}

bool SettingFilter::showsLabel(int row) const {
    const auto relay = [this](int at) { return settings_->rows()[mapToSource(index(at, 0)).row()].RNo; };
    return row == 0 || relay(row) != relay(row - 1);
}

QVariant SettingFilter::data(const QModelIndex& index, int role) const {
    if (index.column() != SettingModel::Label || role != Qt::DisplayRole)
        return QSortFilterProxyModel::data(index, role);
    return showsLabel(index.row()) ? settings_->rows()[mapToSource(index).row()].label : QString();
}

// The base asks for a column through the first row and so gives no heads when all rows are filtered away.
QVariant SettingFilter::headerData(int section, Qt::Orientation orientation, int role) const {
    return orientation == Qt::Horizontal ? settings_->headerData(section, orientation, role)
                                         : QAbstractProxyModel::headerData(section, orientation, role);
}

bool SettingFilter::setData(const QModelIndex& index, const QVariant& value, int role) {
    typing_ = true;
    const bool taken = QSortFilterProxyModel::setData(index, value, role);
    typing_ = false;
    return taken;
}

bool SettingFilter::filterAcceptsRow(int row, const QModelIndex&) const {
    if (typing_) return true;
    if (!order_.station.isEmpty() && settings_->rows()[row].station != order_.station) return false;
    return !order_.onlyChanged || settings_->isChanged(row);
}

QVector<double> SettingFilter::keys() const {
    const QVector<CaseSettingRow>& rows = settings_->rows();
    if (order_.key.kind == Content::Label) return ranks(rows, [](const auto& row) { return row.label; });
    if (order_.key.kind == Content::Name) return ranks(rows, [](const auto& row) { return row.DspCdz; });
    QVector<double> keys;
    for (int row = 0; row < rows.size(); ++row) switch (order_.key.kind) {
            case Content::New:
                keys << number(settings_->newNumber(row, order_.key.part));
                break;
            case Content::Old:
                keys << number(settings_->oldNumber(row, order_.key.part));
                break;
            case Content::Change:
                keys << share(settings_->change(row, order_.key.part));
                break;
            case Content::Unit:
                keys << rows[row].VType;
                break;
            default:
                keys << row;
        }
    return keys;
}

bool SettingFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    if (keys_.isEmpty()) keys_ = keys();
    const double a = keys_[left.row()], b = keys_[right.row()];
    if (a != b) return a < b;
    return order_.direction == Qt::AscendingOrder ? left.row() < right.row() : left.row() > right.row();
}
