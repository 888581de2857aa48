#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace exchange {

/// One line of RELAY.R3: an element that an operating mode changes.
struct ModeElement {
    int sysNo = 0;
    int idNo = 0;
    int firstNode = 0;
    int secondNode = 0;  ///< equal to firstNode: a shunt at that bus
    int m10 = 1;         ///< 1 positive, 0 zero sequence
    std::string r;       ///< per unit, as text; |R| or |X| of 9999999 or more cuts the branch out
    std::string x;
};

std::string format(const ModeElement& element);
/// \throws FormatError
std::vector<ModeElement> parseModes(std::string_view text, const std::string& file);

}  // namespace exchange
