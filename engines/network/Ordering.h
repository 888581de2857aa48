#pragma once

#include <memory>
#include <mutex>
#include <utility>
#include <vector>

/// Order of elimination and structure of the factors of a sparse symmetric matrix: all that does not depend on values.
namespace engines {

/// Places of an off-diagonal entry, in either order.
using IndexPair = std::pair<int, int>;

/// Everything but `place`, `part` and what goes by pair counts unknowns in elimination order. Values of L stand by
/// columns below the diagonal; a position there is a slot.
struct Ordering {
    /// \param pairs  the off-diagonal entries, all below n; an entry may come more than once, a diagonal one is passed
    Ordering(int n, std::vector<IndexPair> pairs);

    int n = 0;
    std::vector<IndexPair> pairs;      ///< as given
    std::vector<int> place;            ///< by unknown: where it stands in the order
    std::vector<IndexPair> pairPlace;  ///< by pair: where its unknowns stand in the order
    std::vector<int> pairSlot;         ///< by pair: its slot; -1 on the diagonal
    std::vector<int> lowerStart;       ///< by column: first slot; n + 1 entries
    std::vector<int> lowerRow;         ///< by slot: row, ascending in each column
    std::vector<int> updates;          ///< column by column, for each two rows a < b of it: the slot of (b, a)
    std::vector<int> parent;           ///< elimination tree, -1 at a root
    std::vector<int> depth;            ///< 0 at a root
    std::vector<int> head;             ///< uppermost place of the tree path that each place belongs to
    std::vector<int> forest;           ///< pairs that hold each part of the graph together, the earliest that do
    std::vector<int> part;             ///< by unknown: the smallest unknown of its part

    /// The slot of the entry of two unknowns; -1 outside of the structure or on the diagonal.
    [[nodiscard]] int slot(int i, int j) const;
    /// Depth of the lowest place on the ways from both places to the root; -1 when they have none in common.
    [[nodiscard]] int commonDepth(int a, int b) const;
    [[nodiscard]] std::size_t bytes() const;

  private:
    void eliminate();
    void analyse();
    void listUpdates();
    void decompose();
    void findParts();
};

/// Orderings by their pairs: the operating modes of a network share one.
class OrderingCache {
  public:
    std::shared_ptr<const Ordering> of(int n, std::vector<IndexPair> pairs);

  private:
    std::mutex mutex_;
    std::vector<std::shared_ptr<const Ordering>> kept_;
};

}  // namespace engines
