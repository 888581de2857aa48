#include "tests/reports/HandMadeCase.h"

namespace {

class GoldenBooks : public BookFixture {};

TEST_F(GoldenBooks, OfZeroSequenceRelays) {
    ASSERT_NO_FATAL_FAILURE(installRelays(3));
    ASSERT_NO_FATAL_FAILURE(calculate(3));
    ASSERT_TRUE(writer(1, 3, "演示").WriteSettingBook(places.workDir));
    compare("zero_sequence.settings.txt");
    ASSERT_TRUE(writer(0, 3, "灵敏度计算用故障量计算").WriteKlmBook(places.workDir));
    compare("zero_sequence.sensitivity.txt");
}

TEST_F(GoldenBooks, OfACancelledRunAreThoseOfTheRunKept) {
    ASSERT_NO_FATAL_FAILURE(installRelays(3));
    ASSERT_NO_FATAL_FAILURE(calculate(3));
    const auto book = [&] {
        EXPECT_TRUE(writer(1, 3, "演示").WriteSettingBook(places.workDir));
        return sql::fromGbk(written()).toStdString();
    };
    const std::string kept = book();
    for (const int abortAfter : {-1, 0}) {
        RunSession session(*cases.current(), places);
        ASSERT_TRUE(session.open());
        exec("UPDATE RLY_RDZ SET NRdz11=3000 WHERE RNo>2 AND Cdz='Idz'");
        ASSERT_EQ(run(session, RunSession::Automatic, abortAfter), abortAfter < 0 ? "complete" : "broken");
        exec("UPDATE RLY_RKLMTEM_TEM SET Valsense=99");  // as a look at a setting of that run may leave it
        ASSERT_NE(book(), kept);
        ASSERT_TRUE(session.cancel());
        ASSERT_TRUE(session.open());
        EXPECT_EQ(book(), kept);
        ASSERT_TRUE(session.cancel());
    }
}

TEST_F(GoldenBooks, OfOtherCasesAreNotMixed) {
    ASSERT_NO_FATAL_FAILURE(installRelays(3));
    ASSERT_NO_FATAL_FAILURE(calculate(3));
    EXPECT_TRUE(writer(1, 3, "演示").hasResults());
    EXPECT_FALSE(writer(2, 3, "另一个").hasResults());
    EXPECT_EQ(errors, QStringList{"没有计算结果，不能生成计算书"});
    exec("UPDATE RLY_RKLMTEM_TEM SET Valsense=99,RNo=RNo+1");  // of a case with relays 2 and 3
    RunSession session(*cases.current(), places);
    ASSERT_TRUE(session.open());
    ASSERT_TRUE(writer(1, 3, "演示").WriteSettingBook(places.workDir));
    compare("zero_sequence.settings.txt");
    ASSERT_TRUE(session.cancel());
}

TEST_F(GoldenBooks, OfPhaseDistanceRelays) {
    ASSERT_NO_FATAL_FAILURE(installRelays(1));
    ASSERT_NO_FATAL_FAILURE(calculate(1));
    ASSERT_TRUE(writer(1, 1, "演示").WriteSettingBook(places.workDir));
    compare("phase_distance.settings.txt");
}

TEST_F(HandMadeCase, HasEveryBlockOfBothBooks) {
    ASSERT_TRUE(writer(7, 3, "手工").WriteSettingBook(places.workDir));
    compare("every_block.settings.txt");
    ASSERT_TRUE(writer(7, 3, "灵敏度计算用故障量计算").WriteKlmBook(places.workDir));
    compare("every_block.sensitivity.txt");
}

}  // namespace
