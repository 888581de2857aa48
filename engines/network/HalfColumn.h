#pragma once

#include <span>
#include <utility>

#include "engines/network/Complex.h"
#include "engines/network/Ordering.h"

/// Single entries of the inverse of a factorised matrix, theory (5): with A = L D L', w' A^-1 b is (L^-1 w)' D^-1 (L^-1
/// b), and both factors are nothing but along the ways up the elimination tree.
namespace engines {

/// L^-1 b along the way from the lowest unknown of b to the root.
struct HalfColumn {
    int leaf = -1;         ///< where the way begins, in elimination order; -1 after pivoting, which knows no ways
    ComplexVector values;  ///< by depth
    BusWeights weights;    ///< b
};

/// D^-1 L^-1 b: the other half, of what is injected.
struct DrivenColumn {
    int leaf = -1;
    ComplexVector values;  ///< by depth; after pivoting all of A^-1 b, by unknown
};

/// Sum of weights x half columns. What cancels to rounding is set to nothing: a difference across a way that leads
/// nowhere must not be decided by it.
/// \param terms  each two of their unknowns have an entry in the structure, so that one way holds all
/// \throws std::logic_error when no way does
HalfColumn combined(const Ordering& ordering, std::span<const std::pair<const HalfColumn*, Complex>> terms);

}  // namespace engines
