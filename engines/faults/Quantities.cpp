#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

#include "engines/faults/FaultStudy.h"
#include "engines/faults/Loops.h"

namespace engines {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// What is measured at a place, per unit, with the base that belongs there.
struct Measurement {
    Sequences current, voltage;
    double baseKv = 0;
    [[nodiscard]] double baseKa() const { return 100 / (std::numbers::sqrt3 * baseKv); }
    /// Base of phase voltages.
    [[nodiscard]] double phaseKv() const { return baseKv / std::numbers::sqrt3; }
    [[nodiscard]] double baseKiloOhm() const { return baseKv * baseKv / 100 / 1000; }
};

/// Which of the two a quantity is made of; the other is not asked for.
struct Wanted {
    bool current = true, voltage = true;
    explicit Wanted(int vType) : current(vType < 11 || vType > 18), voltage(vType > 9) {}
};

Measurement at(BusIndex bus, const Sequences& current, const Sequences& voltage, const Network& network) {
    return {current, voltage, network.buses[static_cast<std::size_t>(bus.value)].baseKv};
}

Sequences ownCurrent(const RelayPlace& relay, const Solution& solution) {
    if (relay.branch.value >= 0) return solution.current(relay.branch, relay.end);
    return relay.source >= 0 ? solution.sourceCurrent(relay.source) : solution.faultCurrentAt(relay.bus);
}

Measurement ownEnd(Wanted wanted, const RelayPlace& relay, const Network& network, const Solution& solution) {
    return at(relay.bus, wanted.current ? ownCurrent(relay, solution) : Sequences{},
              wanted.voltage ? solution.voltage(relay.bus) : Sequences{}, network);
}

std::optional<Measurement> measure(Wanted wanted, int vPos, const RelayPlace& relay, const Network& network,
                                   const Solution& solution) {
    if (vPos == 3) {
        if (solution.faultBus().value < 0) return {};
        return at(solution.faultBus(), solution.faultCurrent(), solution.faultVoltage(), network);
    }
    if (vPos != 2) return ownEnd(wanted, relay, network, solution);
    if (relay.branch.value < 0) return {};
    const Branch& branch = network.branches[static_cast<std::size_t>(relay.branch.value)];
    const BusIndex bus = relay.end == End::I ? branch.to : branch.from;
    const End end = relay.end == End::I ? End::J : End::I;
    return at(bus, wanted.current ? solution.current(relay.branch, end) : Sequences{},
              wanted.voltage ? solution.voltage(bus) : Sequences{}, network);
}

std::array<double, 3> sizes(const std::array<Complex, 3>& v) {
    return {std::abs(v[0]), std::abs(v[1]), std::abs(v[2])};
}

std::array<Complex, 3> differences(const std::array<Complex, 3>& v) { return {v[0] - v[1], v[1] - v[2], v[2] - v[0]}; }

double largest(const std::array<double, 3>& v) { return *std::max_element(v.begin(), v.end()); }
double smallest(const std::array<double, 3>& v) { return *std::min_element(v.begin(), v.end()); }

double faultedCurrent(bool wantLargest, const std::array<double, 3>& currents, const std::array<bool, 3>& faulted) {
    double result = kNone;
    for (std::size_t p = 0; p < 3; ++p) {
        if (!faulted[p]) continue;
        if (std::isnan(result) || (wantLargest ? currents[p] > result : currents[p] < result)) result = currents[p];
    }
    return result;
}

double currentQuantity(int vType, const Measurement& m, const Solution& solution) {
    const auto phase = phases(m.current);
    const auto size = sizes(phase);
    switch (vType) {
        case 4:
            return faultedCurrent(true, size, solution.faultedPhases());
        case 5:
            return faultedCurrent(false, size, solution.faultedPhases());
        case 6:
            return std::abs(m.current.positive);
        case 7:
            return std::abs(m.current.negative);
        case 8:
            return 3 * std::abs(m.current.zero);
        case 9:
            return largest(sizes(differences(phase)));
        default:
            return size[static_cast<std::size_t>(vType - 1)];
    }
}

double voltageQuantity(int vType, const Measurement& m) {
    const auto phase = phases(m.voltage);
    switch (vType) {
        case 14:
            return smallest(sizes(phase));
        case 15:
            return smallest(sizes(differences(phase)));
        case 16:
            return std::abs(m.voltage.positive);
        case 17:
            return std::abs(m.voltage.negative);
        case 18:
            return 3 * std::abs(m.voltage.zero);
        default:
            return sizes(phase)[static_cast<std::size_t>(vType - 11)];
    }
}

}  // namespace

bool isFaultQuantity(int vType) {
    return (vType >= 1 && vType <= 9) || (vType >= 11 && vType <= 18) || vType == 21 || vType == 22;
}

double faultQuantity(int vType, int vPos, const RelayPlace& relay, const Network& network, const Solution& solution) {
    if (!isFaultQuantity(vType)) return kNone;
    const std::optional<Measurement> m = measure(Wanted(vType), vPos, relay, network, solution);
    if (!m) return kNone;
    if (vType <= 9) return currentQuantity(vType, *m, solution) * m->baseKa();
    if (vType <= 18) return voltageQuantity(vType, *m) * m->phaseKv();
    if (solution.dead()) return kNone;
    if (vType == 21) return smallest(sizes(measuredLoops(m->voltage, m->current, {}).phase)) * m->baseKiloOhm();
    if (relay.branch.value < 0) return kNone;
    const Complex k0 = groundFactor(network.branches[static_cast<std::size_t>(relay.branch.value)]);
    return smallest(sizes(measuredLoops(m->voltage, m->current, k0).ground)) * m->baseKiloOhm();
}

}  // namespace engines
