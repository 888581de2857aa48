#include <QHeaderView>
#include <QScrollBar>
#include <QSignalBlocker>

#include "programs/workflow/ui/SettingTable.h"

// Two tables of the same rows that go together.

void SettingTable::keepTogetherWith(SettingTable& other) {
    follow(other);
    other.follow(*this);
}

void SettingTable::follow(SettingTable& leader) {
    connect(&leader.shown(), &SettingFilter::orderChanged, this, &SettingTable::showOrder);
    connect(leader.verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(), &QScrollBar::setValue);
    connect(leader.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this, &leader] { selectLike(leader); });
}

// The head that leads may have no column here.
void SettingTable::showOrder(const SettingOrder& order) {
    if (order == shown_->order()) return;
    shown_->setOrder(order);
    const QSignalBlocker quiet(horizontalHeader());
    horizontalHeader()->setSortIndicator(order.sorted ? model_->columnOf(order.key) : -1, order.direction);
    horizontalHeader()->viewport()->update();
}

void SettingTable::selectLike(const SettingTable& leader) {
    QItemSelection rows;
    for (const QItemSelectionRange& range : leader.selectionModel()->selection())
        rows.select(shown_->index(range.top(), 0), shown_->index(range.bottom(), shown_->columnCount() - 1));
    if (rows == selectionModel()->selection()) return;
    const QSignalBlocker quiet(selectionModel());
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    viewport()->update();
}
