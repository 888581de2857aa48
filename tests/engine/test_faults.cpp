#include "programs/engine/CRelayFaultCal.h"
#include "tests/engine/EngineFixture.h"

namespace {

const char kRows[] = "SELECT RMode,MType,ID_No,I_No,J_No,K_Loc,FType,R,X,Flg FROM RLY_CRUDRM WHERE Case_No=7";
const char kMain[] = "SELECT FzNo,ID_No,I_No,J_No,Side,Flg FROM RLY_CFZXS WHERE Case_No=7 ORDER BY FzNo";
const char kMainFaults[] = "SELECT FzNo,MType,ID_No,FINo,FJNo,K_Loc,FType,R,Flg FROM RLY_CFZXSRM WHERE Case_No=7";

/// Expansion for rule 1101 of part 1 of relay 11 on L1 at A; mode 1 has template 1.
class Faults : public EngineFixture {
  protected:
    void SetUp() override {
        EngineFixture::SetUp();
        ruleHead(1101, 1, 0);
        rule("INSERT INTO RMU VALUES (1101,1,1),(1101,2,0)");
    }
    SettingRow row() const { return {11, "L1", "A", "B", 1, 1, "Zdz", 1101, 1}; }
    void expand(const SettingRow& row) {
        RowCursor cursor({row});
        cursor.first();
        CRelayFaultCal(1, "距离保护", workDir(), 7).ExpandFaults(&cursor);
    }
    void userFault(int mode, int mType, const char* id, int flg) {
        run("INSERT INTO RLY_RUDRM (RNo,PNo,RuleNo,RMode,MType,ID_Name,I_Name,J_Name,K_Loc,FType,R,X,Valid,Flg) VALUES "
            "(11,1,1101,?,?,?,'B','C',50,2,0,0,1,?)",
            {mode, mType, id, flg});
    }
};

TEST_F(Faults, OnTheProtectedLineALoopEndsTheSectionAndAVirtualRelayExtendsIt) {
    templateFault(1, 1, 80, 3);
    expand(row());
    EXPECT_EQ(rows(kRows), QStringList{"1 1 1 2 3 80 3 0 0.25 0"});
    run("DELETE FROM RLY_CRUDRM");
    run("DELETE FROM RLY_RRBRANCH_TEM WHERE ID_Name='T1'");
    virtualRelay("L1", "A", "B", 2);
    expand(row());
    // The walk goes on over B along L2 and L3, whose ends take the fault, counted from B.
    EXPECT_EQ(rows(kRows), (QStringList{"1 1 3 2 3 20 3 0 0.25 0", "1 2 2 3 4 80 3 0 0.25 0"}));
}

TEST_F(Faults, ThereIsNoNearEndBehindAVirtualRelay) {
    templateFault(1, 1, 0, 6);
    run("DELETE FROM RLY_RRBRANCH_TEM WHERE ID_Name='T1'");
    virtualRelay("L1", "A", "B", 2);
    expand(row());
    EXPECT_EQ(rows(kRows), QStringList{"1 1 1 2 3 0 6 0 0.25 0"});  // at A, not again at the head of L2 or L3
}

TEST_F(Faults, AnAdjacentLineThatReturnsIsOpenedBehindTheFault) {
    templateFault(1, 2, 100, 1);
    expand(row());
    EXPECT_EQ(rows(kRows), (QStringList{"1 1 3 2 3 1 1 0 0.25 0", "1 1 3 2 3 1 5 99999.9999 99999.9999 0",
                                        "1 2 2 3 4 100 1 0 0.25 0"}));
}

TEST_F(Faults, AdjacentTransformersNeverHaveAFaultAtTheStarPoint) {
    branch("W2", 7, "S", 6, "B", 3, 3);
    templateFault(1, 3, 100, 1);
    templateFault(1, 3, 0, 2);
    expand(row());
    // W2 is entered from B; at 100 the star point is meant, so only T1 and W1 beyond the star remain.
    EXPECT_EQ(rows(kRows), (QStringList{"1 1 5 6 4 100 1 0 0.25 0", "1 2 4 3 5 100 1 0 0.25 0",
                                        "1 3 7 6 3 100 2 0 0.25 0", "1 4 4 3 5 0 2 0 0.25 0"}));
}

TEST_F(Faults, ARelayAtABusSeesTheLinesOfItsBus) {
    templateFault(1, 2, 100, 1);
    expand({11, "B", "B", "B", 1, 1, "Idz", 1101, 1});
    EXPECT_EQ(rows(kRows), (QStringList{"1 1 2 3 4 100 1 0 0.25 0", "1 2 1 2 3 0 1 0 0.25 0"}));
    run("DELETE FROM RLY_CRUDRM");
    rule("UPDATE RPRM SET LType=1,K_Loc=0");
    expand({11, "B", "B", "B", 1, 1, "Idz", 1101, 1});
    EXPECT_EQ(rows(kRows), QStringList{"1 1 1 3 2 0 1 0 0.25 0"});  // its own bus is an end of the first branch there
    run("DELETE FROM RLY_CRUDRM");
    expand({11, "X", "X", "X", 1, 1, "Idz", 1101, 1});
    EXPECT_EQ(rows(kRows), QStringList());
}

TEST_F(Faults, UserFaultsReplaceTheTemplateUnlessTheyAllowIt) {
    templateFault(1, 1, 100, 1);
    userFault(1, 4, "L2", 0);
    userFault(2, 1, "L2", 0);  // its mode has no template: no row
    expand(row());
    EXPECT_EQ(rows(kRows), QStringList{"1 4 2 3 4 50 2 0 0 1"});
    run("DELETE FROM RLY_CRUDRM");
    run("UPDATE RLY_RUDRM SET Flg=1");
    expand(row());
    EXPECT_EQ(rows(kRows), (QStringList{"1 4 2 3 4 50 2 0 0 1", "1 5 1 2 3 100 1 0 0.25 0"}));
    run("UPDATE RLY_RUDRM SET MType=19");
    run("DELETE FROM RLY_CRUDRM");
    expand(row());  // no number is left for the template
    EXPECT_EQ(rows(kRows).size(), 1);
    EXPECT_EQ(errors, QStringList{"故障方式编号越限（>19），计算可能错误，请检查自定义的故障方式号"});
}

TEST_F(Faults, NumbersStopAtNineteenAlsoWithinOneTemplateRow) {
    for (int k = 0; k < 12; ++k) branch("N" + QString::number(k), 30 + k, "B", 3, "E" + QString::number(k), 40 + k, 1);
    templateFault(1, 2, 100, 1);
    templateFault(1, 2, 0, 2);
    expand(row());
    EXPECT_EQ(rows("SELECT MAX(MType) FROM RLY_CRUDRM"), QStringList{"19"});
    EXPECT_EQ(errors.size(), 1);
}

TEST_F(Faults, AUserFaultOutsideTheNetworkEndsTheExpansionOfTheRow) {
    templateFault(1, 1, 100, 1);
    rule("INSERT INTO VARIN (RuleNo,ModeNo,VarNo,VType,VPos) VALUES (1101,21,1,451,2)");
    rule("INSERT INTO FZPRM VALUES (1,1,1,100,1,0,0),(2,1,1,99,1,0,0)");
    userFault(1, 1, "L2", 1);
    userFault(1, 2, "没有", 1);
    expand(row());
    EXPECT_EQ(errors, QStringList{"不能采用已定义的故障，支路没有不存在、无效或不在当前方案中"});
    EXPECT_EQ(rows(kRows), QStringList{"1 1 2 3 4 50 2 0 0 1"});
    EXPECT_EQ(rows(kMain), QStringList());
}

TEST_F(Faults, ASensitivityRuleTakesTheFaultsOfTheLocation) {
    ruleHead(41, 0, 0);
    rule("INSERT INTO RMU VALUES (41,1,1)");
    run("INSERT INTO RLY_KLMPFAULT (ID_Name,I_Name,J_Name,Side,RuleNo,RMode,MType,FID_Name,FIName,FJName,K_Loc,FType,R,"
        "X,Valid,Flg) VALUES ('L1','A','B',1,41,1,2,'T1','B','D',100,3,0.5,0,1,0),"
        "('L1','A','B',2,41,1,3,'T1','B','D',100,3,0,0,1,0)");
    SettingRow sensitivity = row();
    sensitivity.ruleNo = 41;
    expand(sensitivity);
    EXPECT_EQ(rows(kRows), QStringList{"1 2 4 3 5 100 3 0.5 0 1"});
}

TEST_F(Faults, OutagesOpenAndGroundALineAndOpenATransformer) {
    templateFault(1, 9, 100, 1);
    run("INSERT INTO RLY_CELECHK (Case_No,RNo,ID_Name,I_Name,J_Name) VALUES (7,11,'L2','B','C'),(7,11,'XX','B','C'),"
        "(7,11,'T1','B','D')");
    expand(row());
    EXPECT_EQ(errors, (QStringList{"模板中有错误的故障位置", "检修元件XX不存在、无效或不在基础方案中"}));
    EXPECT_EQ(rows(kRows),
              (QStringList{"1 21 2 3 4 1 5 99999.9999 99999.9999 0", "1 21 2 3 4 99 5 99999.9999 99999.9999 0",
                           "1 21 2 3 4 1 1 0 0 0", "1 21 2 3 4 99 1 0 0 0", "1 22 4 3 5 0 5 99999.9999 99999.9999 0",
                           "1 22 4 3 5 100 5 99999.9999 99999.9999 0"}));
    errors.clear();
    run("UPDATE RLY_CRUDRM SET MType=38 WHERE MType=22");
    expand(row());  // 39 and the rows of an outage would pass 40
    EXPECT_EQ(rows(kRows).size(), 6);
    EXPECT_EQ(errors.takeLast(), "检修方式编号越限（>40），计算可能错误，请检查自定义的故障方式号");
}

class MainBranches : public Faults {
  protected:
    void SetUp() override {
        Faults::SetUp();
        rule("INSERT INTO VARIN (RuleNo,ModeNo,VarNo,VType,VPos) VALUES (1101,21,1,451,2)");
        rule("INSERT INTO FZPRM VALUES (1,1,1,100,1,0,0),(2,1,1,99,1,0,0)");
    }
};

TEST_F(MainBranches, EachBranchBehindTheFarEndIsOneAndTheReturningOneIsOpened) {
    expand(row());
    EXPECT_EQ(rows(kMain), (QStringList{"1 2 3 4 1 0", "2 3 2 3 2 0", "3 4 3 5 1 0"}));
    EXPECT_EQ(rows(kMainFaults), (QStringList{"1 1 2 3 4 100 1 0 0", "2 1 3 2 3 1 1 0 0", "2 1 3 2 3 1 5 99999.9999 0",
                                              "3 1 4 3 5 100 1 0 0"}));
    expand(row());  // nothing is missing any more
    EXPECT_EQ(rows(kMain).size(), 3);
    EXPECT_EQ(rows(kMainFaults).size(), 4);
}

TEST_F(MainBranches, AMissingFaultGetsANumberBehindThoseOfTheTemplatesRowsBeforeIt) {
    rule("INSERT INTO FZPRM VALUES (1,2,1,70,1,0,0)");
    expand(row());
    run("DELETE FROM RLY_CFZXSRM WHERE FzNo=1 AND K_Loc=70");
    expand(row());
    EXPECT_EQ(rows("SELECT MType,K_Loc FROM RLY_CFZXSRM WHERE FzNo=1"), (QStringList{"1 100", "3 70"}));
}

TEST_F(MainBranches, LeadThroughAStarPointWithoutTheWindingBeforeIt) {
    run("DELETE FROM RLY_RRBRANCH_TEM WHERE ID_Name IN ('L3','T1')");
    branch("W2", 7, "S", 6, "B", 3, 3);
    branch("W3", 8, "S", 6, "E", 9, 3);
    run("DELETE FROM RLY_RRBRANCH_TEM WHERE ID_Name='L2'");
    BranchTable::invalidate();
    expand(row());
    EXPECT_EQ(rows(kMain), (QStringList{"1 8 6 9 1 0", "2 5 6 4 1 0"}));
}

TEST_F(MainBranches, TheUsersOwnAreExtendedOnlyWhenHeAllowsIt) {
    run("INSERT INTO RLY_FZXS (FzNo,ID_Name,I_Name,J_Name,Side,Valid,Flg) VALUES (4,'L2','B','C',1,1,1),"
        "(9,'T1','B','D',1,1,0),(10,'XX','B','D',1,1,0),(11,'L1','A','B',1,0,1)");
    run("INSERT INTO RLY_FZXSRM (FzNo,MType,ID_Name,FIName,FJName,K_Loc,FType,R,X) VALUES (4,3,'L2','B','C',100,1,0,0),"
        "(9,1,'T9','B','C',100,1,0,0),(11,1,'L1','A','B',100,1,0,0)");
    RowCursor cursor({row()});
    cursor.first();
    CRelayFaultCal cal(1, "距离保护", workDir(), 7);
    ASSERT_TRUE(cal.CopyUserMainBranches());
    EXPECT_EQ(errors, (QStringList{"已定义的主干支路XX不存在、无效或不在当前方案中",
                                   "已定义的主干支路T1中涉及的支路T9不存在、无效或不在当前方案中"}));
    cal.ExpandFaults(&cursor);
    EXPECT_EQ(rows(kMain), (QStringList{"4 2 3 4 1 1", "9 4 3 5 1 2", "10 3 2 3 2 0"}));
    EXPECT_EQ(rows(kMainFaults), (QStringList{"4 3 2 3 4 100 1 0 1", "4 4 2 3 4 100 1 0 0", "10 1 3 2 3 1 1 0 0",
                                              "10 1 3 2 3 1 5 99999.9999 0"}));
}

TEST_F(MainBranches, OutagesOfAMainBranchAreAddedOnceForAllRelays) {
    run("INSERT INTO RLY_CKFCHK (Case_No,ZID_Name,ZI_Name,ZJ_Name,Side,ID_Name,I_Name,J_Name) VALUES "
        "(7,'L2','B','C',1,'T1','B','D'),(7,'L2','B','C',2,'L3','A','B')");
    expand(row());
    SettingRow other = row();
    other.idName = "L3";
    other.rno = 12;
    expand(other);
    EXPECT_EQ(rows("SELECT FzNo,MType,ID_No,K_Loc FROM RLY_CFZXSRM WHERE MType>20"),
              (QStringList{"1 21 4 0", "1 21 4 100"}));
}

TEST_F(MainBranches, WithoutATemplateNoneIsMade) {
    rule("DELETE FROM FZPRM WHERE PatNo=1");
    expand(row());
    EXPECT_EQ(rows(kMain), QStringList{"1 3 2 3 2 0"});
    EXPECT_EQ(errors, QStringList(2, "没有对应的模板，不能自动设置分支系数计算信息"));
}

}  // namespace
