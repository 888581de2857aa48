#pragma once

#include <filesystem>

#include "exchange/NetworkFiles.h"

namespace engines {

/// The network in the real-time tables: elements with `valid` 1 whose buses lie in the network (numbers 2 and above).
/// Nodes of one bus number are one bus with the name and voltages of its first node by id; star points are buses. A
/// line takes part when both its ends are closed; a branch with both ends at one bus is left out, and so is a mutual
/// impedance of a line that takes no part; a transformer that is no winding counts as two-winding. Elements come in the
/// order of their tables, buses by number. \throws exchange::FormatError when the file, a table or an impedance that is
/// needed is missing
exchange::NetworkData readRealTimeTables(const std::filesystem::path& file);

}  // namespace engines
