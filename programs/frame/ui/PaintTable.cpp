#include "programs/frame/ui/PaintTable.h"

void PaintTable::adjustStyle(QStyleOptionViewItem* option, const QModelIndex& index) const {
    if (isPainted(index.row(), index.column())) adjustPainted(option);
}
