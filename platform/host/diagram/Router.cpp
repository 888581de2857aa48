#include "platform/host/diagram/Router.h"

#include <algorithm>
#include <cmath>
#include <queue>

namespace diagram {

namespace {

constexpr double spacing = 15;
constexpr float bend = 45;
constexpr float alongLine = 30, acrossLine = 25;  ///< along: per unit of length
constexpr float alongBar = 200, acrossBar = 90;
constexpr float alongLead = 60, acrossLead = 40;
constexpr float throughSymbol = 300;
constexpr float throughStation = 1.5F;
constexpr double near = 9;  ///< closer than this counts as the same track
constexpr std::size_t mostLines = 300;
constexpr double largestArea = 5e8;  ///< scene units, times the lines

void addRegular(std::vector<double>& places, double from, double to) {
    for (double v = from; v <= to; v += spacing) places.push_back(v);
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end(), [](double a, double b) { return b - a < 0.5; }),
                 places.end());
}

int nearest(const std::vector<double>& places, double value) {
    const auto at = std::lower_bound(places.begin(), places.end(), value);
    if (at == places.end()) return static_cast<int>(places.size()) - 1;
    const int k = static_cast<int>(at - places.begin());
    return k > 0 && value - places[k - 1] < *at - value ? k - 1 : k;
}

}  // namespace

bool Router::isWorthwhile(const Drawing& drawing, std::size_t lines) {
    QRectF box;
    for (const Figure& f : drawing.figures) box |= f.bounds();
    return lines > 0 && lines <= mostLines && box.width() * box.height() * static_cast<double>(lines) < largestArea;
}

Router::Router(const Drawing& drawing, const std::vector<Attachment>& ends) {
    QRectF box;
    for (const Figure& f : drawing.figures) box |= f.bounds();
    box.adjust(-60, -60, 60, 60);
    for (const Attachment& end : ends) xs_.push_back(end.point.x()), ys_.push_back(end.point.y());
    addRegular(xs_, box.left(), box.right());
    addRegular(ys_, box.top(), box.bottom());
    cells_.resize(xs_.size() * ys_.size());
    for (const Figure& f : drawing.figures) {
        const bool bar = f.kind == Kind::Bar;
        for (const Leg& leg : f.legs)
            for (qsizetype k = 0; k + 1 < leg.path.size(); ++k)
                occupy(leg.path[k], leg.path[k + 1], bar ? alongBar : alongLead, bar ? acrossBar : acrossLead);
        if (f.glyph != Glyph::None && f.kind != Kind::Point)
            occupy(QRectF(f.centre.x() - 14, f.centre.y() - 14, 28, 28), throughSymbol);
    }
    for (const Frame& frame : drawing.frames) occupy(frame.box, throughStation);
}

/// An upright or level stretch that is there already.
void Router::occupy(const QPointF& a, const QPointF& b, float along, float across) {
    const QRectF box = QRectF(a, b).normalized();
    const bool level = box.width() >= box.height();
    auto& tracks = level ? ys_ : xs_;
    const auto& places = level ? xs_ : ys_;
    const double track = level ? box.center().y() : box.center().x();
    const double from = level ? box.left() : box.top(), to = level ? box.right() : box.bottom();
    for (std::size_t t = 0; t < tracks.size(); ++t)
        for (std::size_t p = 0; p < places.size(); ++p) {
            const int x = static_cast<int>(level ? p : t), y = static_cast<int>(level ? t : p);
            if (std::abs(tracks[t] - track) < near && p + 1 < places.size()) {
                const double common = std::min(to, places[p + 1]) - std::max(from, places[p]);
                if (common > 0) (level ? cell(x, y).right : cell(x, y).down) += along * static_cast<float>(common);
            }
            if (t + 1 < tracks.size() && tracks[t] < track && tracks[t + 1] >= track && places[p] > from - 2 &&
                places[p] < to + 2)
                (level ? cell(x, y).down : cell(x, y).right) += across;
        }
}

