#pragma once

#include <QObject>
#include <QStringList>

#include "programs/frame/ui/TableEditorItem.h"

class QTableWidget;

/// A table cell with a list to choose from, which starts empty.
class CTableCombobox : public QObject, public TableEditorItem {
    Q_OBJECT
  public:
    CTableCombobox(QTableWidget* table, int editType);

    void insertItem(const QString& text);
    void insertStringList(const QStringList& texts);
    [[nodiscard]] int count() const { return static_cast<int>(items_.size()); }
    /// -1 when the cell's text is none of the items.
    [[nodiscard]] int currentItem() const { return static_cast<int>(items_.indexOf(text())); }
    void setCurrentItem(int index);
    void setCurrentItem(const QString& text) { setCurrentItem(static_cast<int>(items_.indexOf(text))); }

    QWidget* createEditor(QWidget* parent) override;
    void showIn(QWidget* editor) const override;
    void takeFrom(const QWidget* editor) override;

  signals:
    /// The user chose an item; the cell has its text.
    void TableComboboxChanged(int index, int row);

  public slots:
    void ValueChanged(int index);

  private:
    QStringList items_;
};
