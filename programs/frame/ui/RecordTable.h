#pragma once

#include <QSet>
#include <QTableWidget>

#include "programs/frame/ui/TypingTable.h"

/// The table of the module's windows: cells by row and column, cells with editors of their own, number columns, copying
/// and remembered widths.
class RecordTable : public TypingTable<QTableWidget> {
    Q_OBJECT
  public:
    explicit RecordTable(QWidget* parent = nullptr, const char* name = nullptr);
    RecordTable(int rows, int columns, QWidget* parent = nullptr, const char* name = nullptr);

    /// Empty for a cell without an item.
    [[nodiscard]] QString text(int row, int column) const;
    /// Makes the item when there is none. Ends an edit of the cell without taking its text.
    void setText(int row, int column, const QString& text);
    void setItem(int row, int column, QTableWidgetItem* item);
    /// A check box cell with a text.
    void setCheck(int row, int column, bool checked, const QString& text = {});
    [[nodiscard]] bool isChecked(int row, int column) const;

    void setReadOnly(bool readOnly);
    void setRowReadOnly(int row, bool readOnly);
    void setColumnReadOnly(int column, bool readOnly);
    /// Right aligned; editors take full-width digits.
    void setNumberColumn(int column, bool numbers = true);
    [[nodiscard]] bool isNumberColumn(int column) const { return numberColumns_.contains(column); }
    /// Whole rows are selected, one at a time.
    void selectWholeRows();
    /// Makes the row the current one, shows it and selects it.
    void selectRow(int row);

  signals:
    void currentChanged(int row, int column);
    /// The user changed a cell: by its editor, or by its check box.
    void valueChanged(int row, int column);

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    /// How the delegate draws a cell; for marks.
    virtual void adjustStyle(QStyleOptionViewItem*, const QModelIndex&) const {}

  private:
    friend class RecordCell;
    void setUp(const char* name);
    QTableWidgetItem* itemAt(int row, int column);
    void openEditorOf(int row, int column, bool open);

    QSet<int> numberColumns_;
};
