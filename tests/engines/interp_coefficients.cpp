#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/engines/interp_study.h"

namespace engines {
namespace {

using interp::addMainBranch;
using interp::addRelay;
using interp::relayBlock;
using interp::rule;
using interp::select;
using testing::ElementsAre;
using testing::HasSubstr;
using Rows = std::vector<exchange::FaultRow>;

class Coefficients : public testing::Test {
  protected:
    Coefficients() : s(interp::study()) {
        s.relays.reserve(20);
        own = &addRelay(s, relayBlock(1, 2, 3, 1, 1));
    }
    RuleResult run(const exchange::RuleBlock& block) {
        return interp::evaluate(s, calculation, block, {*own, {0}, {}});
    }
    std::vector<exchange::CoefficientResult> lines() {
        const Sections sections(s);
        return BranchCoefficients(s, sections, calculation).lines();
    }
    Study s;
    StudyRelay* own = nullptr;
    interp::TabledCalculation calculation;
};

const Rows kRows{{1, 2, 3, 4, 100, 1, "0", "0"}, {2, 8, 4, 11, 100, 1, "0", "0"}, {21, 3, 5, 3, 1, 5, "9", "9"}};

TEST_F(Coefficients, TheLargestOverModesOutagesAndFaultsDecidesPerSequence) {
    addMainBranch(s, 7, 3, 4, 2, 1, {1, 2}, kRows);
    calculation.coefficients = {
        {{1, 0, 1, false}, 0.5}, {{2, 21, 2, false}, 0.8}, {{1, 21, 1, true}, 0.25}, {{2, 0, 1, true}, 0.25}};
    const RuleResult result = run(rule({{1, 21, 451, 2}, {2, 21, 452, 2}, {3, 21, 453, 2}, {4, 21, 454, 2}}));
    EXPECT_THAT(result.outputs, ElementsAre(0.8, 0.25, 1.25, 4)) << result.reason;
    const auto found = lines();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(exchange::format(found[0]), "7, 3, 4, 2, 1, 2, 3, 1, 1, 0.8, 2, 21, 2, 0.25, 1, 21, 1, \r\n");
    EXPECT_EQ(calculation.asked.front().first.end, End::I);
    EXPECT_EQ(calculation.asked.front().second.end, End::I);
}

TEST_F(Coefficients, EndsAreTakenWhereTheBranchesStart) {
    s.relays.clear();
    own = &addRelay(s, relayBlock(2, 3, 4, 2, 2));  // from 4 towards 3, where line 3 begins at its J end
    addMainBranch(s, 3, 5, 3, 3, 2);
    run(rule({{1, 21, 451, 2}}));
    ASSERT_FALSE(calculation.asked.empty());
    EXPECT_EQ(calculation.asked.back().first.end, End::J);
    EXPECT_EQ(calculation.asked.back().second.end, End::J);
}

TEST_F(Coefficients, WithoutAMainBranchOrWithOpposedCurrentsThereIsNoCandidate) {
    EXPECT_THAT(run(rule({{1, 21, 451, 2}})).reason, HasSubstr("no branch coefficient"));
    addMainBranch(s, 7, 3, 4, 2, 1);
    EXPECT_THAT(run(rule({{1, 21, 451, 2}})).reason, HasSubstr("no branch coefficient"));
    EXPECT_TRUE(lines().empty());
    calculation.coefficients = {{{0, 0, 1, false}, 0.4}};
    EXPECT_THAT(run(rule({{1, 21, 452, 2}})).reason, HasSubstr("no branch coefficient")) << "zero sequence alone";
    EXPECT_EQ(lines().size(), 1u);
}

TEST_F(Coefficients, ATransformerHasAssistCoefficientsOfItsOwn) {
    addMainBranch(s, 1, 3, 6, 4, 1);
    addMainBranch(s, 2, 3, 4, 2, 1);
    calculation.coefficients = {{{0, 0, 1, false}, 0.5}, {{0, 0, 1, true}, 0.2}};
    const RuleResult result = run(rule({{1, 21, 455, 1}, {2, 21, 456, 1}}));
    EXPECT_THAT(result.outputs, ElementsAre(2, 5));
    EXPECT_EQ(result.choices.at(0).nSelc, 4) << "the line before it has none";
}

TEST_F(Coefficients, ARelayAtAThreeWindingTransformerTakesTheFaultsBehindItsStarPoint) {
    addRelay(s, relayBlock(6, 7, 3, 21, 2), {10, 0.5});
    addMainBranch(s, 1, 7, 8, 22, 1);
    addMainBranch(s, 2, 7, 9, 23, 1);
    calculation.coefficients = {{{0, 0, 1, false}, 0.5}};
    EXPECT_THAT(run(rule({{1, 31, 401, 1}, {2, 31, 451, 1}})).outputs, ElementsAre(10, 0.5));
    const Branch& m = s.network.branches[static_cast<std::size_t>(calculation.asked.front().second.branch.value)];
    EXPECT_EQ(m.idNo, 21);
    EXPECT_EQ(calculation.asked.front().second.end, End::J);
}

TEST_F(Coefficients, PairsOfAnEarlierRunAreTakenOverAndNotComputed) {
    addRelay(s, relayBlock(2, 5, 3, 3, 1));  // line 3 from 5: sees the same main branches
    addMainBranch(s, 7, 3, 4, 2, 1);
    addMainBranch(s, 5, 3, 6, 4, 1);
    calculation.coefficients = {{{0, 0, 1, false}, 0.123456789012345}};
    const auto all = lines();
    ASSERT_EQ(all.size(), 4u);
    EXPECT_THAT((std::vector{all[0].fzNo, all[0].nlRNo, all[1].nlRNo, all[2].fzNo, all[3].nlRNo}),
                ElementsAre(5, 1, 2, 7, 2));

    std::string text;
    for (const auto& line : all) text += exchange::format(line);
    s.earlier = exchange::parseCoefficients(text);
    const double before = run(rule({{1, 21, 453, 2}})).outputs.at(0);
    calculation.asked.clear();
    const auto again = lines();
    EXPECT_EQ(run(rule({{1, 21, 453, 2}})).outputs.at(0), before);
    EXPECT_TRUE(calculation.asked.empty());
    std::string textAgain;
    for (const auto& line : again) textAgain += exchange::format(line);
    EXPECT_EQ(textAgain, text);
    EXPECT_EQ(before, 1 / all[2].fz1) << "a value taken over equals the one computed";
}

}  // namespace
}  // namespace engines
