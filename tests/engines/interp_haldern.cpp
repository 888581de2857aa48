#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <complex>

#include "exchange/ControlFile.h"
#include "exchange/FileNames.h"
#include "exchange/MainBranchFile.h"
#include "exchange/ModeFile.h"
#include "exchange/NetworkFiles.h"
#include "exchange/RelayFile.h"
#include "exchange/ResultFiles.h"
#include "exchange/RuleFaultFile.h"
#include "exchange/RuleFile.h"
#include "exchange/TextFile.h"
#include "exchange/VirtualRelayFile.h"
#include "tests/TemporaryDirectory.h"
#include "tests/engines/EngineRun.h"

/// HALDERN.EXE on a line of three buses fed from one side: G (j0.2, zero j0.1) -- line 1 (j0.1) -- line 2 (j0.05), zero
/// sequence three times as much, 220 kV. Everything can be computed by hand.
namespace {

namespace file = exchange::file;
using testing::HasSubstr;

constexpr double kBaseKa = 0.262431941;  // 100 MVA at 220 kV
constexpr double kOhm = 484;

exchange::NetworkData network() {
    exchange::NetworkData data;
    for (const int no : {2, 3, 4}) {
        exchange::NetBus bus;
        bus.no = no;
        bus.baseKv = 220;
        data.buses.push_back(bus);
    }
    data.lines.push_back({1, 2, 3, 0, 0.1, 0, 0.3, 50, 1000, 600});
    data.lines.push_back({2, 3, 4, 0, 0.05, 0, 0.15, 25, 1000, 600});
    exchange::NetGenerator g;
    g.name = "G", g.no = 2, g.x1 = 0.2, g.x0 = 0.1, g.grounded = true;
    data.generators.push_back(g);
    return data;
}

exchange::RelayBlock relay(int rno, int iNo, int jNo, int idNo, std::array<std::string, 4> part) {
    exchange::RelayBlock block;
    block.rno = rno, block.label = "L  A  T", block.iNo = iNo, block.jNo = jNo, block.idNo = idNo;
    block.parts = {part};
    return block;
}

/// 3101: 1.3 x the largest 3I0 of mode 1. 1201: 0.85 Zl + 0.8 Kz Z', t' + 0.3. 1102: with a transformer, of which there
/// is none.
std::vector<exchange::RuleBlock> ruleBlocks() {
    exchange::RuleBlock current{
        3101, 1, 1, 1, 1, 1, {{1, 1, 0, 1, 0, 1, 9, 1}}, {{1, 1, 8, 1}}, {{1.3}}, {{1, 101, 1000, 1, 3, 201}}};
    exchange::RuleBlock distance{1201,
                                 2,
                                 4,
                                 3,
                                 5,
                                 2,
                                 {{31, 2, 3, 1, 1, 3, 9, 2}, {32, 4, 0, 1, 0, 1, 8, 1}},
                                 {{1, 0, 101, 1}, {2, 31, 401, 1}, {3, 31, 453, 1}, {4, 32, 402, 1}},
                                 {{0.85, 0.8, 0.5}, {0.85, 0.8, 0.3}},
                                 {{101, 1, 1, 1, 3, 301},
                                  {2, 3, 1, 1, 3, 302},
                                  {102, 302, 1, 1, 3, 303},
                                  {301, 303, 1, 1, 1, 201},
                                  {4, 103, 1, 1, 1, 202}}};
    exchange::RuleBlock transformer{1102, 1, 1, 0, 1, 1, {}, {{1, 21, 101, 3}}, {}, {{1, 0, 1, 0, 1, 201}}};
    return {current, distance, transformer};
}

class Haldern : public TemporaryDirectory {
  protected:
    void SetUp() override {
        TemporaryDirectory::SetUp();
        exchange::writeNetwork(directory, network());
        write(file::kControl, exchange::format(exchange::Control{1, 0, 0, 0}));
        write(file::kRelays, exchange::format(relay(11, 2, 3, 1, {"0", "0", "0", "0"})) +
                                 exchange::format(relay(12, 3, 4, 2, {"20", "0", "0", "0"})));
        write(file::kMainBranches,
              exchange::format(exchange::MainBranch{1, 3, 4, 2, 1, {}, {{1, 2, 3, 4, 100, 1, "0", "0"}}}));
        write(file::kModes, exchange::format(exchange::ModeElement{5, 2, 3, 4, 1, "9999999.999999", "9999999.999999"}));
        write(file::kVirtualRelays, exchange::format(exchange::VirtualRelays{}));
        write(file::kRuleFaults, exchange::format(group()));
        std::string text;
        for (const auto& rule : ruleBlocks()) text += exchange::format(rule);
        write(file::kRules, text);
    }

