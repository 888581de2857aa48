#include "programs/workflow/ui/SettingModel.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/host/ui/Icons.h"
#include "platform/host/ui/TableExport.h"
#include "programs/workflow/ResultTable.h"

namespace {

/// Drawn once in the usual sizes: a table shows hundreds.
QIcon drawnOnce(const QIcon& icon) {
    QIcon drawn;
    for (const int size : {16, 20, 24, 32, 48, 64}) drawn.addPixmap(icon.pixmap(size));
    return drawn;
}

bool isValue(double number) { return number != 0 && !std::isnan(number); }

}  // namespace

SettingModel::SettingModel(QObject* parent) : QAbstractTableModel(parent), warning_(drawnOnce(host::icon("warning"))) {}

SettingModel::Numbers::Numbers(const CaseSettingRow& row) {
    std::transform(row.newValue.begin(), row.newValue.end(), now.begin(), settingNumber);
    std::transform(row.oldValue.begin(), row.oldValue.end(), before.begin(), settingNumber);
}

QVector<SettingModel::Numbers> SettingModel::numbersOf(const QVector<CaseSettingRow>& rows) {
    QVector<Numbers> numbers;
    numbers.reserve(rows.size());
    for (const CaseSettingRow& row : rows) numbers.append(Numbers(row));
    return numbers;
}

void SettingModel::setColumns(const SettingColumns& columns) {
    beginResetModel();
    columns_ = columns;
    rows_.clear();
    numbers_.clear();
    calculated_.clear();
    endResetModel();
}

void SettingModel::setRows(QVector<CaseSettingRow> rows) {
    if (!rows.isEmpty() && std::equal(rows.begin(), rows.end(), rows_.cbegin(), rows_.cend(),
                                      [](const auto& a, const auto& b) { return a.isSameSetting(b); }))
        return takeValues(std::move(rows));
    beginResetModel();
    rows_ = std::move(rows);
    numbers_ = numbersOf(rows_);
    calculated_.clear();
    countValues(0, rowCount() - 1);
    endResetModel();
}

void SettingModel::takeValues(QVector<CaseSettingRow> rows) {
    const auto differs = [&](qsizetype row) {
        return rows[row].newValue != rows_[row].newValue || rows[row].oldValue != rows_[row].oldValue;
    };
    qsizetype first = 0, last = rows.size() - 1;
    while (first <= last && !differs(first)) ++first;
    while (last > first && !differs(last)) --last;
    rows_ = std::move(rows);
    for (qsizetype row = first; row <= last; ++row) numbers_[row] = Numbers(rows_[row]);
    if (first > last) return;
    calculated_.clear();
    countValues(0, rowCount() - 1);
    // the first value of a part changes what its other rows say
    while (first > 0 && rows_[first - 1].RNo == rows_[first].RNo) --first;
    while (last + 1 < rows_.size() && rows_[last + 1].RNo == rows_[last].RNo) ++last;
    tellRows(int(first), int(last));
}

void SettingModel::tellRows(int first, int last) {
    if (first <= last) emit dataChanged(index(first, FirstValue), index(last, columnCount() - 1));
}

void SettingModel::append(const QVector<CaseSettingRow>& rows) {
    if (rows.isEmpty()) return;
    beginInsertRows({}, rowCount(), rowCount() + int(rows.size()) - 1);
    rows_ += rows;
    numbers_ += numbersOf(rows);
    countValues(rowCount() - int(rows.size()), rowCount() - 1);
    endInsertRows();
}

void SettingModel::removeRelay(int rNo) {
    calculated_.remove(rNo);
    for (int last = rowCount() - 1; last >= 0; --last) {
        if (rows_[last].RNo != rNo) continue;
        int first = last;
        while (first > 0 && rows_[first - 1].RNo == rNo) --first;
        beginRemoveRows({}, first, last);
        rows_.remove(first, last - first + 1);
        numbers_.remove(first, last - first + 1);
        endRemoveRows();
        last = first;
    }
}

int SettingModel::find(int rNo, const QString& cdz) const {
    const auto is = [&](const CaseSettingRow& row) { return row.RNo == rNo && row.Cdz == cdz; };
    const auto it = std::find_if(rows_.begin(), rows_.end(), is);
    return it == rows_.end() ? -1 : int(it - rows_.begin());
}

void SettingModel::setValue(int row, int part, const QString& text) {
    if (row < 0 || row >= rowCount() || part < 1 || part > parts()) return;
    rows_[row].newValue[size_t(part - 1)] = text;
    const double before = std::exchange(numbers_[row].now[size_t(part - 1)], settingNumber(text));
    countValue(row, part, before, newNumber(row, part));
    // cell by cell, so that views paint no more than these
    for (const int column : {newColumn(part), changeColumn(part)})
        if (column >= 0) emit dataChanged(index(row, column), index(row, column));
}

void SettingModel::countValues(int first, int last) {
    for (int row = first; row <= last; ++row)
        for (size_t part = 0; part < kStages; ++part)
            if (isValue(numbers_[row].now[part])) ++calculated_[rows_[row].RNo][part];
}

/// The first value of a part makes its zeros values as well.
void SettingModel::countValue(int row, int part, double from, double to) {
    if (isValue(from) == isValue(to)) return;
    const int relay = rows_[row].RNo;
    const bool before = isCalculated(row, part);
    calculated_[relay][size_t(part - 1)] += isValue(to) ? 1 : -1;
    const int column = changeColumn(part);
    if (isCalculated(row, part) == before || column < 0) return;
    for (int other = 0; other < rowCount(); ++other)
        if (rows_[other].RNo == relay && other != row && storedChange(other, part))
            emit dataChanged(index(other, column), index(other, column));
}

