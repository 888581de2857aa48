#pragma once

#include <filesystem>

/// A network in the table form of an open analysis tool (JSON), written as a plain CSV folder.
namespace cases {

/// Zero-sequence magnetising branches become a third, delta winding. Every bus F gets a stub "Zf F" of 5 + j5 ohm in
/// all sequences to a node "F Zf": a fault behind it is one through an impedance in each phase. \param maximum  whether
/// the largest currents are meant: then that winding is chosen so that the correction of the
///                 transformer leaves the magnetising branch alone
void writeSummaryGrid(const std::filesystem::path& json, bool maximum, const std::filesystem::path& folder);

}  // namespace cases
