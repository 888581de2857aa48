#include "programs/workflow/CaseStore.h"
#include "programs/workflow/ResultTable.h"
#include "tests/workflow/WorkflowFixture.h"

using testing::HasSubstr;

/// A case of one zero-sequence relay whose working rows the tests fill as runs leave them.
class Results : public WorkflowFixture {
  protected:
    void SetUp() override {
        WorkflowFixture::SetUp();
        ASSERT_EQ(RelayStore::install({request("L1", 1, 3)}), 1);
        CaseForm form;
        form.name = "零序";
        form.source = "基础方案";
        cases.insert(3, 0, -1, "基础方案");
        ASSERT_TRUE(cases.addRelays(form, {1}) && cases.SaveRecord(1, form) && cases.LoadCaseRelays());
    }
    /// A result of a rule, and the setting that came of it.
    static void gave(int part, int rule, const char* cdz, double result, double setting) {
        ASSERT_TRUE(exec("INSERT INTO RLY_RDZTEM (Case_No,RNo,PNo,Cdz,RuleNo,Note,Rdz) VALUES (1,1,?,?,?,'原则',?)",
                         {part, cdz, rule, result}));
        ASSERT_TRUE(exec("UPDATE RLY_RLYOBJ_TEM SET NDz" + QString::number(part) + "1=? WHERE Cdz=?", {setting, cdz}));
    }
    static ResultRow row(const QVector<ResultRow>& rows, int part, const QString& cdz) {
        for (const ResultRow& row : rows)
            if (row.PNo == part && row.Cdz == cdz) return row;
        ADD_FAILURE() << "no row " << part << cdz.toStdString();
        return {};
    }
    CaseStore cases;
};

TEST_F(Results, OnlyATimeMayBeZeroAndOnlyBesideASetting) {
    gave(1, 3101, "Idz", 600, 600);
    gave(1, 3101, "t", 0, 0);
    gave(2, 3201, "Idz", 0, 0);
    gave(2, 3201, "t", 0.3, 0.3);
    const auto rows = resultTable(1, 3);
    EXPECT_EQ(row(rows, 1, "t").RuleNo, 3101);
    EXPECT_TRUE(row(rows, 1, "t").hasValue());
    EXPECT_FALSE(row(rows, 1, "t").lacksTime);
    EXPECT_EQ(row(rows, 2, "Idz").RuleNo, 0);
    EXPECT_FALSE(row(rows, 2, "Idz").hasValue());
    EXPECT_EQ(row(rows, 2, "Idz").reason, "没有结果");
    EXPECT_FALSE(row(rows, 2, "t").lacksTime);
}

TEST_F(Results, ASettingWithoutATimeIsAnError) {
    gave(3, 3301, "Idz", 400, 400);
    gave(3, 3302, "Idz", 0, 400);
    gave(3, 3302, "t", 0, 0);
    auto rows = resultTable(1, 3);
    EXPECT_TRUE(row(rows, 3, "t").lacksTime);
    EXPECT_EQ(row(rows, 3, "t").reason, "动作时间没有结果");
    EXPECT_FALSE(row(rows, 3, "Idz").lacksTime || row(rows, 2, "t").lacksTime);
    ASSERT_TRUE(exec("UPDATE RLY_RLYOBJ_TEM SET NDz31=0.6 WHERE Cdz='t'"));  // typed by hand
    EXPECT_FALSE(row(resultTable(1, 3), 3, "t").lacksTime);
}

TEST_F(Results, APartWithoutASettingTellsTheReasonsOfItsRun) {
    gave(4, 3401, "Idz", 0, 0);
    gave(4, 3401, "t", 0, 0);
    const QString told = "line 1: I1 has no value; mode 31 has no candidate";
    const auto rows = resultTable(1, 3,
                                  {{1, 4, 3401, told + " (I1: the part of that relay is not set yet)"},
                                   {1, 4, 3402, "the engine is tired"},
                                   {7, 3, 3301, told}});
    EXPECT_THAT(row(rows, 4, "Idz").reason.toStdString(),
                HasSubstr("与之配合的段还没有定值；其他原因（the engine is tired）"));
    EXPECT_EQ(row(rows, 3, "t").reason, "没有适用的整定原则");
    EXPECT_EQ(RulesWithoutResult::reasonText(told).contains("mode"), false);
}

TEST_F(Results, ASensitivityNeedsAComputedParameter) {
    ASSERT_TRUE(
        exec("INSERT INTO RLY_RKLMTEM_TEM (RNo,PNo,Cdz,RFault1,RFault2,Flg,Valsense) VALUES"
             " (1,1,'Idz',1,300,11,0.5),(1,2,'Idz',300,1,11,1.5),(1,3,'Idz',300,1,21,0.5)"));
    const auto rows = resultTable(1, 3);
    EXPECT_TRUE(row(rows, 1, "Idz").sensitivityOpen);
    EXPECT_FALSE(row(rows, 1, "Idz").sensitivity);
    EXPECT_EQ(row(rows, 2, "Idz").sensitivity, 1.5);
    EXPECT_TRUE(row(rows, 3, "Idz").sensitivityOpen);
    EXPECT_FALSE(row(rows, 4, "Idz").sensitivityOpen);
}
