#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "engines/order/TurnOrder.h"
#include "tests/engines/num_grid.h"

namespace engines {
namespace {

using ::testing::ElementsAre;

Digraph randomGraph(std::mt19937& random, int vertices, int edges) {
    Digraph graph(static_cast<std::size_t>(vertices));
    for (int i = 0; i < edges; ++i)
        graph[random() % static_cast<unsigned>(vertices)].push_back(
            static_cast<int>(random() % static_cast<unsigned>(vertices)));
    return graph;
}

std::vector<int> oneToN(std::size_t n) {
    std::vector<int> numbers(n);
    for (std::size_t i = 0; i < n; ++i) numbers[i] = static_cast<int>(i) + 1;
    return numbers;
}

/// The promise of a turn order, for relays numbered 1 to n in the graph's order.
void expectKept(const exchange::TurnOrder& order, const Digraph& dependencies) {
    ASSERT_EQ(std::set<int>(order.order.begin(), order.order.end()).size(), dependencies.size());
    std::vector<int> rank(dependencies.size());
    for (std::size_t i = 0; i < order.order.size(); ++i)
        rank[static_cast<std::size_t>(order.order[i] - 1)] = static_cast<int>(i);
    for (std::size_t v = 0; v < dependencies.size(); ++v) {
        if (rank[v] < order.breakRelays) continue;
        for (const int u : dependencies[v])
            EXPECT_TRUE(rank[static_cast<std::size_t>(u)] < rank[v] || static_cast<std::size_t>(u) == v)
                << v + 1 << " before " << u + 1;
    }
}

bool acyclicWithout(const Digraph& graph, unsigned left) {
    for (bool changed = true; changed;) {
        changed = false;
        for (std::size_t v = 0; v < graph.size(); ++v) {
            if (left >> v & 1U) continue;
            const bool waits = std::ranges::any_of(
                graph[v], [&](int u) { return static_cast<std::size_t>(u) != v && !(left >> u & 1U); });
            if (!waits) left |= 1U << v, changed = true;
        }
    }
    return left == (1U << graph.size()) - 1;
}

int fewestBreaks(const Digraph& graph) {
    int fewest = static_cast<int>(graph.size());
    for (unsigned set = 0; set < 1U << graph.size(); ++set)
        if (std::popcount(set) < fewest && acyclicWithout(graph, set)) fewest = std::popcount(set);
    return fewest;
}

TEST(TurnOrderTest, ListsARelayAfterAllThatItDependsOn) {
    const auto order = turnOrder({40, 30, 20, 10}, {{1}, {2}, {}, {2}});
    EXPECT_EQ(order.breakRelays, 0);
    EXPECT_THAT(order.order, ElementsAre(20, 10, 30, 40)) << "of those that can come next, the smallest number";
    EXPECT_TRUE(turnOrder({}, {}).order.empty());
}

TEST(TurnOrderTest, BreaksALoopAtItsSmallestNumberAndPutsItFirst) {
    const auto order = turnOrder({3, 7, 5, 1}, {{1}, {2}, {0}, {0}});
    EXPECT_EQ(order.breakRelays, 1);
    EXPECT_EQ(order.order.front(), 3);
    EXPECT_THAT(order.order, ElementsAre(3, 1, 5, 7));
}

TEST(TurnOrderTest, BreakRelaysFollowTheirDependenciesOnOneAnother) {
    // Two loops, 1 - 2 and 3 - 4; the break relay of the first depends on that of the second.
    const auto order = turnOrder({1, 2, 3, 4}, {{1, 2}, {0}, {3}, {2}});
    EXPECT_EQ(order.breakRelays, 2);
    EXPECT_THAT(order.order, ElementsAre(3, 1, 2, 4));
}

TEST(TurnOrderTest, ARelayThatDependsOnItselfNeedsNoBreak) {
    EXPECT_EQ(turnOrder({1, 2}, {{0, 1, 1}, {1}}).breakRelays, 0);
}

TEST(TurnOrderTest, FindsTheFewestBreaksOfSmallGraphs) {
    std::mt19937 random(7);
    for (int i = 0; i < 150; ++i) {
        const auto graph = randomGraph(random, 4 + i % 8, 6 + i % 20);
        const auto order = turnOrder(oneToN(graph.size()), graph);
        expectKept(order, graph);
        EXPECT_EQ(order.breakRelays, fewestBreaks(graph)) << "graph " << i;
    }
}

TEST(TurnOrderTest, DoesNotDependOnTheOrderOfTheFile) {
    std::mt19937 random(11);
    const auto graph = randomGraph(random, 60, 200);
    auto places = oneToN(graph.size());
    const auto straight = turnOrder(places, graph);
    std::shuffle(places.begin(), places.end(), random);
    Digraph shuffled(graph.size());
    std::vector<int> where(graph.size());
    for (std::size_t i = 0; i < places.size(); ++i)
        where[static_cast<std::size_t>(places[i] - 1)] = static_cast<int>(i);
    for (std::size_t i = 0; i < places.size(); ++i)
        for (const int u : graph[static_cast<std::size_t>(places[i] - 1)])
            shuffled[i].push_back(where[static_cast<std::size_t>(u)]);
    EXPECT_EQ(turnOrder(places, shuffled).order, straight.order);
}

TEST(TurnOrderTest, ALongChainAndALongLoopNeedNoDeepStack) {
    Digraph chain(200000);
    for (std::size_t v = 0; v + 1 < chain.size(); ++v) chain[v] = {static_cast<int>(v) + 1};
    EXPECT_EQ(turnOrder(oneToN(chain.size()), chain).breakRelays, 0);
    chain.back() = {0};
    EXPECT_EQ(turnOrder(oneToN(chain.size()), chain).breakRelays, 1);
}

/// Relays at both ends of every branch: relay 2b looks from the I end of branch b, 2b + 1 from the J end.
Digraph relaysOf(const std::vector<std::pair<int, int>>& branches) {
    std::map<int, std::vector<std::pair<int, int>>> at;  // bus -> branch, relay that looks into it from there
    for (std::size_t b = 0; b < branches.size(); ++b) {
        at[branches[b].first].emplace_back(static_cast<int>(b), static_cast<int>(2 * b));
        at[branches[b].second].emplace_back(static_cast<int>(b), static_cast<int>(2 * b + 1));
    }
    Digraph graph(2 * branches.size());
    for (std::size_t r = 0; r < graph.size(); ++r)
        for (const auto& [branch, relay] : at[r % 2 == 0 ? branches[r / 2].second : branches[r / 2].first])
            if (branch != static_cast<int>(r / 2)) graph[r].push_back(relay);
    return graph;
}

TEST(TurnOrderTest, ARingOfLinesNeedsOneBreakForEachWayRound) {
    std::vector<std::pair<int, int>> ring;
    for (int i = 0; i < 30; ++i) ring.emplace_back(i, (i + 1) % 30);
    const auto order = turnOrder(oneToN(60), relaysOf(ring));
    EXPECT_EQ(order.breakRelays, 2);
    expectKept(order, relaysOf(ring));
}

/// The end buses of the rows of a MATPOWER branch matrix; empty when the file is absent.
std::vector<std::pair<int, int>> matpowerBranches(const std::string& name) {
    std::ifstream in(num::sharedNetworks() / "matpower" / (name + ".m"));
    std::vector<std::pair<int, int>> branches;
    bool inside = false;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("mpc.branch")) inside = true;
        if (inside && line.starts_with("];")) break;
        std::istringstream row(line);
        if (std::pair<int, int> ends; inside && row >> ends.first >> ends.second) branches.push_back(ends);
    }
    return branches;
}

