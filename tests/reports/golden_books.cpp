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
