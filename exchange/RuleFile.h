#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace exchange {

/// Codes of operands: 1 to 99 input I, 101 to 199 parameter K, 201 to 299 output O, 301 to 399 temporary T, 0 none.
inline constexpr int kParameterBase = 100;
inline constexpr int kOutputBase = 200;
inline constexpr int kTemporaryBase = 300;

/// Operand code of a mode line; "O.." is no prefix there and reads as 0.
int modeOperandCode(std::string_view text);
/// Operand code of a rule line.
int ruleOperandCode(std::string_view text);

struct RuleModeLine {
    int modeNo = 0;
    int first = 0;   ///< operand code
    int second = 0;  ///< operand code
    double a = 0;
    double b = 0;
    int nop = 0;
    int y = 0;       ///< index of the temporary that takes the result
    int consel = 0;  ///< 1 keep the candidate with the largest result of this line, 2 the smallest
};

struct RuleVariable {
    int varNo = 0;
    int modeNo = 0;
    int vType = 0;
    int vPos = 0;
};

struct RuleLine {
    int first = 0;
    int second = 0;
    double a = 0;
    double b = 0;
    int nop = 0;
    int y = 0;  ///< code of the result
};

/// One rule block of RRULE.DAT. The head's counts are written as the rule database states them.
struct RuleBlock {
    int ruleNo = 0;
    int numMode = 0;
    int nVarin = 0;
    int nPar = 0;
    int nRule = 0;
    int nOutPut = 0;
    std::vector<RuleModeLine> modeLines;
    std::vector<RuleVariable> variables;
    std::vector<std::vector<double>> parameterVectors;
    std::vector<RuleLine> lines;
};

std::string format(const RuleBlock& rule);
/// Sections are told apart by their leading blanks (3 mode, 6 variable, 4 parameter, 6 rule lines) in their order and
/// by the counts of the head: numMode counts distinct modes, not lines. \throws FormatError
std::vector<RuleBlock> parseRules(std::string_view text, const std::string& file);

}  // namespace exchange
