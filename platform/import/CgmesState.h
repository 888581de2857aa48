#pragma once

#include "platform/import/CgmesElements.h"

namespace import::cgmes {

/// Load-flow case 1 from the solved state: voltages of the topological nodes, flows into the sources.
void readLoadFlow(Context& context);

/// Coordinates from diagram layout (of the node, its bus bar, its equipment) or geographical locations (of the station,
/// or the ends of a line); a station and its nodes stand for each other where only one has any.
void readPositions(Context& context);

}  // namespace import::cgmes
