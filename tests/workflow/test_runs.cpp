#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include "platform/rtdb/dbDatabase.h"
#include "programs/workflow/RunSession.h"
#include "programs/workflow/RunShadows.h"
#include "tests/workflow/WorkflowFixture.h"

/// A case of zero-sequence relays 1 (L1 at A, ratios 120 and 1100) and 2 (L1 at B), part 1 only, with programs that the
/// tests write as shell scripts.
class Runs : public WorkflowFixture {
  protected:
    void SetUp() override {
        WorkflowFixture::SetUp();
        ASSERT_EQ(RelayStore::install({request("L1", 1, 3, 120, 1100), request("L1", 2, 3)}), 2);
        CaseForm form;
        form.name = "零序";
        form.source = "基础方案";
        form.PartFlg = {1, 0, 0, 0, 0};
        cases.insert(3, 0, -1, "基础方案");
        ASSERT_TRUE(cases.addRelays(form, {1, 2}) && cases.SaveRecord(1, form) && cases.LoadCaseRelays());
        ASSERT_TRUE(exec("UPDATE RLY_CASEINF SET PValid=0 WHERE PNo>1 OR RuleNo!=3101 AND PNo=1"));
        ASSERT_TRUE(realTime.open(folder.filePath("tables.db")));
        ASSERT_TRUE(network.SwitchNetwork(0, -1, "基础方案"));
        places = {"RTDB", "../RTDB", folder.path() + "/", folder.path() + "/"};
        errors.clear();
    }
    void program(const QString& name, const QByteArray& lines) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + lines + "\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    std::unique_ptr<RunSession> session() {
        auto made = std::make_unique<RunSession>(*cases.current(), places);
        EXPECT_TRUE(made->open());
        return made;
    }
    /// Lets events run until the action has led to the signal. \return false after some seconds
    template <class Sender, class Signal, class Action>
    static bool await(Sender& sender, Signal signal, Action action) {
        QEventLoop loop;
        bool came = false;
        QObject::connect(&sender, signal, &loop, [&] {
            came = true;
            loop.quit();
        });
        QTimer::singleShot(0, &loop, action);
        QTimer::singleShot(20000, &loop, &QEventLoop::quit);
        loop.exec();
        return came;
    }
    /// How a run ended: "complete", "broken", "never" or "refused".
    static QString outcome(RunSession& run, RunSession::Run kind, int abortAfter = -1) {
        QString ended = "never";
        const auto keep = QObject::connect(&run, &RunSession::finished,
                                           [&](bool complete) { ended = complete ? "complete" : "broken"; });
        bool started = true;
        if (abortAfter >= 0) QTimer::singleShot(abortAfter, &run, &RunSession::abort);
        await(run, &RunSession::finished, [&] {
            started = run.start(kind);
            if (!started) emit run.finished(false);
        });
        QObject::disconnect(keep);
        return started ? ended : QString("refused");
    }
    QStringList workingRows() { return rows("SELECT * FROM RLY_RLYOBJ_TEM ORDER BY RNo,Cdz"); }

    QTemporaryDir folder;
    dbDatabase realTime;
    NetworkSource network{realTime};
    CalculationPlaces places;
    CaseStore cases;
};

TEST_F(Runs, AnAutomaticRunFoldsItsResultsIntoTheWorkingSettings) {
    program("HALDERN.EXE",
            "printf '1,1,1,3101,600,0.0\\r\\n' > RELAY.RP1; : > RELAY.RP2; : > RELAY.RP3; : > RELAY.RP5");
    const auto run = session();
    EXPECT_EQ(outcome(*run, RunSession::Automatic), "complete");
    EXPECT_EQ(run->failedSteps(), 0);
    EXPECT_EQ(rows("SELECT NDz11,NDz12 FROM RLY_RLYOBJ_TEM WHERE Cdz='Idz' ORDER BY RNo"),
              (QStringList{"600,5", "0,0"}));
    EXPECT_TRUE(run->ensure());
    EXPECT_EQ(count("information_schema.TABLES", "TABLE_SCHEMA='P' AND TABLE_NAME LIKE '%\\_TEM\\_TM'"), 0);
    EXPECT_EQ(real("SELECT NDz11 FROM RLY_RLYOBJ_TEM WHERE RNo=1 AND Cdz='Idz'"), 600);
}

