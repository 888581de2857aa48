#include "programs/workflow/ResultTable.h"
#include "tests/flow/RunFixture.h"

using testing::Contains;
using testing::HasSubstr;
using State = RunSession::State;

namespace {

constexpr char kHang[] = "exec sleep 600";
constexpr char kLeaveHalf[] = "head -c 40 /dev/urandom | tee RELAY.RP2 RELAY.RP3 > RELAY.RP5; ";

class RunSteps : public RunFixture {
  protected:
    /// An undisturbed run of its own. \return the tables it leads to
    std::string undisturbed(RunSession::Run kind) {
        const auto run = session();
        EXPECT_TRUE(run->start(kind));
        while (kind == RunSession::Manual && becomes(*run, State::Waiting)) {
            run->next();
            if (run->state() == State::Idle) break;
        }
        EXPECT_TRUE(becomes(*run, State::Idle));
        EXPECT_EQ(run->failedSteps(), 0);
        const std::string after = tables();
        EXPECT_TRUE(run->cancel());
        EXPECT_EQ(said(), "");
        return after;
    }
};

}  // namespace

TEST_F(RunSteps, AStepThatDoesNotEndWellLeavesTheTablesAsTheyWere) {
    struct Bad {
        QByteArray script;
        State state;
        const char* told;
    };
    const Bad all[] = {{QByteArray(kLeaveHalf) + "exit 3", State::Waiting, "HALDERN.EXE出错，返回码3"},
                       {QByteArray(kLeaveHalf) + "kill -SEGV $$", State::Waiting, "HALDERN.EXE异常终止"},
                       {QByteArray(kLeaveHalf) + "exit 0", State::Waiting, "读RELAY.RP1失败"},
                       {"", State::Idle, "执行HALDERN.EXE失败"}};
    for (const Bad& bad : all) {
        mend();
        const auto run = session();
        ASSERT_TRUE(run->start(RunSession::Manual));
        ASSERT_TRUE(becomes(*run, State::Waiting));
        const std::string before = tables();
        spoil(bad.script);
        if (bad.script.isEmpty()) QFile::remove(places.programDir + "HALDERN.EXE");
        said();
        ASSERT_TRUE(run->next());
        const RuleInHand work = run->step().inHand();
        EXPECT_NE(tables(), before) << "the step has written nothing that could be taken back";
        ASSERT_TRUE(becomes(*run, bad.state)) << bad.told;
        EXPECT_EQ(tables(), before) << bad.told;
        EXPECT_EQ(run->failedSteps(), 1);
        ASSERT_FALSE(run->withoutResult().isEmpty());
        EXPECT_EQ(run->withoutResult().last().RNo, work.RNo);
        const std::string told = said();
        EXPECT_THAT(told, HasSubstr(bad.told));
        EXPECT_THAT(told, HasSubstr("线路零序电流保护 1 段 整定原则 3101")) << bad.told;
        run->abort();
        EXPECT_TRUE(run->cancel());
    }
}

TEST_F(RunSteps, AHangingStepIsEndedAndTheTablesAreAsBeforeIt) {
    for (const QByteArray script : {"exec sleep 600", "trap '' TERM INT; sleep 30"}) {
        mend();
        const auto run = session();
        ASSERT_TRUE(run->start(RunSession::Manual));
        ASSERT_TRUE(becomes(*run, State::Waiting));
        const std::string before = tables();
        spoil("echo alive >&2; " + script);
        bool heard = false, complete = true;
        QObject::connect(run.get(), &RunSession::message, [&] { heard = true; });
        QObject::connect(run.get(), &RunSession::finished, [&](bool whole) { complete = whole; });
        ASSERT_TRUE(run->next());
        ASSERT_TRUE(waitFor([&] { return heard; }));
        QElapsedTimer clock;
        clock.start();
        ASSERT_TRUE(waitFor([&] { return run->step().silence() >= 60; }));
        EXPECT_GE(run->step().elapsed(), run->step().silence());
        EXPECT_FALSE(run->ensure() || run->cancel() || run->next() || run->start(RunSession::Manual));
        EXPECT_FALSE(run->ApplySettingEdit(1, 1, "Idz", "5"));
        EXPECT_THAT(said(), HasSubstr("正在计算，不能修改定值"));
        clock.restart();
        run->abort();
        ASSERT_TRUE(becomes(*run, State::Idle));
        EXPECT_LT(clock.elapsed(), 2000);
        EXPECT_FALSE(complete);
        EXPECT_EQ(tables(), before);
        EXPECT_EQ(run->step().elapsed(), 0);
        EXPECT_EQ(said(), "HALDERN.EXE已中止");
        EXPECT_TRUE(run->cancel());
    }
}

