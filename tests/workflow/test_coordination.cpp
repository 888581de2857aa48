#include "programs/netview/VirtualRelays.h"
#include "programs/workflow/CaseStore.h"
#include "programs/workflow/CoordinationSearch.h"
#include "tests/workflow/WorkflowFixture.h"

using namespace CoordinationSearch;

/// Zero-sequence relays: 1 on L1 at A, 2 on L2 at B, 3 on L3 at B, 4 on L5 at C, 5 on L1 at B.
class Coordination : public WorkflowFixture {
  protected:
    void SetUp() override {
        WorkflowFixture::SetUp();
        ASSERT_TRUE(SearchDumRelay());
        ASSERT_TRUE(
            exec("INSERT INTO RLY_RRBRANCH_TEM (ID_Name,ID_No,I_Name,J_Name,I_No,J_No,Flg) VALUES"
                 "('L1',1,'A','B',2,3,1),(?,2,'A','B',2,3,1),('L3',3,'B','T1',3,4,1),('L4',4,'T1','T2',4,5,1),"
                 "('L5',5,'T2','C',5,6,1),('L6',6,'D','T1',7,4,1),('G',0,'B','B',3,3,6)",
                 {oddName}));
        BranchTable::invalidate();
        ASSERT_EQ(RelayStore::install({request("L1", 1, 3), request(oddName, 2, 3), request("L3", 1, 3),
                                       request("L5", 2, 3), request("L1", 2, 3)}),
                  5);
        CaseForm form;
        form.name = "零序";
        form.source = "基础方案";
        cases.insert(3, 0, -1, "基础方案");
        ASSERT_TRUE(cases.addRelays(form, {1, 2, 3, 4, 5}) && cases.SaveRecord(1, form));
    }
    QStringList pairs() { return rows("SELECT DISTINCT RNo,CoRNo FROM RLY_CASERLYCOP ORDER BY RNo,CoRNo"); }
    CaseStore cases;
};

TEST_F(Coordination, LeadsOverTNodesToTheRelaysThatLookAway) {
    ASSERT_TRUE(SearchRlyCop(1));
    EXPECT_EQ(pairs(), (QStringList{"1,2", "1,3", "2,1", "4,2", "4,5"}));
    EXPECT_EQ(rows("SELECT PartNo,CoPartNo FROM RLY_CASERLYCOP WHERE RNo=1 AND CoRNo=3 ORDER BY 1,2"),
              (QStringList{"2,1", "2,2", "3,2", "3,3", "4,3", "4,4"}));
    const QString all = "SELECT * FROM RLY_CASERLYCOP ORDER BY RNo,PartNo,CoRNo,CoPartNo";
    const QStringList once = rows(all);
    ASSERT_TRUE(SearchRlyCop(1));
    EXPECT_EQ(rows(all), once);
}

TEST_F(Coordination, EndsAtATNodeWithoutAVirtualRelayInUse) {
    ASSERT_TRUE(exec("UPDATE RLY_DUMRLY SET Valid=0 WHERE ID_Name IN ('L3','L4','L6')"));
    BranchTable::invalidate();
    ASSERT_TRUE(SearchRlyCop(1));
    EXPECT_EQ(pairs(), (QStringList{"1,2", "1,3", "2,1"}));
}

TEST_F(Coordination, OnlyPartsAndRulesInForceCount) {
    ASSERT_TRUE(exec("UPDATE RLY_CASEINF SET PValid=0 WHERE PNo!=2"));
    ASSERT_TRUE(exec("UPDATE RLY_CASEINF SET RValid=0 WHERE RuleNo=3202"));
    ASSERT_TRUE(SearchRlyCop(1));
    EXPECT_EQ(rows("SELECT DISTINCT PartNo,CoPartNo FROM RLY_CASERLYCOP"), QStringList{"2,1"});
    EXPECT_EQ(count("RLY_CASERLYCOP"), 5);
}

TEST_F(Coordination, TheFirstSettingThatARuleReadsDecidesAndOthersThanBranchRelaysHaveNone) {
    sql::Query rules(tables::ruleConnection);
    ASSERT_TRUE(rules.exec("UPDATE VARIN SET VType=413 WHERE RuleNo=3201 AND VarNo=1"));  // its second one reads 402
    ASSERT_TRUE(rules.exec("UPDATE VARIN SET VType=IF(VarNo=1,400,421) WHERE RuleNo=3202 AND VType>400 AND VType<420"));
    ASSERT_TRUE(exec("UPDATE RLY_RUD SET RType=0,ID_Name='B',I_Name='B',J_Name='B' WHERE RNo=5"));
    ASSERT_TRUE(SearchRlyCop(1));
    EXPECT_EQ(rows("SELECT DISTINCT CoPartNo FROM RLY_CASERLYCOP WHERE PartNo=2"), QStringList{"4"});
    EXPECT_EQ(count("RLY_CASERLYCOP", "RNo=5 OR CoRNo=5"), 0);
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(Coordination, ABranchThatIsNotThereOnceEndsTheSearch) {
    for (const char* change : {"INSERT INTO RLY_RRBRANCH_TEM (ID_Name,ID_No,I_Name,J_Name,I_No,J_No,Flg) VALUES"
                               "('L5',9,'T2','C',50,60,1)",
                               "DELETE FROM RLY_RRBRANCH_TEM WHERE ID_Name='L5'"}) {
        errors.clear();
        ASSERT_TRUE(exec(change));
        BranchTable::invalidate();
        EXPECT_FALSE(SearchRlyCop(1));
        EXPECT_EQ(errors, QStringList{"支路数据抽取错误"});
        EXPECT_EQ(pairs(), (QStringList{"1,2", "1,3", "2,1"}));
    }
}

TEST_F(Coordination, DependentsReadExactlyTheChangedSettingAndLieBehindTheCursor) {
    const auto texts = [](const QVector<Dependent>& found) {
        QStringList all;
        for (const Dependent& one : found) all << QString("%1,%2,%3").arg(one.RNo).arg(one.PNo).arg(one.RuleNo);
        return all;
    };
    ASSERT_TRUE(SearchRlyCop(1));
    ASSERT_TRUE(exec("INSERT INTO RLY_RDZTEM (Case_No,ID,RNo,PNo,RuleNo) VALUES (1,10,1,2,3201),(1,20,4,2,3201)"));
    EXPECT_EQ(texts(dependents(1, 2, 1, 1)), (QStringList{"1,2,3201", "4,2,3201"}));
    EXPECT_EQ(texts(dependents(1, 2, 1, 1, 9, 15)), QStringList{"1,2,3201"});
    EXPECT_TRUE(dependents(1, 2, 1, 1, 1, 15).isEmpty());
    EXPECT_TRUE(dependents(1, 2, 1, 3).isEmpty());
    EXPECT_TRUE(dependents(2, 2, 1, 1).isEmpty());
}

TEST_F(Coordination, TheVariableTellsThePart) {
    EXPECT_EQ(coordinatedPart(401), 1);
    EXPECT_EQ(coordinatedPart(404), 1);
    EXPECT_EQ(coordinatedPart(405), 2);
    EXPECT_EQ(coordinatedPart(416), 4);
    EXPECT_EQ(coordinatedPart(420), 5);
}
