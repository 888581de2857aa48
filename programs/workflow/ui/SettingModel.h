#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>

#include "programs/workflow/CaseNode.h"
#include "programs/workflow/SettingChange.h"

/// What a table of settings shows.
struct SettingColumns {
    enum class Values { NewAndOld, New, Old };
    int parts = 0;  ///< parts of the relay type
    Values values = Values::NewAndOld;
    bool changes = true;    ///< with what changed against the stored values
    bool editable = false;  ///< the new values may be typed over
    /// New values of a part of a relay that are all 0 are values like others; else the part has not been calculated,
    /// and nothing in it has changed.
    bool zerosCount = false;
};

/// Settings of relays, one row for each relay and setting. Columns: 0 place of the relay, 1 name of the setting, then
/// the values of the parts, new before old, then two hidden ones, relay number and `Cdz`; behind them the unit and for
/// each part the change of the new value against the old one.
class SettingModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    explicit SettingModel(QObject* parent = nullptr);

    enum Column { Label, Name, FirstValue };
    /// What a column holds.
    struct Content {
        enum Kind { Label, Name, New, Old, Relay, Cdz, Unit, Change };
        Kind kind = Label;
        int part = 0;  ///< from 1, for values and changes
        [[nodiscard]] bool isNumber() const { return part > 0; }
        bool operator==(const Content&) const = default;
    };

    /// Takes all rows out.
    void setColumns(const SettingColumns& columns);
    /// The same settings in the same order only have their values taken over.
    void setRows(QVector<CaseSettingRow> rows);
    void append(const QVector<CaseSettingRow>& rows);
    void removeRelay(int rNo);
    [[nodiscard]] const QVector<CaseSettingRow>& rows() const { return rows_; }
    /// Row of a setting of a relay; -1 when it is not there.
    [[nodiscard]] int find(int rNo, const QString& cdz) const;
    /// Puts a new value in; the user's own edits come by setData().
    void setValue(int row, int part, const QString& text);
    /// Share of the old value from which on a change carries a warning mark; 0: no marks.
    void setWarningShare(double share);

    [[nodiscard]] int parts() const { return columns_.parts; }
    [[nodiscard]] int newColumn(int part) const;  ///< part from 1; -1 when they are not shown
    [[nodiscard]] int oldColumn(int part) const;
    [[nodiscard]] int relayColumn() const;
    [[nodiscard]] int cdzColumn() const;
    [[nodiscard]] int unitColumn() const;
    [[nodiscard]] int changeColumn(int part) const;  ///< -1 when changes are not shown
    /// Part of a column with new values; 0 for any other column.
    [[nodiscard]] int partOf(int column) const;
    [[nodiscard]] Content content(int column) const;
    [[nodiscard]] int columnOf(Content content) const;  ///< -1 when it is not shown
    /// Values of a part as numbers; not a number where the text is none.
    [[nodiscard]] double newNumber(int row, int part) const { return numbers_[row].now[size_t(part - 1)]; }
    [[nodiscard]] double oldNumber(int row, int part) const { return numbers_[row].before[size_t(part - 1)]; }
    /// Whether the part of the row's relay has any new value beside 0.
    [[nodiscard]] bool isCalculated(int row, int part) const;
    [[nodiscard]] std::optional<SettingChange> change(int row, int part) const;
    /// The marks stand in the columns of the changes, or in those of the new values where changes are not shown.
    [[nodiscard]] bool mayWarn(Content content) const {
        return content.kind == (columns_.changes ? Content::Change : Content::New);
    }
    /// Whether any part of the relay type changed.
    [[nodiscard]] bool isChanged(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  signals:
    void typed(int row, int column);  ///< the user changed a new value

  private:
    [[nodiscard]] QString text(int row, Content content) const;
    [[nodiscard]] QVariant exported(int row, Content content) const;
    [[nodiscard]] bool warns(int row, Content content) const;
    [[nodiscard]] QVariant toolTip(int row, Content content) const;
    /// The values of a row as numbers, which sorting, filtering and painting ask for again and again.
    struct Numbers {
        std::array<double, kStages> now, before;
        Numbers() = default;
        explicit Numbers(const CaseSettingRow& row);
    };
    static QVector<Numbers> numbersOf(const QVector<CaseSettingRow>& rows);
    [[nodiscard]] std::optional<SettingChange> storedChange(int row, int part) const;
    void countValues(int first, int last);
    void countValue(int row, int part, double from, double to);
    void takeValues(QVector<CaseSettingRow> rows);
    void tellRows(int first, int last);

    SettingColumns columns_;
    QVector<CaseSettingRow> rows_;
    QVector<Numbers> numbers_;
    QHash<int, std::array<int, kStages>> calculated_;  ///< new values beside 0 in each part, by relay
    double warningShare_ = 0.2;
    QIcon warning_;
};
