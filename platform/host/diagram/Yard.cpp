#include "platform/host/diagram/Yard.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace diagram {

namespace {

constexpr double betweenBars = 24;

/// Points that switches join with each other, in columns: the distance from the bars counts down the column.
struct Bay {
    std::vector<int> nodes;
    std::vector<int> depth;  ///< of each node, 1 beside a bar
    int columns = 1;
    int deepest = 1;
    bool rises = true;
};

class Arrangement {
  public:
    Arrangement(const NetworkIndex& index, const Load& load, bool top, Yard& yard, Plan& plan)
        : index_(index), load_(load), top_(top), yard_(yard), plan_(plan) {}

    void run() {
        findBars();
        findBays();
        const int columns = std::max({1, columnsOf(true), columnsOf(false)});
        yard_.width = columns * pitch;
        for (std::size_t b = 0; b < bars_.size(); ++b) {
            plan_.at[bars_[b]] = {0, static_cast<double>(b) * betweenBars};
            plan_.spans[bars_[b]] = {-yard_.width / 2, yard_.width / 2, true};
        }
        yard_.above = 50;
        yard_.below = 50 + betweenBars * std::max<double>(0, static_cast<double>(bars_.size()) - 1);
        placeBays(true);
        placeBays(false);
    }

  private:
    void findBars() {
        for (int n : yard_.nodes)
            if (index_.bar(n) == n) bars_.push_back(n);
    }

    void findBays() {
        std::set<int> done(bars_.begin(), bars_.end());
        for (int n : yard_.nodes)
            if (index_.bar(n) < 0 && !done.contains(n)) bays_.push_back(bayFrom(n, done));
    }

    Bay bayFrom(int first, std::set<int>& done) {
        Bay bay;
        std::vector<int> all{first};
        done.insert(first);
        for (std::size_t k = 0; k < all.size(); ++k)
            for (int s : index_.switchesAt(all[k]))
                if (const int n = index_.beyond(s, all[k]); n >= 0 && index_.bar(n) < 0 && done.insert(n).second)
                    all.push_back(n);
        sortByDepth(all, bay);
        bay.rises = risesFor(bay);
        return bay;
    }

    bool besideBar(int n) const {
        const auto& switches = index_.switchesAt(n);
        return std::any_of(switches.begin(), switches.end(), [&](int s) {
            const int other = index_.beyond(s, n);
            return other >= 0 && index_.bar(other) >= 0;
        });
    }

    void sortByDepth(const std::vector<int>& all, Bay& bay) const {
        std::map<int, int> depth;
        for (int n : all)
            if (besideBar(n)) depth[n] = 1, bay.nodes.push_back(n);
        if (bay.nodes.empty()) depth[all[0]] = 1, bay.nodes.push_back(all[0]);
        for (std::size_t k = 0; k < bay.nodes.size(); ++k)
            for (int s : index_.switchesAt(bay.nodes[k])) {
                const int n = index_.beyond(s, bay.nodes[k]);
                if (n >= 0 && index_.bar(n) < 0 && depth.emplace(n, depth[bay.nodes[k]] + 1).second)
                    bay.nodes.push_back(n);
            }
        std::map<int, int> width;
        for (int n : bay.nodes) {
            bay.depth.push_back(depth[n]);
            bay.columns = std::max(bay.columns, ++width[depth[n]]);
            bay.deepest = std::max(bay.deepest, depth[n]);
        }
    }

    /// Lines leave at the outer side, transformers lead to the neighbouring voltage.
    bool risesFor(const Bay& bay) const {
        int lines = 0, windings = 0, direct = 0;
        for (int n : bay.nodes) lines += load_.lines[n], windings += load_.windings[n], direct += load_.direct[n];
        if (top_) return lines > 0 || direct == 0;
        return windings > 0;
    }

    int columnsOf(bool rising) const {
        int columns = 0, most = 0;
        for (const Bay& bay : bays_)
            if (bay.rises == rising) columns += bay.columns;
        // Transformers all stand on one side, the rest shares both.
        for (int b : bars_) most = std::max({most, load_.windings[b], (load_.direct[b] + 1) / 2});
        return columns + most + (most > 1 ? 1 : 0);
    }

    void placeBays(bool rising) {
        int columns = 0;
        for (const Bay& bay : bays_)
            if (bay.rises == rising) columns += bay.columns;
        double x = -columns * pitch / 2;
        BayRow row;
        for (const Bay& bay : bays_) {
            if (bay.rises != rising) continue;
            place(bay, x, rising);
            x += bay.columns * pitch;
            if (bay.columns == 1) row.push_back(bay.nodes);
        }
        if (row.size() > 1) plan_.bayRows.push_back(row);
    }

    void place(const Bay& bay, double left, bool rising) {
        std::map<int, int> used, width;
        for (int d : bay.depth) ++width[d];
        for (std::size_t k = 0; k < bay.nodes.size(); ++k) {
            const int d = bay.depth[k];
            const double x = left + (bay.columns - width[d]) * pitch / 2 + (used[d]++ + 0.5) * pitch;
            const double barEdge = rising ? 0 : (static_cast<double>(bars_.size()) - 1) * betweenBars;
            plan_.at[bay.nodes[k]] = {x, barEdge + (rising ? -1 : 1) * (d * step + 6)};
        }
        double& reach = rising ? yard_.above : yard_.below;
        const double bars = rising ? 0 : (static_cast<double>(bars_.size()) - 1) * betweenBars;
        reach = std::max(reach, bay.deepest * step + bars + 56);
    }

    const NetworkIndex& index_;
    const Load& load_;
    bool top_;
    Yard& yard_;
    Plan& plan_;
    std::vector<int> bars_;
    std::vector<Bay> bays_;
};

}  // namespace

std::vector<int> Load::transformersAt(const std::vector<Yard>& yards) const {
    std::set<int> found;
    for (const Yard& yard : yards)
        for (int n : yard.nodes) found.insert(transformers[n].begin(), transformers[n].end());
    return {found.rbegin(), found.rend()};
}

std::vector<Yard> yardsOf(const host::NetworkModel& model, const NetworkIndex& index, const std::vector<int>& nodes) {
    std::vector<Yard> yards;
    std::set<int> done;
    for (int first : nodes) {
        if (!done.insert(first).second) continue;
        Yard yard{model.nodes[first].baseKv, {first}};
        for (std::size_t k = 0; k < yard.nodes.size(); ++k)
            for (int s : index.switchesAt(yard.nodes[k]))
                if (const int n = index.beyond(s, yard.nodes[k]); n >= 0 && done.insert(n).second)
                    yard.nodes.push_back(n);
        if (yard.nodes.size() > 1 || index.bar(first) < 0 || index.bar(first) == first) yards.push_back(yard);
    }
    std::stable_sort(yards.begin(), yards.end(), [](const Yard& a, const Yard& b) { return a.kv > b.kv; });
    return yards;
}

void arrangeYard(const NetworkIndex& index, const Load& load, bool top, Yard& yard, Plan& plan) {
    Arrangement(index, load, top, yard, plan).run();
}

}  // namespace diagram
