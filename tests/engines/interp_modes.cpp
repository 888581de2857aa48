#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "engines/rules/VariableKind.h"
#include "tests/engines/interp_study.h"

namespace engines {
namespace {

using interp::addRelay;
using interp::relayBlock;
using interp::rule;
using interp::select;
using testing::ElementsAre;
using testing::HasSubstr;
using Rows = std::vector<exchange::FaultRow>;

constexpr double kOhm220 = 484;  // 220 kV squared over 100 MVA

/// The numbers of the adjacent branches, as element and start node.
std::vector<std::pair<int, int>> seenFrom(const Sections& sections, const std::vector<AdjacentBranch>& found) {
    std::vector<std::pair<int, int>> result;
    for (const AdjacentBranch& b : found) result.emplace_back(sections.edge(b.edge).idNo, b.startNode);
    return result;
}

class Modes : public testing::Test {
  protected:
    Modes() : s(interp::study()) {
        s.relays.reserve(20);
        own = &addRelay(s, relayBlock(1, 2, 3, 1, 1));
    }
    RuleResult run(const exchange::RuleBlock& block, std::vector<int> operatingModes = {0}, const Rows& rows = {}) {
        RuleInHand inHand{*own, std::move(operatingModes), {}};
        inHand.cases.emplace(1, faultCases(s.network, rows, "RELAY.R6", "rule", s.notes));
        return interp::evaluate(s, calculation, block, inHand);
    }
    Study s;
    StudyRelay* own = nullptr;
    interp::TabledCalculation calculation;
};

TEST_F(Modes, BranchesBehindTheFarEndPassVirtualRelaysAndStarPoints) {
    const Sections sections(s);
    EXPECT_THAT(seenFrom(sections, sections.branchesBehind(*own)),
                ElementsAre(std::pair(2, 3), std::pair(3, 3), std::pair(4, 3), std::pair(22, 7), std::pair(23, 7)));
    const StudyRelay& tee = addRelay(s, relayBlock(2, 4, 11, 8, 1));
    EXPECT_TRUE(sections.branchesBehind(tee).empty()) << "the section of 8 reaches the ends of 9 and 10";
    const StudyRelay& line2 = addRelay(s, relayBlock(3, 3, 4, 2, 1));
    EXPECT_THAT(seenFrom(sections, sections.branchesBehind(line2)), ElementsAre(std::pair(8, 4)));
    const StudyRelay& bus = addRelay(s, relayBlock(4, 3, 3, 0, 1, "bus  bus"));
    EXPECT_THAT(seenFrom(sections, sections.branchesHere(bus)),
                ElementsAre(std::pair(1, 3), std::pair(2, 3), std::pair(3, 3), std::pair(4, 3), std::pair(21, 3)));
    EXPECT_THAT(seenFrom(sections, sections.branchesHere(*own)), ElementsAre(std::pair(1, 2)));
}

TEST_F(Modes, RelaysBehindLookAwayAreValidAndNotTheRelayItself) {
    addRelay(s, relayBlock(9, 2, 3, 1, 2));  // looks back along the own line
    addRelay(s, relayBlock(2, 3, 4, 2, 1));  // away
    addRelay(s, relayBlock(3, 3, 4, 2, 2));  // at the other end of that line
    addRelay(s, relayBlock(4, 5, 3, 3, 2));  // away, on a line that runs towards the bus
    addRelay(s, relayBlock(5, 3, 6, 4, 1)).valid = false;
    addRelay(s, relayBlock(6, 7, 3, 21, 2));  // into the three-winding transformer
    std::vector<int> found;
    for (const AdjacentRelay& a : Sections(s).relaysBehind(*own)) found.push_back(a.relay->rno);
    EXPECT_THAT(found, ElementsAre(2, 4, 6));
}

TEST_F(Modes, OwnDataIsInPrimaryUnitsAtTheRelaysEnd) {
    const RuleResult line = run(rule({{1, 0, 101, 1},
                                      {2, 0, 102, 1},
                                      {3, 0, 107, 1},
                                      {4, 0, 108, 1},
                                      {5, 0, 109, 1},
                                      {6, 0, 121, 1},
                                      {7, 0, 122, 1},
                                      {8, 0, 131, 1},
                                      {9, 0, 132, 1}}));
    const double z = std::hypot(0.01, 0.1) * kOhm220;
    const std::vector<double> expected{z,   3 * z, 2.0 / 3, std::atan2(10, 1) * 180 / std::acos(-1), 50, 1000,
                                       220, 600,   198};
    ASSERT_EQ(line.outputs.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(line.outputs[i], expected[i], 1e-9) << "I" << i + 1;
    own = &addRelay(s, relayBlock(2, 3, 6, 4, 2));  // at the low side of the transformer
    const RuleResult transformer = run(rule({{1, 0, 104, 1}, {2, 0, 121, 1}, {3, 0, 121, 2}, {4, 0, 123, 1}}));
    ASSERT_EQ(transformer.outputs.size(), 4u) << transformer.reason;
    EXPECT_NEAR(transformer.outputs[0], 0.1 * 121, 1e-9);
    EXPECT_NEAR(transformer.outputs[1], 120e3 / std::sqrt(3) / 110, 1e-9);
    EXPECT_NEAR(transformer.outputs[2], 120e3 / std::sqrt(3) / 220, 1e-9);
    EXPECT_EQ(transformer.outputs[3], 120);
}

TEST_F(Modes, OwnDataOfGeneratorBusAndReactor) {
    own = &addRelay(s, relayBlock(2, 2, 2, 0, 1, "G1  A  type"));
    EXPECT_NEAR(run(rule({{1, 0, 121, 1}})).outputs.at(0), 200e3 / std::sqrt(3) / 220, 1e-9);
    EXPECT_NEAR(run(rule({{1, 0, 104, 1}})).outputs.at(0), 0.2 * kOhm220, 1e-9);
    own = &addRelay(s, relayBlock(3, 3, 3, 0, 1, "Bus3  A  type"));
    EXPECT_EQ(run(rule({{1, 0, 131, 1}})).outputs.at(0), 800) << "rated current of line 2, whose load is not known";
    own = &addRelay(s, relayBlock(4, 4, 4, 31, 1, "R1  A  type"));
    EXPECT_NEAR(run(rule({{1, 0, 121, 1}})).outputs.at(0), 50e3 / std::sqrt(3) / 220, 1e-9);
}

TEST_F(Modes, UnknownDataMattersOnlyWhereItIsUsed) {
    own = &addRelay(s, relayBlock(2, 5, 3, 3, 1));  // a line without a rated current
    exchange::RuleBlock block = rule({{1, 0, 121, 1}, {2, 0, 109, 1}});
    EXPECT_THAT(run(block).reason, HasSubstr("line 1: I1 has no value"));
    EXPECT_THAT(run(block).inputs, ElementsAre(0, 20));
    block.lines = {{2, 0, 1, 0, 1, 201}};
    block.nOutPut = 1;
    EXPECT_THAT(run(block).outputs, ElementsAre(20));
}

TEST_F(Modes, SourceImpedanceIsThatOfTheOperatingModeTheLineSelects) {
    calculation.sources = {{1, 0.02}, {2, 0.05}, {3, 0.04}};
    EXPECT_NEAR(run(rule({{1, 0, 141, 1}}, {select(0, 1, 1)}), {1, 2, 3, 4}).outputs.at(0), 0.05 * kOhm220, 1e-12)
        << "mode 4 has no source";
    EXPECT_NEAR(run(rule({{1, 0, 142, 1}}, {select(0, 1, 2)}), {3, 1, 2}).outputs.at(0), 0.02 * kOhm220, 1e-12);
    EXPECT_TRUE(run(rule({{1, 0, 141, 1}}, {select(0, 1, 2)}), {3, 1, 2}).choices.empty());
}

const Rows kFaults{{1, 1, 2, 3, 100, 1, "0", "0"}, {2, 2, 3, 4, 100, 1, "0", "0"}, {21, 2, 3, 4, 1, 5, "9", "9"},
                   {21, 2, 3, 4, 99, 5, "9", "9"}, {22, 1, 2, 3, 1, 5, "9", "9"},  {23, 3, 5, 3, 1, 5, "9", "9"}};

TEST_F(Modes, FaultCandidatesAreModesTimesOutagesTimesFaults) {
    calculation.seen = {{{1, 0, 1}, {2.0}}, {{1, 0, 2}, {1.5}},  {{1, 21, 1}, {2.5}}, {{1, 21, 2}, {99}},
                        {{1, 22, 2}, {98}}, {{1, 23, 1}, {1.2}}, {{1, 23, 2}, {0.5}}, {{2, 23, 1}, {3}}};
    const RuleResult largest = run(rule({{1, 1, 1, 1}}, {select(1, 1, 1)}), {1, 2}, kFaults);
    ASSERT_EQ(largest.outputs, std::vector<double>{3}) << "an outage excludes a fault of its branch and the own branch";
    ASSERT_EQ(largest.choices.size(), 1u);
    const Choice& c = largest.choices.front();
    EXPECT_THAT((std::vector{c.modeNo, c.nSela, c.nSelb, c.nSelc, c.nSys}), ElementsAre(1, 1, 23, 0, 2));
    EXPECT_EQ(run(rule({{1, 1, 1, 1}}, {select(1, 1, 2)}), {1, 2}, kFaults).outputs.at(0), 0.5)
        << "faults that are dead do not count for the smallest";
    calculation.cutOut = {{1, own->place.branch.value}};
    EXPECT_EQ(run(rule({{1, 1, 1, 1}}, {select(1, 1, 2)}), {1, 2}, kFaults).outputs.at(0), 3)
        << "nor do modes in which the relay's branch is out";
}

TEST_F(Modes, TiesGoToTheFirstAndWithoutASelectingLineTheFirstStands) {
    calculation.seen = {{{0, 0, 1}, {2.0}}, {{0, 0, 2}, {2.0}}, {{0, 23, 1}, {1}}, {{0, 23, 2}, {1}}};
    EXPECT_EQ(run(rule({{1, 1, 1, 1}}, {select(1, 1, 1)}), {0}, kFaults).choices.at(0).nSela, 1);
    EXPECT_EQ(run(rule({{1, 1, 1, 1}}, {select(1, 1, 2)}), {0}, kFaults).choices.at(0).nSelb, 23);
    EXPECT_EQ(run(rule({{1, 1, 1, 1}}), {0}, kFaults).outputs.at(0), 2);
}

TEST_F(Modes, ModeLinesSeeLowerModesAndTheirTemporariesReachTheRule) {
    calculation.seen = {{{0, 0, 1}, {2.0, 8}}, {{0, 0, 2}, {4.0, 9}}};
    exchange::RuleBlock block = rule({{1, 0, 109, 1}, {2, 1, 1, 1}, {3, 1, 11, 1}});
    block.modeLines = {{1, 3, 2, 1, 1, 4, 5, 1},
                       {1, 305, 1, 1, 1, 3, 6, 0}};  // T5 = U / I, the largest; T6 = T5 x length
    block.lines = {{306, 0, 1, 0, 1, 201}, {2, 0, 1, 0, 1, 202}, {305, 0, 1, 0, 1, 203}};
    const RuleResult result = run(block, {0}, Rows(kFaults.begin(), kFaults.begin() + 2));
    EXPECT_THAT(result.outputs, ElementsAre(200, 2, 4)) << result.reason;
}

TEST_F(Modes, ACandidateWhoseLineHasNoResultIsNone) {
    calculation.seen = {{{0, 0, 1}, {0.0, 8}}, {{0, 0, 2}, {4.0, 8}}};
    exchange::RuleBlock block = rule({{1, 1, 1, 1}, {2, 1, 11, 1}}, {{1, 2, 1, 1, 1, 4, 5, 1}});
    EXPECT_THAT(run(block, {0}, Rows(kFaults.begin(), kFaults.begin() + 2)).outputs, ElementsAre(4, 8));
    const RuleResult none = run(block, {0}, Rows(kFaults.begin(), kFaults.begin() + 1));
    EXPECT_TRUE(none.outputs.empty());
    EXPECT_THAT(none.reason, HasSubstr("mode 1 has no candidate (division by zero)"));
    EXPECT_THAT(none.inputs, ElementsAre(0, 0));
    EXPECT_TRUE(none.choices.empty());
}

TEST_F(Modes, TransformersBehindAreMeasuredFromTheEntryNodeToTheFarOne) {
    const RuleResult two = run(rule({{1, 21, 104, 3}}, {select(21, 1, 1)}));
    EXPECT_NEAR(two.outputs.at(0), (0.06 + 0.08) * kOhm220, 1e-9) << "winding 21 passed, winding 23 the largest";
    const Choice& c = two.choices.at(0);
    EXPECT_THAT((std::vector{c.modeNo, c.nSela, c.nSelb, c.nSelc, c.nSys}), ElementsAre(21, 7, 9, 23, 0));
    EXPECT_NEAR(run(rule({{1, 21, 104, 3}}, {select(21, 1, 2)})).outputs.at(0), 0.1 * kOhm220, 1e-9);
    EXPECT_EQ(run(rule({{1, 21, 104, 2}}, {select(21, 1, 2)})).choices.at(0).nSelc, 3) << "lines only";
    EXPECT_EQ(run(rule({{1, 22, 105, 3}}, {select(22, 1, 1)})).choices.at(0).nSelc, 4)
        << "the zero sequence ends in winding 23, and winding 22 has no resistance either: the first stands";
}

TEST_F(Modes, BranchesAtABusRelayAreCandidatesByTheirKind) {
    own = &addRelay(s, relayBlock(4, 3, 3, 0, 1, "bus  bus"));
    const RuleResult lines = run(rule({{1, 41, 104, 2}, {2, 42, 104, 3}}, {select(41, 1, 1), select(42, 2, 2)}));
    EXPECT_NEAR(lines.outputs.at(0), 0.1 * kOhm220, 1e-9) << "line 1, seen from its J end";
    EXPECT_NEAR(lines.outputs.at(1), 0.06 * kOhm220, 1e-9) << "the winding itself, not what lies beyond";
    const Choice &line = lines.choices.at(0), &winding = lines.choices.at(1);
    EXPECT_THAT((std::vector{line.modeNo, line.nSela, line.nSelb, line.nSelc}), ElementsAre(41, 2, 3, 1));
    EXPECT_THAT((std::vector{winding.modeNo, winding.nSela, winding.nSelb, winding.nSelc}), ElementsAre(42, 7, 3, 21));
    own = &addRelay(s, relayBlock(5, 2, 2, 0, 1, "G1  A  type"));
    EXPECT_THAT(run(rule({{1, 45, 109, 2}})).outputs, ElementsAre(50)) << "a generator's node has line 1";
}

TEST_F(Modes, CoordinatedSettingsOfAPartNotSetYetAreNoCandidates) {
    addRelay(s, relayBlock(2, 3, 4, 2, 1), {0, 0.3, 0, 25});
    EXPECT_THAT(run(rule({{1, 31, 401, 1}}, {select(31, 1, 2)})).reason,
                HasSubstr("I1: the part of that relay is not set yet"));
    addRelay(s, relayBlock(3, 5, 3, 3, 2), {12, 0});
    EXPECT_THAT(run(rule({{1, 31, 402, 1}}, {select(31, 1, 1)})).outputs, ElementsAre(0)) << "a time of 0 is a value";
    EXPECT_EQ(run(rule({{1, 31, 401, 1}}, {select(31, 1, 2)})).choices.at(0).nSela, 3);
    EXPECT_TRUE(run(rule({{1, 31, 405, 1}}, {select(31, 1, 2)})).outputs.empty()) << "there is no second part";
    EXPECT_THAT((std::vector{settingPlace(404).part, settingPlace(404).number, settingPlace(405).part,
                             settingPlace(420).part, settingPlace(420).number}),
                ElementsAre(1, 4, 2, 5, 4));
}

}  // namespace
}  // namespace engines
