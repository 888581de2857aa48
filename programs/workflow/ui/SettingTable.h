#pragma once

#include <QTableView>

#include "programs/frame/ui/CellMarks.h"
#include "programs/frame/ui/TypingTable.h"
#include "programs/workflow/ui/SettingFilter.h"

/// A table of settings, for the case editor, the run window and the save dialog. Rows and columns of its functions and
/// signals are those of the model, whatever is sorted and filtered away; sorting and filtering change nothing that is
/// stored. The place of a relay shows in its first visible row.
class SettingTable : public TypingTable<QTableView>, private CellMarks {
    Q_OBJECT
  public:
    SettingTable(QWidget* parent, const char* name);

    [[nodiscard]] SettingModel& settings() const { return *model_; }
    [[nodiscard]] SettingFilter& shown() const { return *shown_; }
    /// Takes all rows out.
    void setColumns(const SettingColumns& columns);
    void setRows(const QVector<CaseSettingRow>& rows) { model_->setRows(rows); }
    /// All rows with what was typed.
    [[nodiscard]] const QVector<CaseSettingRow>& rows() const { return model_->rows(); }

    [[nodiscard]] int row() const;     ///< current row, -1 without one
    [[nodiscard]] int column() const;  ///< current column, -1 without one
    [[nodiscard]] int currentRelay() const;
    /// Nothing for a row that is filtered away.
    void setCurrentCell(int row, int column);
    [[nodiscard]] QString text(int row, int column) const;
    /// Row of a setting of a relay; -1 when it is not there.
    [[nodiscard]] int find(int rNo, const QString& cdz) const { return model_->find(rNo, cdz); }
    /// Puts a new value into a cell without raising valueChanged().
    void setValue(int row, int part, const QString& text) { model_->setValue(row, part, text); }

    /// Marks a cell in the first visible row of a relay, or in all of its rows; marks of before go.
    void paintRelay(int rNo, int column, bool allRows);
    void clearPaint();

    /// Only the relays of a station; empty: all.
    void setStation(const QString& station);
    [[nodiscard]] QStringList stations() const;
    /// Only settings that changed against the stored ones.
    void setOnlyChanged(bool only);
    /// Share from which on a changed value carries a warning mark; 0.2 is 20 %, 0 no marks.
    void setWarningShare(double share) { model_->setWarningShare(share); }

    /// Two tables of the same rows show the same of them in the same order, scrolled and selected alike.
    void keepTogetherWith(SettingTable& other);

  signals:
    void currentChanged(int row, int column);
    void valueChanged(int row, int column);  ///< by the user
    void cellClicked(int row, int column);
    void cellDoubleClicked(int row, int column);

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

  private:
    friend class SettingCell;
    void connectAll();
    void arrangeColumns();
    /// Columns as wide as what stands in these cells wants; what the user narrowed stays until more is wanted.
    void fitCells(const QModelIndex& first, const QModelIndex& last);
    void fitRows(int firstRow, int lastRow);
    void widen(int column, int wanted);
    [[nodiscard]] int wantedWidth(int column, int firstRow, int lastRow) const;
    void findPaint();
    void follow(SettingTable& leader);
    void showOrder(const SettingOrder& order);
    void selectLike(const SettingTable& leader);

    SettingModel* model_;
    SettingFilter* shown_;
    std::vector<int> fitted_;  ///< width that each column has wanted so far
    int paintedRelay_ = -1, paintedColumn_ = -1;
    bool paintsAllRows_ = false;
};
