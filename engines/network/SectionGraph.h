#pragma once

#include "exchange/BranchGraph.h"
#include "exchange/NetworkFiles.h"
#include "exchange/VirtualRelayFile.h"

namespace engines {

/// The branches of a network as the branch walk sees them: lines, two-winding transformers, windings, capacitors,
/// reactors, generators, in this order; a node is virtual when a virtual relay stands at it.
exchange::BranchGraph sectionGraph(const exchange::NetworkData& network, const exchange::VirtualRelays& virtualRelays);

}  // namespace engines
