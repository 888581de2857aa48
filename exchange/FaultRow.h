#pragma once

#include <string>

namespace exchange {

/// A fault or an open at a place of a branch, as it stands in RELAY.R2 and RELAY.R6.
struct FaultRow {
    int mType = 0;   ///< 1 to 19 a fault, 21 to 40 an outage; rows of one number act together
    int idNo = 0;
    int iNo = 0;
    int jNo = 0;
    int kLoc = 0;    ///< place in percent from `iNo`, 0 to 100
    int fType = 1;   ///< 1 3ph-g, 2 a-g, 3 b-c, 4 b-c-g, 5 three-phase open, 6 a open, 7 b and c open
    std::string r;   ///< per unit, as the database's text
    std::string x;
};

}  // namespace exchange
