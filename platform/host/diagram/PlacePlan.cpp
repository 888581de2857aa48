#include <algorithm>
#include <cmath>
#include <set>

#include "platform/host/diagram/Plan.h"

namespace diagram {

namespace {

constexpr double betweenBars = 120;
constexpr double shareWanted = 0.6;

bool placed(const host::Node& node) { return node.hasPosition && std::isfinite(node.x) && std::isfinite(node.y); }

double quantile(std::vector<double> values, double share) {
    if (values.empty()) return 0;
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

double distance(const host::Node& a, const host::Node& b) { return std::hypot(a.x - b.x, a.y - b.y); }

std::vector<double> switchLengths(const host::NetworkModel& model, const NetworkIndex& index) {
    std::vector<double> lengths;
    for (const host::Switch& s : model.switches) {
        const int i = index.node(s.i), j = index.node(s.j);
        if (i < 0 || j < 0 || !placed(model.nodes[i]) || !placed(model.nodes[j])) continue;
        if (const double d = distance(model.nodes[i], model.nodes[j]); d > 0) lengths.push_back(d);
    }
    return lengths;
}

/// Distance of each node from its nearest neighbour along a sweep over x.
std::vector<double> neighbourDistances(const host::NetworkModel& model) {
    std::vector<const host::Node*> nodes;
    for (const host::Node& node : model.nodes)
        if (placed(node)) nodes.push_back(&node);
    std::sort(nodes.begin(), nodes.end(), [](auto* a, auto* b) { return a->x < b->x; });
    std::vector<double> nearest;
    for (std::size_t n = 0; n < nodes.size(); ++n) {
        double best = std::numeric_limits<double>::max();
        for (std::size_t m = n + 1; m < nodes.size() && nodes[m]->x - nodes[n]->x < best; ++m)
            if (const double d = distance(*nodes[n], *nodes[m]); d > 0) best = std::min(best, d);
        if (best < std::numeric_limits<double>::max()) nearest.push_back(best);
    }
    return nearest;
}

double scaleOf(const host::NetworkModel& model, const NetworkIndex& index) {
    const std::vector<double> lengths = switchLengths(model, index);
    const double length = lengths.empty() ? quantile(neighbourDistances(model), 0.1) : quantile(lengths, 0.2);
    return length > 0 ? (lengths.empty() ? betweenBars : step) / length : 1;
}

/// Nodes without a place go beside what they are connected with, the rest into a row below.
class Gaps {
  public:
    Gaps(const host::NetworkModel& model, const NetworkIndex& index, Plan& plan) : index_(index), plan_(plan) {
        const auto join = [&](const std::string& i, const std::string& j) { join_(i, j); };
        near_.resize(model.nodes.size());
        for (const auto& s : model.switches) join(s.i, s.j);
        for (const auto& t : model.transformers2) join(t.i.node, t.j.node);
        for (const auto& t : model.transformers3)
            join(t.winding[0].node, t.winding[1].node), join(t.winding[0].node, t.winding[2].node);
        for (const auto& l : model.lines) join(l.i, l.j);
        done_.resize(model.nodes.size());
        for (std::size_t n = 0; n < model.nodes.size(); ++n) done_[n] = placed(model.nodes[n]);
    }

    void fill() {
        std::vector<int> open;
        for (std::size_t n = 0; n < done_.size(); ++n)
            if (!done_[n]) open.push_back(static_cast<int>(n));
        for (std::size_t before = 0; before != open.size();) {
            before = open.size();
            open.erase(std::remove_if(open.begin(), open.end(), [this](int n) { return beside(n); }), open.end());
        }
        double bottom = 0, x = 0;
        for (std::size_t n = 0; n < done_.size(); ++n)
            if (done_[n]) bottom = std::max(bottom, plan_.at[n].y());
        for (int n : open) plan_.at[n] = {x += betweenBars, bottom + betweenBars};
    }

  private:
    void join_(const std::string& first, const std::string& second) {
        const int i = index_.node(first), j = index_.node(second);
        if (i < 0 || j < 0) return;
        near_[i].push_back(j), near_[j].push_back(i);
    }

    bool beside(int n) {
        for (int other : near_[n]) {
            if (!done_[other]) continue;
            const int turn = given_[other]++;
            plan_.at[n] = plan_.at[other] + QPointF(step * (turn / 2 + 1) * (turn % 2 ? -1 : 1), 2 * step);
            return done_[n] = true;
        }
        return false;
    }

    const NetworkIndex& index_;
    Plan& plan_;
    std::vector<std::vector<int>> near_;
    std::vector<bool> done_;
    std::unordered_map<int, int> given_;
};

/// A bar whose bays stand above each other is upright.
bool isUpright(const NetworkIndex& index, const Plan& plan, int bar) {
    QPolygonF bays;
    for (int s : index.switchesAt(bar))
        if (const int other = index.beyond(s, bar); other >= 0 && index.bar(other) < 0) bays << plan.at[other];
    const QRectF box = bays.boundingRect();
    return bays.size() > 1 && box.height() > 1.5 * box.width();
}

void nameStations(const host::NetworkModel& model, Plan& plan) {
    std::unordered_map<std::string_view, int> byName;
    for (std::size_t n = 0; n < model.nodes.size(); ++n) {
        const std::string& name = model.nodes[n].station;
        if (name.empty()) continue;
        const auto [at, fresh] = byName.emplace(name, static_cast<int>(plan.names.size()));
        if (fresh) plan.names.push_back(QString::fromStdString(name));
        plan.station[n] = at->second;
    }
}

}  // namespace

bool hasNodePlaces(const host::NetworkModel& model) {
    std::set<std::pair<double, double>> places;
    double count = 0;
    for (const host::Node& node : model.nodes)
        if (placed(node)) ++count, places.insert({node.x, node.y});
    return count > 0 && count >= shareWanted * static_cast<double>(model.nodes.size()) &&
           static_cast<double>(places.size()) >= shareWanted * count;
}

Plan planByPlaces(const host::NetworkModel& model, const NetworkIndex& index) {
    Plan plan;
    const std::size_t count = model.nodes.size();
    plan.at.resize(count), plan.spans.resize(count), plan.station.assign(count, -1);
    const double scale = scaleOf(model, index);
    for (std::size_t n = 0; n < count; ++n)
        if (placed(model.nodes[n])) plan.at[n] = QPointF(model.nodes[n].x, model.nodes[n].y) * scale;
    Gaps(model, index, plan).fill();
    for (std::size_t n = 0; n < count; ++n) {
        const bool upright = isUpright(index, plan, static_cast<int>(n));
        const double middle = upright ? plan.at[n].y() : plan.at[n].x();
        plan.spans[n] = {middle - 15, middle + 15, false, upright};
    }
    nameStations(model, plan);
    plan.rightAngled = true;
    return plan;
}

}  // namespace diagram