TEST_F(Runs, AnAutomaticRunDoesNotSeeWhatAnEarlierOneLeft) {
    program("HALDERN.EXE", "cp -n RELAY.R1 seen; : > RELAY.RP1; : > RELAY.RP2; : > RELAY.RP3; : > RELAY.RP5");
    ASSERT_TRUE(exec("UPDATE RLY_RLYOBJ_TEM SET NDz11=987,NDz12=8,NDz21=765,NDz22=6 WHERE Cdz='Idz'"));
    const QStringList before = workingRows();
    const auto run = session();
    EXPECT_EQ(outcome(*run, RunSession::Automatic), "complete");
    QFile seen(folder.filePath("seen"));
    ASSERT_TRUE(seen.open(QIODevice::ReadOnly));
    const std::string relays = seen.readAll().toStdString();
    EXPECT_THAT(relays, testing::AllOf(testing::HasSubstr("765"), testing::Not(testing::HasSubstr("987"))));
    EXPECT_EQ(rows("SELECT DISTINCT NDz11,NDz12,NDz21,NDz22 FROM RLY_RLYOBJ_TEM WHERE Cdz='Idz'"),
              QStringList{"0,0,765,6"});
    ASSERT_TRUE(run->cancel());
    EXPECT_EQ(workingRows(), before);
}

TEST_F(Runs, CancelBringsTheWorkingTablesBack) {
    program("HALDERN.EXE", "printf '1,1,1,3101,600,0.0\\r\\n' > RELAY.RP1");
    const QStringList before = workingRows();
    const auto run = session();
    EXPECT_EQ(outcome(*run, RunSession::Automatic), "complete");
    EXPECT_NE(workingRows(), before);
    ASSERT_TRUE(run->cancel());
    EXPECT_EQ(workingRows(), before);
    EXPECT_EQ(count("RLY_RDZTEM"), 0);
}

TEST_F(Runs, RulesWithoutResultAreToldInChineseAndKeptWithTheRun) {
    program(
        "HALDERN.EXE",
        "echo 'relay 1, part 1, rule 3101: no result: mode 1 has no candidate (a fault that the relay does not see)'"
        " >&2; echo 'disk is slow' >&2; : > RELAY.RP1; : > RELAY.RP2; : > RELAY.RP3; : > RELAY.RP5");
    const auto run = session();
    EXPECT_EQ(outcome(*run, RunSession::Automatic), "complete");
    ASSERT_EQ(run->withoutResult().size(), 2);  // one engine run for each relay
    EXPECT_EQ(errors.filter("no result").size(), 0);
    EXPECT_EQ(errors.filter("disk is slow").size(), 2);
    EXPECT_THAT(messages.filter("3101").value(0).toStdString(),
                testing::AllOf(testing::HasSubstr("A侧 线路零序电流保护 1 段"), testing::HasSubstr("保护没有电流"),
                               testing::Not(testing::HasSubstr("candidate"))));
    EXPECT_TRUE(RulesWithoutResult::load(places.workDir, 1).isEmpty());
    ASSERT_TRUE(run->ensure());
    EXPECT_EQ(RulesWithoutResult::load(places.workDir, 1), run->withoutResult());
    EXPECT_TRUE(RulesWithoutResult::load(places.workDir, 2).isEmpty());
}

TEST_F(Runs, CancelWithoutItsCopiesTouchesNothing) {
    const QStringList before = workingRows();
    const auto run = session();
    ASSERT_TRUE(exec("DROP TABLE RLY_KFINF_TEM_TM"));
    EXPECT_FALSE(run->cancel());
    EXPECT_EQ(workingRows(), before);
}

