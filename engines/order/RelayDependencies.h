#pragma once

#include <vector>

#include "engines/order/StrongComponents.h"
#include "exchange/BranchGraph.h"
#include "exchange/RelayFile.h"

namespace engines {

/// For each relay the places of the relays that stand behind its far end and look away, found by the branch walk; for a
/// relay at a bus or a generator (`ID_No` 0) those at the branches of its bus. Branches are lines and transformers. A
/// relay whose branch is not in the network depends on nothing.
Digraph relayDependencies(const std::vector<exchange::RelayBlock>& relays, const exchange::BranchGraph& graph);

}  // namespace engines
