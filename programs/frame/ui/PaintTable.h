#pragma once

#include <vector>

#include "programs/frame/ui/RecordTable.h"

/// A table that marks cells of one column. Whoever changes the marks repaints the viewport.
class PaintTable : public RecordTable {
    Q_OBJECT
  public:
    using RecordTable::RecordTable;

    static constexpr int maxPaintRows = 100000;
    std::vector<int> paintRows = std::vector<int>(maxPaintRows, -1);  ///< rows, ended by the first negative one
    int paintColumn = -1;

    [[nodiscard]] bool isPainted(int row, int column) const;

  protected:
    void adjustStyle(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
