#include <QLineF>
#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/host/diagram/Drawing.h"

namespace diagram {

namespace {

constexpr double symbolRadius = 12;
constexpr double barInk = 2.5;  ///< half of what a bar or a dot covers, with a little to aim at

double lengthOf(const QPolygonF& path) {
    double sum = 0;
    for (qsizetype k = 0; k + 1 < path.size(); ++k) sum += QLineF(path[k], path[k + 1]).length();
    return sum;
}

/// Nearest place on a path: its distance from the point, and how far along the path it is.
struct Nearest {
    double distance = std::numeric_limits<double>::max();
    double along = 0;
};

Nearest nearestOn(const QPolygonF& path, const QPointF& point) {
    Nearest best;
    double before = 0;
    for (qsizetype k = 0; k + 1 < path.size(); ++k) {
        const QPointF d = path[k + 1] - path[k], p = point - path[k];
        const double square = QPointF::dotProduct(d, d);
        const double t = square > 0 ? std::clamp(QPointF::dotProduct(p, d) / square, 0.0, 1.0) : 0;
        const double distance = QLineF(path[k] + d * t, point).length(), length = std::sqrt(square);
        if (distance < best.distance) best = {distance, before + t * length};
        before += length;
    }
    return best;
}

/// Layers in which the nearest is looked for.
enum Layer { Symbol, Ink, Connection, BarOrPoint, layerCount };

struct Candidate {
    Hit hit;
    double distance = std::numeric_limits<double>::max();
};

int windingAt(const Figure& figure, const QPointF& point) {
    int best = 0;
    double distance = std::numeric_limits<double>::max();
    for (std::size_t k = 0; k < figure.legs.size(); ++k) {
        const double d = nearestOn(figure.legs[k].path, point).distance;
        if (d < distance) distance = d, best = static_cast<int>(k) + 1;
    }
    return best;
}

int percentAt(const Figure& figure, const QPointF& point) {
    double total = 0, at = 0, distance = std::numeric_limits<double>::max();
    for (const Leg& leg : figure.legs) {
        const Nearest nearest = nearestOn(leg.path, point);
        if (nearest.distance < distance) distance = nearest.distance, at = total + nearest.along;
        total += lengthOf(leg.path);
    }
    return total > 0 ? static_cast<int>(std::lround(100 * at / total)) : 50;
}

void look(const Figure& figure, int number, const QPointF& point, double reach, Candidate (&best)[layerCount]) {
    double distance = distanceTo(figure, point);
    Layer layer = figure.kind == Kind::Bar || figure.kind == Kind::Point ? BarOrPoint : Connection;
    if (figure.glyph != Glyph::None) {
        const double d = QLineF(figure.centre, point).length();
        if (d <= symbolRadius && figure.kind != Kind::Point) layer = Symbol, distance = d;
        if (figure.kind == Kind::Point) distance = std::min(distance, d);
    }
    if (layer == BarOrPoint && distance <= barInk) layer = Ink;
    if (layer != Symbol && distance > reach) return;
    if (distance < best[layer].distance) best[layer] = {{number, 0, 0}, distance};
}

}  // namespace

Hit hitAt(const Drawing& drawing, const QPointF& point, double reach) {
    const double around = std::max(reach, symbolRadius);
    Candidate best[layerCount];
    for (int number : drawing.places.within(QRectF(point.x() - around, point.y() - around, 2 * around, 2 * around)))
        look(drawing.figures[number], number, point, reach, best);
    const auto found = std::find_if(best, best + layerCount, [](const Candidate& c) { return c.hit.figure >= 0; });
    if (found == best + layerCount) return {};
    const Figure& figure = drawing.figures[found->hit.figure];
    found->hit.winding = figure.kind == Kind::Transformer3 ? windingAt(figure, point) : 0;
    found->hit.percent = figure.kind == Kind::Transformer3 ? 50 : percentAt(figure, point);
    return found->hit;
}

double distanceTo(const Figure& figure, const QPointF& point) {
    double distance = std::numeric_limits<double>::max();
    for (const Leg& leg : figure.legs) distance = std::min(distance, nearestOn(leg.path, point).distance);
    return distance;
}

QPointF pointAlong(const Figure& figure, int percent, int winding) {
    if (figure.legs.empty()) return figure.centre;
    if (winding > 0 && winding <= static_cast<int>(figure.legs.size()))
        return figure.legs[winding - 1].path[figure.legs[winding - 1].path.size() / 2];
    double total = 0;
    for (const Leg& leg : figure.legs) total += lengthOf(leg.path);
    double rest = total * percent / 100;
    for (const Leg& leg : figure.legs)
        for (qsizetype k = 0; k + 1 < leg.path.size(); ++k) {
            const QLineF piece(leg.path[k], leg.path[k + 1]);
            if (rest <= piece.length() && piece.length() > 0) return piece.pointAt(rest / piece.length());
            rest -= piece.length();
        }
    return figure.legs.back().path.back();
}

}  // namespace diagram