bool SettingModel::isCalculated(int row, int part) const {
    const auto found = calculated_.constFind(rows_[row].RNo);
    return found != calculated_.cend() && (*found)[size_t(part - 1)] > 0;
}

std::optional<SettingChange> SettingModel::storedChange(int row, int part) const {
    return settingChange(newNumber(row, part), oldNumber(row, part));
}

std::optional<SettingChange> SettingModel::change(int row, int part) const {
    const auto changed = storedChange(row, part);
    return changed && (columns_.zerosCount || isCalculated(row, part)) ? changed : std::nullopt;
}

void SettingModel::setWarningShare(double share) {
    warningShare_ = share;
    tellRows(0, rowCount() - 1);
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
    const Content held = content(column);
    return held.kind == Content::New ? held.part : 0;
}

SettingModel::Content SettingModel::content(int column) const {
    if (column <= Name) return {column == Name ? Content::Name : Content::Label};
    if (column < relayColumn()) {
        const int at = column - FirstValue;
        const bool old = columns_.values == SettingColumns::Values::Old || at >= columns_.parts;
        return {old ? Content::Old : Content::New, at % columns_.parts + 1};
    }
    if (column > unitColumn()) return {Content::Change, column - unitColumn()};
    return {column == relayColumn() ? Content::Relay : column == cdzColumn() ? Content::Cdz : Content::Unit};
}

int SettingModel::columnOf(Content wanted) const {
    for (int column = 0; column < columnCount(); ++column)
        if (content(column) == wanted) return column;
    return -1;
}

bool SettingModel::isChanged(int row) const {
    for (int part = 1; part <= parts(); ++part)
        if (change(row, part)) return true;
    return false;
}

int SettingModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(rows_.size()); }

int SettingModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : unitColumn() + 1 + (columns_.changes ? columns_.parts : 0);
}

QString SettingModel::text(int row, Content content) const {
    const CaseSettingRow& shown = rows_[row];
    switch (content.kind) {
        case Content::Label:
            return row > 0 && rows_[row - 1].RNo == shown.RNo ? QString() : shown.label;
        case Content::Name:
            return shown.DspCdz;
        case Content::New:
            return shown.newValue[size_t(content.part - 1)];
        case Content::Old:
            return shown.oldValue[size_t(content.part - 1)];
        case Content::Relay:
            return QString::number(shown.RNo);
        case Content::Cdz:
            return shown.Cdz;
        case Content::Unit:
            return unitOf(shown.VType);
        case Content::Change:
            break;
    }
    const auto changed = change(row, content.part);
    return changed ? changed->text() : QString();
}

QVariant SettingModel::exported(int row, Content content) const {
    if (content.kind == Content::Label) return rows_[row].label;
    if (content.kind != Content::New && content.kind != Content::Old) return text(row, content);
    const double value = content.kind == Content::New ? newNumber(row, content.part) : oldNumber(row, content.part);
    return std::isnan(value) ? QVariant(text(row, content)) : QVariant(value);
}

bool SettingModel::warns(int row, Content content) const {
    if (!mayWarn(content) || warningShare_ <= 0) return false;
    const auto changed = change(row, content.part);
    return changed && changed->exceeds(warningShare_);
}

QVariant SettingModel::toolTip(int row, Content content) const {
    if (content.kind == Content::Label) return rows_[row].label;
    if (warns(row, content)) return tr("与原定值相差超过 %1%").arg(QString::number(warningShare_ * 100, 'g', 4));
    const bool open = content.kind == Content::Change && !columns_.zerosCount && !isCalculated(row, content.part);
    return open ? QVariant(tr("未计算")) : QVariant();
}

QVariant SettingModel::data(const QModelIndex& index, int role) const {
    const Content held = content(index.column());
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return text(index.row(), held);
        case host::ExportRole:
            return exported(index.row(), held);
        case Qt::DecorationRole:
            return warns(index.row(), held) ? QVariant(warning_) : QVariant();
        case Qt::ToolTipRole:
            return toolTip(index.row(), held);
        default:
            return {};
    }
}

QVariant SettingModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    static const char* const numerals[] = {QT_TR_NOOP("一"), QT_TR_NOOP("二"), QT_TR_NOOP("三"), QT_TR_NOOP("四"),
                                           QT_TR_NOOP("五")};
    const Content held = content(section);
    const QString numeral = held.part >= 1 && held.part <= kStages ? tr(numerals[held.part - 1]) : QString();
    const bool both = columns_.values == SettingColumns::Values::NewAndOld;
    switch (held.kind) {
        case Content::Label:
            return tr("保护安装位置");
        case Content::Name:
            return tr("定值名称");
        case Content::New:
            return (both ? tr("%1段新定值") : tr("%1段定值")).arg(numeral);
        case Content::Old:
            return (both ? tr("%1段原定值") : tr("%1段定值")).arg(numeral);
        case Content::Unit:
            return tr("单位");
        case Content::Change:
            return tr("%1段变化").arg(numeral);
        default:
            return {};
    }
}

Qt::ItemFlags SettingModel::flags(const QModelIndex& index) const {
    const bool editable = columns_.editable && partOf(index.column()) > 0;
    return QAbstractTableModel::flags(index).setFlag(Qt::ItemIsEditable, editable);
}

bool SettingModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const int part = partOf(index.column());
    if (role != Qt::EditRole || part == 0) return false;
    if (value.toString() == text(index.row(), content(index.column()))) return true;
    setValue(index.row(), part, value.toString());
    emit typed(index.row(), index.column());
    return true;
}
