#include "programs/frame/ui/PaintTable.h"

#include <QStyleOptionViewItem>
#include <algorithm>

bool PaintTable::isPainted(int row, int column) const {
    if (column != paintColumn || column < 0) return false;
    const auto end = std::find_if(paintRows.begin(), paintRows.end(), [](int painted) { return painted < 0; });
    return std::find(paintRows.begin(), end, row) != end;
}

// Black on green can be read whatever the palette.
void PaintTable::adjustStyle(QStyleOptionViewItem* option, const QModelIndex& index) const {
    if (!isPainted(index.row(), index.column())) return;
    option->backgroundBrush = Qt::green;
    option->palette.setColor(QPalette::Base, Qt::green);
    option->palette.setColor(QPalette::Text, Qt::black);
}
