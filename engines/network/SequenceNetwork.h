#pragma once

#include <map>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "engines/network/Dense.h"
#include "engines/network/Factors.h"
#include "engines/network/Islands.h"
#include "engines/network/SequenceElements.h"
#include "engines/network/Threads.h"

/// One sequence network of one operating mode, with or without some of its branches, factorised.
namespace engines {

/// What a unit injection of given weights drives: its own column, and what the branches taken out send back.
struct Injection {
    DrivenColumn own;
    ComplexVector outages;  ///< factors of SequenceNetwork::outageColumns
};

/// Voltages from injections. An island without a shunt element floats: there, one bus is held by a fictitious
/// admittance, and voltages are right up to a common value once the injections of the island add up to zero.
class SequenceNetwork : public std::enable_shared_from_this<SequenceNetwork> {
  public:
    /// \param injection  currents of the sources and loads before the fault, per bus; empty: every live bus at 1.0
    SequenceNetwork(std::shared_ptr<const SequenceElements> elements, ComplexVector injection);
    ~SequenceNetwork();

    /// The same network with branches taken out at both ends: a low-rank update of the factors, or new factors where
    /// several branches together cut a live part off or the update would be ill-conditioned. Valid as long as the whole
    /// network. \param branches  sorted; only to be asked of a whole network
    [[nodiscard]] std::shared_ptr<const SequenceNetwork> without(const std::vector<int>& branches) const;

    [[nodiscard]] const SequenceElements& elements() const { return *elements_; }
    [[nodiscard]] const Islands& islands() const { return *islands_; }
    [[nodiscard]] const Factors& factors() const { return base_ ? *base_->factors_ : *factors_; }
    [[nodiscard]] bool conducts(int branch) const;
    /// Inverse of the primitive impedance of the coupled set of a branch; rows of branches that do not conduct are
    /// zero.
    [[nodiscard]] Matrix admittance(int branch) const;

    /// The half column of a bus, or of gain x voltage of the I end less voltage of the J end of a conducting branch.
    [[nodiscard]] std::shared_ptr<const HalfColumn> half(BusIndex bus) const;
    [[nodiscard]] std::shared_ptr<const HalfColumn> across(int branch) const;
    /// \param weights  of buses that one branch or one coupled set joins
    [[nodiscard]] HalfColumn half(const BusWeights& weights) const;
    [[nodiscard]] Injection inject(const HalfColumn& weights) const;
    /// What the branches taken out send back for an injection: Injection::outages.
    [[nodiscard]] ComplexVector sentBack(const DrivenColumn& own) const;
    [[nodiscard]] Complex seen(const HalfColumn& by, const Injection& injection) const;
    /// Columns of the branches taken out by an update; none otherwise.
    [[nodiscard]] std::span<const DrivenColumn> outageColumns() const;
    /// Voltages of all buses.
    [[nodiscard]] ComplexVector solve(const BusWeights& injection) const;

    /// Voltage before the fault.
    [[nodiscard]] Complex prefault(int bus) const;
    [[nodiscard]] ComplexVector prefaultVoltages() const;
    /// Whether no current flows before the fault: every live bus stands at 1.0 whatever the turns ratios.
    [[nodiscard]] bool startsFlat() const { return injection_.empty(); }
    /// Whether the factors are those of this very network and not an update of another.
    [[nodiscard]] bool refactorised() const { return !base_; }

  private:
    struct Update;
    SequenceNetwork(const SequenceNetwork& whole, std::vector<int> removed, std::shared_ptr<const Islands> islands,
                    std::unique_ptr<Update> update);
    [[nodiscard]] std::shared_ptr<const SequenceNetwork> makeWithout(const std::vector<int>& removed) const;
    [[nodiscard]] SymmetricMatrix matrix() const;
    void hold(SymmetricMatrix& matrix) const;
    void addCoupled(int first, SymmetricMatrix& matrix) const;
    [[nodiscard]] std::unique_ptr<Update> update(const std::vector<int>& branches, int held) const;
    void startFromInjection();
    using Halves = std::unordered_map<int, std::shared_ptr<const HalfColumn>>;
    template <class Make>
    std::shared_ptr<const HalfColumn> kept(Halves& halves, int key, Make make) const;

    std::shared_ptr<const SequenceElements> elements_;
    const SequenceNetwork* base_ = nullptr;  // of an update; keeps its variants and outlives them
    std::vector<int> removed_;               // sorted
    std::shared_ptr<const Islands> islands_;
    ComplexVector injection_, prefault_;
    std::unique_ptr<Factors> factors_;
    std::unique_ptr<Update> update_;

    mutable BriefLock mutex_;
    mutable std::unique_ptr<const Bridges> bridges_;  // found for the first outage
    mutable Halves halves_, across_;
    mutable std::size_t keptValues_ = 0;
    mutable std::map<std::vector<int>, std::shared_ptr<const SequenceNetwork>> variants_;
};

/// Adds weight x (gain x voltage of from - voltage of to).
void addDifference(BusWeights& weights, const Link& link, Complex weight);

}  // namespace engines
