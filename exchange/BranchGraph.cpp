#include "exchange/BranchGraph.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace exchange {

namespace {

/// The walk as a loop: a chain of virtual relays can be longer than a call stack is deep.
class Walk {
  public:
    Walk(const BranchGraph& graph, const std::vector<WalkStep>& before) : graph_(graph) {
        for (const auto& step : before) reached_.insert(step.node);
    }

    /// The new steps, the oldest first.
    std::vector<WalkStep> run(int node, int idNo, int goOn, int level) {
        enter(node, idNo, goOn, level);
        while (!open_.empty()) {
            auto& front = open_.back();
            const auto rows = graph_.at(front.node);
            if (front.next == rows.size()) {
                open_.pop_back();
                continue;
            }
            const int next = graph_.edges()[static_cast<std::size_t>(rows[front.next++])].idNo;
            if (next != front.cameBy) enter(front.node, next, 1, front.level);
        }
        return std::move(steps_);
    }

  private:
    /// A node that was passed, with the rows that touch it still to be tried.
    struct Passed {
        int node = 0;
        int cameBy = 0;
        int level = 0;
        std::size_t next = 0;
    };

    const BranchGraph& graph_;
    std::unordered_set<int> reached_;
    std::vector<WalkStep> steps_;
    std::vector<Passed> open_;

    void enter(int node, int idNo, int goOn, int level) {
        const int row = graph_.find(idNo, node);
        if (row < 0) return;
        const auto& edge = graph_.edges()[static_cast<std::size_t>(row)];
        const bool fromI = edge.iNo == node;
        const int far = fromI ? edge.jNo : edge.iNo;
        if (!reached_.insert(far).second) return;
        const bool virtualRelay = fromI ? edge.virtualAtJ : edge.virtualAtI;
        const bool starPoint = edge.kind == BranchKind::Winding && !fromI;
        const int state = virtualRelay ? 0 : starPoint ? 2 : 1;
        steps_.push_back({far, idNo, node, fromI ? 2 : 1, state, level, edge.kind});
        if (state == 2) open_.push_back({far, idNo, 2, 0});
        if (state == 0 && goOn != 0) open_.push_back({far, idNo, 0, 0});
    }
};

}  // namespace

BranchGraph::BranchGraph(std::vector<BranchEdge> edges) : edges_(std::move(edges)) {
    std::vector<std::pair<int, int>> ends;
    ends.reserve(2 * edges_.size());
    for (std::size_t row = 0; row < edges_.size(); ++row) {
        const auto& edge = edges_[row];
        ends.emplace_back(edge.iNo, static_cast<int>(row));
        if (edge.jNo != edge.iNo) ends.emplace_back(edge.jNo, static_cast<int>(row));
    }
    touching_ = NumberIndex(ends);
}

int BranchGraph::find(int idNo, int node) const {
    const auto rows = at(node);
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&](int row) { return edges_[static_cast<std::size_t>(row)].idNo == idNo; });
    return found == rows.end() ? -1 : *found;
}

void BranchGraph::walk(int node, int idNo, std::vector<WalkStep>& list, int goOn, int level) const {
    const auto found = Walk(*this, list).run(node, idNo, goOn, level);
    list.insert(list.begin(), found.rbegin(), found.rend());
}

}  // namespace exchange
