#include "programs/engine/CAutoCalFlow.h"
#include "programs/engine/Sensitivity.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/SettingConversion.h"
#include "tests/engine/EngineFixture.h"

namespace {

class Results : public EngineFixture {
  protected:
    void SetUp() override {
        EngineFixture::SetUp();
        ruleHead(1101, 1, 0);
        rule("INSERT INTO VAROUT VALUES (1101,2,'t'),(1101,1,'Zdz')");
        settingRow(7, 11, 1, 1101, "Zdz", 0, "L1", "A", "B", 1);
        settingRow(7, 11, 1, 1101, "t", 0, "L1", "A", "B", 1);
        settingRow(8, 11, 1, 1101, "t", 0, "L1", "A", "B", 1);
    }
    CRelayFaultCal cal{1, "距离保护", workDir(), 7};
    const char* settings = "SELECT Case_No,Cdz,Rdz FROM RLY_RDZTEM ORDER BY ID";
};

TEST_F(Results, SettingsGoToTheRowsOfTheirRuleAndCase) {
    put("RELAY.RP1", "1, 11, 1, 1101, 12.5, 0.5, \r\n2, 11, 1, 0, 99, 99,\r\n3, 99, 1, 1101, 99,\r\nnonsense\r\n");
    EXPECT_TRUE(cal.ReadSettingResults());
    EXPECT_EQ(rows(settings), (QStringList{"7 Zdz 12.5", "7 t 0.5", "8 t 0"}));
    put("RELAY.RP1", "1,11,1,1101,7");  // a missing value is 0, also over an earlier one
    EXPECT_TRUE(cal.ReadSettingResults());
    EXPECT_EQ(rows(settings), (QStringList{"7 Zdz 7", "7 t 0", "8 t 0"}));
    EXPECT_EQ(errors, QStringList{"RELAY.RP1中有1行不能识别"});
}

TEST_F(Results, ValuesThatNoSettingCanHaveAreRefusedAndTold) {
    put("RELAY.RP1", "1, 11, 1, 1101, 1e12, nan, \r\n");
    EXPECT_TRUE(cal.ReadSettingResults());
    EXPECT_EQ(rows(settings), (QStringList{"7 Zdz 0", "7 t 0", "8 t 0"}));
    EXPECT_EQ(errors, QStringList{"RELAY.RP1中有不能采用的数值，按0处理"});
}

TEST_F(Results, AMissingFileIsToldAndAnEmptyOneIsNot) {
    EXPECT_FALSE(cal.ReadSettingResults());
    EXPECT_FALSE(cal.ReadVariableResults());
    EXPECT_FALSE(cal.ReadTurnOrder());
    EXPECT_EQ(errors, (QStringList{"读RELAY.RP1失败", "读RELAY.RP5失败", "读RELAY.R8失败"}));
    for (const char* name : {"RELAY.RP1", "RELAY.RP2", "RELAY.RP3", "RELAY.RP5"}) put(name, "");
    errors.clear();
    EXPECT_TRUE(cal.ReadSettingResults() && cal.ReadFaultResults() && cal.ReadBranchCoefResults() &&
                cal.ReadVariableResults());
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(Results, FaultsCoefficientsAndVariablesAreAdded) {
    put("RELAY.RP2", "1, 11, 1, 1101, 31, 12, 0, 0, 5, \r\n");
    put("RELAY.RP3", "0, 1,\r\n3, 3, 4, 2, 1, 2, 3, 1, 11, 0.75, 1, 21, 5, 0.5, 2, 0, 6, \r\n");
    put("RELAY.RP5", "1, 11, 1, 1101, 0.25, 1.5, -3, \r\n");
    cal.ReadFaultResults();
    cal.ReadBranchCoefResults();
    cal.ReadVariableResults();
    EXPECT_EQ(rows("SELECT * FROM RLY_FAULTINF"), QStringList{"7 1 11 1 1101 31 12 0 0 5"});
    EXPECT_EQ(rows("SELECT * FROM RLY_KFINF"), QStringList{"7 3 3 4 2 1 2 3 1 11 0.75 1 21 5 0.5 2 0 6"});
    EXPECT_EQ(rows("SELECT VarNo,V FROM RLY_RRVIN"), (QStringList{"1 0.25", "2 1.5", "3 -3"}));
}

TEST_F(Results, OfAMainBranchAndARelayTheLastLineOfARunCounts) {
    const auto line = [](int main, int relay, const char* coefficient) {
        return QByteArray::number(main) + ", 3, 4, 2, 1, 2, 3, 1, " + QByteArray::number(relay) + ", " + coefficient +
               ", 1, 21, 5, 0.5, 2, 0, 6, \r\n";
    };
    const char* coefficients = "SELECT Case_No,FzNo,NLRNo,Fz1 FROM RLY_KFINF";
    cal.keepBranchCoefs();  // no file, nothing to keep
    put("RELAY.RP3", line(2, 11, "0.75") + line(1, 11, "0.5") + "\r\n 0 , 1,\r\n" + line(1, 12, "0.25"));
    cal.keepBranchCoefs();
    put("RELAY.RP3", line(1, 11, "0.625"));
    EXPECT_TRUE(cal.ReadBranchCoefResults());
    EXPECT_EQ(rows(coefficients), (QStringList{"7 1 11 0.625", "7 1 12 0.25", "7 2 11 0.75"}));
    put("RELAY.RP3", line(1, 12, "0.125") + line(3, 12, "0.375"));
    EXPECT_TRUE(cal.replaceBranchCoefs());
    EXPECT_EQ(rows(coefficients), (QStringList{"7 1 11 0.625", "7 2 11 0.75", "7 1 12 0.125", "7 3 12 0.375"}));
    cal.keepBranchCoefs();
    cal.forgetBranchCoefs();
    EXPECT_TRUE(cal.storeBranchCoefs());
    EXPECT_EQ(rows(coefficients).size(), 4);
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(Results, GarbageIsToldAndDoesNotKeepOtherLinesOut) {
    put("RELAY.RP2", "-1, 11, abc, 1101, 31, -12, 0, 0, 5,\r\n\x01\xff\r\n2, 12, 1, 1101, 31, 1, 0, 0, 5,\r\n");
    put("RELAY.RP5", "1, -11, 1, 1101, 1e99, 2,\r\n");
    EXPECT_TRUE(cal.ReadFaultResults());
    EXPECT_TRUE(cal.ReadVariableResults());
    EXPECT_TRUE(rows("SELECT * FROM RLY_FAULTINF").contains("7 2 12 1 1101 31 1 0 0 5"));
    EXPECT_EQ(rows("SELECT RNo,V FROM RLY_RRVIN"), (QStringList{"0 0", "0 2"}));
    EXPECT_EQ(errors, (QStringList{"RELAY.RP2中有2行不能识别", "RELAY.RP2中有不能采用的数值，按0处理",
                                   "RELAY.RP5中有不能采用的数值，按0处理"}));
}

TEST_F(Results, TurnOrderRanksTheRelaysAndPutsTheOthersBehind) {
    for (int rno : {11, 12, 13})
        run("INSERT INTO RLY_CASEINF (Case_No,TurnNo,RNo,PNo,PValid,RuleNo,RValid) VALUES (7,1,?,1,1,1101,1)", {rno});
    working(13, 1, "Zdz", 1, "L1", "A", "B", 1);
    put("RELAY.R8", "0, 3,\r\n 13 , x\r\n 77,\r\n11,\r\n");
    ASSERT_TRUE(cal.ReadTurnOrder());
    const QStringList turns = rows("SELECT RNo,TurnNo FROM RLY_CASEINF ORDER BY RNo");
    EXPECT_EQ(turns[0], "11 3");
    EXPECT_GT(turns[1].split(' ')[1].toInt(), 3);
    EXPECT_EQ(turns[2], "13 1");
    EXPECT_EQ(rows("SELECT RNo,TurnNo FROM RLY_RLYOBJ_TEM"), QStringList{"13 1"});
    put("RELAY.R8", "garbage");
    EXPECT_FALSE(cal.ReadTurnOrder());
    EXPECT_EQ(rows("SELECT RNo,TurnNo FROM RLY_CASEINF ORDER BY RNo"), turns);
}

class StoredSettings : public EngineFixture {
  protected:
    void SetUp() override {
        EngineFixture::SetUp();
        relayType(1, 6, 2, "Idz", 1, 1);
        relayType(1, 6, 2, "Zdz", 2, 2);
        relay(11, 1, 6, "L1", "A", "B", 1);
        working(11, 1, "Idz", 1, "L1", "A", "B", 1);
        working(11, 2, "Zdz", 1, "L1", "A", "B", 1);
    }
    void result(int pno, const char* cdz, double value) {
        settingRow(7, 11, pno, 1101, cdz, 0, "L1", "A", "B", 1);
        run("UPDATE RLY_RDZTEM SET Rdz=? WHERE Rdz=0 AND Cdz=? AND PNo=? ORDER BY ID DESC LIMIT 1", {value, cdz, pno});
    }
    CAutoCalFlow flow{1, "距离保护", workDir(), 7, workDir()};
};

TEST_F(StoredSettings, KeepTheSmallestImpedanceAndTheGreatestCurrentWithTheirOwnFactors) {
    for (double z : {44.0, 0.0, 22.0}) result(2, "Zdz", z);  // 0: that rule had no result
    for (double i : {600.0, 1200.0}) result(2, "Idz", i);
    result(2, "no", 5);
    result(1, "Zdz", 9);
    ASSERT_TRUE(flow.StoreCurrentSettings(11, 2));
    EXPECT_EQ(rows("SELECT Cdz,NDz21,NDz22,NDz11 FROM RLY_RLYOBJ_TEM ORDER BY DzNo"),
              (QStringList{"Idz 1200 10 1", "Zdz 22 1.2 1"}));
}

TEST(SettingConversion, KeepsToAFactorOfOneWithoutAUsableRatio) {
    EXPECT_DOUBLE_EQ(600 * conversionFactor(1, 1, 120, 2200, 1), 5);
    EXPECT_DOUBLE_EQ(conversionFactor(2, 1, 120, 2200, 1), 120.0 / 2200);
    EXPECT_DOUBLE_EQ(conversionFactor(3, 1, 120, 2200, 1), 1 / 2200.0);
    EXPECT_EQ(conversionFactor(4, 1, 120, 2200, 1), 1);
    EXPECT_EQ(conversionFactor(1, 1, 0, 1, 1), 1);
    EXPECT_EQ(conversionFactor(2, 0, 120, 0, 1), 1);
}

TEST(LocationLabel, NamesTheNodeAtTheRelaysEnd) {
    EXPECT_EQ(locationLabel(6, "一线", "甲", "乙", 2), "一线线 乙侧 ");
    EXPECT_EQ(locationLabel(10, "主变", "甲", "乙", 1), "主变变压器 甲侧绕组 ");
    EXPECT_EQ(locationLabel(0, "甲", "甲", "甲", 1), "甲母线 ");
}

class SettingRows : public EngineFixture {
  protected:
    void SetUp() override {
        EngineFixture::SetUp();
        working(11, 1, "Zdz", 1, "L1", "A", "B", 1);
        working(12, 1, "Zdz", 1, "L2", "B", "C", 2);
        for (int ruleNo : {40, 41, 70, 71, 1101, 1201}) ruleHead(ruleNo, 1, ruleNo > 100 ? 1 : 0);
        rule("INSERT INTO VAROUT VALUES (1101,2,'t'),(1101,1,'Zdz'),(1201,1,'Zdz'),(40,1,'Z'),(41,1,'Z'),(70,1,'Z')");
    }
    CRelayInputCal cal{1, workDir(), 7};
};

TEST_F(SettingRows, FollowPartTurnAndRuleAndLeaveOutWhatIsNotInForce) {
    run("INSERT INTO RLY_CASEINF (Case_No,TurnNo,RNo,PNo,PValid,RuleNo,RValid) VALUES (7,2,11,1,1,1101,1),"
        "(7,1,12,1,1,1101,1),(7,1,12,2,1,1201,1),(7,2,11,2,0,1201,1),(7,2,11,1,1,1202,0),(7,2,11,1,1,1203,1),"
        "(7,3,99,1,1,1101,1),(7,2,11,1,1,71,1),(8,1,11,1,1,1201,1)");
    settingRow(8, 11, 1, 1201, "Zdz", 1, "L1", "A", "B", 1);
    ASSERT_TRUE(cal.BuildSettingRows());
    EXPECT_EQ(rows("SELECT RNo,PNo,RuleNo,Cdz,Side,Note,PRTypeNo FROM RLY_RDZTEM WHERE Case_No=7 ORDER BY ID"),
              (QStringList{"12 1 1101 Zdz 2 原则1101 1", "12 1 1101 t 2 原则1101 1", "11 1 1101 Zdz 1 原则1101 1",
                           "11 1 1101 t 1 原则1101 1", "12 2 1201 Zdz 2 原则1201 1"}));
    EXPECT_EQ(errors,
              (QStringList{"整定规则71没有输出量", "整定规则1203不存在", "整定目标列表与保护作业信息表不对应"}));
    EXPECT_EQ(rows("SELECT COUNT(*) FROM RLY_RDZTEM WHERE Case_No=8"), QStringList{"1"});
}

TEST_F(SettingRows, SensitivityRowsTakeStoredParametersOfTheirOwnPlaceOnly) {
    rule("INSERT INTO USEFKLM VALUES (1,1,'Zdz',40,41,2),(1,2,'Zdz',41,40,2),(1,3,'Zdz',70,71,2)");
    run("INSERT INTO RLY_FKLM VALUES ('L1','A','B',1,5,40),('L1','A','B',1,6,41),('L2','B','C',1,9,40),"
        "('L2','B','C',2,8,41)");
    ASSERT_TRUE(cal.BuildSensitivityRows());
    EXPECT_EQ(rows("SELECT RNo,PNo,RuleNo,RFault1,DRuleNo,RFault2,Flg FROM RLY_RKLMTEM_TEM ORDER BY RNo,PNo"),
              (QStringList{"11 1 40 5 41 6 11", "11 2 41 6 40 5 12", "11 3 70 0 71 0 12", "12 1 40 0 41 8 11",
                           "12 2 41 8 40 0 12", "12 3 70 0 71 0 12"}));
    run("DELETE FROM RLY_FKLM WHERE Side=2");
    ASSERT_TRUE(cal.BuildSensitivityRows());
    EXPECT_EQ(errors, QStringList{"L2 C侧的灵敏度参量没有计算，不能形成灵敏度参量表，请先进行灵敏度参量计算"});
}

TEST_F(SettingRows, ASensitivityRunHasEachRuleOnceForEachRelayUnderCaseNought) {
    rule("INSERT INTO USEFKLM VALUES (1,1,'Zdz',40,41,2),(1,2,'Zdz',41,40,2),(1,3,'Zdz',70,71,2)");
    CRelayInputCal sensitivity(1, workDir(), 0);
    ASSERT_TRUE(sensitivity.BuildKlmSettingRows());
    EXPECT_EQ(rows("SELECT RNo,PNo,RuleNo,Cdz FROM RLY_RDZTEM WHERE Case_No=0 ORDER BY ID"),
              (QStringList{"11 1 40 Z", "11 1 41 Z", "11 1 70 Z", "12 1 40 Z", "12 1 41 Z", "12 1 70 Z"}));
    EXPECT_EQ(errors, QStringList{"灵敏度参量计算规则71不存在或者没有输出量"});
    CRelayInputCal other(2, workDir(), 0);
    EXPECT_FALSE(other.BuildKlmSettingRows());
}

TEST_F(SettingRows, SensitivityFollowsTheParameterInUse) {
    rule("INSERT INTO USEFKLM VALUES (1,1,'Zdz',40,41,1),(1,2,'Zdz',41,40,2)");
    run("INSERT INTO RLY_FKLM VALUES ('L1','A','B',1,5,40),('L1','A','B',1,6,41)");
    cal.BuildSensitivityRows();
    EXPECT_DOUBLE_EQ(CalSensitivity(1, 11, 1, "Zdz", 2), 2.5);  // parameter over setting
    EXPECT_DOUBLE_EQ(CalSensitivity(1, 11, 2, "Zdz", 12), 2);   // setting over parameter one, Flg 12
    run("UPDATE RLY_RKLMTEM_TEM SET Flg=22 WHERE RNo=11 AND PNo=2");
    EXPECT_DOUBLE_EQ(CalSensitivity(1, 11, 2, "Zdz", 12), 2.4);
    EXPECT_EQ(CalSensitivity(1, 11, 1, "Zdz", 0), -1);
    EXPECT_EQ(CalSensitivity(1, 11, 5, "Zdz", 1), -1);
    EXPECT_EQ(errors.takeLast(), "定值不能为0，请重新计算定值，灵敏度＝参量值/定值");
    run("UPDATE RLY_RLYOBJ_TEM SET NDz11=0 WHERE RNo=11");
    run("UPDATE RLY_RKLMTEM_TEM SET Valsense=3 WHERE RNo=11 AND PNo=1");
    ASSERT_TRUE(updateSensitivities(1, *RuleData::read()));
    EXPECT_EQ(rows("SELECT PNo,Valsense FROM RLY_RKLMTEM_TEM WHERE RNo=11 ORDER BY PNo"),
              (QStringList{"1 3", "2 0.4"}));
}

TEST_F(SettingRows, ResultsOfASensitivityRunBecomeTheStoredParameters) {
    rule("INSERT INTO USEFKLM VALUES (1,1,'Zdz',40,41,2)");
    run("INSERT INTO RLY_FKLM VALUES ('L1','A','B',1,1,40),('L1','A','B',1,1,41),('L2','B','C',2,1,40)");
    settingRow(0, 11, 1, 40, "Z", 0, "L1", "A", "B", 1);
    settingRow(0, 12, 1, 40, "Z", 0, "L2", "B", "C", 2);
    settingRow(7, 11, 1, 41, "Z", 0, "L1", "A", "B", 1);
    run("UPDATE RLY_RDZTEM SET Rdz=7.5 WHERE RNo=11");
    ASSERT_TRUE(storeSensitivityParameters(cal));
    EXPECT_EQ(rows("SELECT RNo,RFault1,RFault2 FROM RLY_RKLMTEM_TEM ORDER BY RNo"),
              (QStringList{"11 7.5 1", "12 0 0"}));
    EXPECT_EQ(errors.first(), "参量类型错误或数值小于等于零（1项）");
}

}  // namespace
