#include <QCoreApplication>
#include <QElapsedTimer>

#include "programs/engine/CAutoCalFlow.h"
#include "programs/engine/RunPreparation.h"
#include "tests/engine/EngineFixture.h"

namespace {

using Outcome = EngineProcess::Outcome;

class Flows : public EngineFixture {
  protected:
    void program(const QString& name, const QByteArray& script) const {
        put(name, "#!/bin/sh\n" + script + "\n");
        QFile(workDir() + name).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    template <class Done>
    static bool until(Done done, int milliseconds = 10000) {
        QElapsedTimer clock;
        clock.start();
        while (!done() && clock.elapsed() < milliseconds)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 100);
        return done();
    }
};

class Process : public Flows {
  protected:
    Outcome ended() {
        int exits = 0;
        const auto link = QObject::connect(&process, &EngineProcess::processExited, [&] { ++exits; });
        until([&] { return exits > 0; });
        QObject::disconnect(link);
        EXPECT_EQ(exits, 1);
        return process.outcome();
    }
    EngineProcess process{"TEST.EXE", 1};
};

TEST_F(Process, RunsInTheWorkingDirectoryWithoutArguments) {
    program("TEST.EXE", "pwd > where; echo $# > count; head -c 1000000 /dev/zero");
    ASSERT_TRUE(process.start(workDir(), workDir()));
    EXPECT_EQ(ended(), Outcome::Done);
    EXPECT_EQ(file("where").trimmed() + "/", workDir().toUtf8());
    EXPECT_EQ(file("count"), "0\n");
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(Process, ThatCannotStartIsToldAndStillRaisesTheSignal) {
    EXPECT_FALSE(process.start(workDir(), workDir()));
    EXPECT_EQ(ended(), Outcome::NotStarted);
    EXPECT_EQ(errors, QStringList{"执行TEST.EXE失败"});
    program("TEST.EXE", "exit 0");
    EXPECT_TRUE(process.start(workDir(), workDir()));
    EXPECT_EQ(ended(), Outcome::Done);
}

TEST_F(Process, ShowsWhatItSaysOnStandardErrorAndItsStatus) {
    program("TEST.EXE", "printf 'RELAY.R6:3: wrong\\n\\nRELAY.R1:1: \\274\\327' >&2; exit 3");
    process.start(workDir(), workDir());
    EXPECT_EQ(ended(), Outcome::Failed);
    EXPECT_EQ(errors, (QStringList{"RELAY.R6:3: wrong", "RELAY.R1:1: 甲", "TEST.EXE出错，返回码3，没有计算结果"}));
}

TEST_F(Process, ThatCrashesOrHangsIsOverAndCanBeStartedAgain) {
    program("TEST.EXE", "kill -SEGV $$");
    process.start(workDir(), workDir());
    EXPECT_EQ(ended(), Outcome::Crashed);
    program("TEST.EXE", "exec sleep 60");
    process.start(workDir(), workDir());
    EXPECT_FALSE(process.start(workDir(), workDir()));  // one at a time
    EXPECT_TRUE(process.isRunning());
    process.abort();
    EXPECT_EQ(ended(), Outcome::Aborted);
    process.abort();
    program("TEST.EXE", "exit 0");
    process.start(workDir(), workDir());
    EXPECT_EQ(ended(), Outcome::Done);
}

/// Two line relays, part 1 with rules 1101 and 1102 (type 1) and 1103 (type 2), part 2 with rule 1201 (type 1).
class Runs : public Flows {
  protected:
    void SetUp() override {
        Flows::SetUp();
        relayType(1, 6, 2, "Zdz", 1, 2);
        relayType(2, 6, 2, "Zdz", 1, 2);
        for (const auto& [ruleNo, type] : std::map<int, int>{{1101, 1}, {1102, 1}, {1103, 2}, {1201, 1}}) {
            ruleHead(ruleNo, 1, type);
            rule("INSERT INTO VAROUT VALUES (?,1,'Zdz'),(?,2,'t')", {ruleNo, ruleNo});
            rule("INSERT INTO RTYPERULE VALUES (1,?,?)", {ruleNo / 100 % 10, ruleNo});
        }
        relay(11, 1, 6, "L1", "A", "B", 1);
        relay(12, 1, 6, "L2", "B", "C", 1);
        working(11, 1, "Zdz", 0, "L1", "A", "B", 1);
        working(12, 1, "Zdz", 0, "L2", "B", "C", 1);
        run("INSERT INTO RLY_CASE_RLY (Case_No,Case_Name,RTypeNo,RTypeCode) VALUES (7,'c',1,'')");
        for (int rno : {11, 12})
            for (int ruleNo : {1101, 1102, 1103, 1201})
                run("INSERT INTO RLY_CASEINF (Case_No,TurnNo,RNo,PNo,PValid,RuleNo,RValid) VALUES (7,?,?,?,1,?,1)",
                    {rno, rno, ruleNo / 100 % 10, ruleNo});
        QObject::connect(&flow.caseCal().engineProcess(), &EngineProcess::processExited, [this] { ++exits; });
    }
    bool step() {
        const int before = exits;
        return flow.Step() && until([&] { return exits > before; }) &&
               flow.caseCal().engineProcess().outcome() == Outcome::Done;
    }
    QString ruleFaults() const { return QString::fromLatin1(file("RELAY.R6")).simplified().remove(' '); }

    CAutoCalFlow flow{1, "距离保护", workDir(), 7, workDir()};
    int exits = 0;
};

TEST_F(Runs, ARunIsAsManyEngineRunsAsRelayPartsAndTypes) {
    program("HALDERN.EXE",
            "echo '5, 1,' > RELAY.RP3; echo '0, 1,' >> RELAY.RP3; cp RELAY.R7 seen7 2>/dev/null || "
            "rm -f seen7; : > RELAY.RP1; : > RELAY.RP2; : > RELAY.RP5");
    ASSERT_TRUE(prepareRun(2, flow));
    EXPECT_TRUE(flow.hasRow);
    ASSERT_TRUE(step());  // rules 1101 and 1102 of relay 11
    EXPECT_TRUE(ruleFaults().contains("1,2,1,1101,0,0,")) << ruleFaults().toStdString();
    EXPECT_TRUE(ruleFaults().contains("1102,0,0,"));
    EXPECT_EQ(file("seen7"), "absent");
    EXPECT_TRUE(flow.standsOnSamePart());
    ASSERT_TRUE(step());  // rule 1103: another type, so no earlier coefficients
    EXPECT_TRUE(ruleFaults().contains("1,1,1,1103,0,0,"));
    EXPECT_EQ(file("seen7"), "absent");
    EXPECT_FALSE(flow.standsOnSamePart());
    EXPECT_EQ(flow.currentRNo(), 11);
    EXPECT_EQ(flow.rowCursor.row().rno, 12);
    ASSERT_TRUE(step() && step());
    ASSERT_TRUE(step());  // part 2 of relay 11
    EXPECT_EQ(flow.currentPNo(), 2);
    EXPECT_TRUE(flow.hasRow);
    ASSERT_TRUE(step());  // part 2 of relay 12, of the same type
    EXPECT_EQ(file("seen7"), "5, 1,\r\n");
    EXPECT_FALSE(flow.hasRow);
    EXPECT_FALSE(flow.Step());
    EXPECT_EQ(exits, 6);
}

TEST_F(Runs, WhatIsKeptFromStepToStepIsWhatTheTablesSay) {
    program("HALDERN.EXE", "echo '1, 11, 1, 1101, 1234567.8, 0.5, ' > RELAY.RP1; : > RELAY.RP2; : > RELAY.RP5");
    for (int ruleNo : {1101, 1102, 1103, 1201}) {
        rule("INSERT INTO VARIN (RuleNo,ModeNo,VarNo,VType,VPos) VALUES (?,21,1,451,2)", {ruleNo});
        rule("INSERT INTO RMU VALUES (?,1,1)", {ruleNo});
    }
    rule("INSERT INTO FZPRM VALUES (1,1,1,100,1,0.1,0.000001),(2,1,1,99,1,0,0)");
    templateFault(1, 1, 100, 3);
    run("INSERT INTO RLY_CELECHK (Case_No,RNo,ID_Name,I_Name,J_Name) VALUES (7,11,'L3','A','B')");
    run("INSERT INTO RLY_CKFCHK (Case_No,ZID_Name,ZI_Name,ZJ_Name,Side,ID_Name,I_Name,J_Name) VALUES "
        "(7,'L2','B','C',1,'T1','B','D')");
    run("INSERT INTO RLY_RUDSYS (Case_No,SysName,SysNo,SFlg) VALUES (7,'大',4,1)");
    ASSERT_TRUE(prepareRun(2, flow));
    errors.clear();
    for (int k = 0; k < 4; ++k) {
        const int ruleNo = flow.rowCursor.row().ruleNo;
        ASSERT_TRUE(step());
        const QByteArray relays = file("RELAY.R1"), rules = file("RELAY.R6"), branches = file("RELAY.R2");
        CRelayFaultCal fresh(1, "距离保护", workDir(), 7);
        fresh.setFirstWrite(0);
        ASSERT_TRUE(fresh.WriteRelayFile(flow.currentPRTypeNo(), flow.currentRNo()));
        ASSERT_TRUE(fresh.WriteFaultFiles(flow.currentRNo(), flow.currentPNo(), flow.currentPRTypeNo(), 2, ruleNo));
        EXPECT_EQ(file("RELAY.R1"), relays) << k;
        EXPECT_EQ(file("RELAY.R6"), rules) << k;
        EXPECT_EQ(file("RELAY.R2"), branches) << k;
        EXPECT_TRUE(k != 2 || relays.contains("    1,    1234570,    "));  // the other relay's new value
        flow.ReadResults(1);
        flow.StoreCurrentSettings(flow.currentRNo(), flow.currentPNo());
    }
    EXPECT_GT(file("RELAY.R2").count("\r\n"), 10);
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(Runs, ARuleIsComputedAgainWithoutItsEarlierRows) {
    program("HALDERN.EXE", ": > RELAY.RP1");
    rule("INSERT INTO RMU VALUES (1102,1,1)");
    templateFault(1, 1, 100, 1);
    ASSERT_TRUE(prepareRun(1, flow));
    ASSERT_TRUE(step());
    run("INSERT INTO RLY_FAULTINF (Case_No,NCal,RNo,PNo,RuleNo) VALUES (7,1,11,1,1102),(7,1,11,1,1101)");
    const int at = flow.rowCursor.at();
    const RowCursor again = RowCursor::ofRule(7, 11, 1, 1102);
    ASSERT_EQ(again.size(), 2);
    const int before = exits;
    ASSERT_TRUE(flow.RecalculateRule(&again) && until([&] { return exits > before; }));
    EXPECT_EQ(flow.rowCursor.at(), at);
    EXPECT_TRUE(ruleFaults().contains("1,1,1,1102,0,0,1,1,1,2,3,100,"));
    EXPECT_EQ(rows("SELECT MType FROM RLY_CRUDRM WHERE RuleNo=1102"), QStringList{"1"});
    EXPECT_EQ(rows("SELECT RuleNo FROM RLY_FAULTINF"), QStringList{"1101"});
}

TEST_F(Runs, NothingToCalculateIsSaidAndEarlierRowsOfTheCaseAreGone) {
    run("INSERT INTO RLY_KFINF (Case_No,FzNo) VALUES (7,1),(8,1)");
    run("INSERT INTO RLY_CFZXS (Case_No,FzNo) VALUES (7,1),(8,1)");
    run("UPDATE RLY_CASEINF SET PValid=0");
    EXPECT_FALSE(prepareRun(1, flow));
    EXPECT_FALSE(errors.isEmpty());
    EXPECT_EQ(rows("SELECT Case_No FROM RLY_KFINF") + rows("SELECT Case_No FROM RLY_CFZXS"), (QStringList{"8", "8"}));
    run("DELETE FROM RLY_RLYOBJ_TEM");
    EXPECT_FALSE(prepareRun(2, flow));
    EXPECT_EQ(errors.last(), "作业中没有选择保护，不能进行计算");
}

TEST_F(Runs, ASensitivityRunCoversAllRelaysInOneAndLeavesTheRealCaseAlone) {
    program("HALDERN.EXE", "echo '1, 12, 1, 41, 6.5, ' > RELAY.RP1; : > RELAY.RP2; : > RELAY.RP3; : > RELAY.RP5");
    ruleHead(41, 0, 0);
    rule("INSERT INTO VAROUT VALUES (41,1,'Z')");
    rule("INSERT INTO USEFKLM VALUES (1,1,'Zdz',41,41,2)");
    rule("INSERT INTO RMU VALUES (41,1,1)");
    templateFault(1, 1, 100, 3);
    settingRow(7, 11, 1, 1101, "Zdz", 1, "L1", "A", "B", 1);
    run("INSERT INTO RLY_CFZXS (Case_No,FzNo) VALUES (7,1)");
    CKlmCalFlow sensitivity(1, "距离保护", workDir(), workDir());
    QObject::connect(&sensitivity.caseCal().engineProcess(), &EngineProcess::processExited, [this] { ++exits; });
    ASSERT_TRUE(prepareSensitivityRun(7, sensitivity));
    ASSERT_TRUE(sensitivity.Run() && until([&] { return exits > 0; }));
    EXPECT_EQ(file("RELAY.R6"),
              "1,   11,   1,   \r\n   1,   1,   1,\r\n    41,   0,   0,   \r\n  \r\n"
              "    1,   1,   1,   2,   3,   100,   3,   0,   0.25,   \r\n0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n"
              "1,   12,   1,   \r\n   1,   1,   1,\r\n    41,   0,   0,   \r\n  \r\n"
              "    1,   1,   2,   3,   4,   100,   3,   0,   0.25,   \r\n0, 0, 0, 0, 0, 0, 0, 0, 0,\r\n");
    sensitivity.ReadResults(3);
    EXPECT_EQ(rows("SELECT Case_No,RNo,Rdz FROM RLY_RDZTEM ORDER BY ID"),
              (QStringList{"7 11 0", "0 11 0", "0 12 6.5"}));
    EXPECT_EQ(rows("SELECT Case_No FROM RLY_CFZXS"), QStringList{"7"});
}

TEST_F(Runs, TheConverterIsGivenTheRealTimeDirectoryAndACleanFolder) {
    program("VASKEL.EXE", "cp RTDB.INC given; ls > listing");
    put("LF.L3", "old");
    put("ST.S0", "kept");
    int ended = 0;
    QObject::connect(&flow.netData().process(), &EngineProcess::processExited, [&] { ++ended; });
    ASSERT_TRUE(flow.netData().RunConversion(workDir(), workDir(), "甲库", "../甲库"));
    ASSERT_TRUE(until([&] { return ended > 0; }));
    EXPECT_EQ(file("given"), sql::toGbk("\"甲库\",  \"../甲库\",  \r\n"));
    EXPECT_FALSE(file("listing").contains("LF.L3"));
    EXPECT_TRUE(file("listing").contains("ST.S0"));
}

}  // namespace
