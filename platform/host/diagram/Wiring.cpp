#include <QLineF>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "platform/host/diagram/Router.h"

namespace diagram {

namespace {

constexpr double stub = 14;
constexpr double hang = 34;        ///< from a bar to the symbol of a source, load or shunt
constexpr double symbolHalf = 15;  ///< of a transformer, along its axis
constexpr double disconnectorFrom = 16;
constexpr double aside = 18;  ///< of a lead that passes its own bay

/// Draws the elements between their attachments.
class Wiring {
  public:
    Wiring(const host::NetworkModel& model, const NetworkIndex& index, const Plan& plan)
        : model_(model), index_(index), attachments_(model, index, plan) {}

    Drawing run(const Plan& plan) {
        for (std::size_t k = 0; k < model_.switches.size(); ++k) switchAt(static_cast<int>(k));
        for (std::size_t k = 0; k < model_.transformers2.size(); ++k) transformer2(static_cast<int>(k));
        for (std::size_t k = 0; k < model_.transformers3.size(); ++k) transformer3(static_cast<int>(k));
        for (std::size_t k = 0; k < model_.generators.size(); ++k) generator(static_cast<int>(k));
        for (std::size_t k = 0; k < model_.shunts.size(); ++k) shunt(static_cast<int>(k));
        for (std::size_t k = 0; k < model_.loads.size(); ++k) load(static_cast<int>(k));
        nodes(plan);
        frames(plan);
        lines(plan);
        finish();
        return std::move(out_);
    }

  private:
    double kv(const std::string& node) const { return model_.nodes[index_.node(node)].baseKv; }
    const Attachment* at(Kind kind, int index, int end) const { return attachments_.at(kind, index, end); }

    static QPolygonF between(const Attachment& i, const Attachment& j) {
        QPolygonF path{i.from};
        if (i.from != i.point) path << i.point;
        if (!i.leaves.isNull()) path << i.point + i.leaves * stub;
        if (!j.leaves.isNull()) path << j.point + j.leaves * stub;
        path << j.point;
        if (j.from != j.point) path << j.from;
        return path;
    }

    /// Short lines first: they have least room to give way.
    void lines(const Plan& plan) {
        std::vector<std::pair<double, int>> order;
        std::vector<Attachment> ends;
        for (std::size_t n = 0; n < model_.lines.size(); ++n) {
            const int k = static_cast<int>(n);
            const Attachment *i = at(Kind::Line, k, 0), *j = at(Kind::Line, k, 1);
            if (!i || !j) {
                ++out_.leftOut;
                continue;
            }
            order.emplace_back((i->point - j->point).manhattanLength(), k);
            ends.push_back(*i), ends.push_back(*j);
        }
        std::optional<Router> router;
        if (plan.rightAngled && Router::isWorthwhile(out_, order.size())) {
            router.emplace(out_, ends);
            std::sort(order.begin(), order.end());
        }
        for (const auto& [length, k] : order) line(k, router ? &*router : nullptr);
    }

    void line(int k, Router* router) {
        const host::Line& l = model_.lines[k];
        const Attachment *i = at(Kind::Line, k, 0), *j = at(Kind::Line, k, 1);
        QPolygonF path = router ? router->route(*i, *j) : QPolygonF();
        if (path.isEmpty()) path = between(*i, *j);
        if (path.first() != i->from) path.prepend(i->from);
        if (path.last() != j->from) path.append(j->from);
        Figure f(Kind::Line, k);
        f.legs = {{path, kv(l.i)}};
        f.off = !l.inService, f.openAtI = l.openAtI, f.openAtJ = l.openAtJ;
        f.centre = pointAlong(f, 50);
        out_.figures.push_back(std::move(f));
    }

    void switchAt(int k) {
        const host::Switch& s = model_.switches[k];
        const Attachment *i = at(Kind::Switch, k, 0), *j = at(Kind::Switch, k, 1);
        if (!i || !j) return void(++out_.leftOut);
        Figure f(Kind::Switch, k, s.breaker ? Glyph::Breaker : Glyph::Disconnector);
        f.open = !s.closed;
        const bool fromI = j->onBar && !i->onBar, fromJ = i->onBar && !j->onBar;
        QPolygonF path = fromJ ? elbow(j->point, *i) : elbow(i->point, *j);
        const QLineF straight(path[path.size() - 2], path.last());
        const double along = fromI || fromJ ? std::min(disconnectorFrom, straight.length() / 2) : straight.length() / 2;
        f.centre = straight.length() > 0 ? straight.pointAt(along / straight.length()) : path.last();
        f.angle = 90 - straight.angle() - 180;
        if (fromJ) std::reverse(path.begin(), path.end());
        f.legs = {{path, kv(s.i)}};
        out_.figures.push_back(std::move(f));
    }

    /// From a point aside, then straight onto the end.
    static QPolygonF elbow(const QPointF& from, const Attachment& end) {
        const QPointF to = end.point;
        if (std::abs(from.x() - to.x()) < 0.5 || std::abs(from.y() - to.y()) < 0.5) return {from, to};
        return {from, end.leaves.x() == 0 ? QPointF(to.x(), from.y()) : QPointF(from.x(), to.y()), to};
    }

