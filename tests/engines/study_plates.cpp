#include <gtest/gtest.h>

#include "engines/study/NamePlates.h"

using namespace engines;

namespace {

/// Feeder at 2 (110 kV), line to 3, unit transformer 10 to 4 (10 kV) with a generator, a motor and, when wanted, a
/// second generator there.
Network station(bool twoGenerators) {
    exchange::NetworkData data;
    data.buses.resize(3);
    for (int k = 0; k < 3; ++k)
        data.buses[std::size_t(k)].no = k + 2, data.buses[std::size_t(k)].baseKv = k < 2 ? 110 : 10;
    exchange::NetLine line;
    line.idNo = 1, line.iNo = 2, line.jNo = 3, line.r1 = 0.01, line.x1 = 0.1, line.r0 = 0.03, line.x0 = 0.3;
    data.lines = {line};
    exchange::NetTransformer unit;
    unit.idNo = 10, unit.iNo = 3, unit.jNo = 4, unit.x1 = unit.x0 = 0.12, unit.zcType = 1;
    data.transformers = {unit};
    const auto source = [](const char* name, int no, double x) {
        exchange::NetGenerator g;
        g.name = name, g.no = no, g.x1 = x;
        return g;
    };
    data.generators = {source("Q", 2, 0.05), source("G", 4, 0.15), source("M", 4, 2)};
    if (twoGenerators) data.generators.push_back(source("H", 4, 0.15));
    return buildNetwork(data);
}

NamePlates plates() {
    NamePlates all;
    all.transformers = {{10, {110, 100, {}}, {10, 100, {}}, {0, 0.12}, {0, 0.12}, true, true}};
    all.sources = {{"M", SourceKind::Motor, 5, 10, 0.9, 0, 0, 0, {}, {}},
                   {"G", SourceKind::Generator, 100, 10, 0.8, 0, 0, 0, {}, {}},
                   {"H", SourceKind::Generator, 100, 10, 0.8, 0, 0, 0, {}, {}},
                   {"Q", SourceKind::Feeder, 2000, 110, 0, 0, 10, 5, {}, {}}};
    all.lines = {{1, 80, 0}};
    return all;
}

std::vector<std::string> symbols(const std::vector<AppliedFactor>& factors) {
    std::vector<std::string> list;
    for (const auto& factor : factors) list.push_back(factor.symbol + (factor.idNo == 0 ? " " + factor.source : ""));
    return list;
}

}  // namespace

TEST(NamePlates, AUnitHasExactlyOneGenerator) {
    Network one = station(false), two = station(true);
    EXPECT_EQ(symbols(applyIec60909(one, plates(), {})), std::vector<std::string>{"K_S"});
    EXPECT_EQ(symbols(applyIec60909(two, plates(), {})), (std::vector<std::string>{"K_T", "K_G G", "K_G H"}));
    // K_S = 1.1 / (1 + |0.15 - 0.12| 0.6), on generator and transformer alike
    EXPECT_NEAR(one.sources[1].z1.imag(), 0.15 * 1.1 / 1.018, 1e-12);
    EXPECT_NEAR(one.branches[1].z1.imag(), 0.12 * 1.1 / 1.018, 1e-12);
    EXPECT_NEAR(two.branches[1].z1.imag(), 0.12 * 0.95 * 1.1 / 1.072, 1e-12);
}

TEST(NamePlates, TheSmallestCurrentsHaveHotLinesWeakFeedersNoMotorsAndNoFactors) {
    Network network = station(false);
    EXPECT_EQ(symbols(applyIec60909(network, plates(), {.maximum = false, .c = {}})), std::vector<std::string>{"R"});
    ASSERT_EQ(network.sources.size(), 2U);
    EXPECT_EQ(network.source("M"), -1);
    EXPECT_NEAR(network.branches[0].z1.real(), 0.0124, 1e-12);  // 1 + 0.004 (80 - 20)
    EXPECT_NEAR(network.branches[0].z0.real(), 0.0372, 1e-12);
    EXPECT_NEAR(network.branches[0].z1.imag(), 0.1, 1e-12);
    EXPECT_NEAR(network.branches[1].z1.imag(), 0.12, 1e-12);
    // 1.0 x 110 / (sqrt3 x 5) ohm on 121 ohm
    EXPECT_NEAR(std::abs(network.sources[0].z1), 110 / (std::sqrt(3.0) * 5) / 121, 1e-12);
}
