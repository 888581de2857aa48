#pragma once

#include "exchange/RuleFile.h"

namespace engines {

/// Checks what can be checked of a rule without a network: operand codes and operations, kinds of variables and the
/// modes in which they stand, that every operand can have been set before it is used, that every output is set.
/// \throws exchange::FormatError naming rule and place
void checkRule(const exchange::RuleBlock& rule);

}  // namespace engines
