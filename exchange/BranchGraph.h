#pragma once

#include <span>
#include <vector>

#include "exchange/NumberIndex.h"

namespace exchange {

/// Kinds of branch, `Flg` of the branch table.
enum class BranchKind : int {
    Line = 1,
    Transformer = 2,
    Winding = 3,
    Capacitor = 4,
    Reactor = 5,
    Generator = 6,
};

/// One row of the branch table in numbers.
struct BranchEdge {
    int idNo = 0;
    int iNo = 0;
    int jNo = 0;
    BranchKind kind = BranchKind::Line;
    bool virtualAtI = false;  ///< a virtual relay in use stands at the I node
    bool virtualAtJ = false;
};

/// One step of a walk over the branches; see WalkBranches of the module for the meaning of each field.
struct WalkStep {
    int node = 0;
    int idNo = 0;
    int fromNode = 0;
    int orient = 0;  ///< 2 entered from I, 1 entered from J
    int state = 0;   ///< 0 passed a virtual relay, 1 ended, 2 passed a star point
    int level = 0;
    BranchKind kind = BranchKind::Line;
};

/// The branch table as an adjacency index: read once, then every walk and look-up is local.
/// Rows keep their order; "first row" below means first in that order, as the table would give it.
class BranchGraph {
  public:
    BranchGraph() = default;
    explicit BranchGraph(std::vector<BranchEdge> edges);

    [[nodiscard]] const std::vector<BranchEdge>& edges() const { return edges_; }
    /// Positions of the rows that touch a node, in row order (a row with both ends there appears once).
    [[nodiscard]] std::span<const int> at(int node) const { return touching_.at(node); }
    /// First row with this number that touches the node; -1 when there is none.
    [[nodiscard]] int find(int idNo, int node) const;

    /// Walks from `node` out along the branch `idNo` and on over virtual relays (when goOn is not 0) and three-winding
    /// star points entered from the winding side, depth first; never enters a node twice.
    /// \param list  steps found so far, the newest first; the walk puts its steps at the front
    /// Without a row for (idNo, node) the list comes back unchanged.
    void walk(int node, int idNo, std::vector<WalkStep>& list, int goOn, int level) const;

  private:
    std::vector<BranchEdge> edges_;
    NumberIndex touching_;
};

}  // namespace exchange
