#pragma once

#include <map>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "engines/network/Network.h"

/// The elements of one sequence network of one operating mode. "Theory" with a number: equations of docs/theory.md.
namespace engines {

/// How a branch stands in one sequence network, theory (2): i = y (gain V_from - V_to) flows through it, gain i of it
/// into its I end.
struct Link {
    int from = -1, to = -1;  ///< buses; -1 ground
    Complex y;
    double gain = 1;  ///< one over the turns ratio
    int branch = -1;  ///< its own place among the links
    bool conducts = false;
};

/// A shunt element: admittance from a bus to ground.
struct NodeShunt {
    int bus = 0;
    Complex y;
    bool reactor = false;
};

/// The part of the line, 0 to 1 from its I end, that a current flows along.
struct Stretch {
    double from = 0, to = 1;
};

/// The elements of a sequence network under the changes of an operating mode.
class SequenceElements {
  public:
    /// \param ordering  that of the network; found when it is not given
    SequenceElements(const Network& network, Sequence sequence, std::span<const ModeChange> changes,
                     std::shared_ptr<const Ordering> ordering = nullptr);

    [[nodiscard]] int buses() const { return buses_; }
    [[nodiscard]] const std::vector<Link>& links() const { return links_; }
    /// Whether every link conducts from bus to bus.
    [[nodiscard]] bool allThrough() const { return allThrough_; }
    [[nodiscard]] const std::vector<NodeShunt>& shunts() const { return shunts_; }
    [[nodiscard]] const std::shared_ptr<const Ordering>& ordering() const { return ordering_; }
    /// Branches coupled with one another, `branch` among them; that branch alone when it is not coupled.
    [[nodiscard]] std::span<const int> coupledWith(int branch) const;
    [[nodiscard]] const std::vector<std::vector<int>>& couplings() const { return sets_; }
    /// Impedance between a stretch of one branch and a stretch of another of its coupled set (or of the same branch).
    [[nodiscard]] Complex impedance(int a, Stretch onA, int b, Stretch onB) const;

  private:
    void apply(const ModeChange& change);
    void couple(const Network& network);

    Sequence sequence_;
    int buses_ = 0;
    bool allThrough_ = true;
    std::shared_ptr<const Ordering> ordering_;
    std::vector<Link> links_;
    std::vector<NodeShunt> shunts_;
    std::vector<std::vector<int>> sets_;
    std::vector<int> setOf_;                                      // per branch, -1 not coupled; empty without sets
    std::map<std::pair<int, int>, std::vector<Mutual>> mutuals_;  // by branches, the smaller first
};

}  // namespace engines
