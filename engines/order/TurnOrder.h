#pragma once

#include <vector>

#include "engines/order/StrongComponents.h"
#include "exchange/ResultFiles.h"

namespace engines {

/// The order in which relays are set: first the break relays, then each relay after all that it depends on. Few break
/// relays are chosen; among them the same holds, so that a break relay too finds as much set as can be. Ties go to the
/// smaller number, and the order of the arguments does not matter.
/// \param numbers       `RNo` of each relay
/// \param dependencies  for each relay the places of the relays that it depends on
exchange::TurnOrder turnOrder(const std::vector<int>& numbers, const Digraph& dependencies);

}  // namespace engines
