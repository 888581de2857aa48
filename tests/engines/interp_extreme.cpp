#include <gtest/gtest.h>

#include <sstream>

#include "engines/rules/SettingRun.h"
#include "exchange/FileNames.h"
#include "exchange/NetworkFiles.h"
#include "exchange/TextFile.h"
#include "tests/TemporaryDirectory.h"
#include "tests/engines/interp_study.h"

/// A whole run with each number of each input file in turn replaced by something that nobody would write.
namespace {

namespace file = exchange::file;
using testing::Test;

constexpr const char* kNumbers[] = {"1e308", "-1e308", "1e-308", "nan", "inf", "-1", "0", "2147483647", "99999999999"};
constexpr const char* kResults[] = {file::kSettingResults, file::kFaultResults, file::kCoefficients,
                                    file::kVariableResults};

/// The places of the fields of a text, each from its first to behind its last character.
std::vector<std::pair<std::size_t, std::size_t>> fieldsOf(const std::string& text) {
    std::vector<std::pair<std::size_t, std::size_t>> fields;
    for (std::size_t comma = text.find(','); comma != std::string::npos; comma = text.find(',', comma + 1)) {
        const auto before = text.find_last_of(", \n", comma - 1);
        const std::size_t first = comma == 0 ? 0 : before == std::string::npos ? 0 : before + 1;
        if (first < comma) fields.emplace_back(first, comma);
    }
    return fields;
}

class ExtremeNumbers : public TemporaryDirectory {
  protected:
    void SetUp() override {
        TemporaryDirectory::SetUp();
        auto network = interp::networkData();
        network.mutuals.push_back({1, 2, 0.001, 0.01, 1, 0, 50, 0, 50});
        network.shunts[0].grounded = true, network.shunts[0].x0 = 2;
        network.loadFlow = true;
        exchange::writeNetwork(directory, network);
        put(file::kControl, exchange::format(exchange::Control{2, 1, 0, 0}));
        auto relay = interp::relayBlock(1, 2, 3, 1, 1), next = interp::relayBlock(2, 3, 4, 2, 1);
        relay.parts = next.parts = {{"20", "0.5", "0", "0"}};
        put(file::kRelays, exchange::format(relay) + exchange::format(next));
        const exchange::FaultRow fault{1, 2, 3, 4, 100, 2, "0.01", "0"}, open{21, 3, 5, 3, 1, 5, "99999.9999", "0"};
        put(file::kMainBranches, exchange::format(exchange::MainBranch{1, 3, 4, 2, 1, {1}, {fault, open}}));
        put(file::kModes, exchange::format(exchange::ModeElement{1, 1, 2, 3, 1, "0.01", "0.12"}));
        put(file::kVirtualRelays, exchange::format(exchange::VirtualRelays{1, {{4, 11, 8, 2}}}));
        put(file::kRuleFaults,
            exchange::format(exchange::RelayRules{1, 1, {{1000, 1, {1}, false, {{1, fault}, {1, open}}}}}));
        auto rule = interp::rule({{1, 0, 107, 1}, {2, 1, 22, 1}, {3, 31, 401, 1}, {4, 31, 453, 1}},
                                 {interp::select(1, 2, 2), interp::select(31, 4, 1)});
        rule.numMode = 2, rule.nVarin = 4, rule.nPar = 1, rule.nRule = 4;
        rule.parameterVectors = {{0.8}};
        put(file::kRules, exchange::format(rule));
        put(file::kEarlierCoefficients, "7, 3, 4, 2, 1, 2, 3, 1, 1, 0.5, 1, 0, 1, 0.4, 1, 0, 1, \r\n");
    }
    void put(const std::string& name, const std::string& bytes) const { exchange::replace(directory / name, bytes); }

    /// \return empty when the run ended, with results or with one line that names a file; else what is wrong with it
    std::string complaint() const {
        std::ostringstream notes;
        std::string fault;
        try {
            engines::runSettings(directory, notes);
        } catch (const exchange::FormatError& error) {
            const std::string said = error.what();
            if (said.find('\n') != std::string::npos || said.find(':') > 12) fault = "says: " + said;
        } catch (const std::exception& error) {
            fault = std::string("throws: ") + error.what();
        }
        for (const std::string name : kResults) {
            const std::string text = exchange::readAll(directory / name);
            if (text.find("nan") != std::string::npos || text.find("inf") != std::string::npos)
                fault = name + " " + text;
            const bool signless = name == file::kFaultResults || name == file::kCoefficients;
            if (signless && text.find(" -") != std::string::npos) fault = name + ": " + text;
        }
        return fault;
    }
};

TEST_F(ExtremeNumbers, EndInResultsOrInOneLineAndNeverInANumberThatIsNone) {
    ASSERT_EQ(complaint(), "");
    ASSERT_NE(exchange::readAll(directory / file::kSettingResults).find("1, 1, 1, 1000, "), std::string::npos);
    std::vector<std::string> names{file::kControl,    file::kRelays, file::kMainBranches,  file::kModes,
                                   file::kRuleFaults, file::kRules,  file::kVirtualRelays, file::kEarlierCoefficients};
    for (const std::string name : file::kConverterFiles)
        if (name != file::kOutput) names.push_back(name);
    int runs = 0;
    for (const std::string& name : names) {
        const std::string good = exchange::readAll(directory / name);
        for (const auto& [first, behind] : fieldsOf(good))
            for (const std::string number : kNumbers) {
                std::string bad = good;
                put(name, bad.replace(first, behind - first, number));
                const std::string line = bad.substr(bad.rfind('\n', first) + 1, 80);
                EXPECT_EQ(complaint(), "") << name << ": " << line.substr(0, line.find('\r'));
                ++runs;
            }
        put(name, good);
    }
    EXPECT_GT(runs, 3000);
}

}  // namespace
