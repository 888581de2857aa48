#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "exchange/ControlFile.h"
#include "exchange/FileNames.h"
#include "exchange/MainBranchFile.h"
#include "exchange/ModeFile.h"
#include "exchange/NetworkFiles.h"
#include "exchange/RealTimeNameFile.h"
#include "exchange/RelayFile.h"
#include "exchange/ResultFiles.h"
#include "exchange/RuleFaultFile.h"
#include "exchange/RuleFile.h"
#include "exchange/VirtualRelayFile.h"
#include "tests/TemporaryDirectory.h"

namespace exchange {
namespace {

/// Reads a damaged text. \return whether it was taken, or refused with one line that names the file; else the test
/// fails
void expectTakenOrRefused(const std::function<void(std::string_view)>& read, const std::string& text) {
    try {
        read(text);
    } catch (const FormatError& error) {
        const std::string message = error.what();
        EXPECT_TRUE(message.starts_with("F:")) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what() << " on\n" << text;
    }
}

void damageInEveryWay(const std::string& good, const std::function<void(std::string_view)>& read) {
    for (std::size_t length = 0; length <= good.size(); ++length) expectTakenOrRefused(read, good.substr(0, length));
    std::mt19937 random(5);
    const std::string bytes = "0123456789-+.e ,'\"\r\n\xb2\\xKn";
    for (int i = 0; i < 3000; ++i) {
        auto bad = good;
        for (unsigned changes = random() % 3 + 1; changes > 0; --changes) {
            const auto place = random() % bad.size();
            if (random() % 2 == 0)
                bad[place] = bytes[random() % bytes.size()];
            else
                bad.insert(place, 1, bytes[random() % bytes.size()]);
        }
        expectTakenOrRefused(read, bad);
    }
}

TEST(DamagedFiles, AreTakenOrRefusedInOneLineButNeverMore) {
    const FaultRow fault{1, 7, 2, 3, 99, 2, "0", "0.5"};
    const auto relay = format(RelayBlock{1, 12, "L1, 'a'", 3, 4, 7, 2, {{"0.8", "0.5", "0", "0"}}});
    damageInEveryWay(relay + relay, [](auto text) { parseRelays(text, "F"); });
    damageInEveryWay(format(MainBranch{1, 2, 3, 7, 2, {4}, {fault}}), [](auto text) { parseMainBranches(text, "F"); });
    damageInEveryWay(format(RelayRules{12, 2, {{2101, 1, {4}, false, {{1, fault}}}, {2102, 0, {}, true, {}}}}),
                     [](auto text) { parseRelayRules(text, "F"); });
    damageInEveryWay(format(ModeElement{3, 8, 2, 5, 0, "9999999.9", "-0.01"}),
                     [](auto text) { parseModes(text, "F"); });
    damageInEveryWay(format(VirtualRelays{1, {{2, 5, 9, 1}}}), [](auto text) { parseVirtualRelays(text, "F"); });
    damageInEveryWay(format(Control{}), [](auto text) { parseControl(text, "F"); });
    damageInEveryWay(format(RealTimeName{"net", "../net"}), [](auto text) { parseRealTimeName(text, "F"); });
    damageInEveryWay(format(TurnOrder{1, {3, 4, 5}}), [](auto text) { parseTurnOrder(text, "F"); });
    damageInEveryWay(
        format(RuleBlock{
            7, 1, 1, 1, 1, 1, {{21, 1, 0, 1, 0, 8, 1, 0}}, {{1, 21, 101, 2}}, {{0.8}}, {{1, 101, 1, 0, 3, 201}}}),
        [](auto text) { parseRules(text, "F"); });
}

TEST(DamagedFiles, ResultsAreReadWithoutComplaint) {
    const auto nothingThrown = [](auto read) { return [read](std::string_view text) { EXPECT_NO_THROW(read(text)); }; };
    damageInEveryWay(format(SettingResult{1, 2, 3, 4, {5.5, 6}}),
                     nothingThrown([](auto t) { parseSettingResults(t); }));
    damageInEveryWay(format(CoefficientResult{1, 2, 3}), nothingThrown([](auto t) { parseCoefficients(t); }));
    damageInEveryWay(format(VariableResult{1, 2, 3, 4, {5.5}}), nothingThrown([](auto t) { parseVariableResults(t); }));
}

class DamagedNetwork : public TemporaryDirectory {};

TEST_F(DamagedNetwork, IsRefusedWhicheverFileIsCutOff) {
    NetworkData n;
    n.buses = {{2, 230, 1, 0, 0, "A"}, {3, 230, 1, 0, 0, "B"}};
    n.lines = {{1, 2, 3, 0, .1, 0, .3, 1, 0, 0}};
    n.transformers = {{5, 2, 3, 1, 0, .1, 0, .2, 3, 180, 230, 121, 400}};
    n.generators = {{"G", 2, 0, .2, 0, .1, true, 200, 15.75, 120, 0}};
    n.shunts = {{9, 2, 5, 0.1, 4.5, true, 60, 230}};
    n.mutuals = {{1, 5, 0.05, 0.2, 1, 0, 100, 0, 100}};
    writeNetwork(directory, n);
    for (const std::string name : file::kConverterFiles) {
        if (name == file::kOutput) continue;
        const auto good = readAll(directory / name);
        const auto lastLine = good.rfind('\n', good.size() - 2) + 1;
        for (const std::size_t length : {std::size_t{0}, std::size_t{1}, lastLine}) {
            replace(directory / name, good.substr(0, length));
            EXPECT_THROW(readNetwork(directory), FormatError) << name << " cut to " << length;
        }
        replace(directory / name, good);
    }
    EXPECT_NO_THROW(readNetwork(directory));
}

}  // namespace
}  // namespace exchange