    /// Down from one end, aside just before the other.
    static QPolygonF jog(const QPointF& from, const QPointF& to) {
        if (std::abs(from.x() - to.x()) < 0.5) return {from, to};
        const double y = to.y() - std::copysign(std::min(stub, std::abs(to.y() - from.y()) / 2), to.y() - from.y());
        return {from, {from.x(), y}, {to.x(), y}, to};
    }

    void transformer2(int k) {
        const host::Transformer2& t = model_.transformers2[k];
        const Attachment *i = at(Kind::Transformer2, k, 0), *j = at(Kind::Transformer2, k, 1);
        if (!i || !j) return void(++out_.leftOut);
        Figure f(Kind::Transformer2, k, Glyph::Transformer2);
        f.off = !t.inService;
        const QLineF axis(i->point, j->point);
        const bool upright = std::abs(axis.dy()) >= 2 * symbolHalf + stub && i->leaves.y() * axis.dy() > 0;
        if (upright)
            uprightTransformer(f, i->point, j->point);
        else
            slantedTransformer(f, between(*i, *j));
        f.legs[0].kv = kv(t.i.node), f.legs[1].kv = kv(t.j.node);
        if (upright && i->from != i->point) f.legs[0].path.prepend(i->from);
        if (upright && j->from != j->point) f.legs[1].path.append(j->from);
        out_.figures.push_back(std::move(f));
    }

    static void uprightTransformer(Figure& f, const QPointF& i, const QPointF& j) {
        const double sense = std::copysign(1.0, j.y() - i.y());
        const bool jogged = std::abs(i.x() - j.x()) >= 0.5;
        const double room = std::abs(j.y() - i.y()) - (jogged ? stub : 0);
        f.centre = {i.x(), i.y() + sense * std::min(room / 2, 60.0)};
        f.angle = sense > 0 ? 0 : 180;
        const QPointF half(0, sense * symbolHalf);
        f.legs = {{{i, f.centre - half}, 0}, {jog(f.centre + half, j), 0}};
    }

    static void slantedTransformer(Figure& f, const QPolygonF& path) {
        // In the middle of the longest stretch.
        qsizetype best = 0;
        for (qsizetype p = 0; p + 1 < path.size(); ++p)
            if (QLineF(path[p], path[p + 1]).length() > QLineF(path[best], path[best + 1]).length()) best = p;
        const QLineF stretch(path[best], path[best + 1]);
        f.centre = stretch.center();
        f.angle = 270 - stretch.angle();
        const double length = std::max(stretch.length(), 1.0), share = std::min(0.5, symbolHalf / length);
        QPolygonF first = path.mid(0, best + 1), second = path.mid(best + 1);
        first << stretch.pointAt(0.5 - share);
        second.prepend(stretch.pointAt(0.5 + share));
        f.legs = {{first, 0}, {second, 0}};
    }

    void transformer3(int k) {
        const host::Transformer3& t = model_.transformers3[k];
        std::array<const Attachment*, 3> ends{};
        for (int w = 0; w < 3; ++w) ends[w] = at(Kind::Transformer3, k, w);
        if (!ends[0] || !ends[1] || !ends[2]) return void(++out_.leftOut);
        Figure f(Kind::Transformer3, k, Glyph::Transformer3);
        f.off = !t.inService;
        const double others = (ends[1]->point.y() + ends[2]->point.y()) / 2;
        const double sense = others < ends[0]->point.y() ? -1 : 1;
        // Where the bay itself is in the way, past it and on to the other side of the bars.
        const bool past = ends[0]->leaves.y() * sense <= 0 && !ends[0]->onBar;
        const double nearest = std::min(std::abs(ends[1]->point.y() - ends[0]->point.y()),
                                        std::abs(ends[2]->point.y() - ends[0]->point.y()));
        const double drop = past ? std::max(nearest - 50, 30.0) : std::clamp(nearest / 2 - 4, 30.0, 50.0);
        f.centre = ends[0]->point + QPointF(past ? aside : 0, sense * drop);
        f.angle = sense > 0 ? 0 : 180;
        QPolygonF first{ends[0]->point};
        if (past) first << ends[0]->point + QPointF(aside, 0);
        f.legs.push_back({first << f.centre - QPointF(0, sense * 14), kv(t.winding[0].node)});
        const bool swapped = f.mirrored = (ends[1]->point.x() - ends[2]->point.x()) * sense > 0;
        for (int w = 1; w < 3; ++w) {
            const double side = ((w == 1) != swapped ? -1 : 1) * sense;
            const QPointF corner = f.centre + QPointF(side * 7, sense * 13);
            f.legs.push_back({windingLeg(*ends[w], corner, sense, w), kv(t.winding[w].node)});
        }
        for (int w = 0; w < 3; ++w)
            if (ends[w]->from != ends[w]->point) f.legs[w].path.prepend(ends[w]->from);
        out_.figures.push_back(std::move(f));
    }

