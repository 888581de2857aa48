#pragma once

#include <string>
#include <vector>

#include "exchange/TextFile.h"

namespace exchange {

/// A fault or an open at a place of a branch, as it stands in RELAY.R2 and RELAY.R6.
struct FaultRow {
    int mType = 0;  ///< 1 to 19 a fault, 21 to 40 an outage; rows of one number act together
    int idNo = 0;
    int iNo = 0;
    int jNo = 0;
    int kLoc = 0;   ///< place in percent from `iNo`, 0 to 100
    int fType = 1;  ///< 1 3ph-g, 2 a-g, 3 b-c, 4 b-c-g, 5 three-phase open, 6 a open, 7 b and c open
    std::string r;  ///< per unit, as the database's text
    std::string x;
};

/// A fault line: its leading number (the mode of a rule or the number of a main branch), then the row.
std::string formatFault(const std::string& indent, int lead, const FaultRow& row);
/// The row behind the leading number. \throws FormatError
FaultRow parseFault(const Fields& fields);

/// The line that ends the fault lines of a section.
inline constexpr char kSectionEnd[] = "0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n";
bool isSectionEnd(const Fields& fields);

/// Numbers of operating modes as one line, each followed by a comma and three blanks.
std::string formatModes(const std::string& indent, const std::vector<int>& modes);
/// \throws FormatError when the line does not hold `count` numbers.
std::vector<int> parseModeNumbers(const Fields& fields, int count);

}  // namespace exchange