TEST_F(Runs, OnlyWholeCopiesOfARunWithoutEndAreTakenBack) {
    const QStringList before = workingRows();
    EXPECT_EQ(RunShadows::recover(), RunShadows::Leftover::None);
    session();
    ASSERT_TRUE(exec("DELETE FROM RLY_RLYOBJ_TEM"));
    EXPECT_EQ(RunShadows::recover(), RunShadows::Leftover::Restored);
    EXPECT_EQ(workingRows(), before);
    session();
    ASSERT_TRUE(exec("DROP TABLE RLY_KFINF_TEM_TM") && exec("UPDATE RLY_RLYOBJ_TEM SET NDz11=5"));
    const QStringList kept = workingRows();
    EXPECT_EQ(RunShadows::recover(), RunShadows::Leftover::None);
    EXPECT_EQ(workingRows(), kept);
    EXPECT_EQ(count("information_schema.TABLES", "TABLE_SCHEMA='P' AND TABLE_NAME LIKE '%\\_TEM\\_TM'"), 0);
}

TEST_F(Runs, BadProgramsAreToldAndTheSessionStaysUsable) {
    const auto run = session();
    EXPECT_EQ(outcome(*run, RunSession::Automatic), "broken");  // no program at all
    EXPECT_THAT(errors.join('|').toStdString(), testing::HasSubstr("执行HALDERN.EXE失败"));
    program("HALDERN.EXE", "exit 3");
    EXPECT_EQ(outcome(*run, RunSession::Automatic), "complete");
    EXPECT_EQ(run->failedSteps(), 2);
    program("HALDERN.EXE", "exit 0");
    errors.clear();
    EXPECT_EQ(outcome(*run, RunSession::Automatic), "complete");
    EXPECT_THAT(errors.join('|').toStdString(), testing::HasSubstr("读RELAY.RP1失败"));
    program("HALDERN.EXE", "head -c 3000 /dev/urandom | tee RELAY.RP1 RELAY.RP2 RELAY.RP3 > RELAY.RP5");
    EXPECT_EQ(outcome(*run, RunSession::Automatic), "complete");
    EXPECT_EQ(run->state(), RunSession::State::Idle);
    EXPECT_TRUE(run->cancel());
}

TEST_F(Runs, AHangingProgramCanBeAborted) {
    program("HALDERN.EXE", "exec sleep 600");
    const auto run = session();
    EXPECT_EQ(outcome(*run, RunSession::Automatic, 100), "broken");
    EXPECT_EQ(run->state(), RunSession::State::Idle);
    program("HALDERN.EXE", "exit 0");
    EXPECT_EQ(outcome(*run, RunSession::Automatic), "complete");
}

TEST_F(Runs, NothingToCalculateIsRefusedAndLeavesTheSessionIdle) {
    program("HALDERN.EXE", "exit 0");
    ASSERT_TRUE(exec("UPDATE RLY_CASEINF SET RValid=0"));
    const auto run = session();
    EXPECT_EQ(outcome(*run, RunSession::Automatic), "refused");
    ASSERT_TRUE(exec("DELETE FROM RLY_RLYOBJ_TEM"));
    EXPECT_EQ(outcome(*run, RunSession::Sensitivity), "refused");
    EXPECT_THAT(errors, testing::Contains(QString("作业中没有选择保护，不能进行计算")));
    EXPECT_EQ(run->state(), RunSession::State::Idle);
}

TEST_F(Runs, AManualRunWaitsAtEachPartAndTakesEdits) {
    program("HALDERN.EXE", "exit 0");
    const auto run = session();
    ASSERT_TRUE(await(*run, &RunSession::partShown, [&] { run->start(RunSession::Manual); }));
    EXPECT_EQ(run->state(), RunSession::State::Waiting);
    EXPECT_FALSE(run->start(RunSession::Automatic));
    EXPECT_FALSE(run->ApplySettingEdit(1, 1, "Idz", "-1"));
    EXPECT_FALSE(run->ApplySettingEdit(1, 1, "Idz", "nan"));
    EXPECT_TRUE(run->ApplySettingEdit(1, 1, "Idz", "1200"));
    EXPECT_EQ(rows("SELECT NDz11,NDz12 FROM RLY_RLYOBJ_TEM WHERE RNo=1 AND Cdz='Idz'"), QStringList{"1200,10"});
    ASSERT_TRUE(await(*run, &RunSession::partShown, [&] { run->next(); }));
    EXPECT_TRUE(await(*run, &RunSession::finished, [&] { run->next(); }));
    EXPECT_EQ(run->state(), RunSession::State::Idle);
}

