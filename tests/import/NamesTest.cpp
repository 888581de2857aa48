#include "platform/import/Names.h"

#include "tests/import/Fixture.h"

namespace import_test {

using namespace import;

namespace {

TEST(Names, TwentyCharactersOfGbkAreAName) {
    EXPECT_EQ(whyNoName("一二三四五六七八九十一二三四五六七八九十"), "");
    EXPECT_EQ(whyNoName(" a'\\%\""), "");
    for (const char* bad :
         {"", "a ", "a\tb", "a\nb", "a\x7F", "\xF0\x9F\x98\x80", "Barad-d\xC3\xBBr", "123456789012345678901"})
        EXPECT_NE(whyNoName(bad), "") << bad;
    EXPECT_NE(whyNoName("一二三四五六七八九十一", maxSchemeLength), "");
}

TEST(Names, BytesThatAreNoUtf8AreFoundWhereTheyStand) {
    EXPECT_EQ(invalidUtf8("线路"), std::string_view::npos);
    EXPECT_EQ(invalidUtf8("ab\xFF"), 2U);
    EXPECT_EQ(invalidUtf8("a\xC0\xAF"), 1U) << "overlong";
    EXPECT_EQ(invalidUtf8("\xED\xA0\x80"), 0U) << "surrogate";
    EXPECT_EQ(invalidUtf8("\xE7\xBA"), 0U) << "cut off";
}

TEST(Names, GivenNamesFitAndNeverRepeat) {
    const Options options;
    Report report;
    NameGiver giver(options, report);
    EXPECT_EQ(giver.give("A~1", "节点"), "A~1");
    EXPECT_EQ(giver.give("A", "节点"), "A");
    EXPECT_EQ(giver.give("A", "节点"), "A~2") << "A~1 is taken";
    EXPECT_EQ(giver.give("a\tb \xC3\xBB ", "节点"), "a b ?");
    EXPECT_EQ(giver.give("  ", "节点"), "-");
    EXPECT_EQ(report.findings.size(), 3U);
    const std::string tooLong = "一二三四五六七八九十一二三四五六七八九十";
    std::unordered_set<std::string> seen;
    for (int i = 0; i < 1200; ++i) {
        const std::string name = giver.give(tooLong + "甲", "节点");
        EXPECT_EQ(whyNoName(name), "") << name;
        EXPECT_TRUE(seen.insert(name).second) << name;
    }
    EXPECT_EQ(report.findings.size(), 1203U);
}

TEST(Names, ChangesAreRefusedWhenTheyAreNotAllowed) {
    Options options;
    options.shortenNames = false;
    Report report;
    NameGiver giver(options, report);
    EXPECT_EQ(giver.give("A", "线路"), "A");
    EXPECT_THAT(refusal([&] { giver.give("A", "线路"); }), ::testing::HasSubstr("“A”改为“A~1”"));
}

}  // namespace

}  // namespace import_test
