#pragma once

#include <array>
#include <memory>
#include <numbers>
#include <span>
#include <vector>

#include "engines/network/Network.h"

/// Exact solution of any number of simultaneous shunt and series conditions on one operating mode of a network.
namespace engines {

enum class FaultKind {
    ThreePhaseGround = 1,
    PhaseAGround = 2,
    PhaseBC = 3,
    PhaseBCGround = 4,
    OpenABC = 5,
    OpenA = 6,
    OpenBC = 7,
};
constexpr bool isSeries(FaultKind kind) { return kind >= FaultKind::OpenABC; }

/// A condition at a place of a branch. `group` tells which rows stand at one place by intention (their fault number):
/// an open and a shunt of one group at one place of one branch: the open lies between the fault and the nearer end.
struct Condition {
    BranchIndex branch;
    BusIndex bus;        ///< used when branch is -1: a shunt condition directly at a bus
    double percent = 0;  ///< 0 to 100 from the I end
    FaultKind kind = FaultKind::ThreePhaseGround;
    Complex z;  ///< per unit; of the fault, or of the open phases for series kinds
    int group = 0;
};

/// Positive, negative and zero-sequence phasors.
struct Sequences {
    Complex positive, negative, zero;
};
inline std::array<Complex, 3> phases(const Sequences& s) {
    // With a = -1/2 + j sqrt(3)/2: a2 p + a n = -(p + n)/2 - j sqrt(3)/2 (p - n).
    const Complex sum = s.positive + s.negative, half = s.zero - 0.5 * sum;
    const Complex difference = std::numbers::sqrt3 / 2 * (s.positive - s.negative);
    const Complex turned{-difference.imag(), difference.real()};
    return {s.zero + sum, half - turned, half + turned};
}

/// One end of a branch, where its current is counted.
struct BranchEnd {
    BranchIndex branch;
    End end = End::I;
};

/// Phasors of the three phases at every bus, and into every branch end (2 x branch, I first); per unit.
struct PhaseState {
    std::vector<std::array<Complex, 3>> voltages, currents;
};

class ModeNetwork;
class SequenceNetwork;

/// EMF behind the impedance of a source, per unit: 1.0, or from the load flow.
Complex emf(const Network& network, const Source& source);

/// A solved state: pre-fault plus fault component. Valid as long as its ModeNetwork.
class Solution {
  public:
    /// Current into the branch at one end, per unit, positive into the branch.
    [[nodiscard]] Sequences current(BranchIndex branch, End end) const;
    /// Current of a source into the network, per unit.
    [[nodiscard]] Sequences sourceCurrent(int source) const;
    /// Voltage of a bus, per unit.
    [[nodiscard]] Sequences voltage(BusIndex bus) const;
    /// Voltage at the fault, and the current into it, per unit; zero without one. The fault is the first shunt
    /// condition of the smallest group: faults are numbered below outages.
    [[nodiscard]] Sequences faultVoltage() const;
    [[nodiscard]] Sequences faultCurrent() const;
    /// Current into all shunt conditions that stand directly at a bus, per unit.
    [[nodiscard]] Sequences faultCurrentAt(BusIndex bus) const;
    /// All voltages and currents at once: cheaper than asking for more than some hundred of them one by one.
    /// \param state  written over; its storage is used again
    void everywhere(PhaseState& state) const;
    /// The bus of the fault, or the end of its branch that is nearer; -1 without a fault.
    [[nodiscard]] BusIndex faultBus() const;
    /// Phases A, B, C that take part in the fault; without one those that the opens leave closed.
    [[nodiscard]] std::array<bool, 3> faultedPhases() const;
    /// The fault lies in an island without a source, or on a branch cut out: every quantity is zero.
    [[nodiscard]] bool dead() const { return dead_; }

    struct State;
    explicit Solution(std::shared_ptr<const State> state);
    [[nodiscard]] const State& state() const { return *state_; }

  private:
    void branchCurrents(const std::array<ComplexVector, 3>& voltages, PhaseState& state) const;
    std::shared_ptr<const State> state_;
    bool dead_ = false;
};

/// The sequence networks of one operating mode, factorised once.
class ModeNetwork {
  public:
    /// \param threads  at most so many, 0: as many as there are processors; the results do not depend on it
    ModeNetwork(const Network& network, const std::vector<ModeChange>& changes, int threads = 1);
    ~ModeNetwork();
    ModeNetwork(ModeNetwork&&) noexcept;
    ModeNetwork& operator=(ModeNetwork&&) noexcept;

    [[nodiscard]] const Network& network() const;
    /// The negative sequence is the positive one.
    [[nodiscard]] const SequenceNetwork& sequence(Sequence sequence) const;

    /// All conditions together, e.g. the rows of an outage and those of a fault.
    /// \param like  another solution of this mode, or none: where its conditions stand at the same places, what is
    ///     known of them serves here too, and only kinds and impedances are new. The result does not depend on it.
    [[nodiscard]] Solution solve(std::span<const Condition> conditions, const Solution* like = nullptr) const;

    /// Theory (19). Branch coefficient |I_B| / |I_M| in one sequence network from a unit injection at a place, under
    /// the opens and groundings of `conditions` (an outage's rows, and the open of the fault row itself; shunt kinds
    /// among the outage rows short the place in that sequence). 0 when the two currents oppose each other, when either
    /// is zero, or when the place is dead.
    [[nodiscard]] double branchCoefficient(Sequence sequence, const Condition& place,
                                           std::span<const Condition> conditions, BranchIndex b, End bEnd,
                                           BranchIndex m, End mEnd) const;
    /// The same for several relays' branches at once: one injection serves them all.
    [[nodiscard]] std::vector<double> branchCoefficients(Sequence sequence, const Condition& place,
                                                         std::span<const Condition> conditions,
                                                         std::span<const BranchEnd> relays, BranchEnd main) const;

    /// Driving-point impedance of a bus, per unit, with the given branch (when not -1) taken out: the equivalent
    /// source impedance behind a relay. Infinite when no source is left.
    [[nodiscard]] Complex sourceImpedance(Sequence sequence, BusIndex bus, BranchIndex without) const;

    struct Impl;

  private:
    std::unique_ptr<Impl> impl_;
};

/// Where a relay stands, for the quantities below.
struct RelayPlace {
    BranchIndex branch;  ///< -1 at a bus or a generator
    End end = End::I;
    BusIndex bus;     ///< the bus of the relay's own end
    int source = -1;  ///< at a generator
};

/// The quantity `vType` 1 to 22 at place `vPos` (1 own end, 2 opposite end, 3 fault point) in kA, kV, kilo-ohm.
/// \return the value; not finite when the quantity has none there (an impedance with no current)
double faultQuantity(int vType, int vPos, const RelayPlace& relay, const Network& network, const Solution& solution);

/// True when faultQuantity knows the number.
bool isFaultQuantity(int vType);

}  // namespace engines
