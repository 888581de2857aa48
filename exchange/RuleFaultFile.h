#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exchange/FaultRow.h"

namespace exchange {

/// A fault row of a rule section: `rMode` is the rule's mode to which it belongs.
struct RuleFault {
    int rMode = 1;
    FaultRow row;
};

struct RuleSection {
    int ruleNo = 0;
    int parameterVector = 0;  ///< 1-based; 0 when the rule has no parameters
    std::vector<int> modes;   ///< `SysNo`
    /// The mode line of a rule that is computed in no mode at all is written without its two leading blanks.
    bool withoutModes = false;
    std::vector<RuleFault> faults;
};

/// One group of RELAY.R6: the rules of one relay part; several groups follow one another in a sensitivity run.
struct RelayRules {
    int rno = 0;
    int pno = 0;
    std::vector<RuleSection> sections;
};

std::string format(const RelayRules& group);
/// \throws FormatError
std::vector<RelayRules> parseRelayRules(std::string_view text, const std::string& file);

}  // namespace exchange
