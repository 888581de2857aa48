#include "programs/reports/FormulaNumbers.h"

#include <gtest/gtest.h>

#include "exchange/RuleFile.h"

namespace {

BookVariable variable(int number, const QString& name, std::optional<double> value, int mode = 0) {
    BookVariable made;
    made.VarNo = number;
    made.ModeNo = mode;
    made.Cin = name;
    made.V = value;
    return made;
}

exchange::RuleLine line(const char* x1, const char* x2, double a, double b, int nop, const char* y) {
    return {exchange::ruleOperandCode(x1), exchange::ruleOperandCode(x2), a, b, nop, exchange::ruleOperandCode(y)};
}

std::string numbers(const BookRule& rule, double result, const QString& cdz = "Zdz") {
    return numbersBehind(rule, {cdz, cdz, result}).toStdString();
}

/// Coordination with the neighbour's first stage; its setting has no name of its own in the formula.
BookRule coordination() {
    BookRule rule;
    rule.Formula = "Zdz=Kk×Zl+Kk'×Kz×Z'I，t=t'I+dt";
    rule.parameters = {{"Kk", 0.85}, {"Kk'", 0.8}, {"dt", 0.3}};
    rule.variables = {variable(1, "本线路正序阻抗 Zl", 30.076702), variable(2, "相邻线路一段阻抗定值", 14.913),
                      variable(3, "正序助增系数 Kz", 1.446822), variable(4, "相邻线路一段动作时间", 0.0)};
    rule.outputs = {"Zdz", "t"};
    rule.lines = {line("K1", "I1", 1, 1, 3, "T1"), line("I2", "I3", 1, 1, 3, "T2"), line("K2", "T2", 1, 1, 3, "T3"),
                  line("T1", "T3", 1, 1, 1, "O1"), line("I4", "K3", 1, 1, 1, "O2")};
    return rule;
}

BookRule named(const QString& formula) {
    BookRule rule;
    rule.Formula = formula;
    rule.parameters = {{"Kk", 1.3}, {"√3", 1.732051}, {"n", -2}};
    rule.variables = {variable(1, "末端接地故障 3I0max", 0.918999, 1), variable(2, "零序 Kz0", 4.614188),
                      variable(3, "正序 Kz1", 1.446822)};
    return rule;
}

TEST(FormulaNumbers, NamesAreWholeAndFaultQuantitiesInUnits) {
    EXPECT_EQ(numbers(named("Zdz=Kk×3I0max"), 1194.6987), "1.3 × 918.999");
    EXPECT_EQ(numbers(named("Zdz=Kk×3I0"), 1194.6987), "");
    EXPECT_EQ(numbers(named("Zdz=Kk×3I0（断线）"), 1194.6987), "");
    EXPECT_EQ(numbers(named("Zdz=Kk/(√3×2)+Kz，Kz=min(Kz1,Kz0)"), 1.822099),
              "1.3 / (1.73205 × 2) + min(1.44682, 4.61419)");
    EXPECT_EQ(numbers(named("Zdz=Kk-(n-Kk)"), 4.6), "1.3 - ((-2) - 1.3)");
    EXPECT_EQ(numbers(named("Zdz=Zdz+Kk"), 1.3), "") << "a definition that turns in a circle";
}

TEST(FormulaNumbers, WhereANameIsUnknownTheLinesOfTheRuleTell) {
    EXPECT_EQ(numbers(coordination(), 42.826356), "0.85 × 30.0767 + 0.8 × 14.913 × 1.44682");
    EXPECT_EQ(numbers(coordination(), 0.3, "t"), "0 + 0.3");
    BookRule cosine = named("");
    cosine.outputs = {"Zdz"};
    cosine.lines = {line("I2", "K1", 10, -1, 11, "T4"), line("I1", "T4", 1000, 1, 4, "O1")};
    EXPECT_EQ(numbers(cosine, 918.999 / 0.70906), "918.999 / cos(10 × 4.61419 - 1.3)");
}

TEST(FormulaNumbers, NoNumbersAreShownThatDoNotGiveTheResult) {
    BookRule rule = coordination();
    EXPECT_NE(numbers(rule, 42.8265), "") << "rounding of the sixth digit";
    EXPECT_EQ(numbers(rule, 42.83), "");
    rule.parameters[1].K = 0.75;  // the group was changed after the calculation
    EXPECT_EQ(numbers(rule, 42.826356), "");
    rule.parameters[1].K = 0.8;
    rule.variables[1].V = std::nullopt;
    EXPECT_EQ(numbers(rule, 42.826356), "");
    rule = coordination();
    rule.lines[2] = line("K2", "T9", 1, 1, 3, "T3");  // a temporary that a mode has set is not in the book
    EXPECT_EQ(numbers(rule, 42.826356), "");
}

TEST(FormulaNumbers, ANameForTwoThingsIsNoName) {
    BookRule rule = named("Zdz=Kk×Zl");
    rule.variables = {variable(1, "本线路 Zl", 10), variable(2, "相邻线路 Zl", 20)};
    EXPECT_EQ(numbers(rule, 13), "");
    EXPECT_EQ(numbers(rule, 26), "");
}

}  // namespace
