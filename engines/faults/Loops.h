#pragma once

#include <array>

#include "engines/faults/FaultStudy.h"

namespace engines {

/// Impedances that a distance relay measures, per unit; not finite where a loop carries no current.
struct MeasuredLoops {
    std::array<Complex, 3> ground;  ///< A, B, C: U / (I + K0 3I0)
    std::array<Complex, 3> phase;   ///< AB, BC, CA: difference of voltages over difference of currents
};
/// \param k0  (Z0 - Z1) / (3 Z1) of the protected branch
MeasuredLoops measuredLoops(const Sequences& voltage, const Sequences& current, Complex k0);

/// K0 of a branch.
Complex groundFactor(const Branch& branch);

}  // namespace engines
