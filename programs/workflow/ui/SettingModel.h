#pragma once

#include <QAbstractTableModel>

#include "programs/workflow/CaseNode.h"

/// What a table of settings shows.
struct SettingColumns {
    enum class Values { NewAndOld, New, Old };
    int parts = 0;  ///< parts of the relay type
    Values values = Values::NewAndOld;
    bool changes = true;    ///< with what changed against the stored values
    bool editable = false;  ///< the new values may be typed over
};

/// Settings of relays, one row for each relay and setting. Columns: 0 place of the relay, 1 name of the setting, then
/// the values of the parts, new before old, then two hidden ones, relay number and `Cdz`; behind them the unit and for
/// each part the change of the new value against the old one.
class SettingModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    using QAbstractTableModel::QAbstractTableModel;

    enum Column { Label, Name, FirstValue };
    /// Takes all rows out.
    void setColumns(const SettingColumns& columns);
    void setRows(QVector<CaseSettingRow> rows);
    void append(const QVector<CaseSettingRow>& rows);
    void removeRelay(int rNo);
    [[nodiscard]] const QVector<CaseSettingRow>& rows() const { return rows_; }

    [[nodiscard]] int parts() const { return columns_.parts; }
    [[nodiscard]] int newColumn(int part) const;  ///< part from 1; -1 when they are not shown
    [[nodiscard]] int oldColumn(int part) const;
    [[nodiscard]] int relayColumn() const;
    [[nodiscard]] int cdzColumn() const;
    [[nodiscard]] int unitColumn() const;
    [[nodiscard]] int changeColumn(int part) const;  ///< -1 when changes are not shown
    /// Part of a column with new values; 0 for any other column.
    [[nodiscard]] int partOf(int column) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    SettingColumns columns_;
    QVector<CaseSettingRow> rows_;
};
