
#include "programs/workflow/CaseSettings.h"
#include "programs/workflow/CaseStore.h"
#include "programs/workflow/ResultTable.h"
#include "programs/workflow/SettingStore.h"
#include "tests/workflow/WorkflowFixture.h"

class Cases : public WorkflowFixture {
  protected:
    void SetUp() override {
        WorkflowFixture::SetUp();
        perRelay = sql::scalar(tables::ruleConnection, "SELECT COUNT(*) FROM RTYPERULE WHERE RTypeNo=3").toInt();
        ASSERT_GT(perRelay, 4);
        ASSERT_EQ(RelayStore::install(
                      {request("L1", 1, 3, 120, 1100), request(oddName, 2, 3), request("L1", 1, 1, 120, 1100)}),
                  3);
    }
    /// A stored case of zero-sequence relays 1 and 2.
    CaseForm makeCase(const QString& name) {
        CaseForm form;
        form.name = name;
        form.source = "基础方案";
        cases.insert(3, 0, -1, "基础方案");
        EXPECT_TRUE(cases.addRelays(form, {1, 2}));
        EXPECT_TRUE(cases.SaveRecord(1, form)) << errors.join('|').toStdString();
        EXPECT_TRUE(cases.LoadCaseRelays());
        return cases.form();
    }
    QString refusalOf(const CaseForm& form) {
        errors.clear();
        return cases.SaveRecord(1, form) ? QString("saved") : errors.join('|');
    }
    static CaseSettingRow& row(CaseForm& form, int relay, const QString& cdz) {
        for (CaseSettingRow& found : form.rows)
            if (found.RNo == relay && found.Cdz == cdz) return found;
        throw std::runtime_error("no such row");
    }

    CaseStore cases;
    int perRelay = 0;  ///< rules of the type
};

TEST_F(Cases, RelaysComeWithAllRulesOfTheirTypeAndInTurn) {
    makeCase("零序");
    EXPECT_EQ(count("RLY_CASEINF", "RNo=1 AND PValid=1 AND RValid=1"), perRelay);
    EXPECT_EQ(rows("SELECT DISTINCT RNo,TurnNo FROM RLY_CASEINF ORDER BY RNo"), (QStringList{"1,1", "2,2"}));
    EXPECT_EQ(rows("SELECT RNo,Cdz,NPart,ODz11,NDz11 FROM RLY_RLYOBJ_TEM ORDER BY RNo,DzNo"),
              (QStringList{"1,Idz,4,0,0", "1,t,4,0.1,0", "2,Idz,4,0,0", "2,t,4,0.1,0"}));
}

TEST_F(Cases, ARelayThatIsThereIsPassedOver) {
    CaseForm form = makeCase("零序");
    ASSERT_TRUE(cases.addRelays(form, {2, 1}));
    EXPECT_EQ(form.rows.size(), 4);
    EXPECT_EQ(count("RLY_CASEINF"), 2 * perRelay);
}

TEST_F(Cases, SettingsKnowTheirKindAndTheStationAtTheRelaysEnd) {
    ASSERT_TRUE(exec("UPDATE CDB_NODEBAK SET PS_Name=CONCAT('Station ',Node_Name)"));
    CaseForm form = makeCase("零序");
    EXPECT_EQ(row(form, 1, "Idz").station, "Station A");
    EXPECT_EQ(row(form, 2, "t").station, "Station B");
    EXPECT_EQ(row(form, 1, "Idz").VType, kCurrent);
    EXPECT_EQ(row(form, 1, "t").VType, kTime);
    ASSERT_TRUE(exec("DELETE FROM CDB_NODEBAK WHERE Node_Name='B'"));
    const QVector<CaseSettingRow> fresh = CaseSettings::newRows({2, 1}, 3, true);
    ASSERT_EQ(fresh.size(), 4);
    EXPECT_EQ(fresh[0].station, "Station A");
    EXPECT_EQ(fresh[3].station, "") << "a relay whose node is gone still shows";
    EXPECT_EQ(fresh[3].VType, kTime);
    EXPECT_EQ(fresh[3].newValue[0], "0");
    EXPECT_EQ(fresh[3].oldValue[0], "0.1");
}

