#pragma once

#include <QStyledItemDelegate>

class RecordTable;

/// Draws and edits the cells of a RecordTable.
class RecordCell : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit RecordCell(RecordTable* table);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

  private:
    RecordTable* table_;
};
