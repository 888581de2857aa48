#include "programs/workflow/ui/SettingFilter.h"

#include <limits>

namespace {

using Content = SettingModel::Content;

template <class Value>
int three(const Value& left, const Value& right) {
    return left < right ? -1 : right < left ? 1 : 0;
}

/// Texts that are no numbers come first.
double number(const QString& text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && value == value ? value : -std::numeric_limits<double>::infinity();
}

/// A setting that had no value changed more than any other.
double share(const std::optional<SettingChange>& change) {
    return !change ? 0 : change->share.value_or(std::numeric_limits<double>::infinity());
}

}  // namespace

SettingFilter::SettingFilter(SettingModel* settings, QObject* parent)
    : QSortFilterProxyModel(parent), settings_(settings) {
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

int SettingFilter::compare(int left, int right) const {
    const CaseSettingRow& a = settings_->rows()[left];
    const CaseSettingRow& b = settings_->rows()[right];
    const int part = order_.key.part;
    switch (order_.key.kind) {
        case Content::Label:
            return three(a.label.localeAwareCompare(b.label), 0);
        case Content::Name:
            return three(a.DspCdz.localeAwareCompare(b.DspCdz), 0);
        case Content::New:
            return three(number(a.newValue[size_t(part - 1)]), number(b.newValue[size_t(part - 1)]));
        case Content::Old:
            return three(number(a.oldValue[size_t(part - 1)]), number(b.oldValue[size_t(part - 1)]));
        case Content::Change:
            return three(share(settings_->change(left, part)), share(settings_->change(right, part)));
        case Content::Unit:
            return three(a.VType, b.VType);
        case Content::Relay:
            return three(a.RNo, b.RNo);
        case Content::Cdz:
            return three(a.Cdz, b.Cdz);
    }
    return 0;
}

bool SettingFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    const int order = compare(left.row(), right.row());
    if (order != 0) return order < 0;
    const bool above = left.row() < right.row();
    return order_.direction == Qt::AscendingOrder ? above : left.row() > right.row();
}
