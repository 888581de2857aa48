#include "exchange/RuleFile.h"

#include <gtest/gtest.h>

#include "tests/exchange/FormatFailure.h"

namespace exchange {
namespace {

RuleBlock fullRule() {
    RuleBlock rule{2101, 1, 2, 3, 2, 2, {}, {}, {}, {}};
    rule.modeLines = {{21, 1, 0, 1.0, 0.0, 8, 1, 0}, {21, 301, 0, 0.8, 1e-5, 1, 2, 2}};
    rule.variables = {{1, 21, 101, 2}, {2, 0, 1000, 1}};
    rule.parameterVectors = {{0.85, 0.8, 1.0}, {0.8, 0.7, 1.25}};
    rule.lines = {{1, 101, 1, 0, 3, 301}, {301, 0, 1234567, 0, 1, 201}};
    return rule;
}

constexpr char kFullText[] =
    "2101, 1, 2, 3, 2, 2, 2, \r\n"
    "   21, 1, 0, 1, 0, 8, 1, 0, \r\n"
    "   21, 301, 0, 0.8, 1e-05, 1, 2, 2, \r\n"
    "      1, 21, 101, 2, 1, \r\n"
    "      2, 0, 1000, 1, 1, \r\n"
    "    0.85,       0.8,       1,   \r\n"
    "    0.8,       0.7,       1.25,   \r\n"
    "      1, 101, 1, 0, 3, 301, \r\n"
    "      301, 0, 1.23457e+06, 0, 1, 201, \r\n";

TEST(RuleFile, LayoutOfAFullRule) { EXPECT_EQ(format(fullRule()), kFullText); }

TEST(RuleFile, EmptySectionsOfParametersAndLinesAreEmptyLines) {
    const RuleBlock rule{7, 0, 0, 0, 0, 1, {}, {}, {}, {}};
    EXPECT_EQ(format(rule), "7, 0, 0, 0, 0, 0, 1, \r\n\r\n\r\n");
}

TEST(RuleFile, BlocksComeBackWhateverSectionsTheyLack) {
    auto noModes = fullRule();
    noModes.modeLines.clear();
    auto noParameters = fullRule();
    noParameters.parameterVectors.clear();
    auto noLines = fullRule();
    noLines.lines.clear();
    noLines.nRule = 0;
    const RuleBlock nothing{7, 0, 0, 0, 0, 1, {}, {}, {}, {}};
    std::string file;
    for (const auto& rule : {noLines, nothing, noParameters, nothing, noModes, fullRule()}) file += format(rule);
    std::string again;
    for (const auto& rule : parseRules(file, "RRULE.DAT")) again += format(rule);
    EXPECT_EQ(again, file);
}

TEST(RuleFile, ACountThatDoesNotHoldIsToldAtItsHead) {
    const auto message = [](std::string text, const std::string& from, const std::string& to) -> std::string {
        text.replace(text.find(from), from.size(), to);
        return failureOf([&] { return parseRules(text, "RRULE.DAT"); });
    };
    EXPECT_EQ(message(kFullText, "2101, 1, 2", "2101, 1, 3"),
              "RRULE.DAT:1: rule 2101 has 2 input variables where its head counts 3");
    EXPECT_EQ(message(kFullText, "3, 2, 2, 2", "3, 1, 2, 2"),
              "RRULE.DAT:1: rule 2101 has 2 parameter vectors where its head counts 1");
    EXPECT_EQ(message(kFullText, "      301, 0, 1.23457e+06, 0, 1, 201, \r\n", ""),
              "RRULE.DAT:1: rule 2101 has 1 rule lines where its head counts 2");
    EXPECT_EQ(message(kFullText, "0.8, 1e-05", "0.8, x"), "RRULE.DAT:3: field 5 is not a number: 'x'");
    EXPECT_EQ(message("7, 0, 0, 0, 0, 0, 1, \r\n\r\n\r\n", "\r\n\r\n\r\n", "\r\n\r\n"),
              "RRULE.DAT:2: the section of rule lines is missing");
}

TEST(RuleFile, OperandTextsBecomeCodes) {
    EXPECT_EQ(ruleOperandCode("I7"), 7);
    EXPECT_EQ(ruleOperandCode("K12"), 112);
    EXPECT_EQ(ruleOperandCode("T5"), 305);
    EXPECT_EQ(ruleOperandCode("O3"), 203);
    EXPECT_EQ(modeOperandCode("O3"), 0);
    EXPECT_EQ(modeOperandCode("K12"), 112);
    EXPECT_EQ(ruleOperandCode(" 4 "), 4);
    EXPECT_EQ(ruleOperandCode(""), 0);
    EXPECT_EQ(ruleOperandCode("4x"), 0);
}

}  // namespace
}  // namespace exchange
