#pragma once

#include <vector>

namespace engines {

/// A directed graph: for each vertex the vertices that it points to.
using Digraph = std::vector<std::vector<int>>;

/// The strongly connected components, each with its vertices in ascending order; a component comes after all that it
/// points to. Linear in vertices and edges; needs no deep call stack.
/// Source: Tarjan, Depth-first search and linear graph algorithms, SIAM J. Comput. 1 (1972)
std::vector<std::vector<int>> strongComponents(const Digraph& graph);

}  // namespace engines