void Router::occupy(const QRectF& box, float perUnit) {
    for (int y = 0; y < rows(); ++y)
        for (int x = 0; x < columns(); ++x) {
            if (ys_[y] > box.top() && ys_[y] < box.bottom() && x + 1 < columns()) {
                const double common = std::min(box.right(), xs_[x + 1]) - std::max(box.left(), xs_[x]);
                if (common > 0) cell(x, y).right += perUnit * static_cast<float>(common);
            }
            if (xs_[x] > box.left() && xs_[x] < box.right() && y + 1 < rows()) {
                const double common = std::min(box.bottom(), ys_[y + 1]) - std::max(box.top(), ys_[y]);
                if (common > 0) cell(x, y).down += perUnit * static_cast<float>(common);
            }
        }
}

int Router::nodeAt(const QPointF& point) const { return nearest(ys_, point.y()) * columns() + nearest(xs_, point.x()); }

QPointF Router::pointOf(int node) const { return {xs_[node % columns()], ys_[node / columns()]}; }

int Router::wayOf(const QPointF& leaves) {
    if (leaves.isNull()) return -1;
    if (leaves.x() != 0) return leaves.x() > 0 ? Right : Left;
    return leaves.y() > 0 ? Down : Up;
}

/// Of the edge from a node; negative when it leads out of the grid.
float Router::edgeCost(int x, int y, Way way) {
    switch (way) {
        case Right:
            return x + 1 < columns() ? static_cast<float>(xs_[x + 1] - xs_[x]) + cell(x, y).right : -1;
        case Left:
            return x > 0 ? static_cast<float>(xs_[x] - xs_[x - 1]) + cell(x - 1, y).right : -1;
        case Down:
            return y + 1 < rows() ? static_cast<float>(ys_[y + 1] - ys_[y]) + cell(x, y).down : -1;
        default:
            return y > 0 ? static_cast<float>(ys_[y] - ys_[y - 1]) + cell(x, y - 1).down : -1;
    }
}

/// A* over nodes and the way that each was reached by. \return the states from start to end
std::vector<int> Router::search(const Attachment& from, const Attachment& to) {
    const int start = nodeAt(from.point), goal = nodeAt(to.point);
    const int firstWay = wayOf(from.leaves), lastWay = to.leaves.isNull() ? -1 : (wayOf(to.leaves) + 2) % wayCount;
    best_.assign(cells_.size() * wayCount, std::numeric_limits<float>::max());
    before_.assign(best_.size(), -1);
    const QPointF aim = pointOf(goal);
    const auto rest = [&](int node) { return static_cast<float>((pointOf(node) - aim).manhattanLength()); };
    std::priority_queue<Step> open;
    for (int way = 0; way < wayCount; ++way)
        if (firstWay < 0 || way == firstWay)
            best_[start * wayCount + way] = 0, open.push({rest(start), start * wayCount + way});
    const int by[wayCount] = {1, columns(), -1, -columns()};
    while (!open.empty()) {
        const auto [estimate, state] = open.top();
        open.pop();
        const int node = state / wayCount, came = state % wayCount;
        if (estimate > best_[state] + rest(node) + 0.5F) continue;
        if (node == goal && (lastWay < 0 || came == lastWay)) {
            std::vector<int> states{state};
            while (before_[states.back()] >= 0) states.push_back(before_[states.back()]);
            std::reverse(states.begin(), states.end());
            return states;
        }
        for (int way = 0; way < wayCount; ++way) {
            if (way == (came + 2) % wayCount || (node == start && way != came)) continue;
            const float cost = edgeCost(node % columns(), node / columns(), static_cast<Way>(way));
            if (cost < 0) continue;
            const int next = (node + by[way]) * wayCount + way;
            const float sum = best_[state] + cost + (way == came ? 0 : bend);
            if (sum >= best_[next]) continue;
            best_[next] = sum, before_[next] = state;
            open.push({sum + rest(node + by[way]), next});
        }
    }
    return {};
}

QPolygonF Router::route(const Attachment& from, const Attachment& to) {
    const std::vector<int> states = search(from, to);
    if (states.size() < 2) return {};
    QPolygonF path{from.point};
    for (std::size_t k = 1; k + 1 < states.size(); ++k)
        if (states[k] % wayCount != states[k + 1] % wayCount) path << pointOf(states[k] / wayCount);
    path << to.point;
    for (qsizetype k = 0; k + 1 < path.size(); ++k) occupy(path[k], path[k + 1], alongLine, acrossLine);
    return path;
}

}  // namespace diagram
