#pragma once

#include <optional>
#include <span>
#include <vector>

#include "engines/faults/FaultStudy.h"
#include "engines/faults/ShuntFault.h"
#include "engines/network/SelectedInverse.h"
#include "engines/network/SequenceNetwork.h"

/// Faults at every bus of one operating mode from a selected inverse of its sequence networks: nothing is solved per
/// bus, each answer costs a few operations.
namespace engines {

/// A shunt fault at a bus, solved; per unit.
struct BusFault {
    BusIndex bus;
    Sequences current;  ///< into the fault
    Sequences voltage;  ///< at the bus
    bool dead = false;  ///< no path to a source: everything is zero
};

class BusStudy {
  public:
    /// \param mode     outlives the study
    /// \param threads  at most so many, 0: as many as there are processors; the results do not depend on it
    explicit BusStudy(const ModeNetwork& mode, int threads = 1);

    /// Driving-point impedance, per unit; infinite without a path to a shunt element of the sequence.
    [[nodiscard]] Complex impedance(Sequence sequence, BusIndex bus) const;
    /// \param kind  a shunt kind; \param z  of the fault, per unit, as in Condition
    [[nodiscard]] BusFault fault(BusIndex bus, FaultKind kind, Complex z = {}) const;

    /// The branch ends at a bus, by branch.
    [[nodiscard]] std::span<const BranchEnd> ends(BusIndex bus) const { return ends_.of(bus); }
    /// The sources at a bus: places in Network::sources, ascending.
    [[nodiscard]] std::span<const int> sources(BusIndex bus) const { return sources_.of(bus); }
    /// Current into a branch at its end at the faulted bus, per unit.
    [[nodiscard]] Sequences current(const BusFault& fault, BranchEnd end) const;
    /// Voltage of the bus at the other end of that branch, per unit.
    [[nodiscard]] Sequences farVoltage(const BusFault& fault, BranchEnd end) const;
    /// Current of a source at the faulted bus into the network, per unit.
    [[nodiscard]] Sequences sourceCurrent(const BusFault& fault, int source) const;
    /// Memory that the study holds.
    [[nodiscard]] std::size_t bytes() const;

  private:
    /// What one sequence network answers.
    struct Answers {
        explicit Answers(const SequenceNetwork& network);
        [[nodiscard]] bool live(int bus) const { return wholeLive || net->islands().live(bus); }
        const SequenceNetwork* net;
        bool wholeLive;
        SelectedInverse inverse;
        ComplexVector
            share;  ///< current into a branch end (2 x branch, I first) for a unit of fault current at its bus
    };
    /// Things at a bus, bus after bus.
    template <class T>
    struct AtBus {
        std::vector<int> start;
        std::vector<T> items;
        [[nodiscard]] std::span<const T> of(BusIndex bus) const {
            const int* first = start.data() + bus.value;
            return {items.data() + first[0], static_cast<std::size_t>(first[1] - first[0])};
        }
    };
    static std::size_t place(BranchEnd e) {
        return 2 * static_cast<std::size_t>(e.branch.value) + (e.end == End::J ? 1 : 0);
    }
    [[nodiscard]] Complex before(int bus) const {
        if (before_.empty()) return 1;
        return before_[static_cast<std::size_t>(bus)];
    }
    void listEnds();
    void listSources();

    const ModeNetwork* mode_;
    std::optional<Answers> positive_, zero_;
    ComplexVector before_;       ///< voltage of a bus before the fault; empty at a flat start
    ComplexVector beforeAtEnd_;  ///< current into a branch end before the fault; empty at a flat start
    AtBus<BranchEnd> ends_;
    AtBus<int> sources_;
};

inline BusFault BusStudy::fault(BusIndex bus, FaultKind kind, Complex z) const {
    const int i = bus.value;
    BusFault result{bus, {}, {}, !positive_->live(i)};
    if (result.dead) return result;
    const bool grounded = zero_->live(i);
    const Complex z1 = positive_->inverse.diagonal(i), z0 = zero_->inverse.diagonal(i);
    result.current = shuntCurrent(kind, before(i), z1, z0, grounded, z);
    result.voltage = {before(i) - product(z1, result.current.positive), -product(z1, result.current.negative), {}};
    result.voltage.zero = grounded ? -product(z0, result.current.zero) : displacement(kind, result.voltage);
    return result;
}

inline Sequences BusStudy::current(const BusFault& fault, BranchEnd end) const {
    const std::size_t e = place(end);
    const Complex share1 = positive_->share[e];
    Sequences result{product(share1, fault.current.positive), product(share1, fault.current.negative),
                     product(zero_->share[e], fault.current.zero)};
    if (!beforeAtEnd_.empty() && !fault.dead) result.positive += beforeAtEnd_[e];
    return result;
}

}  // namespace engines
