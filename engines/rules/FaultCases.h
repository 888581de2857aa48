#pragma once

#include <span>
#include <string>
#include <vector>

#include "engines/faults/FaultStudy.h"
#include "exchange/FaultRow.h"

/// Fault rows of the files as conditions on the network, grouped by fault number.
namespace engines {

/// Messages about input that is readable but cannot be used in full; one line each, for standard error.
using Notes = std::vector<std::string>;

/// The rows of one fault number, which act together.
struct FaultCase {
    int number = 0;  ///< 1 to 19 a fault, 21 to 40 an outage, 0 no outage
    std::vector<Condition> conditions;
};

/// The faults and outages of one mode of a rule, or of one main branch. The first outage is "no outage".
struct FaultCases {
    std::vector<FaultCase> faults;
    std::vector<FaultCase> outages{FaultCase{}};
};

/// Groups rows by their number, in rising order. A fault or outage with a row at a branch or bus that the network does
/// not have is left out whole, with a note.
/// \param where  what the rows belong to, for messages
/// \throws exchange::FormatError for an impedance that is no number and an open at a bus
FaultCases faultCases(const Network& network, std::span<const exchange::FaultRow> rows, const std::string& file,
                      const std::string& where, Notes& notes);

bool touches(const FaultCase& faultCase, BranchIndex branch);
/// An outage and a fault of the same branch exclude each other.
bool exclude(const FaultCase& outage, const FaultCase& fault);

/// A number of the files' text form. \throws exchange::FormatError when it is none or not finite
double realNumber(const std::string& text, const std::string& file, const std::string& where);

}  // namespace engines
