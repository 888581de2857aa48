#include <gtest/gtest.h>

#include <cmath>

#include "engines/rules/Arithmetic.h"
#include "engines/rules/RuleCheck.h"
#include "exchange/RuleFile.h"
#include "exchange/TextFile.h"

namespace engines {
namespace {

constexpr int kI1 = 1, kI2 = 2, kI3 = 3, kK2 = 102, kO1 = 201, kT7 = 307;

class Lines : public testing::Test {
  protected:
    Lines() : registers(parameters) {
        registers.setInput(1, 6);
        registers.setInput(2, -4);
        registers.setTemporary(7, 60);
        registers.set(kO1, 0);
    }
    double value(Step step) const { return evaluate(step, registers).value; }
    std::string fault(Step step) const { return evaluate(step, registers).fault; }

    std::vector<double> parameters{10, 0.5};
    Registers registers;
};

TEST_F(Lines, EachOperationWorksOnTheTermsAndNotOnTheBareOperands) {
    const struct {
        int nop;
        double expected;  // of 2 x 6 = 12 and 3 x -4 = -12
    } cases[] = {
        {1, 0},  {2, 24}, {3, -144}, {4, -1}, {5, 12}, {6, -12}, {7, std::sqrt(12)}, {8, 12}, {9, std::sqrt(288)},
        {10, 12}};
    for (const auto& c : cases) EXPECT_NEAR(value({kI1, kI2, 2, 3, c.nop}), c.expected, 1e-12) << "operation " << c.nop;
    EXPECT_EQ(value({kI2, kI1, 1, 1, 8}), 4);
    EXPECT_EQ(value({kI2, kI1, 1, 1, 10}), 6) << "the first is not positive";
    EXPECT_EQ(value({kO1, kI1, 1, 1, 10}), 6) << "zero is not positive";
    EXPECT_NEAR(value({kT7, 0, 1, 0, 11}), 0.5, 1e-12);
    EXPECT_NEAR(value({kT7, kI1, 1, -5, 11}), std::cos(std::acos(-1.0) / 6), 1e-12);
}

TEST_F(Lines, AnAbsentOperandStandsWithItsCoefficientOnlyBesideAnother) {
    EXPECT_EQ(value({kI1, 0, 1, 0.3, 1}), 6.3);
    EXPECT_EQ(value({kI1, 0, 2, 5, 3}), 60);
    EXPECT_EQ(value({0, kI1, 12, 1, 4}), 2);
    EXPECT_EQ(value({0, 0, 1, 1, 1}), 0);
}

TEST_F(Lines, ParametersComeFromTheVectorInUse) {
    EXPECT_EQ(value({kI1, kK2, 1, 1, 3}), 3);
    EXPECT_EQ(fault({kI1, 103, 1, 1, 3}), "K3 has no value");
}

TEST_F(Lines, WhatHasNoResultSaysWhy) {
    EXPECT_EQ(fault({kI1, kO1, 1, 1, 4}), "division by zero");
    EXPECT_EQ(fault({kI1, kI2, 1, 0, 4}), "division by zero");
    EXPECT_EQ(fault({kI2, 0, 1, 0, 7}), "square root of a negative number");
    EXPECT_EQ(fault({kI1, kI3, 1, 1, 5}), "I3 has no value");
    EXPECT_EQ(fault({kI1, kI1, 1e200, 1e200, 3}), "the result is not finite");
}

exchange::RuleBlock soundRule() {
    exchange::RuleBlock rule;
    rule.ruleNo = 1201;
    rule.nPar = 2;
    rule.nOutPut = 1;
    rule.variables = {{2, 31, 401, 1}, {1, 0, 101, 1}, {3, 1, 8, 1}};
    rule.modeLines = {{1, 3, 0, 1, 0, 1, 8, 1}, {31, 2, 308, 1, 1, 3, 9, 2}};
    rule.lines = {{1, 101, 1, 1, 3, 301}, {301, 309, 1, 1, 1, kO1}};
    return rule;
}

std::string complaint(void (*spoil)(exchange::RuleBlock&)) {
    exchange::RuleBlock rule = soundRule();
    spoil(rule);
    try {
        checkRule(rule);
        return "none";
    } catch (const exchange::FormatError& error) {
        return error.what();
    }
}

TEST(RuleCheck, NamesTheRuleAndThePlaceOfEachFault) {
    using Rule = exchange::RuleBlock;
    EXPECT_EQ(complaint([](Rule&) {}), "none");
    const struct {
        void (*spoil)(Rule&);
        const char* what;
    } cases[] = {
        {[](Rule& r) { r.variables[0].vType = 133; }, "variable 2 is of the unknown kind 133"},
        {[](Rule& r) { r.variables[1].vType = 401; }, "variable 1 of kind 401 cannot stand in mode 0"},
        {[](Rule& r) { r.variables[2].modeNo = 21; }, "variable 3 of kind 8 cannot stand in mode 21"},
        {[](Rule& r) { r.variables[2].varNo = 1; }, "variable 1 stands twice"},
        {[](Rule& r) {
             r.variables.push_back({4, 21, 101, 2}), r.variables.push_back({5, 21, 101, 3});
         },
         "asks for lines and for transformers"},
        {[](Rule& r) { r.modeLines[0].first = 2; }, "mode 1 uses I2 of a later mode"},
        {[](Rule& r) { r.modeLines[0].first = 309; }, "mode 1 uses T9 before it is set"},
        {[](Rule& r) { r.modeLines[1].nop = 12; }, "mode 31 has the unknown operation 12"},
        {[](Rule& r) { r.modeLines[1].modeNo = 1, r.modeLines[1].first = 3; }, "mode 1 selects twice"},
        {[](Rule& r) { r.lines[0].first = 4; }, "line 1 uses I4, which is no variable"},
        {[](Rule& r) { r.lines[0].second = 103; }, "line 1 uses K3, which is no parameter"},
        {[](Rule& r) { r.lines[1].second = 400; }, "line 2 has the unknown operand code 400"},
        {[](Rule& r) { r.lines[1].y = 301; }, "output 1 is never set"},
        {[](Rule& r) { r.lines[1].y = 5; }, "line 2 puts its result nowhere"},
    };
    for (const auto& c : cases) {
        const std::string said = complaint(c.spoil);
        EXPECT_NE(said.find("RRULE.DAT: rule 1201: "), std::string::npos) << said;
        EXPECT_NE(said.find(c.what), std::string::npos) << said;
    }
}

}  // namespace
}  // namespace engines
