#include <QElapsedTimer>

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

/// Relays like relay 1, as many as asked for behind number 100.
void multiply(int count) {
    const QString numbers = "seq_101_to_" + QString::number(100 + count);
    const QPair<const char*, const char*> tables[] = {
        {"RLY_RDZTEM", "Case_No,ID_Name,I_Name,J_Name,Side,PNo,Cdz,RuleNo,Rdz"},
        {"RLY_RRVIN", "Case_No,PNo,RuleNo,V,VarNo"},
        {"RLY_FAULTINF", "Case_No,PNo,RuleNo,RMNo,NSela,NSelb,NSelc,NSys"},
        {"RLY_CRUDRM", "Case_No,PNo,RuleNo,RMode,MType,ID_No,I_No,J_No,K_Loc,FType,R,X"},
        {"RLY_RLYOBJ_TEM", "DzNo,Cdz,NDz11,NDz12"},
        {"RLY_RKLMTEM_TEM", "PNo,Cdz,RFault1,Note1,RuleNo,RFault2,Note2,DRuleNo,Valsense,Flg"}};
    for (const auto& [table, columns] : tables)
        ASSERT_TRUE(
            sql::Query().exec(QString("INSERT INTO %1 (RNo,%2) SELECT seq,%2 FROM %1,%3 WHERE RNo=1 ORDER BY seq")
                                  .arg(table, columns, numbers)));
}

int statements() {
    sql::Query query;
    query.exec("SHOW SESSION STATUS LIKE 'Questions'");
    return query.next() ? query.number(1) : -1;
}

TEST_F(HandMadeCase, TheNumberOfStatementsDoesNotDependOnTheRelays) {
    const auto counted = [&] {
        const int before = statements();
        EXPECT_TRUE(writer(7, 3, "甲").WriteSettingBook(places.workDir));
        return statements() - before;
    };
    const int few = counted();
    ASSERT_NO_FATAL_FAILURE(multiply(350));
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(counted(), few);
    EXPECT_LT(timer.elapsed(), 10000);
    EXPECT_EQ(sql::fromGbk(written()).count("段号：  1"), 352);
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
