#pragma once

#include <vector>

class QStyleOptionViewItem;

/// Marked cells of one column of a table.
class CellMarks {
  public:
    static constexpr int maxPaintRows = 100000;
    std::vector<int> paintRows = std::vector<int>(maxPaintRows, -1);  ///< rows, ended by the first negative one
    int paintColumn = -1;

    [[nodiscard]] bool isPainted(int row, int column) const;
    /// Marks these rows in a column and no others.
    void paint(const std::vector<int>& rows, int column);

  protected:
    static void adjustPainted(QStyleOptionViewItem* option);
};
