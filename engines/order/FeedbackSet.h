#pragma once

#include <cstddef>
#include <vector>

#include "engines/order/StrongComponents.h"

namespace engines {

/// A small set of vertices without which the graph has no cycle, in ascending order. No vertex of it can be left out.
/// Greedy by the product of in- and out-degree, then a search over orderings in which a vertex goes in where it fits
/// best and those that it contradicts come out. The same graph and number of moves always give the same set. \param
/// graph  no edge twice, none from a vertex to itself \param moves  of the search Source: Galinier, Lemamou, Bouzidi,
/// Applying local search to the feedback vertex set problem, J. Heuristics 19 (2013)
std::vector<int> feedbackSet(const Digraph& graph, std::size_t moves);

}  // namespace engines
