#include "tests/reports/HandMadeCase.h"

namespace {

TEST_F(HandMadeCase, ABookReplacesTheOneBefore) {
    ASSERT_TRUE(writer(7, 3, "第一本").WriteSettingBook(places.workDir));
    const QByteArray first = written();
    ASSERT_TRUE(writer(6, 3, "没有结果的作业").WriteSettingBook(places.workDir));
    const QString second = sql::fromGbk(written());
    EXPECT_LT(second.size(), first.size());
    EXPECT_TRUE(second.contains("没有结果的作业") && !second.contains("第一本"));
    EXPECT_EQ(second.count('\n'), second.count("\r\n"));
}

TEST_F(HandMadeCase, ACharacterOutsideGbkIsAQuestionMarkAndTold) {
    ASSERT_TRUE(writer(7, 3, "电站 🏭 Ünë").WriteSettingBook(places.workDir));
    EXPECT_TRUE(sql::fromGbk(written()).contains("作业名：  电站 ? ?n?    计算日期"));
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].contains("🏭Ü")) << errors[0].toStdString();
}

TEST_F(HandMadeCase, ABookThatCannotBeWrittenIsNotBegun) {
    ASSERT_TRUE(QDir(places.workDir).mkpath("CalRef.ROT"));
    EXPECT_FALSE(writer(7, 3, "甲").WriteSettingBook(places.workDir));
    EXPECT_EQ(errors, QStringList{"生成计算书失败"});
    ASSERT_TRUE(QDir(places.workDir).rmdir("CalRef.ROT"));
    ASSERT_TRUE(writer(7, 3, "甲").WriteSettingBook(places.workDir));
    exec("DROP TABLE RLY_KFINF");
    EXPECT_FALSE(writer(7, 3, "甲").WriteSettingBook(places.workDir));
    EXPECT_FALSE(QFile::exists(places.workDir + "CalRef.ROT"));
    EXPECT_EQ(errors.last(), "生成计算书失败");
}

TEST_F(HandMadeCase, ASensitivityWithoutAValueSaysWhichOfTheTwoIsZero) {
    EXPECT_EQ(CBookWriter::CalKlmForBook(3, 1, 1, "Idz", 625), 1.5);
    EXPECT_EQ(CBookWriter::CalKlmForBook(3, 1, 1, "Idz", 0), -2.0);
    EXPECT_EQ(CBookWriter::CalKlmForBook(3, 1, 1, "t", 0.3), -1.0);
    exec("UPDATE RLY_RKLMTEM_TEM SET Flg=22 WHERE Cdz='t'");
    EXPECT_DOUBLE_EQ(CBookWriter::CalKlmForBook(3, 1, 1, "t", 0.3), 2.0);
    EXPECT_EQ(CBookWriter::CalKlmForBook(3, 9, 1, "Idz", 625), -1.0);
    EXPECT_TRUE(errors.isEmpty()) << errors.join('|').toStdString();
}

}  // namespace
