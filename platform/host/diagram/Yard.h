#pragma once

#include "platform/host/diagram/Plan.h"

namespace diagram {

/// The nodes of one voltage that switches join: bars on top of each other and bays that rise or hang from them.
struct Yard {
    double kv = 0;
    std::vector<int> nodes;
    double width = 0, above = 0, below = 0;  ///< extent from the middle of its first bar
};

/// How many things are connected directly to each node.
struct Load {
    std::vector<int> direct;    ///< lines, transformers, sources, shunts, loads
    std::vector<int> lines;     ///< lines alone
    std::vector<int> windings;  ///< transformers alone
    /// Of each node: two-winding transformers by position, three-winding ones as -1 - position.
    std::vector<std::vector<int>> transformers;

    /// Each transformer at the nodes of these yards once.
    [[nodiscard]] std::vector<int> transformersAt(const std::vector<Yard>& yards) const;
};

/// Splits the nodes of a block into yards, highest voltage first.
std::vector<Yard> yardsOf(const host::NetworkModel& model, const NetworkIndex& index, const std::vector<int>& nodes);

/// Gives the nodes of a yard their places around the middle of its first bar.
/// \param top  no yard of a higher voltage stands above: lines rise, transformers hang
void arrangeYard(const NetworkIndex& index, const Load& load, bool top, Yard& yard, Plan& plan);

}  // namespace diagram