    static exchange::RelayRules group() {
        const std::vector<exchange::RuleFault> faults{{1, {1, 1, 2, 3, 100, 2, "0", "0"}},
                                                      {1, {2, 1, 2, 3, 100, 4, "0", "0"}}};
        exchange::RelayRules rules{11, 1, {}};
        rules.sections.push_back({3101, 1, {5}, false, faults});
        rules.sections.push_back({1201, 2, {}, false, {}});
        rules.sections.push_back({1102, 0, {}, true, {}});
        return rules;
    }
    void write(const char* name, const std::string& bytes) { ASSERT_TRUE(exchange::write(directory / name, bytes)); }
    std::string read(const char* name) const { return exchange::readAll(directory / name); }
    int run() {
        const EngineRun ended = runEngine(file::kEngineProgram, directory);
        said = ended.error;
        return ended.status;
    }
    std::string allResults() const {
        return read(file::kSettingResults) + read(file::kFaultResults) + read(file::kCoefficients) +
               read(file::kVariableResults);
    }
    std::string said;  ///< on standard error, by the last run
};

TEST_F(Haldern, ComputesWhatAHandComputes) {
    ASSERT_EQ(run(), 0) << said;
    const auto settings = exchange::parseSettingResults(read(file::kSettingResults));
    ASSERT_EQ(settings.size(), 3u);
    // One phase to ground: Z1 = Z2 = j0.3, Z0 = j0.4. Two phases to ground: I0 = I1 Z2 / (Z2 + Z0).
    const double single = 3 / (0.3 + 0.3 + 0.4);
    const double twoPhases = 3 * (1 / (0.3 + 0.3 * 0.4 / 0.7)) * 0.3 / 0.7;
    ASSERT_GT(single, twoPhases);
    EXPECT_EQ(settings[0].ruleNo, 3101);
    EXPECT_NEAR(settings[0].values.at(0), 1.3 * single * kBaseKa * 1000, 1e-3);
    EXPECT_EQ(settings[1].ruleNo, 1201);
    EXPECT_NEAR(settings[1].values.at(0), 0.85 * 0.1 * kOhm + 0.8 * 20, 1e-6) << "radial: the coefficient is 1";
    EXPECT_NEAR(settings[1].values.at(1), 0.3, 1e-12);
    EXPECT_EQ(settings[2].ruleNo, 0);
    EXPECT_THAT(said,
                HasSubstr("relay 11, part 1, rule 1102: no result: line 1: I1 has no value; mode 21 has no candidate"));

    EXPECT_EQ(read(file::kFaultResults),
              "1, 11, 1, 3101, 1, 1, 0, 0, 5, \r\n2, 11, 1, 1201, 31, 12, 0, 0, 0, \r\n2, 11, 1, 1201, 32, 12, 0, 0, "
              "0, \r\n");
    EXPECT_EQ(read(file::kCoefficients), "1, 3, 4, 2, 1, 2, 3, 1, 11, 1, 1, 0, 0, 1, 1, 0, 0, \r\n");
    const auto inputs = exchange::parseVariableResults(read(file::kVariableResults));
    ASSERT_EQ(inputs.size(), 3u);
    EXPECT_NEAR(inputs[0].values.at(0), single * kBaseKa, 1e-6) << "in kiloampere";
    EXPECT_THAT(inputs[1].values, testing::Pointwise(testing::DoubleNear(1e-9), {48.4, 20.0, 1.0, 0.0}));
    EXPECT_THAT(inputs[2].values, testing::ElementsAre(0));
}

TEST_F(Haldern, RepeatsItselfByteForByteWithAndWithoutTheEarlierCoefficients) {
    ASSERT_EQ(run(), 0);
    const std::string first = allResults();
    ASSERT_EQ(run(), 0);
    EXPECT_EQ(allResults(), first);
    write(file::kEarlierCoefficients, exchange::keptCoefficientLines(read(file::kCoefficients)));
    ASSERT_EQ(run(), 0);
    EXPECT_EQ(allResults(), first);
}

TEST_F(Haldern, AFaultyInputEndsWithOneLineAndLeavesNoOldResults) {
    ASSERT_EQ(run(), 0);
    const struct {
        const char* name;
        std::string bytes;  // empty: the file is missing
        const char* said;
    } cases[] = {
        {file::kRules, "", "RRULE.DAT: "},
        {file::kRelays, "1,    x,    ' a  b  c ',", "RELAY.R1:1: "},
        {file::kRuleFaults, exchange::format(exchange::RelayRules{11, 1, {{9999, 0, {}, false, {}}}}),
         "RELAY.R6: relay 11, part 1, rule 9999: no such rule"},
        {file::kRuleFaults, exchange::format(exchange::RelayRules{11, 1, {{1201, 3, {}, false, {}}}}),
         "no parameter vector 3"},
        {file::kRuleFaults,
         exchange::format(exchange::RelayRules{11, 1, {{3101, 1, {}, false, {{1, {1, 1, 2, 3, 100, 9, "0", "0"}}}}}}),
         "RELAY.R6:5: the kind"},
        {file::kModes, "5,  2,  3,  4,  1,  abc,  0,  \r\n", "RELAY.R3"},
        {file::kRelays, exchange::format(relay(-3, 2, 3, 1, {"0", "0", "0", "0"})), "relay -3 is no number from 1"},
        {file::kEarlierCoefficients, "1, 3, 4, 2, 1, 2, 3, 1, -5, 1, 1, 0, 0, 1, 1, 0, 0, \r\n", "negative number"},
        {"LF.L2", "", "LF.L2: "},
    };
    for (const auto& c : cases) {
        const std::string kept = std::filesystem::exists(directory / c.name) ? read(c.name) : std::string();
        std::filesystem::remove(directory / c.name);
        if (!c.bytes.empty()) write(c.name, c.bytes);
        write(file::kSettingResults, "1, 11, 1, 3101, 5, \r\n");
        EXPECT_NE(run(), 0) << c.name;
        EXPECT_THAT(said, HasSubstr(c.said));
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
        EXPECT_EQ(allResults(), "") << c.name;
        kept.empty() ? void(std::filesystem::remove(directory / c.name)) : write(c.name, kept);
    }
}

TEST_F(Haldern, WhatTheNetworkDoesNotHaveIsLeftOutAndTold) {
    auto rules = group();
    rules.sections.resize(1);
    rules.sections[0].faults.push_back({1, {3, 77, 2, 3, 100, 1, "0", "0"}});
    write(file::kRuleFaults,
          exchange::format(rules) + exchange::format(exchange::RelayRules{13, 1, {{1102, 0, {}, true, {}}}}));
    write(file::kMainBranches,
          read(file::kMainBranches) + exchange::format(exchange::MainBranch{2, 3, 9, 88, 1, {}, {}}));
    ASSERT_EQ(run(), 0);
    EXPECT_EQ(exchange::parseSettingResults(read(file::kSettingResults)).at(0).ruleNo, 3101);
    EXPECT_EQ(exchange::parseCoefficients(read(file::kCoefficients)).size(), 1u);
    EXPECT_THAT(said, HasSubstr("fault number 3 is left out: the network has no branch 77 between 2 and 3"));
    EXPECT_THAT(said, HasSubstr("relay 13, part 1, rule 1102: no result: RELAY.R1 does not have the relay"));
}

TEST_F(Haldern, AFullDiskLeavesTheResultsOfTheRunBeforeAsTheyAre) {
    ASSERT_EQ(run(), 0);
    const std::string before = allResults();
    auto rules = group();
    for (int i = 0; i < 60; ++i) rules.sections.push_back(rules.sections[0]);
    write(file::kRuleFaults, exchange::format(rules));
    const EngineRun ended = runEngine(file::kEngineProgram, directory, "trap '' XFSZ; ulimit -f 1;");
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.error, "RELAY.RP1: cannot be written\n");
    EXPECT_EQ(allResults(), before);
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        EXPECT_NE(entry.path().extension(), ".new") << entry.path();
}

