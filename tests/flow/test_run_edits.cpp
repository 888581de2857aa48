#include "programs/frame/TableNames.h"
#include "tests/flow/RunFixture.h"

using testing::HasSubstr;
using testing::Not;
using State = RunSession::State;

namespace {

/// Relay 1 takes part in its part 2 the part 1 of relays 2 and 3 (rule 3201); relay 2 that of relay 4.
class RunEdits : public RunFixture {
  protected:
    void SetUp() override {
        RunFixture::SetUp();
        if (HasFatalFailure()) return;
        run = session();
        ASSERT_EQ(DemoStudy::run(*run, RunSession::Automatic), "complete") << said();
        calculated = tables();
        stood = QString::number(setting(2, 1), 'g', 16);
        stoodSecondary = value("SELECT NDz12 FROM RLY_RLYOBJ_TEM WHERE RNo=2 AND Cdz='Idz'");
        ASSERT_GT(result(1, 3201), 0);
        said();
        messages.clear();
    }
    /// Back to the setting of the run, whose secondary value has six digits.
    bool typeBack() {
        return type(2, stood) &&
               sql::Query().exec("UPDATE RLY_RLYOBJ_TEM SET NDz12=? WHERE RNo=2 AND Cdz='Idz'", {stoodSecondary});
    }
    /// Types a current of part 1 and waits until no recalculation is left.
    bool type(int rno, const QString& value) {
        return run->ApplySettingEdit(rno, 1, "Idz", value) && waitFor([&] { return run->state() != State::Busy; });
    }
    [[nodiscard]] int recalculations() const { return int(messages.filter("重新计算 ").size()); }
    static QString parameterGroup() { return value("SELECT ParNo FROM RLY_CASEINF WHERE RNo=1 AND RuleNo=3201"); }
    /// A second group of parameters of rule 3201, with twice the reliability coefficient.
    static void addSecondGroup() {
        for (const char* text :
             {"INSERT INTO PARAINF (RuleNo,ParNo,C,K,KNo) VALUES (3201,2,'Kk',2.2,1),(3201,2,'dt',0.3,2)",
              "UPDATE RULEINF SET NPar=2 WHERE RuleNo=3201"})
            ASSERT_TRUE(sql::Query(tables::ruleConnection).exec(text));
    }
    std::unique_ptr<RunSession> run;
    std::string calculated;
    QString stood, stoodSecondary;
};

}  // namespace

TEST_F(RunEdits, AnEditedSettingIsWhatItsDependentsAreCalculatedWith) {
    const double before = result(1, 3201);
    const int known = int(rowsOf("RLY_CRUDRM").size());
    ASSERT_TRUE(type(2, "90000"));
    EXPECT_GT(result(1, 3201), 2 * before) << "the new setting of relay 2 has not been seen";
    EXPECT_EQ(setting(2, 1), 90000);
    EXPECT_EQ(setting(2, 1) / 240, value("SELECT NDz12 FROM RLY_RLYOBJ_TEM WHERE RNo=2 AND Cdz='Idz'").toDouble());
    EXPECT_GE(recalculations(), 1);
    EXPECT_EQ(rowsOf("RLY_CRUDRM").size(), known) << "the faults of the rule stand twice";
    ASSERT_TRUE(typeBack());
    EXPECT_EQ(tables(), calculated) << "the old setting leads back to the old results";
    EXPECT_EQ(run->state(), State::Idle);
    EXPECT_EQ(said(), "");
}

TEST_F(RunEdits, ASensitivityRunInBetweenChangesNoRecalculation) {
    run->setParametersToConfirm(true);
    ASSERT_EQ(DemoStudy::run(*run, RunSession::Sensitivity), "complete") << said();
    const std::string before = tables("Case_No=1");
    ASSERT_TRUE(type(2, "90000") && typeBack());
    EXPECT_EQ(tables("Case_No=1"), before);
}

TEST_F(RunEdits, AllSettingsOfAPartAreStoredOrNone) {
    const std::string before = tables();
    for (const char* wrong : {"-0.1", "x", "inf", ""}) {
        EXPECT_FALSE(run->ApplySettingEdit(1, 1, {{"Idz", "500"}, {"t", wrong}}, "Idz")) << wrong;
        EXPECT_EQ(said(), "定值的数据类型错误，或者小于零");
        EXPECT_EQ(tables(), before);
    }
    EXPECT_FALSE(run->ApplySettingEdit(1, 1, "Idz", "1e12"));
    EXPECT_NE(said(), "");
    EXPECT_EQ(tables(), before);
    EXPECT_TRUE(run->ApplySettingEdit(4, 2, {{"Idz", "480"}, {"t", "0"}}, "t"));
    EXPECT_TRUE(waitFor([&] { return run->state() == State::Idle; }));
    EXPECT_EQ(value("SELECT GROUP_CONCAT(CONCAT(ROUND(NDz21),'/',ROUND(NDz22)) ORDER BY DzNo) FROM RLY_RLYOBJ_TEM WHERE"
                    " RNo=4 AND Cdz IN ('Idz','t')"),
              "480/2,0/0");
}

TEST_F(RunEdits, ARecalculationThatDoesNotEndWellKeepsTheOldResultsAndTheEdit) {
    for (const char* script : {"exit 3", "kill -SEGV $$", "exit 0"}) {
        spoil(script);
        const QStringList results = rowsOf("RLY_RDZTEM"), faults = rowsOf("RLY_CRUDRM");
        ASSERT_TRUE(type(2, "90000"));
        EXPECT_EQ(rowsOf("RLY_RDZTEM"), results) << script;
        EXPECT_EQ(rowsOf("RLY_CRUDRM"), faults) << script;
        EXPECT_EQ(setting(2, 1), 90000);
        EXPECT_THAT(said(), HasSubstr("重新计算没有完成，仍是原来的结果: 青龙线"));
    }
    mend();
    ASSERT_TRUE(typeBack());
    EXPECT_EQ(tables(), calculated);
    EXPECT_EQ(said(), "");
}

