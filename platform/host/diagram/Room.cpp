#include "platform/host/diagram/Room.h"

#include <QLineF>
#include <algorithm>
#include <cmath>

namespace diagram {

namespace {

constexpr double side = 200;
constexpr int blocked = 1000000;

template <class Do>
void eachCell(const QRectF& box, Do&& doIt) {
    const auto cell = [](double v) { return static_cast<qint64>(std::floor(v / side)); };
    for (qint64 y = cell(box.top()); y <= cell(box.bottom()); ++y)
        for (qint64 x = cell(box.left()); x <= cell(box.right()); ++x) doIt((y << 32) ^ (x & 0xffffffff));
}

bool crosses(const QRectF& box, const QPointF& a, const QPointF& b) {
    if (box.contains(a) || box.contains(b)) return true;
    if (!QRectF(a, b).normalized().adjusted(-0.1, -0.1, 0.1, 0.1).intersects(box)) return false;
    const QLineF line(a, b);
    QPointF at;
    return line.intersects({box.topLeft(), box.bottomRight()}, &at) == QLineF::BoundedIntersection ||
           line.intersects({box.bottomLeft(), box.topRight()}, &at) == QLineF::BoundedIntersection;
}

}  // namespace

void Room::take(const QRectF& box) {
    eachCell(box, [&](qint64 key) { texts_[key].push_back(box); });
}

bool Room::isTaken(const QRectF& box) const {
    bool taken = false;
    eachCell(box, [&](qint64 key) {
        const auto at = texts_.find(key);
        if (at == texts_.end()) return;
        taken = taken || std::any_of(at->second.begin(), at->second.end(),
                                     [&](const QRectF& other) { return other.intersects(box); });
    });
    return taken;
}

int Room::crossed(const QRectF& box, int own) const {
    int count = 0;
    for (int number : drawing_.places.within(box)) {
        const Figure& f = drawing_.figures[number];
        const double radius = f.glyph == Glyph::None || f.kind == Kind::Point ? 0 : 9;
        if (radius > 0 && QRectF(f.centre.x() - radius, f.centre.y() - radius, 2 * radius, 2 * radius).intersects(box))
            return blocked;
        for (const Leg& leg : f.legs)
            for (qsizetype k = 0; k + 1 < leg.path.size(); ++k) {
                if (!crosses(box, leg.path[k], leg.path[k + 1])) continue;
                if (f.kind == Kind::Bar && number != own) return blocked;
                count += number == own ? 1 : 2;
            }
    }
    return count;
}

std::optional<QRectF> Room::best(const std::vector<QPointF>& corners, const QSizeF& size, int own) const {
    std::optional<QRectF> found;
    int fewest = blocked;
    for (const QPointF& corner : corners) {
        const QRectF box(corner, size);
        if (isTaken(box)) continue;
        const int count = crossed(box, own);
        if (count < fewest) fewest = count, found = box;
        if (count == 0) break;
    }
    return found;
}

}  // namespace diagram
