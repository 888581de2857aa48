#pragma once

#include <memory>
#include <span>
#include <vector>

#include "engines/faults/FaultStudy.h"

/// Some fault places as some relays see them, under one outage after the other: each outage costs its own low-rank
/// update and a correction by as many numbers as branches are out, the rest of the network is not touched.
namespace engines {

/// A shunt fault at one of the places, solved; per unit.
struct PlaceFault {
    int place = 0;
    Sequences current;  ///< into the fault
    Sequences voltage;  ///< at the place
    bool dead = false;  ///< no path to a source: everything is zero
};

class LocalStudy {
  public:
    /// \param mode    outlives the study
    /// \param places  where single shunt faults stand; kind and impedance are not looked at
    LocalStudy(const ModeNetwork& mode, std::span<const Condition> places, std::span<const BranchEnd> relays);
    ~LocalStudy();

    /// From now on these branches are out, opened at both ends; none: the network of the mode.
    void takeOut(std::span<const BranchIndex> branches);
    [[nodiscard]] PlaceFault fault(int place, FaultKind kind, Complex z = {}) const;
    /// Current into the branch of a relay at its end, per unit.
    [[nodiscard]] Sequences current(const PlaceFault& fault, int relay) const;
    /// Whether the last outage was answered from the factors of the whole network.
    [[nodiscard]] bool updated() const;

  private:
    class InSequence;
    [[nodiscard]] std::vector<Condition> conditions(std::span<const BranchIndex> out) const;

    const ModeNetwork* mode_;
    std::vector<Condition> places_;
    std::unique_ptr<InSequence> positive_, zero_;
};

}  // namespace engines
