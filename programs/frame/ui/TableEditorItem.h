#pragma once

#include <QTableWidgetItem>

class RecordTable;

/// A cell with an editor of its own. Works in a RecordTable, set by RecordTable::setItem.
class TableEditorItem : public QTableWidgetItem {
  public:
    /// When the editor is open: while the user edits, whenever the cell is the current one, always.
    enum EditType { Never, OnTyping, WhenCurrent, Always };
    explicit TableEditorItem(int editType);

    [[nodiscard]] EditType editType() const { return editType_; }
    virtual QWidget* createEditor(QWidget* parent) = 0;
    virtual void showIn(QWidget* editor) const = 0;
    virtual void takeFrom(const QWidget* editor) = 0;

  private:
    EditType editType_;
};
