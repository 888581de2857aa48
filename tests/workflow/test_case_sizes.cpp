#include "programs/workflow/CaseStore.h"
#include "programs/workflow/CoordinationSearch.h"
#include "programs/workflow/SettingStore.h"
#include "tests/workflow/WorkflowFixture.h"

namespace {

double statements() {
    sql::Query query;
    return query.exec("SHOW STATUS LIKE 'Questions'") && query.next() ? query.real(1) : 0;
}

}  // namespace

/// Cases of zero-sequence relays that stand nowhere but in the table of relays.
class CaseSizes : public WorkflowFixture {
  protected:
    static bool makeRelays(int many) {
        return exec(
                   "INSERT INTO RLY_RUD "
                   "(Valid,RNo,RTypeCode,RTypeNo,RType,ID_Name,I_Name,J_Name,Side,CTPri,CTSec,PTPri,"
                   "PTSec) SELECT 1,seq,'零序',3,6,CONCAT('L',seq),'A','B',1,1,7,11,1 FROM seq_1_to_" +
                   QString::number(many)) &&
               exec(
                   "INSERT INTO RLY_RDZ (RNo,DzNo,Cdz) SELECT RNo,1,'Idz' FROM RLY_RUD UNION ALL"
                   " SELECT RNo,2,'t' FROM RLY_RUD");
    }
    /// \return statements that making, saving, loading, thinning out and storing a case took
    double workflow(int many) {
        CaseForm form;
        form.name = "作业" + QString::number(many);
        form.source = "基础方案";
        QVector<int> relays;
        for (int relay = 1; relay <= many; ++relay) relays << relay;
        const double before = statements();
        cases.insert(3, 0, -1, form.source);
        EXPECT_TRUE(cases.addRelays(form, relays) && cases.SaveRecord(1, form) && cases.LoadCaseRelays());
        form = cases.form();
        EXPECT_EQ(form.rows.size(), 2 * many);
        EXPECT_TRUE(cases.SaveRecord(2, form) && SettingStore::saveChangingBackup());
        EXPECT_TRUE(cases.setOutages(relays, {"L3"}));
        EXPECT_EQ(count("RLY_CELECHK"), many);
        for (int relay = 2; relay <= many; relay += 2) cases.removeRelay(form, relay);
        EXPECT_TRUE(cases.SaveRecord(1, form));
        const int left = many - many / 2, caseNo = cases.current()->Case_No;
        EXPECT_EQ(count("RLY_CELECHK"), left);
        EXPECT_EQ(count("RLY_CASERDZ", "Case_No=?", {caseNo}), 2 * left);
        EXPECT_TRUE(cases.pasteFrom(caseNo) && cases.remove());
        EXPECT_EQ(count("RLY_CASEINF") + count("RLY_CELECHK"), 0);
        return statements() - before;
    }
    CaseStore cases;
};

TEST_F(CaseSizes, TenThousandRelaysTakeNoMoreStatementsThanTenButForBatchesOfRows) {
    ASSERT_TRUE(makeRelays(10000));
    const double few = workflow(10), many = workflow(10000);
    EXPECT_LT(few, 120);
    EXPECT_LT(many, few + 30);
}

TEST_F(CaseSizes, ACaseWithoutRelaysIsToldAndShowsNothingOfTheOneBefore) {
    ASSERT_TRUE(makeRelays(2));
    CaseForm form;
    form.name = "一";
    form.source = "基础方案";
    cases.insert(3, 0, -1, form.source);
    ASSERT_TRUE(cases.addRelays(form, {1, 2}) && cases.SaveRecord(1, form) && cases.LoadCaseRelays());
    ASSERT_TRUE(exec("DELETE FROM RLY_CASEINF"));
    ASSERT_TRUE(exec("INSERT INTO RLY_CASERLYCOP VALUES (1,1,1,2,1)"));
    EXPECT_FALSE(cases.LoadCaseRelays());
    EXPECT_EQ(errors, QStringList("没有内部作业号为1的作业的信息"));
    EXPECT_TRUE(cases.form().rows.isEmpty());
    EXPECT_TRUE(CoordinationSearch::SearchRlyCop(1));
    EXPECT_EQ(count("RLY_CASERLYCOP"), 0);
}

TEST_F(CaseSizes, ACaseWhoseRelayTypeIsGoneIsToldAndCannotBeSaved) {
    ASSERT_TRUE(makeRelays(2));
    CaseForm form;
    form.name = "一";
    form.source = "基础方案";
    cases.insert(3, 0, -1, form.source);
    ASSERT_TRUE(cases.addRelays(form, {1, 2}) && cases.SaveRecord(1, form) && cases.LoadCaseRelays());
    ASSERT_TRUE(sql::Query(tables::ruleConnection).exec("DELETE FROM RTYPE WHERE RTypeNo=3"));
    EXPECT_FALSE(cases.LoadCaseRelays());
    EXPECT_EQ(errors, QStringList("作业的保护类型已经不存在"));
    EXPECT_EQ(count("RLY_RLYOBJ_TEM"), 0);
    EXPECT_FALSE(cases.SaveRecord(1, cases.form()));
    EXPECT_EQ(count("RLY_CASERDZ"), 4);
}

TEST_F(CaseSizes, NeitherMeasureDriftsWhileTheOtherIsShown) {
    ASSERT_TRUE(makeRelays(1));  // 7 to 1: no ratio of its values ends
    CaseForm form;
    form.name = "一";
    form.source = "基础方案";
    cases.insert(3, 0, -1, form.source);
    ASSERT_TRUE(cases.addRelays(form, {1}));
    form.rows[0].newValue = {"600.123457", "0.002001", "123456.654321", "1", "0"};
    ASSERT_TRUE(cases.SaveRecord(1, form) && cases.LoadCaseRelays());
    const QString stored = "SELECT Rdz11,Rdz21,Rdz31,Rdz41,Rdz12,Rdz22,Rdz32,Rdz42 FROM RLY_CASERDZ WHERE DzNo=1";
    const QStringList primary = rows(stored);
    EXPECT_TRUE(primary.first().startsWith("600.123457,0.002001,123456.654321,1,85.73192"));
    for (int turn = 0; turn < 3; ++turn) {
        ASSERT_TRUE(cases.SaveRecord(1, cases.form(false)) && cases.SaveRecord(2, cases.form(false)));
        EXPECT_EQ(rows(stored), primary);
        ASSERT_TRUE(cases.SaveRecord(1, cases.form(true)) && cases.LoadCaseRelays());
        EXPECT_EQ(rows(stored), primary);
    }
    form = cases.form(false);
    form.rows[0].newValue[0] = "3.3";
    ASSERT_TRUE(cases.SaveRecord(1, form) && cases.LoadCaseRelays());
    EXPECT_EQ(rows("SELECT Rdz11,Rdz12 FROM RLY_CASERDZ WHERE DzNo=1"), QStringList("23.1,3.3"));
    ASSERT_TRUE(exec("UPDATE RLY_RUD SET CTSec=10"));  // another ratio: what is shown decides
    ASSERT_TRUE(cases.SaveRecord(1, cases.form(false)));
    EXPECT_EQ(rows("SELECT Rdz11,Rdz12 FROM RLY_CASERDZ WHERE DzNo=1"), QStringList("33,3.3"));
}
