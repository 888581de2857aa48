#pragma once

#include "programs/frame/ui/CellMarks.h"
#include "programs/frame/ui/RecordTable.h"

/// A table that marks cells of one column. Whoever changes the marks repaints the viewport.
class PaintTable : public RecordTable, public CellMarks {
    Q_OBJECT
  public:
    using RecordTable::RecordTable;

  protected:
    void adjustStyle(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