TEST(TurnOrderTest, NeedsFewBreaksOnPublicNetworks) {
    const std::map<std::string, int> most = {
        {"case14", 9}, {"case_ieee30", 16}, {"case39", 11}, {"case118", 90}, {"case300", 146}};
    for (const auto& [name, breaks] : most) {
        const auto branches = matpowerBranches(name);
        if (branches.empty()) GTEST_SKIP() << "the public networks are not beside this checkout";
        const auto graph = relaysOf(branches);
        const auto order = turnOrder(oneToN(graph.size()), graph);
        expectKept(order, graph);
        EXPECT_LE(order.breakRelays, breaks) << name;
        std::cout << name << ": " << graph.size() << " relays, " << order.breakRelays << " break relays\n";
    }
}

TEST(TurnOrderTest, NineThousandRelaysAreOrderedInBoundedTime) {
    std::mt19937 random(3);
    std::vector<std::pair<int, int>> branches;  // a meshed grid with the branch to bus ratio of a transmission network
    for (int bus = 1; bus < 3100; ++bus) branches.emplace_back(bus, bus - 1 - static_cast<int>(random() % 40) % bus);
    while (branches.size() < 4500) {
        const int bus = static_cast<int>(random() % 3000);
        branches.emplace_back(bus, bus + 1 + static_cast<int>(random() % 90));
    }
    const auto graph = relaysOf(branches);
    const auto start = std::chrono::steady_clock::now();
    const auto order = turnOrder(oneToN(graph.size()), graph);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    expectKept(order, graph);
    EXPECT_LT(order.breakRelays, 2600);
    EXPECT_LT(took.count(), 10) << "far above what it takes on a small machine, for one that is busy";
    std::cout << graph.size() << " relays, " << order.breakRelays << " break relays, " << took.count() << " s\n";
}

}  // namespace
}  // namespace engines