TEST_F(RunSteps, ARunStartedAgainAfterAnAbortGivesWhatAnUndisturbedOneGives) {
    const std::string expected = undisturbed(RunSession::Automatic);
    const auto run = session();
    for (const int at : {1, 3, 8}) {
        spoil(kHang, at);
        ASSERT_TRUE(run->start(RunSession::Automatic));
        ASSERT_TRUE(waitFor([&] { return run->step().elapsed() > 100; }));
        run->abort();
        ASSERT_TRUE(becomes(*run, State::Idle));
        EXPECT_NE(tables(), expected);
        mend();
        ASSERT_EQ(DemoStudy::run(*run, RunSession::Automatic), "complete");
        EXPECT_EQ(tables(), expected) << "after an abort in engine run " << at;
    }
    EXPECT_GT(setting(1, 2), 0);
    EXPECT_TRUE(run->cancel());
}

TEST_F(RunSteps, AManualRunEndedEarlyCanBeRunAgainAndGivesTheSame) {
    const std::string expected = undisturbed(RunSession::Manual);
    const auto run = session();
    EXPECT_FALSE(run->hasChanged());
    for (const int parts : {1, 3}) {
        int shown = 0, broken = 0;
        const auto link = QObject::connect(run.get(), &RunSession::finished, [&](bool whole) { broken += !whole; });
        ASSERT_TRUE(run->start(RunSession::Manual));
        for (; becomes(*run, State::Waiting) && ++shown < parts;) run->next();
        run->abort();
        EXPECT_EQ(run->state(), State::Idle);
        EXPECT_EQ(broken, 1);
        QObject::disconnect(link);
    }
    EXPECT_TRUE(run->hasChanged());
    ASSERT_TRUE(run->start(RunSession::Manual));
    while (becomes(*run, State::Waiting) && run->next())
        if (run->state() == State::Idle) break;
    EXPECT_EQ(tables(), expected);
    ASSERT_TRUE(run->cancel());
    EXPECT_FALSE(run->hasChanged());
}

TEST_F(RunSteps, AnAbortThatComesWithTheEndOfTheEngineEndsTheRunOnce) {
    const auto run = session();
    int ends = 0;
    QObject::connect(run.get(), &RunSession::finished, [&] { ++ends; });
    ASSERT_TRUE(run->start(RunSession::Automatic));
    const QString before = rowsOf("RLY_RDZTEM").join('\n');
    QThread::msleep(300);  // the engine has ended; the session has not heard of it yet
    run->abort();
    EXPECT_TRUE(becomes(*run, State::Idle));
    QCoreApplication::processEvents();
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(rowsOf("RLY_RDZTEM").join('\n'), before);
    EXPECT_EQ(DemoStudy::run(*run, RunSession::Automatic), "complete");
    EXPECT_TRUE(run->cancel());
}

TEST_F(RunSteps, APartOfWhichAStepFailedHasNoSettingAndSaysWhy) {
    ASSERT_EQ(DemoStudy::run(*session(), RunSession::Automatic), "complete");
    const double first = setting(1, 1);
    ASSERT_GT(first, 0);
    for (const int failing : {1, 5, 6}) {  // the only step of a part, and either one of a part with two
        spoilOnly(QByteArray(kLeaveHalf) + "exit 3", failing);
        const auto run = session();
        ASSERT_EQ(DemoStudy::run(*run, RunSession::Automatic), "complete");
        EXPECT_EQ(run->failedSteps(), 1);
        const auto& all = run->withoutResult();
        const auto found = std::find_if(all.begin(), all.end(),
                                        [](const auto& rule) { return rule.reason == RulesWithoutResult::badEnd; });
        ASSERT_NE(found, all.end());
        const RuleWithoutResult told = *found;
        EXPECT_EQ(told.PNo, failing == 1 ? 1 : 2);
        EXPECT_EQ(setting(told.RNo, told.PNo), 0) << "relay " << told.RNo;
        EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_CRUDRM WHERE RNo=? AND RuleNo=?", {told.RNo, told.RuleNo}), "0");
        QStringList reasons;
        for (const ResultRow& row : resultTable(1, 3, run->withoutResult()))
            if (row.RNo == told.RNo && row.PNo == told.PNo) reasons << row.reason;
        EXPECT_TRUE(reasons.join('|').contains("计算程序没有正常结束")) << reasons.join('|').toStdString();
        EXPECT_GT(setting(told.RNo == 4 ? 3 : 4, 1), 0) << "the other relays have theirs";
        EXPECT_TRUE(run->ensure());
        EXPECT_EQ(RulesWithoutResult::load(places.workDir, 1), run->withoutResult());
    }
}

