#include "exchange/BranchGraph.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace exchange {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> steps(const BranchGraph& graph, int node, int idNo, int goOn,
                               std::vector<WalkStep> list = {}) {
    graph.walk(node, idNo, list, goOn, 1);
    std::vector<std::string> texts;
    for (const auto& s : list)
        texts.push_back(std::to_string(s.fromNode) + ">" + std::to_string(s.node) + " by " + std::to_string(s.idNo) +
                        " orient " + std::to_string(s.orient) + " state " + std::to_string(s.state) + " level " +
                        std::to_string(s.level));
    return texts;
}

BranchEdge line(int idNo, int i, int j, bool virtualAtI = false, bool virtualAtJ = false) {
    return {idNo, i, j, BranchKind::Line, virtualAtI, virtualAtJ};
}

TEST(BranchGraphWalk, EndsAtTheFarNodeFromEitherSide) {
    const BranchGraph graph({line(1, 2, 3), line(2, 3, 4)});
    EXPECT_THAT(steps(graph, 2, 1, 1), ElementsAre("2>3 by 1 orient 2 state 1 level 1"));
    EXPECT_THAT(steps(graph, 3, 1, 1), ElementsAre("3>2 by 1 orient 1 state 1 level 1"));
    EXPECT_TRUE(steps(graph, 4, 1, 1).empty()) << "branch 1 does not touch node 4";
    EXPECT_TRUE(steps(graph, 2, 9, 1).empty());
}

TEST(BranchGraphWalk, StopsOrGoesOnAtAVirtualRelay) {
    const BranchGraph graph({line(1, 2, 3, false, true), line(2, 4, 3, false, true), line(3, 3, 5, true)});
    EXPECT_THAT(steps(graph, 2, 1, 0), ElementsAre("2>3 by 1 orient 2 state 0 level 1"));
    EXPECT_THAT(steps(graph, 2, 1, 1),
                ElementsAre("3>5 by 3 orient 2 state 1 level 0", "3>4 by 2 orient 1 state 1 level 0",
                            "2>3 by 1 orient 2 state 0 level 1"));
}

TEST(BranchGraphWalk, TheFlagAtTheNearEndDoesNotCount) {
    const BranchGraph graph({line(1, 2, 3, true, false), line(2, 3, 4)});
    EXPECT_THAT(steps(graph, 2, 1, 1), ElementsAre("2>3 by 1 orient 2 state 1 level 1"));
}

TEST(BranchGraphWalk, ARingOfVirtualRelaysIsEnteredOnce) {
    const BranchGraph ring({line(1, 2, 3, true, true), line(2, 3, 4, true, true), line(3, 4, 2, true, true)});
    EXPECT_THAT(steps(ring, 2, 1, 1),
                ElementsAre("4>2 by 3 orient 2 state 0 level 0", "3>4 by 2 orient 2 state 0 level 0",
                            "2>3 by 1 orient 2 state 0 level 1"));
    EXPECT_THAT(steps(ring, 2, 1, 1, {{3, 7, 8, 2, 1, 5, BranchKind::Line}}),
                ElementsAre("8>3 by 7 orient 2 state 1 level 5"))
        << "a node of the list given is not entered again";
}

TEST(BranchGraphWalk, PassesAStarPointFromTheWindingSideOnly) {
    const auto winding = [](int idNo, int j) { return BranchEdge{idNo, 9, j, BranchKind::Winding, false, false}; };
    const BranchGraph graph({winding(1, 2), winding(2, 3), winding(3, 4), line(4, 4, 5)});
    EXPECT_THAT(steps(graph, 2, 1, 0),
                ElementsAre("9>4 by 3 orient 2 state 1 level 2", "9>3 by 2 orient 2 state 1 level 2",
                            "2>9 by 1 orient 1 state 2 level 1"));
    EXPECT_THAT(steps(graph, 9, 1, 1), ElementsAre("9>2 by 1 orient 2 state 1 level 1"));
}

TEST(BranchGraphWalk, GoesDeepBeforeItGoesWide) {
    const BranchGraph graph(
        {line(1, 2, 3, false, true), line(2, 3, 4, true, true), line(3, 3, 5, true), line(4, 4, 6)});
    EXPECT_THAT(steps(graph, 2, 1, 1),
                ElementsAre("3>5 by 3 orient 2 state 1 level 0", "4>6 by 4 orient 2 state 1 level 0",
                            "3>4 by 2 orient 2 state 0 level 0", "2>3 by 1 orient 2 state 0 level 1"));
}

TEST(BranchGraphWalk, SurvivesAVeryLongChainOfVirtualRelays) {
    std::vector<BranchEdge> chain;
    for (int i = 0; i < 200000; ++i) chain.push_back(line(i + 1, i + 2, i + 3, true, true));
    std::vector<WalkStep> list;
    BranchGraph(chain).walk(2, 1, list, 1, 1);
    EXPECT_EQ(list.size(), chain.size());
    EXPECT_EQ(list.front().node, 200002);
}

TEST(BranchGraphTest, RowsAtANodeKeepTheirOrderAndOneBusElementsAppearOnce) {
    const BranchGraph graph({line(5, 3, 2), {0, 3, 3, BranchKind::Generator, false, false}, line(5, 3, 4)});
    EXPECT_THAT(std::vector(graph.at(3).begin(), graph.at(3).end()), ElementsAre(0, 1, 2));
    EXPECT_TRUE(graph.at(7).empty());
    EXPECT_EQ(graph.find(5, 3), 0);
    EXPECT_EQ(graph.find(5, 4), 2);
    EXPECT_EQ(graph.find(0, 2), -1);
}

}  // namespace
}  // namespace exchange
