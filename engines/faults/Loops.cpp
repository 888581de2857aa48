#include "engines/faults/Loops.h"

#include <cmath>
#include <limits>

namespace engines {
namespace {

/// Below this a loop's current, per unit, is what rounding left.
constexpr double kNoCurrent = 1e-9;

Complex impedance(Complex voltage, Complex current) {
    if (std::abs(current) > kNoCurrent) return voltage / current;
    return {std::numeric_limits<double>::infinity(), 0};
}

}  // namespace

MeasuredLoops measuredLoops(const Sequences& voltage, const Sequences& current, Complex k0) {
    const auto u = phases(voltage), i = phases(current);
    MeasuredLoops loops{};
    for (std::size_t p = 0; p < 3; ++p) {
        const std::size_t next = (p + 1) % 3;
        loops.ground[p] = impedance(u[p], i[p] + k0 * 3.0 * current.zero);
        loops.phase[p] = impedance(u[p] - u[next], i[p] - i[next]);
    }
    return loops;
}

Complex groundFactor(const Branch& branch) { return (branch.z0 - branch.z1) / (3.0 * branch.z1); }

}  // namespace engines