TEST_F(RunEdits, AnAbortEndsTheQueueAndTheNextEditIsCalculatedAgain) {
    spoil("exec sleep 600");
    exec("INSERT INTO RLY_CASERLYCOP (Case_No,RNo,PartNo,CoRNo,CoPartNo) VALUES (1,3,2,2,1)");
    const QStringList results = rowsOf("RLY_RDZTEM");
    ASSERT_TRUE(run->ApplySettingEdit(2, 1, "Idz", "90000"));
    EXPECT_EQ(run->state(), State::Busy);
    EXPECT_TRUE(run->isRecalculating());
    EXPECT_EQ(run->step().inHand(), (RuleInHand{1, 2, 3201}));
    EXPECT_FALSE(run->changeParameters(1, 2, 3201, 1));
    ASSERT_TRUE(run->ApplySettingEdit(4, 1, "Idz", "70000")) << "an edit while a rule is calculated again";
    run->abort();
    ASSERT_TRUE(waitFor([&] { return run->state() == State::Idle; }));
    EXPECT_EQ(rowsOf("RLY_RDZTEM"), results);
    EXPECT_EQ(setting(2, 1), 90000);
    EXPECT_EQ(setting(4, 1), 70000) << "went with the recalculation that was taken back";
    const QString told = QString::fromStdString(said());
    EXPECT_EQ(told.count("重新计算没有完成"), 3) << told.toStdString();
    mend();
    const double before = result(1, 3201);
    ASSERT_TRUE(type(2, "80000"));
    EXPECT_GT(result(1, 3201), before);
}

TEST_F(RunEdits, AnotherParameterGroupCountsOnlyWhenTheRuleWasCalculatedWithIt) {
    addSecondGroup();
    const QString before = parameterGroup();
    EXPECT_FALSE(run->changeParameters(1, 2, 9999, 1));
    EXPECT_EQ(said(), "本次计算中没有这条整定原则");
    spoil("exit 3");
    ASSERT_TRUE(run->changeParameters(1, 2, 3201, 2));
    ASSERT_TRUE(waitFor([&] { return run->state() == State::Idle; }));
    EXPECT_EQ(parameterGroup(), before);
    EXPECT_EQ(tables(), calculated);
    said();
    mend();
    const double single = result(1, 3201);
    for (const int group : {2, before.toInt()}) {
        ASSERT_TRUE(run->changeParameters(1, 2, 3201, group));
        ASSERT_TRUE(waitFor([&] { return run->state() == State::Idle; }));
        EXPECT_EQ(parameterGroup(), QString::number(group));
        EXPECT_NEAR(result(1, 3201), group == 2 ? 2 * single : single, 1e-4 * single);
    }
    EXPECT_EQ(tables(), calculated);
    EXPECT_EQ(said(), "");
}

TEST_F(RunEdits, EditsOfAManualRunThatWaitsAreCalculatedForRelaysPassedOnly) {
    ASSERT_TRUE(run->cancel() && run->open());
    ASSERT_TRUE(run->start(RunSession::Manual));
    ASSERT_TRUE(waitFor([&] { return run->state() == State::Waiting; }));
    messages.clear();
    ASSERT_TRUE(type(2, "90000"));
    EXPECT_EQ(run->state(), State::Waiting);
    EXPECT_EQ(recalculations(), 0) << "rules ahead take the new value by themselves";
    while (run->hasFurtherPart()) {
        ASSERT_TRUE(run->next());
        ASSERT_TRUE(waitFor([&] { return run->state() == State::Waiting; }));
    }
    const double before = result(1, 3201);
    ASSERT_TRUE(type(2, "45000"));
    EXPECT_EQ(run->state(), State::Waiting);
    EXPECT_LT(result(1, 3201), before);
    spoil("exec sleep 600");
    ASSERT_TRUE(run->ApplySettingEdit(2, 1, "Idz", "50000"));
    run->abort();
    ASSERT_TRUE(waitFor([&] { return run->state() == State::Idle; }));
    EXPECT_FALSE(run->next());
    mend();
    EXPECT_EQ(DemoStudy::run(*run, RunSession::Manual), "waiting");
    run->abort();
    EXPECT_TRUE(run->cancel());
}

TEST_F(RunEdits, ARuleCalculatedAgainReplacesItsBranchCoefficientsOnly) {
    const QStringList before = rowsOf("RLY_KFINF");
    ASSERT_GT(before.size(), 1);
    exec("UPDATE RLY_KFINF SET FZ1=0.123 WHERE NLRNo=1");
    exec("INSERT INTO RLY_KFINF (Case_No,FzNo,NLRNo,FZ1) VALUES (1,999,1,0.5),(2,1,1,0.5)");  // no run gives these
    const QStringList foreign = rowsOf("RLY_KFINF", "FzNo=999 OR Case_No=2");
    spoil("exit 3");
    ASSERT_TRUE(type(2, "90000"));
    EXPECT_NE(value("SELECT COUNT(*) FROM RLY_KFINF WHERE FZ1=0.123"), "0") << "taken from a run that failed";
    mend();
    ASSERT_TRUE(type(2, "80000"));
    EXPECT_EQ(rowsOf("RLY_KFINF", "FzNo!=999 AND Case_No=1"), before);
    EXPECT_EQ(rowsOf("RLY_KFINF", "FzNo=999 OR Case_No=2"), foreign);
}