TEST_F(Cases, SecondaryValuesFollowTheRatios) {
    CaseForm form = makeCase("零序");
    row(form, 1, "Idz").newValue[1] = "600";
    row(form, 1, "t").newValue[1] = "0.5";
    ASSERT_TRUE(cases.SaveRecord(1, form));
    EXPECT_EQ(rows("SELECT Rdz21,Rdz22 FROM RLY_CASERDZ WHERE RNo=1 ORDER BY DzNo"), (QStringList{"600,5", "0.5,0.5"}));
    ASSERT_TRUE(cases.LoadCaseRelays());
    CaseForm secondary = cases.form(false);
    EXPECT_EQ(row(secondary, 1, "Idz").newValue[1], "5");
    row(secondary, 1, "Idz").newValue[1] = "6";
    ASSERT_TRUE(cases.SaveRecord(2, secondary));
    EXPECT_EQ(rows("SELECT NDz21,NDz22 FROM RLY_RLYOBJ_TEM WHERE RNo=1 AND Cdz='Idz'"), QStringList{"720,6"});
    EXPECT_EQ(real("SELECT Rdz21 FROM RLY_CASERDZ WHERE RNo=1 AND Cdz='Idz'"), 600);
}

TEST_F(Cases, LookingAtSecondaryValuesDoesNotMoveThePrimaryOnes) {
    ASSERT_TRUE(exec("UPDATE RLY_RDZ SET NRdz11=1643.06,NRdz12=13.692167,NRdz51=7,NRdz52=7 WHERE RNo=1 AND Cdz='t'"));
    ASSERT_TRUE(exec("UPDATE RLY_RUD SET CTSec=7 WHERE RNo=1"));
    CaseForm form = makeCase("零序");
    row(form, 1, "Idz").newValue[0] = "1643.06";
    ASSERT_TRUE(cases.SaveRecord(2, form));
    const QString values = "SELECT NDz11,ODz11,ODz51 FROM RLY_RLYOBJ_TEM WHERE RNo=1 ORDER BY DzNo";
    const QStringList before = rows(values);
    CaseForm secondary = cases.form(false);
    ASSERT_EQ(row(secondary, 1, "Idz").newValue[0], "234.722857");
    ASSERT_TRUE(cases.SaveRecord(2, secondary) && cases.SaveRecord(1, secondary));
    EXPECT_EQ(rows(values), before);
    EXPECT_EQ(real("SELECT Rdz11 FROM RLY_CASERDZ WHERE RNo=1 AND Cdz='Idz'"), 1643.06);
    row(secondary, 1, "Idz").newValue[0] = "234.722856";
    ASSERT_TRUE(cases.SaveRecord(1, secondary));
    EXPECT_NEAR(real("SELECT Rdz11 FROM RLY_CASERDZ WHERE RNo=1 AND Cdz='Idz'"), 1643.059992, 1e-9);
}

TEST_F(Cases, ImpedancesConvertByBothRatios) {
    cases.insert(1, 0, -1, "基础方案");
    CaseForm form;
    form.name = "距离";
    form.source = "基础方案";
    ASSERT_TRUE(cases.addRelays(form, {3}));
    row(form, 3, "Zdz").newValue[0] = "11";
    ASSERT_TRUE(cases.SaveRecord(1, form));
    EXPECT_NEAR(real("SELECT Rdz12 FROM RLY_CASERDZ WHERE RNo=3 AND Cdz='Zdz'"), 1.2, 1e-9);
}

