#include "programs/frame/ui/CellMarks.h"

#include <QStyleOptionViewItem>
#include <algorithm>

bool CellMarks::isPainted(int row, int column) const {
    if (column != paintColumn || column < 0) return false;
    const auto end = std::find_if(paintRows.begin(), paintRows.end(), [](int painted) { return painted < 0; });
    return std::find(paintRows.begin(), end, row) != end;
}

void CellMarks::paint(const std::vector<int>& rows, int column) {
    const size_t count = std::min(rows.size(), paintRows.size() - 1);
    std::copy_n(rows.begin(), count, paintRows.begin());
    paintRows[count] = -1;
    paintColumn = column;
}

// Black on green can be read whatever the palette.
void CellMarks::adjustPainted(QStyleOptionViewItem* option) {
    option->backgroundBrush = Qt::green;
    option->palette.setColor(QPalette::Base, Qt::green);
    option->palette.setColor(QPalette::Text, Qt::black);
}
