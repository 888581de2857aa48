#include "exchange/TextFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/TemporaryDirectory.h"
#include "tests/exchange/FormatFailure.h"

namespace exchange {
namespace {

namespace fs = std::filesystem;

class FileTest : public TemporaryDirectory {};

TEST(Number, HasSixSignificantDigitsAndNoTrailingZeros) {
    EXPECT_EQ(number(0.8), "0.8");
    EXPECT_EQ(number(1.0), "1");
    EXPECT_EQ(number(0), "0");
    EXPECT_EQ(number(-12.5), "-12.5");
    EXPECT_EQ(number(123456.7), "123457");
    EXPECT_EQ(number(999999.5), "1e+06");
    EXPECT_EQ(number(1000000), "1e+06");
    EXPECT_EQ(number(0.0001), "0.0001");
    EXPECT_EQ(number(0.00001), "1e-05");
    EXPECT_EQ(number(1.0 / 3), "0.333333");
}

TEST(Number, ExactTextReadsBackAsTheSameDouble) {
    for (const double value : {0.1, 1.0 / 3, 9999999.999999, 5e-324, 1.7976931348623157e308, -0.00012345678901234567})
        EXPECT_EQ(Fields(exact(value), "f", 1).real(0), value);
}

TEST(FieldsTest, CutAtCommasWithoutBlanksAndWithoutABlankRest) {
    const Fields fields(" 1,   ab c ,,  2.5,   ", "F", 1);
    ASSERT_EQ(fields.size(), 4U);
    EXPECT_EQ(fields.whole(0), 1);
    EXPECT_EQ(fields.text(1), "ab c");
    EXPECT_EQ(fields.text(2), "");
    EXPECT_EQ(fields.numeral(2), "0");
    EXPECT_EQ(fields.real(3), 2.5);
    EXPECT_EQ(Fields("+3,", "F", 1).whole(0), 3);
}

TEST(FieldsTest, RefuseWhatIsNoNumberWithThePlaceInOneLine) {
    const Fields fields("1x,nan,1e999,3.0,", "RELAY.R3", 7);
    EXPECT_EQ(failureOf([&] { return fields.whole(0); }), "RELAY.R3:7: field 1 is not a whole number: '1x'");
    EXPECT_EQ(failureOf([&] { return fields.real(1); }), "RELAY.R3:7: field 2 is not a number: 'nan'");
    EXPECT_NE(failureOf([&] { return fields.real(2); }), "no error");
    EXPECT_NE(failureOf([&] { return fields.whole(3); }), "no error");
    EXPECT_NE(failureOf([&] { return fields.numeral(0); }), "no error");
    EXPECT_EQ(failureOf([&] { return fields.whole(4); }), "RELAY.R3:7: field 5 of 5 is missing");
}

TEST(LinesTest, AcceptEveryLineEndAndCountFromOne) {
    Lines lines("a\r\n\r\nb\nc", "F");
    std::vector<std::string> seen;
    while (lines.next()) seen.push_back(std::to_string(lines.lineNo()) + std::string(lines.line()));
    EXPECT_EQ(seen, (std::vector<std::string>{"1a", "2", "3b", "4c"}));
    EXPECT_FALSE(Lines("", "F").next());
}

TEST_F(FileTest, WriteReplacesAndAppendGoesOn) {
    const auto path = directory / "F";
    ASSERT_TRUE(write(path, "long first text"));
    ASSERT_TRUE(write(path, "a\r\n"));
    ASSERT_TRUE(append(path, "b"));
    EXPECT_EQ(readAll(path), "a\r\nb");
    EXPECT_FALSE(write(directory / "none" / "F", "a"));
    EXPECT_FALSE(append(directory / "none" / "F", "a"));
}

TEST_F(FileTest, ReplaceLeavesTheTargetAloneWhenItFails) {
    const auto path = directory / "F";
    replace(path, "new");
    EXPECT_EQ(readAll(path), "new");
    fs::create_directories(directory / "G" / "inside");  // a directory cannot be renamed over
    EXPECT_EQ(failureOf([&] { return replace(directory / "G", "x"), 0; }), "G: cannot be written");
    EXPECT_TRUE(fs::exists(directory / "G" / "inside"));
    EXPECT_FALSE(fs::exists(directory / "G.new"));
}

TEST_F(FileTest, AMissingFileIsToldByItsName) {
    EXPECT_EQ(failureOf([&] { return readAll(directory / "RELAY.R1"); }), "RELAY.R1: cannot be read");
    EXPECT_THROW(readAll(directory), FormatError);
}

}  // namespace
}  // namespace exchange
