#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace exchange {

/// One relay block of RELAY.R1: where the relay stands and what its parts are set to now.
struct RelayBlock {
    int valid = 1;
    int rno = 0;
    std::string label;  ///< GBK bytes, without the surrounding apostrophes and blanks
    int iNo = 0;
    int jNo = 0;
    int idNo = 0;
    int side = 1;
    /// One entry per part; four setting values each, as the database's text. "0" where the type has fewer settings.
    std::vector<std::array<std::string, 4>> parts;
};

/// The label of a relay: element, node at its end, relay type.
/// \return `ID_Name`, two blanks, node name, the GBK bytes of 侧, two blanks, type (all arguments GBK bytes)
std::string relayLabel(const std::string& idName, const std::string& nodeName, const std::string& typeCode);

std::string format(const RelayBlock& relay);
/// Labels may hold commas, apostrophes and blanks. \throws FormatError
std::vector<RelayBlock> parseRelays(std::string_view text, const std::string& file);

}  // namespace exchange
