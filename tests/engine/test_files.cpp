#include "programs/engine/CCaseCalFlow.h"
#include "tests/engine/EngineFixture.h"

namespace {

QByteArray gbk(const char* text) { return sql::toGbk(QString::fromUtf8(text)); }

class Files : public EngineFixture {
  protected:
    CRelayInputCal input(int caseNo = 7) { return CRelayInputCal(1, workDir(), caseNo); }
    CRelayFaultCal faults(int caseNo = 7) { return CRelayFaultCal(1, "距离保护", workDir(), caseNo); }
    void lineRelays() {
        relayType(1, 6, 2, "Zdz", 1, 2);
        relayType(1, 6, 2, "t", 2, 4);
        relay(11, 1, 6, "L1", "A", "B", 1);
        relay(12, 1, 6, "L2", "B", "C", 2);
        relay(13, 1, 6, "L9", "A", "C", 1);  // not in the network
        relay(14, 1, 6, "L1", "A", "B", 1);  // at the place of the first
        for (int rno : {11, 12}) {
            const bool first = rno == 11;
            working(rno, 1, "Zdz", rno + 0.5, first ? "L1" : "L2", first ? "A" : "B", first ? "B" : "C", first ? 1 : 2);
            run("INSERT INTO RLY_RDZ (RNo,DzNo,Cdz,NRdz11,NRdz21) VALUES (?,1,'Zdz',123456.789,0.8),(?,2,'t',0,1.5)",
                {rno, rno});
        }
    }
    void addCase(int caseNo, int mlf) {
        run("INSERT INTO RLY_CASE_RLY (Case_No,Case_Name,RTypeNo,RTypeCode,Mlf,NPara,Lgup) VALUES (?,'c',1,'',?,2,3)",
            {caseNo, mlf});
    }
    void mode(int sysNo, int m10, const char* id, const char* i, const char* j, int unit, double r, double x) {
        run("INSERT INTO RLY_RSYSMODEDLS (SysNo,SysName,M10,ID_Name,I_Name,J_Name,UNIT,R,X) VALUES "
            "(?,'m',?,?,?,?,?,?,?)",
            {sysNo, m10, id, i, j, unit, r, x});
    }
};

TEST_F(Files, ControlFileTakesTheCaseOfASensitivityRunFromTheRealOne) {
    relayType(1, 6, 2, "Zdz", 1, 2);
    addCase(7, 1);
    auto cal = input();
    ASSERT_TRUE(cal.WriteControlFile(3));
    EXPECT_EQ(file("RELAY.R0"), "1,   1,   31,   1,   2,   3,   1,   \r\n");
    auto sensitivity = input(0);
    EXPECT_FALSE(sensitivity.WriteControlFile(2));
    EXPECT_EQ(file("RELAY.R0"), "");
    EXPECT_EQ(errors.takeLast(), "没有作业信息，不能形成计算控制信息");
    sensitivity.setKlmCaseNo(7);
    ASSERT_TRUE(sensitivity.WriteControlFile(2));
    EXPECT_EQ(file("RELAY.R0"), "1,   1,   31,   1,   0,   0,   1,   \r\n");
    EXPECT_TRUE(sensitivity.WriteControlFile(4));
    EXPECT_EQ(file("RELAY.R0"), "");
}

TEST_F(Files, ControlFileKnowsLinesAndTransformersAsTheirOwnClass) {
    relayType(1, 0, 1, "Idz", 1, 1);
    addCase(7, 0);
    auto cal = input();
    ASSERT_TRUE(cal.WriteControlFile(1));
    EXPECT_EQ(file("RELAY.R0").left(5), "2,   ");
    CRelayInputCal unknownType(9, workDir(), 7);
    EXPECT_FALSE(unknownType.WriteControlFile(1));
    EXPECT_EQ(errors.takeLast(), "没有当前保护类型的信息，不能形成计算控制信息");
    CRelayInputCal nowhere(1, workDir() + "missing/", 7);
    EXPECT_FALSE(nowhere.WriteControlFile(1));
    EXPECT_EQ(errors.takeLast(), "写RELAY.R0失败");
}

TEST_F(Files, RelayFileListsTheRelayInHandThenThoseOfTheType) {
    lineRelays();
    auto cal = faults();
    ASSERT_TRUE(cal.WriteRelayFile(1, 11));
    const QByteArray own = gbk("1,    11,    ' L1  A侧  距离保护 ',   2,   3,    1,    1,    2,    0,\r\n") +
                           "   \r\n"
                           "      1,    11.5,    0,    0,    0,    \r\n"
                           "      2,    12.5,    0,    0,    0,    \r\n";
    const QByteArray otherHead =
        gbk("1,    12,    ' L2  C侧  距离保护 ',   3,   4,    2,    2,    2,    0,\r\n") + "   \r\n";
    EXPECT_EQ(file("RELAY.R1"), own + otherHead +
                                    "      1,    123456.789,    0,    0,    0,    \r\n"
                                    "      2,    0.8,    1.5,    0,    0,    \r\n");
    EXPECT_EQ(cal.firstWrite(), 0);
    ASSERT_TRUE(cal.WriteRelayFile(1, 11));  // from now on the case's relays have their working values
    EXPECT_EQ(file("RELAY.R1"), own + otherHead +
                                    "      1,    12.5,    0,    0,    0,    \r\n"
                                    "      2,    13.5,    0,    0,    0,    \r\n");
}

TEST_F(Files, RelayFileWithoutOthersKeepsTheFirstWriteAndRefusesARelayOutsideTheNetwork) {
    lineRelays();
    auto cal = faults();
    ASSERT_TRUE(cal.WriteRelayFile(0, 11));
    EXPECT_EQ(cal.firstWrite(), 1);
    EXPECT_FALSE(cal.WriteRelayFile(1, 13));
    EXPECT_EQ(file("RELAY.R1"), "");
    EXPECT_EQ(errors.takeLast(), "要整定的保护不在当前方案或潮流作业对应的网络中,请检查数据");
    EXPECT_FALSE(cal.WriteRelayFile(1, 99));
}

TEST_F(Files, RelayFileCarriesAnyNameAndFindsABusByEitherEnd) {
    const QString hard = " '\\%甲乙丙丁,戊己庚辛壬癸子丑寅";
    branch(hard, 50, "B", 3, "节点E", 9, 1);
    relayType(1, 6, 1, "Zdz", 1, 2);
    relay(21, 1, 6, hard, "B", "节点E", 2);
    relay(22, 2, 0, "节点E", "节点E", "节点E", 1);
    auto cal = faults();
    ASSERT_TRUE(cal.WriteRelayFile(2, 21));
    EXPECT_EQ(
        QString::fromLatin1(file("RELAY.R1")),
        QString::fromLatin1(gbk("1,    21,    '  '\\%甲乙丙丁,戊己庚辛壬癸子丑寅  节点E侧  距离保护 ',   3,   9,    "
                                "50,    2,    1,    0,\r\n   \r\n      1,    0,    0,    0,    0,    \r\n"
                                "1,    22,    ' 节点E  节点E侧  距离保护 ',   9,   9,    0,    1,    0,    0,\r\n"
                                "   \r\n")));
}

TEST_F(Files, RuleFileWritesTheFiveSections) {
    rule("INSERT INTO RULEINF (RuleNo,NumMode,NPar,NRule,NVarin,NOutPut) VALUES (1101,1,3,1,2,1),(5,0,0,0,0,0)");
    rule("INSERT INTO RTYPERULE VALUES (1,1,1101),(1,2,1101)");
    rule(
        "INSERT INTO MODEINF (RuleNo,ModeNo,ItemNo,SelVar1,SelVar2,A,B,Nop,Y,Consel) VALUES "
        "(1101,1,2,'T5','O3',0.8,1,3,6,2),(1101,1,1,'I7','K12',1,0,1,5,0)");
    rule("INSERT INTO VARIN (RuleNo,ModeNo,VarNo,VType,VPos) VALUES (1101,31,2,401,1),(1101,1,1,8,1)");
    rule(
        "INSERT INTO PARAINF (RuleNo,ParNo,C,K,KNo) VALUES (1101,2,'a',4,1),(1101,1,'b',0.000001,2),"
        "(1101,1,'a',1234567.5,1),(1101,2,'b',5.25,2)");
    rule("INSERT INTO RULE (RuleNo,Line_No,X1,X2,A,B,Nop,Y) VALUES (1101,1,'K1','O3',1,0.5,3,'O1')");
    auto cal = input();
    ASSERT_TRUE(cal.WriteRuleFile(1, 1));
    EXPECT_EQ(file("RRULE.DAT"),
              "1101, 1, 2, 3, 2, 1, 1, \r\n"
              "   1, 7, 112, 1, 0, 1, 5, 0, \r\n"
              "   1, 305, 0, 0.8, 1, 3, 6, 2, \r\n"
              "      1, 1, 8, 1, 1, \r\n"
              "      2, 31, 401, 1, 1, \r\n"
              "    1.23457e+06,       1e-06,   \r\n"
              "    4,       5.25,   \r\n"
              "      101, 203, 1, 0.5, 3, 201, \r\n");
    ASSERT_TRUE(cal.WriteRuleFile(1, 2));
    EXPECT_EQ(file("RRULE.DAT"), "5, 0, 0, 0, 0, 0, 0, \r\n\r\n\r\n");
    rule("UPDATE PARAINF SET K=7 WHERE ParNo=2 AND KNo=1");
    ASSERT_TRUE(cal.WriteRuleFile(1, 1));
    EXPECT_TRUE(file("RRULE.DAT").contains("    7,       5.25,   \r\n"));  // a changed parameter goes out at once
    EXPECT_FALSE(cal.WriteRuleFile(3, 1));
    EXPECT_EQ(file("RRULE.DAT"), "");
    EXPECT_EQ(errors.takeLast(), "没有需要的规则，请检查规则库");
}

TEST_F(Files, ModeFilePlacesEachKindOfElementAndConvertsOhms) {
    run("CREATE TABLE S3_0 (ID_Name char(20) BINARY,I_Name char(20) BINARY,J_Name char(20) BINARY,ZCtype int)");
    run("INSERT INTO S3_0 VALUES ('T1','B','D',2)");
    run("CREATE TABLE CDB_NODEBAK (Node_Name char(20) BINARY,Base_kV double)");
    run("INSERT INTO CDB_NODEBAK VALUES ('B',200)");
    run("INSERT INTO RLY_RUDSYS (Case_No,SysName,SysNo,SFlg) VALUES (7,'大',1,1),(7,'小',1,2),(7,'缺',8,2)");
    run("INSERT INTO RLY_FZXSSYS (Case_No,SysName,SysNo) VALUES (7,'大',1),(7,'支',2)");
    run("INSERT INTO RLY_KLMFSYS (Case_No,SysName,SysNo) VALUES (7,'支',2)");
    mode(1, 1, "L1", "A", "B", 0, 9999999.999999, 9999999.999999);
    mode(1, 0, "T1", "B", "D", 0, 0, 0.1);
    mode(1, 0, "W1", "S", "C", 0, 0, 0.2);  // no zero-sequence path
    mode(1, 0, "L7", "A", "A", 0, 0, 0.3);  // a shunt at a bus
    mode(2, 1, "L2", "B", "C", 1, 4, 40);   // ohm at 200 kV
    mode(2, 1, "L2", "C", "B", 0, 0, 1);    // wrong way round: no such branch
    mode(2, 1, "L3", "A", "B", 1, 4, 40);   // no base voltage known
    auto cal = input();
    ASSERT_TRUE(cal.WriteModeFile(1));
    EXPECT_EQ(file("RELAY.R3"),
              "1,  1,  2,  3,  1,  9999999.999999,  9999999.999999,  \r\n"
              "1,  4,  5,  5,  0,  0,  0.1,  \r\n"
              "1,  0,  2,  2,  0,  0,  0.3,  \r\n"
              "2,  2,  3,  4,  1,  0.01,  0.1,  \r\n");
    EXPECT_EQ(errors, (QStringList{"变压器支路W1没有零序通路", "作业中选择的运行方式 缺 没有定义",
                                   "正序支路L2（C  B） 不存在、无效或不在当前方案中",
                                   "支路L3的节点A没有基准电压，不能折算运行方式中的阻抗"}));
    auto sensitivity = input(0);
    sensitivity.setKlmCaseNo(7);
    ASSERT_TRUE(sensitivity.WriteModeFile(2));
    EXPECT_EQ(file("RELAY.R3"), "2,  2,  3,  4,  1,  0.01,  0.1,  \r\n");
}

TEST_F(Files, VirtualRelayOutsideTheNetworkCountsInTheHeadOnly) {
    auto cal = input();
    ASSERT_TRUE(cal.WriteVirtualRelayFile());
    EXPECT_EQ(file("RELAY.R4"), "0,  0,  0,\r\n");
    virtualRelay("L2", "B", "C", 1);
    virtualRelay("L9", "B", "C", 1);
    ASSERT_TRUE(cal.WriteVirtualRelayFile());
    EXPECT_EQ(file("RELAY.R4"), "2,  0,  0,\r\n   3,   4,   2,   1,   \r\n");
}

TEST_F(Files, FaultFileListsRulesFromOneOnUntilAnotherRelayType) {
    for (const auto& [r, sFlg] : std::map<int, int>{{1101, 3}, {1102, 0}, {1103, 2}, {1104, 1}}) ruleHead(r, sFlg, 0);
    for (int r : {1101, 1102, 1103}) settingRow(7, 11, 1, r, "Zdz", 1, "L1", "A", "B", 1);
    settingRow(7, 11, 1, 1104, "Zdz", 2, "L1", "A", "B", 1);
    run("INSERT INTO RLY_RUDSYS (Case_No,SysName,SysNo,SFlg) VALUES (7,'大',4,1),(7,'小',5,2)");
    run("INSERT INTO RLY_CASEINF (Case_No,RNo,PNo,RuleNo,ParNo) VALUES (7,11,1,1101,2)");
    run("INSERT INTO RLY_CRUDRM (Case_No,RNo,PNo,RuleNo,RMode,MType,ID_No,I_No,J_No,K_Loc,FType,R,X) VALUES "
        "(7,11,1,1101,1,21,2,3,4,1,5,99999.9999,99999.9999),(7,11,1,1101,1,1,2,3,4,99,1,0,0.25),"
        "(7,11,1,1101,1,1,2,3,4,99,5,99999.9999,99999.9999),(8,11,1,1101,1,1,2,3,4,99,1,0,0.25)");
    auto cal = faults();
    const QByteArray end = "0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n";
    ASSERT_TRUE(cal.WriteFaultFiles(11, 1, 1, 2, 1101));
    EXPECT_EQ(file("RELAY.R6"),
              "1,   11,   1,   \r\n   1,   3,   1,\r\n"
              "    1101,   2,   2,   \r\n  4,   5,   \r\n"
              "    1,   1,   2,   3,   4,   99,   1,   0,   0.25,   \r\n"
              "    1,   1,   2,   3,   4,   99,   5,   99999.9999,   99999.9999,   \r\n"
              "    1,   21,   2,   3,   4,   1,   5,   99999.9999,   99999.9999,   \r\n" +
                  end + "    1102,   0,   0,   \r\n\r\n" + end + "    1103,   0,   1,   \r\n  5,   \r\n" + end);
    cal.setSingleRule(1);
    ASSERT_TRUE(cal.WriteFaultFiles(11, 1, 1, 2, 1102));
    EXPECT_EQ(file("RELAY.R6"), "1,   11,   1,   \r\n   1,   1,   1,\r\n    1102,   0,   0,   \r\n\r\n" + end);
    cal.setSingleRule(0);
    ASSERT_TRUE(cal.WriteFaultFiles(11, 1, 1, 1, 9999));  // appended, a rule that is not there: no section
    EXPECT_TRUE(file("RELAY.R6").endsWith(end + "1,   11,   1,   \r\n   1,   0,   1,\r\n"));
}

TEST_F(Files, SensitivitySectionsUseTheModesOfTheRealCase) {
    ruleHead(41, 0, 0);
    rule("INSERT INTO PARAINF (RuleNo,ParNo,C,K,KNo) VALUES (41,1,'a',4,1)");
    settingRow(0, 11, 1, 41, "Z", 0, "L1", "A", "B", 1);
    run("INSERT INTO RLY_KLMFSYS (Case_No,SysName,SysNo) VALUES (7,'支',2),(8,'别',3)");
    auto cal = faults(0);
    cal.setKlmCaseNo(7);
    ASSERT_TRUE(cal.WriteFaultFiles(11, 1, 0, 2, 41));
    EXPECT_EQ(file("RELAY.R6"),
              "1,   11,   1,   \r\n   1,   1,   1,\r\n    41,   1,   1,   \r\n  2,   \r\n"
              "0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n");
}

TEST_F(Files, MainBranchFileHoldsTheWholeCase) {
    run("INSERT INTO RLY_CFZXS (Case_No,FzNo,ID_No,I_No,J_No,Side,Flg) VALUES (7,1,2,3,4,1,0),(7,2,4,3,5,1,0),"
        "(8,1,1,2,3,1,0)");
    run("INSERT INTO RLY_CFZXSRM (Case_No,FzNo,MType,ID_No,FINo,FJNo,K_Loc,FType,R,X) VALUES "
        "(7,1,1,2,3,4,100,1,0,0.5)");
    run("INSERT INTO RLY_FZXSSYS (Case_No,ZID_Name,ZI_Name,ZJ_Name,Side,SysName,SysNo) VALUES (7,'L2','B','C',1,'m',3),"
        "(7,'L2','B','C',2,'m',4)");
    auto cal = faults();
    ASSERT_TRUE(cal.WriteFaultFiles(11, 1, 0, 2, 1101));
    EXPECT_EQ(file("RELAY.R2"),
              "1,   3,   4,   2,   1,   1,   \r\n   3,   \r\n"
              "      1,   1,   2,   3,   4,   100,   1,   0,   0.5,   \r\n"
              "0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n"
              "2,   3,   5,   4,   1,   0,   \r\n   \r\n0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n");
}

TEST_F(Files, BranchTableOfAMissingCalculationTableTellsWhichPartFailed) {
    run("CREATE TABLE L2_0 (ID_Name char(20) BINARY,ID_No int,I_Name char(20) BINARY,J_Name char(20) BINARY,Valid int,"
        "NType int,I_Break int,J_Break int,X1 double)");
    run("INSERT INTO L2_0 VALUES ('K1',1,'A','B',1,1,1,1,0.1),('K2',2,'A','B',1,1,1,0,0.1),('C1',3,'B','B',1,3,1,1,-2),"
        "('X1',4,'B','B',1,3,1,1,2),('N',5,'B','B',1,3,1,1,0)");
    CNetDataCal net;
    EXPECT_FALSE(net.BuildBranchTable(-1));
    EXPECT_EQ(errors, QStringList{"转换双绕组变压器数据失败"});
    EXPECT_EQ(rows("SELECT ID_Name,ID_No,I_Name,J_Name,Flg FROM RLY_RRBRANCH_TEM ORDER BY ID"),
              QStringList{"K1 1 A B 1"});
    run("CREATE TABLE L3_0 (ID_Name char(20) BINARY,ID_No int,I_Name char(20) BINARY,J_Name char(20) BINARY,Valid int,"
        "NType int)");
    run("INSERT INTO L3_0 VALUES ('T',6,'A','B',1,1),('W',7,'S','B',1,32),('O',8,'S','B',0,31)");
    run("CREATE TABLE L5_0 (ID_Name char(20) BINARY,Node_Name char(20) BINARY,Valid int)");
    run("INSERT INTO L5_0 VALUES ('G','A',1)");
    EXPECT_TRUE(net.BuildBranchTable(-1));
    EXPECT_EQ(rows("SELECT ID_Name,ID_No,I_Name,J_Name,Flg FROM RLY_RRBRANCH_TEM ORDER BY ID"),
              (QStringList{"K1 1 A B 1", "T 6 A B 2", "W 7 S B 3", "C1 3 B B 4", "X1 4 B B 5", "G 0 A A 6"}));
    EXPECT_NE(BranchTable::current()->find("T", "A", "B"), nullptr);
}

}  // namespace
