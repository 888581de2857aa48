#include <QLineF>
#include <algorithm>
#include <cmath>

#include "platform/host/diagram/Drawing.h"

namespace diagram {

namespace {

constexpr double symbolReach = 16;

}  // namespace

QRectF Figure::bounds() const {
    QRectF box;
    for (const Leg& leg : legs) {
        // An empty rectangle is lost in a union, and a straight leg has one.
        box |= leg.path.boundingRect().adjusted(-1, -1, 1, 1);
    }
    if (glyph != Glyph::None)
        box |= QRectF(centre.x() - symbolReach, centre.y() - symbolReach, 2 * symbolReach, 2 * symbolReach);
    return box;
}

void PlaceIndex::build(const std::vector<Figure>& figures, const QRectF& bounds) {
    bounds_ = bounds;
    side_ = std::max(120.0, std::sqrt(bounds.width() * bounds.height() / 10000));
    columns_ = std::max(1, static_cast<int>(bounds.width() / side_) + 1);
    rows_ = std::max(1, static_cast<int>(bounds.height() / side_) + 1);
    cells_.assign(static_cast<std::size_t>(columns_) * rows_, {});
    boxes_.clear();
    for (const Figure& figure : figures) boxes_.push_back(figure.bounds());
    for (std::size_t f = 0; f < figures.size(); ++f) {
        for (const Leg& leg : figures[f].legs)
            for (qsizetype k = 0; k + 1 < leg.path.size(); ++k)
                enter(static_cast<int>(f), leg.path[k], leg.path[k + 1]);
        if (figures[f].glyph != Glyph::None) enter(static_cast<int>(f), figures[f].centre);
    }
}

QRect PlaceIndex::cells(const QRectF& area) const {
    const auto column = [&](double x) {
        return std::clamp(static_cast<int>((x - bounds_.left()) / side_), 0, columns_ - 1);
    };
    const auto row = [&](double y) { return std::clamp(static_cast<int>((y - bounds_.top()) / side_), 0, rows_ - 1); };
    return {QPoint(column(area.left()), row(area.top())), QPoint(column(area.right()), row(area.bottom()))};
}

void PlaceIndex::enter(int figure, const QPointF& centre) {
    const QRect range = cells({centre.x() - symbolReach, centre.y() - symbolReach, 2 * symbolReach, 2 * symbolReach});
    for (int y = range.top(); y <= range.bottom(); ++y)
        for (int x = range.left(); x <= range.right(); ++x) add(x, y, figure);
}

void PlaceIndex::enter(int figure, const QPointF& from, const QPointF& to) {
    // In pieces shorter than a square, so that a long slanting line fills its own squares only.
    const int pieces = std::max(1, static_cast<int>(std::ceil(QLineF(from, to).length() / side_)));
    for (int k = 0; k < pieces; ++k) {
        const QPointF a = from + (to - from) * k / pieces, b = from + (to - from) * (k + 1) / pieces;
        const QRect range = cells(QRectF(a, b).normalized().adjusted(-1, -1, 1, 1));
        for (int y = range.top(); y <= range.bottom(); ++y)
            for (int x = range.left(); x <= range.right(); ++x) add(x, y, figure);
    }
}

void PlaceIndex::add(int column, int row, int figure) {
    std::vector<int>& cell = cells_[static_cast<std::size_t>(row) * columns_ + column];
    if (cell.empty() || cell.back() != figure) cell.push_back(figure);
}

std::vector<int> PlaceIndex::within(const QRectF& area) const {
    std::vector<int> found;
    if (cells_.empty() || !area.intersects(bounds_)) return found;
    const QRect range = cells(area);
    for (int y = range.top(); y <= range.bottom(); ++y)
        for (int x = range.left(); x <= range.right(); ++x)
            for (int figure : cells_[static_cast<std::size_t>(y) * columns_ + x])
                if (boxes_[figure].intersects(area)) found.push_back(figure);
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

}  // namespace diagram
