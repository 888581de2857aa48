#include "exchange/ResultFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "exchange/TextFile.h"

namespace exchange {
namespace {

using ::testing::ElementsAre;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(ResultFiles, ValuesKeepTwelveDigitsAndAreAlwaysPlainNumbers) {
    const SettingResult result{1, 2, 3, 2101, {1234.56789012, kNan, -std::numeric_limits<double>::infinity(), -0.0}};
    EXPECT_EQ(format(result), "1, 2, 3, 2101, 1234.56789012, 0, 0, 0, \r\n");
    const auto read = parseSettingResults(format(result) + "\r\n" + format(result));
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[1].ruleNo, 2101);
    EXPECT_THAT(read[1].values, ElementsAre(1234.56789012, 0, 0, 0));
}

TEST(ResultFiles, ReadersTakeWhatIsThere) {
    const auto settings = parseSettingResults("x, 2, 3.5, 9, 1e2, abc, nan\n\n");
    ASSERT_EQ(settings.size(), 1U);
    EXPECT_EQ(settings[0].nCal, 0);
    EXPECT_EQ(settings[0].pno, 0);
    EXPECT_EQ(settings[0].ruleNo, 9);
    EXPECT_THAT(settings[0].values, ElementsAre(100, 0, 0));
    EXPECT_EQ(parseFaultResults("1,2,3\r\n").at(0).nSys, 0);
    EXPECT_TRUE(parsePhaseResults("").empty());
}

TEST(ResultFiles, LinesThatDoNotTellWhatTheyBelongToAreCounted) {
    EXPECT_EQ(unreadableLines("1, 2, 3, 0,\r\n\r\n *, +2, 3, 1101\r\n", 1, 4), 0);
    EXPECT_EQ(unreadableLines("1,2,3\n1,*,3,4\n1,2,3,4.5\n\x01\xff\n", 1, 4), 4);
}

TEST(ResultFiles, VariablesEndAtATrailingComma) {
    const auto read = parseVariableResults("1, 2, 3, 4, 0.5, , 7, \r\n");
    ASSERT_EQ(read.size(), 1U);
    EXPECT_THAT(read[0].values, ElementsAre(0.5, 0, 7));
}

TEST(ResultFiles, FaultAndPhaseFieldsKeepTheirPlaces) {
    const auto fault = parseFaultResults("1,2,3,4,5,6,7,8,9,10\r\n").at(0);
    EXPECT_EQ(format(fault), "1, 2, 3, 4, 5, 6, 7, 8, 9, \r\n");
    EXPECT_EQ(fault.rmNo, 5);
    EXPECT_EQ(fault.nSelc, 8);
    EXPECT_EQ(format(parsePhaseResults("1,2,3").at(0)), "1, 2, 3, \r\n");
}

TEST(ResultFiles, CoefficientFieldsKeepTheirPlacesAndZeroLinesAreLeftOut) {
    const std::string line = "1, 2, 3, 4, 5, 6, 7, 8, 9, 0.25, 11, 12, 13, 0.5, 15, 16, 17, ";
    const auto read = parseCoefficients(" 0 , 1\r\n\r\n" + line + "\r\n");
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(format(read[0]), line + "\r\n");
    EXPECT_EQ(read[0].nlRNo, 9);
    EXPECT_EQ(read[0].fz1, 0.25);
    EXPECT_EQ(read[0].nSel0a, 15);
}

TEST(ResultFiles, KeptCoefficientLinesAreCopiedAsTheyStand) {
    EXPECT_EQ(keptCoefficientLines(" 1 ,2, x\n0, 5\r\n 0 ,\r\n00,1\r\n10, 5"), " 1 ,2, x\r\n00,1\r\n10, 5\r\n");
    EXPECT_EQ(keptCoefficientLines(""), "");
}

TEST(TurnOrderFile, WayBackAndCutOffFile) {
    const TurnOrder order{2, {7, 3, 12}};
    EXPECT_EQ(format(order), "2, 3, \r\n7, \r\n3, \r\n12, \r\n");
    const auto read = parseTurnOrder(format(order) + "99, \r\n", "RELAY.R8");
    EXPECT_EQ(read.breakRelays, 2);
    EXPECT_THAT(read.order, ElementsAre(7, 3, 12));
    EXPECT_THAT(parseTurnOrder("0,1\n 5 , 8, 9", "RELAY.R8").order, ElementsAre(5));
    EXPECT_THROW(parseTurnOrder("0, 3, \r\n7, \r\n", "RELAY.R8"), FormatError);
    EXPECT_THROW(parseTurnOrder("", "RELAY.R8"), FormatError);
}

}  // namespace
}  // namespace exchange
