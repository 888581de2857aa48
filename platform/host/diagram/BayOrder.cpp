#include <algorithm>
#include <map>

#include "platform/host/diagram/Plan.h"

namespace diagram {

namespace {

/// Mean x of what lines and transformers lead to from each node.
class FarEnds {
  public:
    FarEnds(const host::NetworkModel& model, const NetworkIndex& index, const Plan& plan) : index_(index), plan_(plan) {
        for (const auto& l : model.lines) add(l.i, l.j), add(l.j, l.i);
        for (const auto& t : model.transformers2) add(t.i.node, t.j.node), add(t.j.node, t.i.node);
        for (const auto& t : model.transformers3)
            for (int w = 0; w < 3; ++w) add(t.winding[w].node, t.winding[w == 0 ? 1 : 0].node);
    }

    [[nodiscard]] double of(const std::vector<int>& bay) const {
        double sum = 0;
        int count = 0;
        for (int n : bay)
            if (const auto at = found_.find(n); at != found_.end())
                for (double x : at->second) sum += x, ++count;
        return count > 0 ? sum / count : plan_.at[bay.front()].x();
    }

  private:
    void add(const std::string& from, const std::string& to) {
        const int a = index_.node(from), b = index_.node(to);
        if (a >= 0 && b >= 0) found_[a].push_back(plan_.at[index_.bar(b) >= 0 ? index_.bar(b) : b].x());
    }

    const NetworkIndex& index_;
    const Plan& plan_;
    std::unordered_map<int, std::vector<double>> found_;
};

}  // namespace

void orderBays(const host::NetworkModel& model, const NetworkIndex& index, Plan& plan) {
    if (plan.bayRows.empty()) return;
    const FarEnds far(model, index, plan);
    for (const BayRow& row : plan.bayRows) {
        std::vector<std::pair<double, const std::vector<int>*>> order;
        std::vector<double> places;
        for (const auto& bay : row) {
            order.emplace_back(far.of(bay), &bay);
            places.push_back(plan.at[bay.front()].x());
        }
        std::stable_sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        std::sort(places.begin(), places.end());
        for (std::size_t k = 0; k < order.size(); ++k)
            for (int n : *order[k].second) plan.at[n].setX(places[k]);
    }
}

}  // namespace diagram
