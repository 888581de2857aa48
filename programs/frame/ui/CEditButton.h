#pragma once

#include <QObject>
#include <QPointer>

#include "programs/frame/ui/TableEditorItem.h"

class EditButton;
class QTableWidget;

/// A table cell with a line and a button that picks what stands in it. The signals carry the cell's row.
class CEditButton : public QObject, public TableEditorItem {
    Q_OBJECT
  public:
    CEditButton(QTableWidget* table, int editType);

    QWidget* createEditor(QWidget* parent) override;
    void showIn(QWidget* editor) const override;
    void takeFrom(const QWidget* editor) override;

  signals:
    void ButtonClickSingal(int row);
    void LineEditEditSingal(int row);    ///< the text was entered; the cell has it
    void LineEditSelectSingal(int row);  ///< text in the line was selected

  public slots:
    void ButtonClickSlot();
    void LineEditEditSlot();
    void LineEditSelectSlot();

  protected:
    QPointer<EditButton> editor_;
};

/// The same with the button alone.
class CTableButton : public CEditButton {
    Q_OBJECT
  public:
    using CEditButton::CEditButton;
    QWidget* createEditor(QWidget* parent) override;
};
