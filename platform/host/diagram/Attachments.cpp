#include "platform/host/diagram/Attachments.h"

#include <algorithm>
#include <cmath>

namespace diagram {

namespace {

constexpr double overhang = 12;
constexpr double besideSwitch = 16;  ///< between the disconnectors of one bay

int number(Kind kind) { return static_cast<int>(kind); }

}  // namespace

Attachments::Attachments(const host::NetworkModel& model, const NetworkIndex& index, const Plan& plan)
    : model_(model), index_(index), plan_(plan), spans_(plan.spans), used_(plan.at.size()) {
    bays();
    switches();
    transformers();
    lines();
    hangings();
    serve();
}

const Attachment* Attachments::at(Kind kind, int index, int end) const {
    const auto found = given_.find({number(kind), index, end});
    return found == given_.end() ? nullptr : &found->second;
}

int Attachments::carrier(const std::string& node) const {
    const int n = index_.node(node);
    return n >= 0 && index_.bar(n) >= 0 ? index_.bar(n) : n;
}

QPointF Attachments::middle(int node) const {
    if (index_.bar(node) != node) return plan_.at[node];
    const double mid = (spans_[node].left + spans_[node].right) / 2;
    return spans_[node].upright ? QPointF(plan_.at[node].x(), mid) : QPointF(mid, plan_.at[node].y());
}

double Attachments::along(int bar, const QPointF& point) const { return spans_[bar].upright ? point.y() : point.x(); }

double Attachments::across(int bar, const QPointF& point) const { return spans_[bar].upright ? point.x() : point.y(); }

Attachments::Side Attachments::sideOf(int bar, const QPointF& point) const {
    return across(bar, point) < across(bar, plan_.at[bar]) ? Above : Below;
}

void Attachments::give(const Key& key, int node, double x, Side side) {
    const bool upright = spans_[node].upright;
    const QPointF point = upright ? QPointF(plan_.at[node].x(), x) : QPointF(x, plan_.at[node].y());
    const double sense = side == Above ? -1 : 1;
    given_[key] = {point, point, upright ? QPointF(sense, 0) : QPointF(0, sense), true};
    used_[node][side].push_back(x);
    spans_[node].left = std::min(spans_[node].left, x - overhang);
    spans_[node].right = std::max(spans_[node].right, x + overhang);
}

/// Away from the switches of the point; a point without switches lets go in any direction.
QPointF Attachments::pointLeaves(int node) const {
    QPointF sum;
    for (int s : index_.switchesAt(node)) {
        const int other = index_.beyond(s, node);
        if (other < 0) continue;
        QPointF way = plan_.at[other] - plan_.at[node];
        // A bar is met at right angles.
        if (index_.bar(other) == other) (spans_[other].upright ? way.ry() : way.rx()) = 0;
        sum += way;
    }
    if (sum.manhattanLength() < 1) return {0, 0};
    if (std::abs(sum.x()) > std::abs(sum.y())) return {sum.x() > 0 ? -1.0 : 1.0, 0};
    return {0, sum.y() > 0 ? -1.0 : 1.0};
}

void Attachments::giveAtPoint(const Key& key, int node) {
    const int turn = atPoint_[node]++;
    const double aside = turn == 0 ? 0 : (turn % 2 ? 1 : -1) * pitch * ((turn + 1) / 2);
    const QPointF leaves = pointLeaves(node);
    const QPointF beside = leaves.x() == 0 ? QPointF(aside, 0) : QPointF(0, aside);
    given_[key] = {plan_.at[node] + beside, plan_.at[node], leaves, false};
}

void Attachments::bays() {
    std::map<int, std::vector<int>> toBars;
    for (std::size_t s = 0; s < model_.switches.size(); ++s) {
        const int i = carrier(model_.switches[s].i), j = carrier(model_.switches[s].j);
        if (i < 0 || j < 0 || i == j) continue;
        const bool barI = index_.bar(i) == i, barJ = index_.bar(j) == j;
        if (barI != barJ) toBars[barI ? j : i].push_back(static_cast<int>(s));
        if (barI || barJ) continue;
        for (int end = 0; end < 2; ++end) {
            const int n = end == 0 ? i : j;
            given_[{number(Kind::Switch), static_cast<int>(s), end}] = {plan_.at[n], plan_.at[n], {0, 0}, false};
        }
    }
    for (const auto& [point, switches] : toBars) bay(point, switches);
}

/// The switches from one point to the bars on one side of it stand side by side.
void Attachments::bay(int point, const std::vector<int>& switches) {
    std::array<std::vector<int>, 2> sides;
    const auto barOf = [&](int s) {
        const int i = carrier(model_.switches[s].i);
        return i == point ? carrier(model_.switches[s].j) : i;
    };
    for (int s : switches) sides[sideOf(barOf(s), plan_.at[point])].push_back(s);
    for (int sideNo : {0, 1})
        for (std::size_t k = 0; k < sides[sideNo].size(); ++k) {
            const int s = sides[sideNo][k], bar = barOf(s);
            const double turn = static_cast<double>(k) - (static_cast<double>(sides[sideNo].size()) - 1) / 2;
            const int pointEnd = carrier(model_.switches[s].i) == point ? 0 : 1;
            give({number(Kind::Switch), s, 1 - pointEnd}, bar, along(bar, plan_.at[point]) + turn * besideSwitch,
                 static_cast<Side>(sideNo));
            given_[{number(Kind::Switch), s, pointEnd}] = {plan_.at[point], plan_.at[point], {0, 0}, false};
        }
}

void Attachments::switches() {
    for (std::size_t s = 0; s < model_.switches.size(); ++s) {
        const int i = carrier(model_.switches[s].i), j = carrier(model_.switches[s].j), k = static_cast<int>(s);
        if (i < 0 || j < 0 || i == j || index_.bar(i) != i || index_.bar(j) != j) continue;
        pair({number(Kind::Switch), k, 0}, {number(Kind::Switch), k, 1}, i, j);
    }
}

bool Attachments::isFree(int bar, Side side, double x, double room) const {
    const auto& used = used_[bar][side];
    return std::none_of(used.begin(), used.end(), [&](double u) { return std::abs(u - x) < room - 0.5; });
}

double Attachments::freeNear(int bar, Side side, double x) const {
    for (int k = 0;; ++k)
        for (double candidate : {x + k * pitch / 2, x - k * pitch / 2}) {
            const bool inside = !spans_[bar].fixed ||
                                (candidate >= spans_[bar].left - 1 && candidate <= spans_[bar].right + 1) || k > 200;
            if (inside && isFree(bar, side, candidate)) return candidate;
        }
}

void Attachments::giveNear(const Key& key, int bar, Side side, double wanted) {
    give(key, bar, freeNear(bar, side, std::clamp(wanted, spans_[bar].left, spans_[bar].right)), side);
}

/// Two nodes joined by one symbol: above each other where both have room.
void Attachments::pair(const Key& first, const Key& second, int a, int b) {
    const bool barA = index_.bar(a) == a, barB = index_.bar(b) == b;
    if (barA && barB && !spans_[a].upright && !spans_[b].upright) return pairAligned(first, second, a, b);
    if (barA)
        giveNear(first, a, sideOf(a, middle(b)), along(a, middle(b)));
    else
        giveAtPoint(first, a);
    if (barB)
        giveNear(second, b, sideOf(b, middle(a)), along(b, given_[first].point));
    else
        giveAtPoint(second, b);
}

void Attachments::pairAligned(const Key& first, const Key& second, int a, int b) {
    const Side sideA = middle(a).y() <= middle(b).y() ? Below : Above, sideB = sideA == Below ? Above : Below;
    const double left = std::max(spans_[a].left, spans_[b].left), right = std::min(spans_[a].right, spans_[b].right);
    const double middleX = (left + right) / 2;
    for (int k = 0; k < 200 && left <= right; ++k) {
        const double x = middleX + (k % 2 ? -1 : 1) * pitch / 2 * ((k + 1) / 2);
        if (x < left - 1 || x > right + 1 || !isFree(a, sideA, x) || !isFree(b, sideB, x)) continue;
        give(first, a, x, sideA);
        give(second, b, x, sideB);
        return;
    }
    giveNear(first, a, sideA, middle(b).x());
    giveNear(second, b, sideB, given_[first].point.x());
}

void Attachments::transformers() {
    for (std::size_t t = 0; t < model_.transformers2.size(); ++t) {
        const int i = carrier(model_.transformers2[t].i.node), j = carrier(model_.transformers2[t].j.node);
        const int k = static_cast<int>(t);
        if (i >= 0 && j >= 0) pair({number(Kind::Transformer2), k, 0}, {number(Kind::Transformer2), k, 1}, i, j);
    }
    for (std::size_t t = 0; t < model_.transformers3.size(); ++t) transformer3(static_cast<int>(t));
}

void Attachments::transformer3(int t) {
    int ends[3];
    for (int w = 0; w < 3; ++w) ends[w] = carrier(model_.transformers3[t].winding[w].node);
    if (ends[0] < 0 || ends[1] < 0 || ends[2] < 0) return;
    const QPointF others = (middle(ends[1]) + middle(ends[2])) / 2;
    for (int w = 0; w < 3; ++w) {
        const Key key{number(Kind::Transformer3), t, w};
        const int end = ends[w];
        if (index_.bar(end) != end) {
            giveAtPoint(key, end);
            continue;
        }
        const QPointF first = w == 0 ? others : given_[{number(Kind::Transformer3), t, 0}].point;
        const double aside = w == 0 ? 0 : (w == 1 ? -1 : 1) * pitch / 4;
        giveNear(key, end, sideOf(end, first), along(end, first) + aside);
    }
}

void Attachments::hangings() {
    for (std::size_t k = 0; k < model_.generators.size(); ++k)
        hanging(Kind::Generator, static_cast<int>(k), model_.generators[k].node);
    for (std::size_t k = 0; k < model_.shunts.size(); ++k)
        hanging(Kind::Shunt, static_cast<int>(k), model_.shunts[k].node);
    for (std::size_t k = 0; k < model_.loads.size(); ++k)
        hanging(Kind::Load, static_cast<int>(k), model_.loads[k].node);
}

void Attachments::hanging(Kind kind, int index, const std::string& node) {
    const int n = carrier(node);
    if (n < 0) return;
    const Key key{number(kind), index, 0};
    if (index_.bar(n) != n) return giveAtPoint(key, n);
    auto& waiting = requests_[n];
    const std::size_t above = used_[n][Above].size() + waiting[Above].size(),
                      below = used_[n][Below].size() + waiting[Below].size();
    const Side side = above < below ? Above : Below;
    // At the end of the bar that the lines of this side turn away from.
    double lean = 0;
    for (const Request& r : waiting[side])
        if (r.key[0] == number(Kind::Line)) lean += r.along - along(n, middle(n));
    constexpr double farther = 1e6;
    waiting[side].push_back({key, lean > 0 ? -farther + index : farther + index, 0});
}

void Attachments::lines() {
    for (std::size_t l = 0; l < model_.lines.size(); ++l) {
        const int i = carrier(model_.lines[l].i), j = carrier(model_.lines[l].j);
        if (i < 0 || j < 0) continue;
        lineEnd(static_cast<int>(l), 0, i, middle(j));
        lineEnd(static_cast<int>(l), 1, j, middle(i));
    }
}

void Attachments::lineEnd(int line, int end, int node, const QPointF& other) {
    const Key key{number(Kind::Line), line, end};
    if (index_.bar(node) != node) {
        giveAtPoint(key, node);
        if (index_.switchesAt(node).empty()) given_[key].point = given_[key].from;
        return;
    }
    const double rise = across(node, middle(node)) - across(node, other);
    requests_[node][rise >= 0 ? Above : Below].push_back({key, along(node, other), rise});
}

void Attachments::serve() {
    for (auto& [bar, sides] : requests_) {
        if (spans_[bar].fixed) balance(bar, sides);
        for (Side side : {Above, Below}) serveSide(bar, side, sides[side]);
    }
}

/// What does not fit on its side of a bar of fixed length goes to the other one.
void Attachments::balance(int bar, std::array<std::vector<Request>, 2>& sides) {
    const double width = spans_[bar].right - spans_[bar].left;
    const std::size_t room = std::max<std::size_t>(1, static_cast<std::size_t>(width / pitch));
    for (Side side : {Above, Below}) {
        auto& crowded = sides[side];
        auto& other = sides[1 - side];
        std::sort(crowded.begin(), crowded.end(),
                  [](const Request& a, const Request& b) { return std::abs(a.rise) > std::abs(b.rise); });
        while (!crowded.empty() && crowded.size() + used_[bar][side].size() > room &&
               other.size() + used_[bar][1 - side].size() < room) {
            other.push_back(crowded.back());
            crowded.pop_back();
        }
    }
}

/// The free places nearest the middle, given from left to right in the order of the far ends.
void Attachments::serveSide(int bar, Side side, std::vector<Request>& requests) {
    if (requests.empty()) return;
    std::stable_sort(requests.begin(), requests.end(), [](const Request& a, const Request& b) {
        return a.along != b.along ? a.along < b.along : a.key < b.key;
    });
    const double centre = along(bar, middle(bar));
    const bool even = requests.size() % 2 == 0 && used_[bar][side].empty();
    std::vector<double> free;
    for (int k = 0; free.size() < requests.size(); ++k) {
        const double offset = (k % 2 ? 1 : -1) * ((k + 1) / 2) * pitch / (used_[bar][side].empty() ? 1 : 2);
        const double x = centre + offset + (even ? -pitch / 2 : 0);
        const bool apart =
            std::none_of(free.begin(), free.end(), [&](double f) { return std::abs(f - x) < pitch - 0.5; });
        if (apart && isFree(bar, side, x)) free.push_back(x);
    }
    std::sort(free.begin(), free.end());
    for (std::size_t k = 0; k < requests.size(); ++k) give(requests[k].key, bar, free[k], side);
}

}  // namespace diagram