// The generator alone feeds the fault; what the line carried before comes on top, the load staying as it was.
TEST_F(Haldern, ALoadFlowStandsBeforeTheFaultOnlyWhereTheCaseIsOne) {
    auto data = network();
    data.loadFlow = true;
    for (std::size_t i : {1, 2}) data.buses[i].vMag = 0.97, data.buses[i].vAngle = -6;
    data.buses[0].vMag = 1.03;
    exchange::writeNetwork(directory, data);
    auto rules = group();
    rules.sections = {{3101, 1, {}, false, {{1, {1, 1, 2, 3, 100, 1, "0", "0"}}}}};
    auto current = ruleBlocks();
    current[0].variables[0].vType = 1;
    write(file::kRules, exchange::format(current[0]));
    write(file::kRuleFaults, exchange::format(rules));
    const std::complex<double> j(0, 1), v2 = 1.03, v3 = std::polar(0.97, -6 * std::acos(-1) / 180);
    for (const int mlf : {0, 1}) {
        write(file::kControl, exchange::format(exchange::Control{1, mlf, 0, 0}));
        ASSERT_EQ(run(), 0) << said;
        const double expected = std::abs(mlf == 1 ? (v2 - v3) / (j * 0.1) + v3 / (j * 0.3) : 1.0 / (j * 0.3));
        const auto seen = exchange::parseVariableResults(read(file::kVariableResults)).at(0);
        EXPECT_NEAR(seen.values.at(0), expected * kBaseKa, 1e-8) << "Mlf " << mlf;
    }
}

TEST_F(Haldern, AnOutageOfTheRestOfTheNetworkLeavesNoCandidate) {
    auto rules = group();
    rules.sections.resize(1);
    rules.sections[0].modes = {6};
    write(file::kModes, exchange::format(exchange::ModeElement{6, 1, 2, 3, 1, "9999999.999999", "0"}));
    write(file::kRuleFaults, exchange::format(rules));
    ASSERT_EQ(run(), 0);
    EXPECT_EQ(exchange::parseSettingResults(read(file::kSettingResults)).at(0).ruleNo, 0);
    EXPECT_EQ(read(file::kFaultResults), "");
}

}  // namespace