TEST_F(Runs, AChangedSettingRecalculatesItsDependentsOneAfterTheOther) {
    program("HALDERN.EXE", "echo run >> runs; exit 0");
    ASSERT_TRUE(exec("INSERT INTO RLY_CASERLYCOP (Case_No,RNo,PartNo,CoRNo,CoPartNo) VALUES (1,2,2,1,1),(1,1,2,1,1)"));
    ASSERT_TRUE(exec("UPDATE RLY_CASEINF SET PValid=1 WHERE RuleNo=3201"));
    ASSERT_TRUE(
        exec("INSERT INTO RLY_RDZTEM (Case_No,ID,RNo,ID_Name,I_Name,J_Name,Side,PNo,Cdz,RuleNo) VALUES"
             "(1,1,1,'L1','A','B',1,2,'Idz',3201),(1,2,2,'L1','A','B',2,2,'Idz',3201)"));
    const auto run = session();
    ASSERT_TRUE(await(*run, &RunSession::recalculated, [&] { run->ApplySettingEdit(1, 1, "Idz", "500"); }));
    QFile runs(folder.filePath("runs"));
    ASSERT_TRUE(runs.open(QIODevice::ReadOnly));
    EXPECT_EQ(runs.readAll(), "run\nrun\n");
    EXPECT_EQ(messages.filter("重新计算 ").size(), 2);
}

TEST_F(Runs, ASensitivityRunStoresItsParameters) {
    program("HALDERN.EXE", "printf '1,1,1,21,123.5\\r\\n2,1,1,22,77\\r\\n' > RELAY.RP1; : > RELAY.RP2; : > RELAY.RP3");
    const auto run = session();
    EXPECT_EQ(outcome(*run, RunSession::Sensitivity), "complete");
    EXPECT_EQ(real("SELECT RFault FROM RLY_FKLM WHERE Side=1 AND RuleNo=21"), 123.5);
    EXPECT_EQ(rows("SELECT DISTINCT RFault1,RFault2 FROM RLY_RKLMTEM_TEM WHERE RNo=1"), QStringList{"123.5,77"});
    EXPECT_EQ(count("RLY_RDZTEM", "Case_No=1"), 0);
}

TEST_F(Runs, TheStartGoesFromConversionToTurnOrder) {
    program("VASKEL.EXE", "test -f RTDB.INC");
    program("QORDEN.EXE", "test -f RELAY.R1 && test -f RELAY.R4 && printf '0,2\\r\\n2\\r\\n1\\r\\n' > RELAY.R8");
    CalculationStart start(cases, network, places, 2);
    ASSERT_TRUE(await(start, &CalculationStart::ready, [&] { EXPECT_TRUE(start.start()); }))
        << errors.join('|').toStdString();
    EXPECT_EQ(rows("SELECT DISTINCT RNo,TurnNo FROM RLY_CASEINF WHERE PValid=1 ORDER BY RNo"),
              (QStringList{"1,2", "2,1"}));
}

TEST_F(Runs, AStartWithABadProgramSaysSoAndStops) {
    CalculationStart absent(cases, network, places, 2);
    EXPECT_TRUE(await(absent, &CalculationStart::failed, [&] { absent.start(); }));
    EXPECT_THAT(errors.join('|').toStdString(), testing::HasSubstr("执行VASKEL.EXE失败"));
    program("VASKEL.EXE", "exec sleep 600");
    CalculationStart hanging(cases, network, places, 2);
    QTimer::singleShot(100, &hanging, &CalculationStart::abort);
    EXPECT_TRUE(await(hanging, &CalculationStart::failed, [&] { hanging.start(); }));
}