TEST_F(Cases, ARefusedSaveSaysWhyAndKeepsTheCase) {
    CaseForm form = makeCase("零序");
    const QStringList before = rows("SELECT * FROM RLY_CASE_RLY");
    CaseForm bad = form;
    bad.name = "  ";
    EXPECT_EQ(refusalOf(bad), "作业名不能为空");
    bad = form;
    bad.source = " ";
    EXPECT_EQ(refusalOf(bad), "请选择一个方案或潮流作业");
    bad.source = "没有这个方案";
    EXPECT_EQ(refusalOf(bad), "请选择一个方案或潮流作业");
    bad.onLoadFlow = true;
    EXPECT_EQ(refusalOf(bad), "请选择一个方案或潮流作业");
    bad = form;
    bad.rows.clear();
    EXPECT_EQ(refusalOf(bad), "作业内必须要有待整定保护");
    for (const char* text : {"-0.1", "abc", "nan", "inf", ""}) {
        bad = form;
        row(bad, 2, "Idz").newValue[3] = text;
        EXPECT_EQ(refusalOf(bad), oddName + "线 B侧 保护   定值 零序电流定值 的数据有错误，请检查") << text;
    }
    bad = form;
    bad.note = QString("字").repeated(101);
    EXPECT_NE(refusalOf(bad), "saved");
    bad = form;
    row(bad, 2, "Idz").newValue[3] = "1e9";
    EXPECT_NE(refusalOf(bad), "saved");
    EXPECT_EQ(rows("SELECT * FROM RLY_CASE_RLY"), before);
    EXPECT_EQ(count("RLY_CASERDZ"), 4);
    EXPECT_EQ(refusalOf(form), "saved");
}

TEST_F(Cases, NamesAreUniqueAndAnUnsavedCaseLeavesNoTrace) {
    makeCase("零序");
    CaseForm second;
    second.name = "零序";
    second.source = "基础方案";
    EXPECT_EQ(cases.insert(3, 0, -1, "基础方案").Case_No, 2);
    ASSERT_TRUE(cases.addRelays(second, {1}));
    EXPECT_EQ(refusalOf(second), "作业名已经定义，请更换作业号");
    ASSERT_TRUE(cases.recoverAll());
    EXPECT_EQ(count("RLY_CASEINF", "Case_No=2") + count("RLY_CASE_RLY", "Case_No=2"), 0);
}

TEST_F(Cases, ARemovedRelayLeavesWithTheNextSaveOnly) {
    CaseForm form = makeCase("零序");
    ASSERT_TRUE(cases.setOutages({1, 2}, {"L3"}));
    cases.removeRelay(form, 1);
    EXPECT_EQ(count("RLY_CASEINF", "RNo=1"), perRelay);
    ASSERT_TRUE(cases.SaveRecord(1, form));
    EXPECT_EQ(count("RLY_CASEINF", "RNo=1") + count("RLY_CELECHK", "RNo=1"), 0);
    EXPECT_EQ(rows("SELECT RNo,ID_Name,I_Name,J_Name FROM RLY_CELECHK"), QStringList{"2,L3,B,T1"});
    EXPECT_FALSE(cases.setOutages({2}, {"L3", "没有"}));
    EXPECT_EQ(count("RLY_CELECHK"), 1);
}

TEST_F(Cases, ARelayThatIsGoneIsToldAndCanBeDropped) {
    makeCase("零序");
    ASSERT_TRUE(RelayStore::remove({1}));
    errors.clear();
    ASSERT_TRUE(cases.LoadCaseRelays());
    EXPECT_TRUE(cases.missingRelay());
    EXPECT_EQ(errors, QStringList{"作业中涉及的某些保护不存在，请检查数据"});
    EXPECT_EQ(rows("SELECT DISTINCT RNo FROM RLY_RLYOBJ_TEM"), QStringList{"2"});
    ASSERT_TRUE(cases.dropMissingRelays());
    EXPECT_EQ(count("RLY_CASEINF", "RNo=1") + count("RLY_CASERDZ", "RNo=1"), 0);
    EXPECT_EQ(count("RLY_CASEINF", "RNo=2"), perRelay);
}

