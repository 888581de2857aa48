#pragma once

namespace shell {

/// Installs relays on the 220 kV and 110 kV lines of the open project, puts virtual relays on its T nodes and defines a
/// case for each of the three relay types. \return false on failure; the dock then has the reason
bool makeDemonstration();

}  // namespace shell
