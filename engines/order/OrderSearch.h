#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "engines/order/StrongComponents.h"

namespace engines {

/// Makes a feedback vertex set smaller by annealing: the vertices outside the set stand in an order in which every edge
/// leads forward; a move takes a vertex out of the set, puts it where it contradicts only its successors or only its
/// predecessors, and moves those that it contradicts into the set. The number of moves is bounded, the random numbers
/// are the same in every run.
class OrderSearch {
  public:
    /// \param out, in  the graph and its reverse, which must outlive this; no edge twice, none from a vertex to itself
    /// \param set      a feedback vertex set of it
    OrderSearch(const Digraph& out, const Digraph& in, const std::vector<int>& set);
    /// The smallest set met in that many moves.
    std::vector<int> run(std::size_t moves);

  private:
    void placeAll(const std::vector<int>& set);
    [[nodiscard]] std::vector<int> topologicalOrder(const std::vector<bool>& without) const;
    void step();
    /// The vertex after which to put one, and into conflicts_ what it contradicts there.
    int placeBehindPredecessors(int vertex);
    int placeBeforeSuccessors(int vertex);
    void insertAfter(int before, int vertex);
    void unlink(int vertex);
    void relabel();
    [[nodiscard]] std::int64_t labelBetween(int before, int behind) const;
    void exclude(int vertex);
    void include(int vertex);
    [[nodiscard]] bool placed(int vertex) const { return label_[static_cast<std::size_t>(vertex)] != kOutside; }
    [[nodiscard]] bool accepted(std::size_t conflicts);
    [[nodiscard]] int lastBefore(int vertex) const;
    [[nodiscard]] int firstBehind(int vertex) const;
    void coolTo(double temperature);

    static constexpr std::int64_t kOutside = -1;

    const Digraph& out_;
    const Digraph& in_;
    int head_;  ///< the list is a ring through this extra vertex
    std::vector<int> next_, previous_;
    std::vector<std::int64_t> label_;  ///< ascends along the list
    std::vector<int> excluded_, placeInExcluded_;
    std::vector<int> conflicts_;
    std::vector<std::uint64_t> limit_;  ///< limit_[d]: accept d more vertices in the set below this random number
    std::vector<int> best_;
    std::mt19937_64 random_;
};

}  // namespace engines
