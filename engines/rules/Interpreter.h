#pragma once

#include <span>
#include <string>
#include <vector>

#include "engines/rules/Arithmetic.h"
#include "engines/rules/Candidates.h"
#include "exchange/RuleFile.h"

namespace engines {

/// What a rule gave for one relay part.
struct RuleResult {
    std::vector<double> outputs;  ///< O1, O2 ...; empty when the rule has no result
    std::string reason;           ///< why it has none
    std::vector<double> inputs;   ///< by variable number as the rule saw them, 0 where there was none
    std::vector<Choice> choices;  ///< one for each mode above 0 that has a candidate, by mode number
};

/// Evaluates a rule: mode by mode in rising order, the mode's lines for each candidate; then the rule's own lines at
/// the candidates chosen.
class Interpreter {
  public:
    /// \param finder  must outlive this
    explicit Interpreter(CandidateFinder& finder) : finder_(finder) {}

    /// \param rule        checked by checkRule
    /// \param parameters  the parameter vector in use
    RuleResult evaluate(const exchange::RuleBlock& rule, std::span<const double> parameters, const RuleInHand& inHand);

  private:
    CandidateFinder& finder_;
};

}  // namespace engines
