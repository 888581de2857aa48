#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <utility>
#include <vector>

#include "engines/network/Dense.h"
#include "engines/network/Factors.h"
#include "engines/network/Network.h"

/// One sequence network of one operating mode, with or without some of its branches, factorised.
namespace engines {

using ComplexVector = std::vector<Complex>;
/// Weights of a few buses.
using BusWeights = std::vector<std::pair<int, Complex>>;

/// How a branch stands in one sequence network.
struct Link {
    int from = -1, to = -1;  ///< buses; -1 ground
    Complex z;
    bool conducts = false;
    /// One over the turns ratio: i = (gain V_from - V_to) / z flows, gain i of it into the I end.
    double gain = 1;
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
    SequenceElements(const Network& network, Sequence sequence, std::span<const ModeChange> changes);

    [[nodiscard]] int buses() const { return buses_; }
    [[nodiscard]] const std::vector<Link>& links() const { return links_; }
    [[nodiscard]] const std::vector<NodeShunt>& shunts() const { return shunts_; }
    [[nodiscard]] OrderingCache* orderings() const { return orderings_.get(); }
    /// Branches coupled with one another, `branch` among them; that branch alone when it is not coupled.
    [[nodiscard]] std::span<const int> coupledWith(int branch) const;
    /// Impedance between a stretch of one branch and a stretch of another of its coupled set (or of the same branch).
    [[nodiscard]] Complex impedance(int a, Stretch onA, int b, Stretch onB) const;

  private:
    void apply(const ModeChange& change);
    void couple(const Network& network);

    Sequence sequence_;
    int buses_ = 0;
    std::shared_ptr<OrderingCache> orderings_;
    std::vector<Link> links_;
    std::vector<NodeShunt> shunts_;
    std::vector<std::vector<int>> sets_;
    std::vector<int> setOf_;                                      // per branch, -1 not coupled
    std::vector<int> self_;                                       // 0, 1, 2, ...: sets of one
    std::map<std::pair<int, int>, std::vector<Mutual>> mutuals_;  // by branches, the smaller first
};

/// Buses joined by branches, and whether they have a path to a shunt element.
class Islands {
  public:
    Islands(const SequenceElements& elements, const std::vector<int>& removed);
    [[nodiscard]] int of(int bus) const { return label_[static_cast<std::size_t>(bus)]; }
    [[nodiscard]] bool live(int bus) const { return live_[static_cast<std::size_t>(of(bus))]; }
    /// Number of islands without a path to a shunt element.
    [[nodiscard]] int floating() const;

  private:
    std::vector<int> label_;  // the smallest bus of the island
    std::vector<char> live_;  // by label
};

/// Per branch: whether taking out this one alone leaves buses without a path to a shunt element.
/// Source: R. E. Tarjan, A note on finding the bridges of a graph, 1974; ground is one more node here.
std::vector<char> bridges(const SequenceElements& elements);

/// Voltages from injections. An island without a shunt element floats: there, one bus is held by a fictitious
/// admittance, and voltages are right up to a common value once the injections of the island add up to zero.
class SequenceNetwork : public std::enable_shared_from_this<SequenceNetwork> {
  public:
    /// \param injection  currents of the sources and loads before the fault, per bus; empty: every live bus at 1.0
    SequenceNetwork(std::shared_ptr<const SequenceElements> elements, ComplexVector injection);
    ~SequenceNetwork();

    /// The same network with branches taken out at both ends: a low-rank update of the factors, or new factors where
    /// the network loses a live part or the update would be ill-conditioned. Valid as long as the whole network.
    /// \param branches  sorted; only to be asked of a whole network
    [[nodiscard]] std::shared_ptr<const SequenceNetwork> without(const std::vector<int>& branches) const;

    [[nodiscard]] const SequenceElements& elements() const { return *elements_; }
    [[nodiscard]] const Islands& islands() const { return *islands_; }
    [[nodiscard]] bool conducts(int branch) const;
    /// Inverse of the primitive impedance of the coupled set of a branch; rows of branches that do not conduct are
    /// zero.
    [[nodiscard]] Matrix admittance(int branch) const;
    /// Voltages from a unit injection: a column of the inverse.
    [[nodiscard]] std::shared_ptr<const ComplexVector> column(int bus) const;
    /// Voltage before the fault.
    [[nodiscard]] Complex prefault(int bus) const;
    /// Current into each branch end before the fault, by branch and end (2 x branch, I first); uncoupled sequences.
    [[nodiscard]] ComplexVector prefaultCurrents() const;
    /// Whether no current flows before the fault: every live bus stands at 1.0 whatever the turns ratios.
    [[nodiscard]] bool startsFlat() const { return prefault_.empty(); }
    /// Whether the factors are those of this very network and not an update of another.
    [[nodiscard]] bool refactorised() const { return !base_; }

  private:
    struct Update;
    SequenceNetwork(const SequenceNetwork& whole, std::vector<int> removed, std::shared_ptr<const Islands> islands,
                    std::unique_ptr<Update> update);
    [[nodiscard]] std::shared_ptr<const Islands> islandsWithout(const std::vector<int>& branches) const;
    [[nodiscard]] std::vector<SymmetricEntry> entries() const;
    [[nodiscard]] std::unique_ptr<Update> update(const std::vector<int>& branches) const;
    [[nodiscard]] ComplexVector solve(const ComplexVector& injection) const;
    [[nodiscard]] ComplexVector solve(const BusWeights& injection) const;
    void correct(ComplexVector& voltages) const;
    void startFromInjection();

    std::shared_ptr<const SequenceElements> elements_;
    const SequenceNetwork* base_ = nullptr;  // of an update; keeps its variants and outlives them
    std::vector<int> removed_;               // sorted
    std::shared_ptr<const Islands> islands_;
    std::vector<char> bridges_;  // of a whole network
    ComplexVector injection_, prefault_;
    std::shared_ptr<const Ordering> ordering_;
    std::unique_ptr<Factors> factors_;
    std::unique_ptr<Update> update_;

    mutable std::mutex mutex_;
    mutable std::map<int, std::shared_ptr<const ComplexVector>> columns_;
    mutable std::map<std::vector<int>, std::shared_ptr<const SequenceNetwork>> variants_;
};

/// Adds weight x (gain x voltage of from - voltage of to).
void addDifference(BusWeights& weights, const Link& link, Complex weight);
Complex weighted(const BusWeights& weights, const ComplexVector& voltages);

}  // namespace engines
