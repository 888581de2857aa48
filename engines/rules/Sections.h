#pragma once

#include <vector>

#include "engines/rules/Study.h"
#include "exchange/BranchGraph.h"
#include "exchange/NumberIndex.h"

/// What lies behind the far end of a relay: found by the branch walk, in the order in which the walk finds it.
namespace engines {

/// A branch as it is seen from the node where the next section begins.
struct AdjacentBranch {
    int edge = -1;         ///< place in the graph's edges
    int startNode = 0;     ///< its end that looks back at the section
    int entered = -1;      ///< edge of the winding that was passed to reach it, -1 none
    int entryNode = 0;     ///< bus at which the section is left: startNode, or the bus of the passed winding
    bool ownStar = false;  ///< begins at the star point of the relay's own transformer
    bool further = false;  ///< begins behind another branch beyond the star point
};

/// A relay that stands behind the far end and looks away, and the branch it looks into.
struct AdjacentRelay {
    const StudyRelay* relay = nullptr;
    AdjacentBranch branch;
};

class Sections {
  public:
    /// \param study  must outlive this and keep its relays
    explicit Sections(const Study& study);

    /// Every branch behind the far end that can be a main branch for the relay, star points of its own included.
    [[nodiscard]] std::vector<AdjacentBranch> mainBranches(const StudyRelay& relay) const;
    /// The branches behind the far end as candidates: lines and transformers, a three-winding one by its far windings.
    [[nodiscard]] std::vector<AdjacentBranch> branchesBehind(const StudyRelay& relay) const;
    /// The relay's own branch; for a relay at a bus, generator or shunt the branches at its node.
    [[nodiscard]] std::vector<AdjacentBranch> branchesHere(const StudyRelay& relay) const;
    [[nodiscard]] std::vector<AdjacentRelay> relaysBehind(const StudyRelay& relay) const;

    [[nodiscard]] const exchange::BranchEdge& edge(int place) const {
        return graph_.edges()[static_cast<std::size_t>(place)];
    }
    /// The windings that meet the given one at its star point.
    [[nodiscard]] std::vector<AdjacentBranch> otherWindings(const AdjacentBranch& winding) const;

  private:
    [[nodiscard]] std::vector<exchange::WalkStep> steps(int node, int idNo, int goOn) const;
    [[nodiscard]] std::vector<exchange::WalkStep> stepsOf(const StudyRelay& relay) const;
    [[nodiscard]] std::vector<int> networkBranchesAt(int node, int withoutId) const;
    void appendBehind(int edge, int node, bool ownStar, std::vector<AdjacentBranch>& found) const;

    const Study& study_;
    const exchange::BranchGraph& graph_;
    exchange::NumberIndex relaysAt_;  // by the node where they stand, places in Study::relays
};

}  // namespace engines
