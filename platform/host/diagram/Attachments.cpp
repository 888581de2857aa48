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
    hangings();
    lines();
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
    return {(spans_[node].left + spans_[node].right) / 2, plan_.at[node].y()};
}

void Attachments::give(const Key& key, int node, double x, Side side) {
    const QPointF point(x, plan_.at[node].y());
    given_[key] = {point, point, {0, side == Above ? -1.0 : 1.0}, true};
    used_[node][side].push_back(x);
    spans_[node].left = std::min(spans_[node].left, x - overhang);
    spans_[node].right = std::max(spans_[node].right, x + overhang);
}

/// Away from the switches of the point; a point without switches lets go in any direction.
QPointF Attachments::pointLeaves(int node) const {
    double sum = 0;
    for (int s : index_.switchesAt(node))
        if (const int other = index_.beyond(s, node); other >= 0) sum += plan_.at[other].y() - plan_.at[node].y();
    if (index_.switchesAt(node).empty() || std::abs(sum) < 1) return {0, 0};
    return {0, sum > 0 ? -1.0 : 1.0};
}

void Attachments::giveAtPoint(const Key& key, int node) {
    const int turn = atPoint_[node]++;
    const double aside = turn == 0 ? 0 : (turn % 2 ? 1 : -1) * pitch * ((turn + 1) / 2);
    given_[key] = {plan_.at[node] + QPointF(aside, 0), plan_.at[node], pointLeaves(node), false};
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
    for (int s : switches) {
        const int i = carrier(model_.switches[s].i), j = carrier(model_.switches[s].j);
        sides[plan_.at[i == point ? j : i].y() > plan_.at[point].y()].push_back(s);
    }
    for (const std::vector<int>& side : sides)
        for (std::size_t k = 0; k < side.size(); ++k) {
            const bool fromI = carrier(model_.switches[side[k]].i) == point;
            const int bar = carrier(fromI ? model_.switches[side[k]].j : model_.switches[side[k]].i);
            const double x = plan_.at[point].x() +
                             (static_cast<double>(k) - (static_cast<double>(side.size()) - 1) / 2) * besideSwitch;
            const bool above = plan_.at[point].y() < plan_.at[bar].y();
            give({number(Kind::Switch), side[k], fromI ? 1 : 0}, bar, x, above ? Above : Below);
            given_[{number(Kind::Switch), side[k], fromI ? 0 : 1}] = {plan_.at[point], plan_.at[point], {0, 0}, false};
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

/// Two nodes joined by one symbol: above each other where both have room.
void Attachments::pair(const Key& first, const Key& second, int a, int b) {
    const bool barA = index_.bar(a) == a, barB = index_.bar(b) == b;
    const bool aAbove = middle(a).y() <= middle(b).y();
    const Side sideA = aAbove ? Below : Above, sideB = aAbove ? Above : Below;
    if (barA && barB) {
        const double left = std::max(spans_[a].left, spans_[b].left),
                     right = std::min(spans_[a].right, spans_[b].right);
        double x = left <= right ? (left + right) / 2 : middle(a).x();
        if (left <= right)
            for (int k = 0; k < 200 && !(isFree(a, sideA, x) && isFree(b, sideB, x)); ++k)
                x = (left + right) / 2 + (k % 2 ? -1 : 1) * pitch / 2 * (k / 2 + 1);
        else
            x = freeNear(a, sideA, std::clamp(middle(b).x(), spans_[a].left, spans_[a].right));
        give(first, a, x, sideA);
        give(second, b, left <= right ? x : freeNear(b, sideB, std::clamp(x, spans_[b].left, spans_[b].right)), sideB);
        return;
    }
    const auto end = [&](const Key& key, int node, bool bar, Side side, double wanted) {
        if (!bar) return giveAtPoint(key, node);
        give(key, node, freeNear(node, side, std::clamp(wanted, spans_[node].left, spans_[node].right)), side);
    };
    end(first, a, barA, sideA, middle(b).x());
    end(second, b, barB, sideB, middle(a).x());
}

void Attachments::transformers() {
    for (std::size_t t = 0; t < model_.transformers2.size(); ++t) {
        const int i = carrier(model_.transformers2[t].i.node), j = carrier(model_.transformers2[t].j.node);
        const int k = static_cast<int>(t);
        if (i >= 0 && j >= 0) pair({number(Kind::Transformer2), k, 0}, {number(Kind::Transformer2), k, 1}, i, j);
    }
    for (std::size_t t = 0; t < model_.transformers3.size(); ++t) {
        int ends[3];
        for (int w = 0; w < 3; ++w) ends[w] = carrier(model_.transformers3[t].winding[w].node);
        if (ends[0] < 0 || ends[1] < 0 || ends[2] < 0) continue;
        const double below = (middle(ends[1]).y() + middle(ends[2]).y()) / 2;
        const bool down = below >= middle(ends[0]).y();
        for (int w = 0; w < 3; ++w) {
            const Key key{number(Kind::Transformer3), static_cast<int>(t), w};
            if (index_.bar(ends[w]) != ends[w]) {
                giveAtPoint(key, ends[w]);
                continue;
            }
            const Side side = (w == 0) == down ? Below : Above;
            const double wanted = w == 0 ? (middle(ends[1]).x() + middle(ends[2]).x()) / 2
                                         : given_[{number(Kind::Transformer3), static_cast<int>(t), 0}].point.x() +
                                               (w == 1 ? -1 : 1) * pitch / 4;
            give(key, ends[w], freeNear(ends[w], side, std::clamp(wanted, spans_[ends[w]].left, spans_[ends[w]].right)),
                 side);
        }
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
    const auto& waiting = requests_[n];
    const std::size_t above = used_[n][Above].size() + waiting[Above].size(),
                      below = used_[n][Below].size() + waiting[Below].size();
    const Side side = above < below ? Above : Below;
    // A place that is farther out than any line's, so that lines keep the middle.
    requests_[n][side].push_back({key, n, middle(n) + QPointF(1e6 + index, 0), 0});
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
    const double rise = middle(node).y() - other.y();
    requests_[node][rise >= 0 ? Above : Below].push_back({key, node, other, rise});
}

void Attachments::serve() {
    for (auto& [bar, sides] : requests_) {
        if (spans_[bar].fixed) {
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
        for (Side side : {Above, Below}) serveSide(bar, side, sides[side]);
    }
}

/// The free places nearest the middle, given from left to right in the order of the far ends.
void Attachments::serveSide(int bar, Side side, std::vector<Request>& requests) {
    if (requests.empty()) return;
    std::stable_sort(requests.begin(), requests.end(), [](const Request& a, const Request& b) {
        return a.other.x() != b.other.x() ? a.other.x() < b.other.x() : a.key < b.key;
    });
    const double centre = middle(bar).x();
    const bool even = requests.size() % 2 == 0 && used_[bar][side].empty();
    std::vector<double> free;
    for (int k = 0; free.size() < requests.size(); ++k) {
        const double offset = (k % 2 ? 1 : -1) * ((k + 1) / 2) * pitch / (used_[bar][side].empty() ? 1 : 2);
        const double x = centre + offset + (even ? -pitch / 2 : 0);
        const bool apart =
            std::none_of(free.begin(), free.end(), [&](double f) { return std::abs(f - x) < pitch - 0.5; });
        if (apart && isFree(bar, side, x, 0.75 * pitch)) free.push_back(x);
    }
    std::sort(free.begin(), free.end());
    for (std::size_t k = 0; k < requests.size(); ++k) give(requests[k].key, bar, free[k], side);
}

}  // namespace diagram
