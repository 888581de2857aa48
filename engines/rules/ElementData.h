#pragma once

#include "engines/rules/Sections.h"

/// Data of network elements as rule variables: ohm primary, A, kV, MVA, degrees, km. NaN: the network does not know.
namespace engines {

/// A branch as the relay or the section sees it.
struct BranchView {
    BranchIndex branch;
    End end = End::I;     ///< the end from which it is seen
    BranchIndex entered;  ///< winding passed before it; its impedance is added
    BusIndex entry;       ///< bus whose base voltage turns per unit into ohm
};

BranchView viewOf(const AdjacentBranch& branch, const Sections& sections, const Network& network);

/// `VType` 101 to 109 and 121 to 123 of a branch.
double elementDatum(int vType, const BranchView& view, const Network& network);

/// The same of a relay's own element, and 131, 132. \param vPos  2 asks for the opposite end
double ownDatum(int vType, int vPos, const StudyRelay& relay, const Network& network);

/// Per unit on 100 MVA to ohm at a bus.
double ohmBase(const Network& network, BusIndex bus);

}  // namespace engines