TEST_F(Cases, ARelayThatGoesWhileItsFormIsOpenIsToldAndGetsNoSettings) {
    CaseForm form = makeCase("零序");
    for (const int relay : {1, 2}) row(form, relay, "Idz").newValue[0] = "240";
    ASSERT_TRUE(RelayStore::remove({1}));
    for (const int mode : {1, 2}) {
        errors.clear();
        EXPECT_TRUE(cases.SaveRecord(mode, form));
        EXPECT_EQ(errors, QStringList{"作业中涉及的某些保护不存在，请检查数据"}) << mode;
        EXPECT_TRUE(cases.missingRelay());
    }
    EXPECT_EQ(rows("SELECT DISTINCT RNo FROM RLY_CASERDZ"), QStringList{"2"});
    EXPECT_EQ(rows("SELECT DISTINCT RNo FROM RLY_RLYOBJ_TEM"), QStringList{"2"});
    ASSERT_TRUE(SettingStore::saveChangingBackup());
    EXPECT_EQ(count("RLY_RDZ", "RNo=1"), 0);
    EXPECT_EQ(rows("SELECT NRdz11 FROM RLY_RDZ WHERE RNo=2 AND Cdz='Idz'"), QStringList{"240"});
    ASSERT_TRUE(cases.dropMissingRelays());
    EXPECT_EQ(count("RLY_CASEINF", "RNo=1"), 0);
}

TEST_F(Cases, ARelayOfTheSameNumberAndAnotherTypeIsNotTheOneOfTheForm) {
    CaseForm form = makeCase("零序");
    ASSERT_TRUE(exec("UPDATE RLY_RUD SET RTypeNo=1 WHERE RNo=1"));
    ASSERT_TRUE(cases.SaveRecord(1, form));
    EXPECT_TRUE(cases.missingRelay());
    EXPECT_EQ(rows("SELECT DISTINCT RNo FROM RLY_CASERDZ"), QStringList{"2"});
}

TEST_F(Cases, ASaveMendsWhatStandsOtherwiseThanInTheForm) {
    const CaseForm form = makeCase("零序");
    const QString all = "SELECT * FROM RLY_CASERDZ ORDER BY Case_No,RNo,DzNo";
    makeCase("另一");
    ASSERT_TRUE(cases.select(1) && cases.LoadCaseRelays());
    const QStringList good = rows(all);
    for (const char* fault : {"UPDATE RLY_CASERDZ SET Rdz42=9 WHERE Case_No=1 AND RNo=1 AND Cdz='t'",
                              "UPDATE RLY_CASERDZ SET DzNo=7 WHERE Case_No=1 AND RNo=2 AND Cdz='t'",
                              "INSERT INTO RLY_CASERDZ SELECT * FROM RLY_CASERDZ WHERE Case_No=1 AND RNo=1",
                              "INSERT INTO RLY_CASERDZ (Case_No,RNo,DzNo,Cdz) VALUES (1,99,1,'Idz')",
                              "DELETE FROM RLY_CASERDZ WHERE Case_No=1"}) {
        ASSERT_TRUE(exec(fault)) << fault;
        ASSERT_NE(rows(all), good) << fault;
        ASSERT_TRUE(cases.SaveRecord(1, form));
        EXPECT_EQ(rows(all), good) << fault;
    }
}

TEST_F(Cases, PasteReplacesTheContentsAndTheType) {
    makeCase("零序");
    ASSERT_TRUE(exec("INSERT INTO RLY_RUDSYS (Case_No,SysName,SysNo,SFlg) VALUES (1,'大',1,1)"));
    cases.insert(1, 0, -1, "基础方案");
    CaseForm distance;
    distance.name = "距离";
    distance.source = "基础方案";
    ASSERT_TRUE(cases.addRelays(distance, {3}) && cases.SaveRecord(1, distance));
    ASSERT_TRUE(cases.pasteFrom(1));
    EXPECT_EQ(cases.current()->Case_No, 2);
    EXPECT_EQ(cases.current()->RTypeNo, 3);
    EXPECT_EQ(rows("SELECT DISTINCT RNo FROM RLY_CASEINF WHERE Case_No=2 ORDER BY RNo"), (QStringList{"1", "2"}));
    EXPECT_EQ(count("RLY_RUDSYS", "Case_No=2"), 1);
    EXPECT_EQ(count("RLY_CASEINF", "Case_No=1"), 2 * perRelay);
}

