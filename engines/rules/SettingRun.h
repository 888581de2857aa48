#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <vector>

#include "engines/rules/FaultCalculation.h"
#include "engines/rules/Study.h"
#include "exchange/ResultFiles.h"

namespace engines {

/// Everything that one run leaves.
struct RunResults {
    std::vector<exchange::SettingResult> settings;
    std::vector<exchange::FaultResult> choices;
    std::vector<exchange::CoefficientResult> coefficients;
    std::vector<exchange::VariableResult> variables;
    Notes notes;  ///< rules without a result and why, then what of the input was left out
};

/// Evaluates every rule section of the study; results stand in the order of the sections.
/// \param threads  0: as many as there are processors; the results do not depend on it
/// \throws exchange::FormatError for a rule that the study
/// lacks or that checkRule refuses, and for a parameter vector that the rule lacks
RunResults evaluateRules(const Study& study, FaultCalculation& calculation, int threads = 0);

/// Writes the four result files below a directory. \throws exchange::FormatError
void writeResults(const std::filesystem::path& directory, const RunResults& results);

/// A whole run: reads the input files of a directory, evaluates, writes. Notes go to `err`, one line each. When the
/// input is at fault the result files are left empty, so that nobody takes an earlier run's for this one's.
/// \param written  called when everything is written and before the memory is given back, which takes a while: a
/// program may end there
/// \throws exchange::FormatError
void runSettings(
    const std::filesystem::path& directory, std::ostream& err, const std::function<void()>& written = [] {});

}  // namespace engines
