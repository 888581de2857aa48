#include "engines/order/RelayDependencies.h"

#include <map>
#include <utility>

namespace engines {

namespace {

using exchange::BranchKind;
using exchange::RelayBlock;

constexpr int kNoBranch = -1;

int ownNode(const RelayBlock& relay) { return relay.side == 1 ? relay.iNo : relay.jNo; }

/// Finds relays by the branch that they stand at and the node at their end of it.
class Places {
  public:
    Places(const std::vector<RelayBlock>& relays, const exchange::BranchGraph& graph) : graph_(graph) {
        for (std::size_t i = 0; i < relays.size(); ++i)
            if (relays[i].valid != 0) places_[{relays[i].idNo, ownNode(relays[i])}].push_back(static_cast<int>(i));
    }

    /// Adds the relays that stand at a node at other branches than the one given.
    void lookingAway(int node, int cameBy, std::vector<int>& found) const {
        for (const int row : graph_.at(node)) {
            const auto& edge = graph_.edges()[static_cast<std::size_t>(row)];
            if (edge.idNo == cameBy || edge.kind > BranchKind::Winding) continue;
            const auto here = places_.find({edge.idNo, node});
            if (here != places_.end()) found.insert(found.end(), here->second.begin(), here->second.end());
        }
    }

  private:
    const exchange::BranchGraph& graph_;
    std::map<std::pair<int, int>, std::vector<int>> places_;
};

}  // namespace

Digraph relayDependencies(const std::vector<RelayBlock>& relays, const exchange::BranchGraph& graph) {
    const Places places(relays, graph);
    Digraph dependencies(relays.size());
    std::vector<exchange::WalkStep> steps;
    for (std::size_t i = 0; i < relays.size(); ++i) {
        const int node = ownNode(relays[i]);
        if (relays[i].idNo == 0) {
            places.lookingAway(node, kNoBranch, dependencies[i]);
            continue;
        }
        steps.clear();
        graph.walk(node, relays[i].idNo, steps, 1, 1);
        for (const auto& step : steps) places.lookingAway(step.node, step.idNo, dependencies[i]);
    }
    return dependencies;
}

}  // namespace engines