    /// From a winding's node to its circle.
    static QPolygonF windingLeg(const Attachment& end, const QPointF& circle, double sense, int winding) {
        const double level = circle.y() + sense * (winding == 1 ? 5 : 10);
        if (std::abs(end.point.x() - circle.x()) < 0.5) return {end.point, circle};
        return {end.point, {end.point.x(), level}, {circle.x(), level}, circle};
    }

    void hanging(Kind kind, int k, Glyph glyph, const std::string& node, bool off) {
        const Attachment* end = at(kind, k, 0);
        if (!end) return void(++out_.leftOut);
        Figure f(kind, k, glyph);
        f.off = off;
        const QPointF way = end->leaves.isNull() ? QPointF(0, 1) : end->leaves;
        f.centre = end->point + way * hang;
        f.angle = way.x() != 0 ? -90 * way.x() : way.y() < 0 ? 180 : 0;
        f.legs = {{{end->point, f.centre}, kv(node)}};
        if (end->from != end->point) f.legs[0].path.prepend(end->from);
        out_.figures.push_back(std::move(f));
    }

    void generator(int k) {
        const host::Generator& g = model_.generators[k];
        const Glyph glyph = g.kind == "motor" ? Glyph::Motor : g.kind == "feeder" ? Glyph::Feeder : Glyph::Generator;
        hanging(Kind::Generator, k, glyph, g.node, !g.inService);
    }
    void shunt(int k) {
        const host::Shunt& s = model_.shunts[k];
        hanging(Kind::Shunt, k, s.x1 < 0 ? Glyph::Capacitor : Glyph::Reactor, s.node, !s.inService);
    }
    void load(int k) { hanging(Kind::Load, k, Glyph::Load, model_.loads[k].node, !model_.loads[k].inService); }

    void nodes(const Plan& plan) {
        for (std::size_t n = 0; n < model_.nodes.size(); ++n) {
            const int node = static_cast<int>(n);
            if (index_.bar(node) == node) {
                const BarSpan& span = attachments_.span(node);
                Figure f(Kind::Bar, node);
                const QPointF at = plan.at[n];
                const QPolygonF bar = span.upright ? QPolygonF{{at.x(), span.left}, {at.x(), span.right}}
                                                   : QPolygonF{{span.left, at.y()}, {span.right, at.y()}};
                f.legs = {{bar, model_.nodes[n].baseKv}};
                f.centre = f.legs[0].path.boundingRect().center();
                out_.figures.push_back(std::move(f));
            } else if (index_.bar(node) < 0) {
                Figure f(Kind::Point, node, Glyph::TNode);
                f.legs = {{{plan.at[n], plan.at[n]}, model_.nodes[n].baseKv}};
                f.centre = plan.at[n];
                out_.figures.push_back(std::move(f));
            }
        }
    }

    void finish() {
        for (const Figure& f : out_.figures) out_.bounds |= f.bounds();
        for (const Frame& f : out_.frames) out_.bounds |= f.box;
        if (!out_.figures.empty()) out_.bounds.adjust(-60, -60, 60, 60);
        out_.places.build(out_.figures, out_.bounds);
    }

    /// Around what belongs to one station alone; a station of a single bus needs no frame.
    void frames(const Plan& plan) {
        std::vector<QRectF> boxes(plan.names.size());
        std::vector<int> nodes(plan.names.size());
        std::vector<double> highest(plan.names.size());
        for (const Figure& f : out_.figures) {
            const int station = stationOf(f, plan);
            if (station < 0) continue;
            boxes[station] |= f.bounds();
            if (f.kind != Kind::Bar && f.kind != Kind::Point) continue;
            ++nodes[station];
            highest[station] = std::max(highest[station], model_.nodes[f.index].baseKv);
        }
        for (std::size_t s = 0; s < boxes.size(); ++s)
            if (nodes[s] > 1) out_.frames.push_back({plan.names[s], boxes[s].adjusted(-12, -12, 12, 12), highest[s]});
    }

    int stationOf(const Figure& f, const Plan& plan) const {
        const auto of = [&](const std::string& node) { return plan.station[index_.node(node)]; };
        const auto same = [](int a, int b) { return a == b ? a : -1; };
        switch (f.kind) {
            case Kind::Bar:
            case Kind::Point:
                return plan.station[f.index];
            case Kind::Switch:
                return same(of(model_.switches[f.index].i), of(model_.switches[f.index].j));
            case Kind::Transformer2:
                return same(of(model_.transformers2[f.index].i.node), of(model_.transformers2[f.index].j.node));
            case Kind::Transformer3:
                return same(of(model_.transformers3[f.index].winding[0].node),
                            of(model_.transformers3[f.index].winding[1].node));
            case Kind::Generator:
                return of(model_.generators[f.index].node);
            case Kind::Shunt:
                return of(model_.shunts[f.index].node);
            case Kind::Load:
                return of(model_.loads[f.index].node);
            case Kind::Line:
                break;
        }
        return -1;
    }

    const host::NetworkModel& model_;
    const NetworkIndex& index_;
    Attachments attachments_;
    Drawing out_;
};

}  // namespace

Drawing wire(const host::NetworkModel& model, const NetworkIndex& index, const Plan& plan) {
    return Wiring(model, index, plan).run(plan);
}

}  // namespace diagram