TEST_F(RunSteps, ASensitivityRunLeavesTheRowsOfTheCaseAsTheyAre) {
    const auto run = session();
    run->setParametersToConfirm(true);
    ASSERT_EQ(DemoStudy::run(*run, RunSession::Automatic), "complete");
    const std::string before = tables("Case_No=1");
    const QString stored = rowsOf("RLY_FKLM").join('\n');
    ASSERT_EQ(DemoStudy::run(*run, RunSession::Sensitivity), "complete") << said();
    EXPECT_EQ(tables("Case_No=1"), before);
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_RDZTEM WHERE Case_No=0 AND Rdz>0"), "8");
    EXPECT_NE(value("SELECT COUNT(*) FROM RLY_FAULTINF WHERE Case_No=0"), "0");
    EXPECT_EQ(rowsOf("RLY_FKLM").join('\n'), stored) << "stored before the user has confirmed it";
    const std::string after = tables();
    for (const char* script : {"exec sleep 600", "exit 3"}) {
        spoil(QByteArray(kLeaveHalf) + script);
        EXPECT_EQ(DemoStudy::run(*run, RunSession::Sensitivity, 150), "broken");
        EXPECT_EQ(tables(), after) << script;
    }
    EXPECT_TRUE(run->cancel());
}

TEST_F(RunSteps, ARefusedStartChangesNothing) {
    const auto run = session();
    ASSERT_EQ(DemoStudy::run(*run, RunSession::Automatic), "complete");
    const QStringList sensitivities = rowsOf("RLY_RKLMTEM_TEM");
    const std::string before = tables();
    exec("UPDATE RLY_CASEINF SET RValid=0");
    for (const auto kind : {RunSession::Automatic, RunSession::Manual}) {
        EXPECT_FALSE(run->start(kind));
        EXPECT_EQ(said(), "没有需要计算的定值，请检查整定的段和整定规则");
        EXPECT_EQ(tables(), before);
        EXPECT_EQ(rowsOf("RLY_RKLMTEM_TEM"), sensitivities);
        EXPECT_EQ(run->state(), State::Idle);
    }
}

TEST_F(RunSteps, TheBranchCoefficientsOfAllEngineRunsAreKept) {
    // Each engine run leaves its RELAY.RP3 beside the next; what they hold together is what the table has to have.
    program("HALDERN.EXE", MORVANE_BIN_DIR "/HALDERN.EXE && cat RELAY.RP3 >> all3");
    const auto pairsOf = [&] {
        QFile file(places.workDir + "all3");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QMap<QString, QString> last;
        for (const QByteArray& line : file.readAll().split('\n')) {
            const QList<QByteArray> fields = line.split(',');
            if (fields.size() < 17 || fields[0].trimmed() == "0") continue;
            last[fields[0].trimmed() + "/" + fields[8].trimmed()] =
                QString::number(fields[9].toDouble(), 'f', 4) + "/" + QString::number(fields[13].toDouble(), 'f', 4);
        }
        QStringList rows;
        for (auto it = last.cbegin(); it != last.cend(); ++it) rows << it.key() + ":" + it.value();
        rows.sort();
        return rows;
    };
    const auto stored = [] {
        QStringList rows;
        sql::Query query;
        query.exec("SELECT FzNo,NLRNo,FZ1,FZ0 FROM RLY_KFINF WHERE Case_No=1");
        while (query.next())
            rows << QString("%1/%2:%3/%4")
                        .arg(query.text(0), query.text(1), QString::number(query.real(2), 'f', 4),
                             QString::number(query.real(3), 'f', 4));
        rows.sort();
        return rows;
    };
    const auto run = session();
    ASSERT_EQ(DemoStudy::run(*run, RunSession::Automatic), "complete") << said();
    const QStringList expected = pairsOf();
    EXPECT_EQ(stored(), expected);
    const QString relays = "SELECT GROUP_CONCAT(DISTINCT NLRNo ORDER BY NLRNo) FROM RLY_KFINF WHERE Case_No=1";
    EXPECT_EQ(value(relays).toStdString(), "1,2,3,4");
    QFile last(places.workDir + "RELAY.RP3");
    ASSERT_TRUE(last.open(QIODevice::ReadOnly));
    EXPECT_LT(last.readAll().count('\n'), expected.size()) << "the last engine run alone has them all";
    ASSERT_EQ(DemoStudy::run(*run, RunSession::Automatic), "complete") << "a second run replaces them";
    EXPECT_EQ(stored(), expected);
    ASSERT_TRUE(run->start(RunSession::Manual));
    ASSERT_TRUE(becomes(*run, State::Waiting));
    EXPECT_EQ(stored(), QStringList()) << "those of a run come with its end";
    run->abort();
    EXPECT_EQ(stored(), QStringList());
    ASSERT_TRUE(run->start(RunSession::Manual));
    while (becomes(*run, State::Waiting) && run->next())
        if (run->state() == State::Idle) break;
    EXPECT_EQ(stored(), expected);
    EXPECT_TRUE(run->cancel());
}
