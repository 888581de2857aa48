#include <gtest/gtest.h>

#include "exchange/ControlFile.h"
#include "exchange/MainBranchFile.h"
#include "exchange/ModeFile.h"
#include "exchange/RealTimeNameFile.h"
#include "exchange/RelayFile.h"
#include "exchange/RuleFaultFile.h"
#include "exchange/VirtualRelayFile.h"
#include "tests/exchange/FormatFailure.h"

namespace exchange {
namespace {

TEST(ControlFile, LayoutAndWayBack) {
    const Control control{1, 1, 4, 5};
    EXPECT_EQ(format(control), "1,   1,   31,   1,   4,   5,   1,   \r\n");
    const Control read = parseControl(format(control), "RELAY.R0");
    EXPECT_EQ(format(read), format(control));
    EXPECT_EQ(failureOf([] { return parseControl("1,   0,   31,   \r\n", "RELAY.R0"); }),
              "RELAY.R0:1: field 4 of 7 is missing");
    EXPECT_THROW(parseControl("", "RELAY.R0"), FormatError);
}

TEST(RealTimeNameFile, LayoutAndWayBack) {
    const RealTimeName name{"net, 1", "../net, 1"};
    EXPECT_EQ(format(name), "\"net, 1\",  \"../net, 1\",  \r\n");
    const RealTimeName read = parseRealTimeName(format(name), "RTDB.INC");
    EXPECT_EQ(read.name, name.name);
    EXPECT_EQ(read.path, name.path);
    for (const char* bad : {"", "\r\n", "net,  path,  \r\n", "\"net\",  \"path\r\n", "\"net\"\r\n"})
        EXPECT_THROW(parseRealTimeName(bad, "RTDB.INC"), FormatError) << bad;
}

TEST(RelayFile, LayoutOfABlock) {
    const RelayBlock relay{1, 12, "L1  A\xb2\xe0  21", 3, 4, 7, 2, {{"0.8", "0.5", "0", "0"}, {"1", "2", "3", "4"}}};
    EXPECT_EQ(format(relay),
              "1,    12,    ' L1  A\xb2\xe0  21 ',   3,   4,    7,    2,    2,    0,\r\n"
              "   \r\n"
              "      1,    0.8,    0.5,    0,    0,    \r\n"
              "      2,    1,    2,    3,    4,    \r\n");
    EXPECT_EQ(relayLabel("L1", "A", "21"), relay.label);
}

TEST(RelayFile, AnyNameInALabelComesBack) {
    std::string file;
    const std::vector<std::string> labels = {" L 1,2  A'',  ",   "a ', b",   "' ',   1,   2",
                                             "\xb2\x5c\x81\x7c", "\"q\" \\", ""};
    for (const auto& label : labels) file += format(RelayBlock{1, 5, label, 2, 3, 4, 1, {{"1", "0", "0", "0"}}});
    const auto relays = parseRelays(file, "RELAY.R1");
    ASSERT_EQ(relays.size(), labels.size());
    for (std::size_t i = 0; i < labels.size(); ++i) {
        EXPECT_EQ(relays[i].label, labels[i]);
        EXPECT_EQ(relays[i].idNo, 4);
        EXPECT_EQ(relays[i].parts[0][0], "1");
    }
}

TEST(RelayFile, BlocksWithoutPartsFollowOneAnother) {
    const RelayBlock relay{0, 1, "B", 2, 2, 0, 1, {}};
    const auto relays = parseRelays(format(relay) + format(relay), "RELAY.R1");
    ASSERT_EQ(relays.size(), 2U);
    EXPECT_EQ(relays[1].valid, 0);
    EXPECT_TRUE(relays[1].parts.empty());
    EXPECT_TRUE(parseRelays("", "RELAY.R1").empty());
}

TEST(RelayFile, TellsWhereABlockIsWrong) {
    const std::string good = format(RelayBlock{1, 1, "B", 2, 3, 4, 1, {{"1", "", "0", "0"}}});
    EXPECT_EQ(parseRelays(good, "R")[0].parts[0][1], "0");
    const auto bad = [&](const std::string& from, const std::string& to) {
        auto text = good;
        text.replace(text.find(from), from.size(), to);
        return failureOf([&] { return parseRelays(text, "R"); });
    };
    EXPECT_EQ(bad("' B '", "B"), "R:1: a relay with its label in apostrophes is expected");
    EXPECT_EQ(bad("      1", "      2"), "R:3: part 1 of the relay is expected");
    EXPECT_EQ(bad("4,    1,    1", "4,    1,    2"), "R:3: the last relay lacks parts");
    EXPECT_EQ(bad("4,    1,    1", "4,    3,    1"), "R:1: the side of a relay is 1 or 2");
    EXPECT_EQ(bad("   \r\n  ", ""), "R:2: a blank line is expected below the head of a relay");
}

TEST(ModeFile, LayoutWayBackAndBadSequence) {
    const ModeElement element{3, 8, 2, 5, 0, "9999999.999999", "-0.01"};
    EXPECT_EQ(format(element), "3,  8,  2,  5,  0,  9999999.999999,  -0.01,  \r\n");
    const auto read = parseModes(format(element) + format(element), "RELAY.R3");
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(format(read[1]), format(element));
    EXPECT_THROW(parseModes("3,  8,  2,  5,  2,  0,  0,  \r\n", "RELAY.R3"), FormatError);
    EXPECT_EQ(failureOf([&] { return parseModes(format(element) + "3,  8,\r\n", "RELAY.R3"); }),
              "RELAY.R3:2: field 3 of 3 is missing");
}

TEST(VirtualRelayFile, TheCountMayExceedTheLines) {
    const VirtualRelays relays{3, {{2, 5, 9, 1}, {4, 6, 8, 2}}};
    EXPECT_EQ(format(relays), "3,  0,  0,\r\n   2,   5,   9,   1,   \r\n   4,   6,   8,   2,   \r\n");
    const auto read = parseVirtualRelays(format(relays), "RELAY.R4");
    EXPECT_EQ(read.count, 3);
    ASSERT_EQ(read.relays.size(), 2U);
    EXPECT_EQ(read.relays[0].node(), 2);
    EXPECT_EQ(read.relays[1].node(), 6);
    EXPECT_EQ(format(VirtualRelays{}), "0,  0,  0,\r\n");
    EXPECT_THROW(parseVirtualRelays("0,  0,  0,\r\n   2,   5,   9,   1,   \r\n", "RELAY.R4"), FormatError);
    EXPECT_THROW(parseVirtualRelays("1,  0,  0,\r\n   2,   5,   9,   0,   \r\n", "RELAY.R4"), FormatError);
}

const FaultRow kOpen{21, 7, 2, 3, 99, 5, "99999.9999", "99999.9999"};
const FaultRow kFault{1, 7, 2, 3, 0, 2, "0", "0.5"};

TEST(MainBranchFile, LayoutAndWayBack) {
    const MainBranch branch{1, 2, 3, 7, 2, {4, 5}, {kFault, kOpen}};
    const std::string text =
        "1,   2,   3,   7,   2,   2,   \r\n"
        "   4,   5,   \r\n"
        "      1,   1,   7,   2,   3,   0,   2,   0,   0.5,   \r\n"
        "      1,   21,   7,   2,   3,   99,   5,   99999.9999,   99999.9999,   \r\n"
        "0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n";
    EXPECT_EQ(format(branch), text);
    MainBranch empty{2, 2, 3, 8, 1, {}, {}};
    EXPECT_EQ(format(empty), "2,   2,   3,   8,   1,   0,   \r\n   \r\n0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n");
    const auto read = parseMainBranches(text + format(empty) + text, "RELAY.R2");
    ASSERT_EQ(read.size(), 3U);
    EXPECT_EQ(format(read[0]) + format(read[1]) + format(read[2]), text + format(empty) + text);
}

TEST(MainBranchFile, RefusesWhatIsCutOffOrOutOfRange) {
    const std::string head = "1,   2,   3,   7,   2,   1,   \r\n   4,   \r\n";
    const auto message = [](const std::string& text) {
        return failureOf([&] { return parseMainBranches(text, "RELAY.R2"); });
    };
    EXPECT_EQ(message(head), "RELAY.R2:1: the end line of the main branch is missing");
    EXPECT_EQ(message("1,   2,   3,   7,   2,   2,   \r\n   4,   \r\n"),
              "RELAY.R2:2: 2 operating modes are expected, 1 stand here");
    EXPECT_EQ(message(head + "      2,   1,   7,   2,   3,   0,   2,   0,   0,   \r\n"),
              "RELAY.R2:3: a fault of another main branch");
    EXPECT_EQ(message(head + "      1,   1,   7,   2,   3,   101,   2,   0,   0,   \r\n"),
              "RELAY.R2:3: the place of a fault lies between 0 and 100 percent");
    EXPECT_EQ(message(head + "      1,   1,   7,   2,   3,   100,   8,   0,   0,   \r\n"),
              "RELAY.R2:3: the kind of a fault lies between 1 and 7");
}

TEST(RuleFaultFile, LayoutAndWayBackOfSeveralGroups) {
    const RelayRules group{
        12,
        2,
        {{2101, 1, {4, 5}, false, {{1, kFault}, {2, kOpen}}}, {2102, 0, {}, true, {}}, {2103, 0, {}, false, {}}}};
    const std::string text =
        "1,   12,   1,   \r\n"
        "   2,   3,   1,\r\n"
        "    2101,   1,   2,   \r\n"
        "  4,   5,   \r\n"
        "    1,   1,   7,   2,   3,   0,   2,   0,   0.5,   \r\n"
        "    2,   21,   7,   2,   3,   99,   5,   99999.9999,   99999.9999,   \r\n"
        "0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n"
        "    2102,   0,   0,   \r\n"
        "\r\n"
        "0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n"
        "    2103,   0,   0,   \r\n"
        "  \r\n"
        "0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n";
    EXPECT_EQ(format(group), text);
    const RelayRules none{13, 1, {}};
    EXPECT_EQ(format(none), "1,   13,   1,   \r\n   1,   0,   1,\r\n");
    const auto read = parseRelayRules(text + format(none) + text, "RELAY.R6");
    ASSERT_EQ(read.size(), 3U);
    EXPECT_EQ(read[0].sections[1].withoutModes, true);
    EXPECT_EQ(format(read[0]) + format(read[1]) + format(read[2]), text + format(none) + text);
    EXPECT_EQ(failureOf([&] { return parseRelayRules(text.substr(0, text.size() - 30), "RELAY.R6"); }),
              "RELAY.R6:11: the end line of the rule is missing");
    EXPECT_EQ(failureOf([&] { return parseRelayRules("1,   13,   1,   \r\n   1,   1,   1,\r\n", "RELAY.R6"); }),
              "RELAY.R6:2: a rule line is missing at the end");
}

}  // namespace
}  // namespace exchange
