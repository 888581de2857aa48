#include "programs/workflow/ui/SettingModel.h"

void SettingModel::setColumns(const SettingColumns& columns) {
    beginResetModel();
    columns_ = columns;
    rows_.clear();
    endResetModel();
}

void SettingModel::setRows(QVector<CaseSettingRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

void SettingModel::append(const QVector<CaseSettingRow>& rows) { setRows(rows_ + rows); }

void SettingModel::removeRelay(int rNo) {
    QVector<CaseSettingRow> left = rows_;
    left.removeIf([&](const CaseSettingRow& row) { return row.RNo == rNo; });
    setRows(left);
}

int SettingModel::newColumn(int part) const {
    return columns_.values == SettingColumns::Values::Old ? -1 : FirstValue + part - 1;
}

int SettingModel::oldColumn(int part) const {
    if (columns_.values == SettingColumns::Values::New) return -1;
    return FirstValue + part - 1 + (columns_.values == SettingColumns::Values::NewAndOld ? columns_.parts : 0);
}

int SettingModel::relayColumn() const {
    return FirstValue + columns_.parts * (columns_.values == SettingColumns::Values::NewAndOld ? 2 : 1);
}

int SettingModel::cdzColumn() const { return relayColumn() + 1; }
int SettingModel::unitColumn() const { return relayColumn() + 2; }
int SettingModel::changeColumn(int part) const { return columns_.changes ? unitColumn() + part : -1; }

int SettingModel::partOf(int column) const {
    const int part = column - FirstValue + 1;
    return newColumn(1) >= 0 && part >= 1 && part <= columns_.parts ? part : 0;
}

int SettingModel::rowCount(const QModelIndex&) const { return int(rows_.size()); }
int SettingModel::columnCount(const QModelIndex&) const {
    return unitColumn() + 1 + (columns_.changes ? columns_.parts : 0);
}
QVariant SettingModel::data(const QModelIndex&, int) const { return {}; }
QVariant SettingModel::headerData(int, Qt::Orientation, int) const { return {}; }
