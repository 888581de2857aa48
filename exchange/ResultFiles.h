#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace exchange {

/// RELAY.R8: relay numbers in the order of calculation.
struct TurnOrder {
    int breakRelays = 0;
    std::vector<int> order;
};
std::string format(const TurnOrder& order);
/// \throws FormatError
TurnOrder parseTurnOrder(std::string_view text, const std::string& file);

/// RELAY.RP1: the outputs of one rule. A rule without a result is written with ruleNo 0.
struct SettingResult {
    int nCal = 0;
    int rno = 0;
    int pno = 0;
    int ruleNo = 0;
    std::vector<double> values;
};

/// RELAY.RP2: what decided a mode of a rule.
struct FaultResult {
    int nCal = 0;
    int rno = 0;
    int pno = 0;
    int ruleNo = 0;
    int rmNo = 0;
    int nSela = 0;
    int nSelb = 0;
    int nSelc = 0;
    int nSys = 0;
};

/// RELAY.RP3 and RELAY.R7: branch coefficients of a relay for a main branch, in both sequences.
struct CoefficientResult {
    int fzNo = 0;
    int mINo = 0, mJNo = 0, mIdNo = 0, mSide = 0;
    int bINo = 0, bJNo = 0, bIdNo = 0;
    int nlRNo = 0;
    double fz1 = 0;
    int nSel1a = 0, nSel1b = 0, nSys1 = 0;
    double fz0 = 0;
    int nSel0a = 0, nSel0b = 0, nSys0 = 0;
};

/// RELAY.RP4.
struct PhaseResult {
    int nCal = 0;
    int rno = 0;
    int pno = 0;
};

/// RELAY.RP5: the input variables of one rule as the rule saw them, in `VarNo` order.
struct VariableResult {
    int nCal = 0;
    int rno = 0;
    int pno = 0;
    int ruleNo = 0;
    std::vector<double> values;
};

// One line each, ended by CR LF. Values have 12 significant digits; one that is not finite is written as 0.
std::string format(const SettingResult& result);
std::string format(const FaultResult& result);
std::string format(const CoefficientResult& result);
std::string format(const PhaseResult& result);
std::string format(const VariableResult& result);

// The readers take what is there, as the module always did: a field that is no number reads as 0, missing fields read
// as 0 (a number that is not finite too), a trailing comma, a blank or an unknown field does no harm, values are kept
// only where a field exists. Blank lines are left out, and so are lines of coefficients whose first field is 0. A line
// of settings with rule number 0 is kept: the caller passes over it.
std::vector<SettingResult> parseSettingResults(std::string_view text);
std::vector<FaultResult> parseFaultResults(std::string_view text);
std::vector<CoefficientResult> parseCoefficients(std::string_view text);
std::vector<PhaseResult> parsePhaseResults(std::string_view text);
std::vector<VariableResult> parseVariableResults(std::string_view text);

/// Number of lines, blank ones apart, that do not tell what they belong to: one of the fields from `first` up to before
/// `end` is missing or no whole number.
int unreadableLines(std::string_view resultFile, std::size_t first, std::size_t end);

/// The lines of RELAY.RP3 that go into RELAY.R7: each as it stands, ended by CR LF, without those whose first field is
/// "0".
std::string keptCoefficientLines(std::string_view coefficientFile);

}  // namespace exchange