TEST_F(Cases, DeletionTakesWhatBelongsToTheCaseAndMovesOn) {
    makeCase("一");
    makeCase("二");
    ASSERT_TRUE(cases.select(1));
    ASSERT_TRUE(cases.remove());
    EXPECT_EQ(cases.current()->Case_No, 2);
    EXPECT_EQ(count("RLY_CASEINF", "Case_No=1") + count("RLY_CASERDZ", "Case_No=1"), 0);
    EXPECT_EQ(count("RLY_CASEINF", "Case_No=2"), 2 * perRelay);
    ASSERT_TRUE(cases.remove());
    EXPECT_EQ(cases.current(), nullptr);
}

class SettingSave : public Cases {
  protected:
    void SetUp() override {
        Cases::SetUp();
        ASSERT_TRUE(exec("UPDATE RLY_RDZ SET NRdz11=70,NRdz12=0.7,BRdz11=60,BRdz12=0.6 WHERE RNo=1 AND Cdz='Idz'"));
        ASSERT_TRUE(exec("UPDATE RLY_RDZ SET BRdz11=0.3 WHERE RNo=1 AND Cdz='t'"));
        ASSERT_TRUE(exec("UPDATE RLY_RDZ SET NRdz11=42,BRdz11=41 WHERE RNo=1 AND Cdz='L'"));
        CaseForm form = makeCase("零序");
        row(form, 1, "Idz").newValue[0] = "600";
        ASSERT_TRUE(cases.SaveRecord(1, form) && cases.LoadCaseRelays());
    }
    const QString settings = "SELECT Cdz,DzNo,NRdz11,NRdz12,BRdz11,BRdz12 FROM RLY_RDZ WHERE RNo=1 ORDER BY DzNo";
};

TEST_F(SettingSave, ReplacedValuesBecomeTheBackup) {
    ASSERT_TRUE(SettingStore::saveChangingBackup());
    EXPECT_EQ(rows(settings), (QStringList{"Idz,1,600,5,70,0.7", "t,2,0,0,0.1,0.1", "L,3,42,100,41,100"}));
    EXPECT_EQ(count("RLY_RDZ", "RNo=3"), 3);
    EXPECT_EQ(real("SELECT NRdz21 FROM RLY_RDZ WHERE RNo=3 AND Cdz='t'"), 0.5);
}

TEST_F(SettingSave, TheBackupStaysWithItsSettingWhateverTheOrder) {
    ASSERT_TRUE(exec("UPDATE RLY_RDZ SET DzNo=9-DzNo WHERE RNo=1"));
    ASSERT_TRUE(exec("INSERT INTO RLY_RDZ (RNo,DzNo,Cdz) VALUES (1,5,'alt')"));
    ASSERT_TRUE(SettingStore::saveKeepingBackup());
    EXPECT_EQ(count("RLY_RDZ", "RNo=1 AND Cdz='alt'"), 0);
    EXPECT_EQ(rows("SELECT Cdz,NRdz11,BRdz11,BRdz12 FROM RLY_RDZ WHERE RNo=1 ORDER BY Cdz"),
              (QStringList{"Idz,600,60,0.6", "L,42,41,100", "t,0,0.3,0.1"}));
}

TEST_F(SettingSave, ASaveThatTheServerRefusesChangesNothing) {
    const QStringList before = rows("SELECT * FROM RLY_RDZ ORDER BY RNo,Cdz");
    ASSERT_TRUE(exec("ALTER TABLE RLY_RDZ ADD CONSTRAINT greatest CHECK (NRdz11<500)"));
    EXPECT_FALSE(SettingStore::saveChangingBackup());
    EXPECT_FALSE(SettingStore::saveKeepingBackup());
    EXPECT_EQ(rows("SELECT * FROM RLY_RDZ ORDER BY RNo,Cdz"), before);
}
