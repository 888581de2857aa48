#pragma once

#include <stdexcept>

#include "engines/faults/FaultStudy.h"

/// A single shunt fault behind known driving-point impedances.
namespace engines {

/// Current into the fault, per unit.
/// \param before  voltage at the place before; \param z1, z0  driving-point impedances
/// \param grounded  whether the place has a zero-sequence path at all; z0 is not looked at otherwise
/// \throws std::invalid_argument for a series kind
/// Source: Anderson, Analysis of Faulted Power Systems, ch. 3.
inline Sequences shuntCurrent(FaultKind kind, Complex before, Complex z1, Complex z0, bool grounded, Complex z) {
    switch (kind) {
        case FaultKind::ThreePhaseGround:
            return {product(before, reciprocal(z1 + z)), {}, {}};
        case FaultKind::PhaseAGround: {
            const Complex i = grounded ? product(before, reciprocal(2.0 * z1 + z0 + 3.0 * z)) : Complex{};
            return {i, i, i};
        }
        case FaultKind::PhaseBC: {
            const Complex i = product(before, reciprocal(2.0 * z1 + z));
            return {i, -i, {}};
        }
        case FaultKind::PhaseBCGround: {
            // The zero sequence's share of the current that comes back.
            const Complex share = grounded ? product(z1, reciprocal(z1 + z0 + 3.0 * z)) : Complex{};
            const Complex i = product(before, reciprocal(z1 + product(z1, 1.0 - share)));
            return {i, product(-i, 1.0 - share), product(-i, share)};
        }
        default:
            throw std::invalid_argument("a shunt fault is wanted");
    }
}

/// Zero-sequence voltage at the fault where no zero-sequence current can flow.
inline Complex displacement(FaultKind kind, const Sequences& v) {
    if (kind == FaultKind::PhaseAGround) return -(v.positive + v.negative);
    return kind == FaultKind::PhaseBCGround ? v.positive : Complex{};
}

}  // namespace engines
