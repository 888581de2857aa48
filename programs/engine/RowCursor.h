#pragma once

#include <QString>
#include <QVariant>
#include <QVector>

/// One working setting row, in the column order of the cursor.
struct SettingRow {
    int rno = 0;
    QString idName, iName, jName;
    int side = 1;
    int pno = 0;
    QString cdz;
    int ruleNo = 0;
    int id = 0;  ///< place in the order of calculation
};

/// A cursor over the setting rows of a case in calculation order. The rows are fetched once, so that nothing that
/// happens to the table during a run moves it.
/// Columns: 0 `RNo`, 1 `ID_Name`, 2 `I_Name`, 3 `J_Name`, 4 `Side`, 5 `PNo`, 6 `Cdz`, 7 `RuleNo`, 8 `ID`.
class RowCursor {
  public:
    RowCursor() = default;
    explicit RowCursor(QVector<SettingRow> rows) : rows_(std::move(rows)) {}

    /// All rows of a case. The cursor stands before the first row.
    static RowCursor ofCase(int caseNo);
    /// The rows of one rule of a relay part; the cursor stands on the first when there is one.
    static RowCursor ofRule(int caseNo, int rno, int pno, int ruleNo);

    bool first() { return seek(0); }
    bool next() { return seek(at_ + 1); }
    /// Stands before the first row (-1), on a row, or behind the last.
    bool seek(int at);
    [[nodiscard]] int at() const { return at_; }
    [[nodiscard]] int size() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] bool isValid() const { return at_ >= 0 && at_ < size(); }
    /// \pre isValid()
    [[nodiscard]] const SettingRow& row() const { return rows_[at_]; }
    /// A column of the current row; invalid without one.
    [[nodiscard]] QVariant value(int column) const;

  private:
    QVector<SettingRow> rows_;
    int at_ = -1;
};
