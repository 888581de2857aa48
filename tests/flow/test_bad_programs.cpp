#include <gmock/gmock.h>

#include "programs/engine/BranchTable.h"
#include "tests/flow/DemoStudy.h"

using testing::AllOf;
using testing::Gt;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr char kConverter[] = "VASKEL.EXE";
constexpr char kOrder[] = "QORDEN.EXE";
constexpr char kEngine[] = "HALDERN.EXE";

/// The real programs, one of which a test spoils and mends; two zero-sequence relays, part 1.
class BadPrograms : public DemoStudy {
  protected:
    void SetUp() override {
        DemoStudy::SetUp();
        for (const char* name : {kConverter, kOrder, kEngine}) mend(name);
        installAt({"青白I", "青龙"}, 3);
        makeCase(3, {1, 2}, 1);
        ASSERT_TRUE(cases.setSensitivityModes({ModeStore::numberOf("最小方式")}));
        errors.clear();
    }
    void mend(const QString& name) const {
        QFile::remove(places.programDir + name);
        ASSERT_TRUE(QFile::link(QString(MORVANE_BIN_DIR "/") + name, places.programDir + name));
    }
    void takeAway(const QString& name) const { ASSERT_TRUE(QFile::remove(places.programDir + name)); }
    /// What was said since the last call.
    std::string said() {
        const std::string all = errors.join('|').toStdString();
        errors.clear();
        return all;
    }
    static QVector<double> settings() {
        QVector<double> values;
        sql::Query query;
        query.exec("SELECT NDz11 FROM RLY_RLYOBJ_TEM WHERE Cdz='Idz' ORDER BY RNo");
        while (query.next()) values.append(query.real(0));
        return values;
    }
    /// Everything works, from the start to settings.
    void expectWholeRun() {
        EXPECT_EQ(start(), "ready") << said();
        RunSession session(*cases.current(), places);
        ASSERT_TRUE(session.open());
        EXPECT_EQ(run(session, RunSession::Automatic), "complete") << said();
        EXPECT_EQ(session.failedSteps(), 0);
        EXPECT_THAT(settings(), testing::ElementsAre(Gt(100), Gt(100)));
        EXPECT_TRUE(session.cancel());
    }
};

TEST_F(BadPrograms, AConverterThatFailsIsToldAndTheNextStartWorks) {
    takeAway(kConverter);
    EXPECT_EQ(start(), "failed");
    EXPECT_THAT(said(), HasSubstr("执行VASKEL.EXE失败"));
    program(kConverter, "exec sleep 600");
    EXPECT_EQ(start(40), "failed");
    EXPECT_THAT(said(), HasSubstr("VASKEL.EXE已中止"));
    program(kConverter, "kill -SEGV $$");
    EXPECT_EQ(start(), "failed");
    EXPECT_THAT(said(), HasSubstr("VASKEL.EXE异常终止"));
    mend(kConverter);
    expectWholeRun();
    program(kConverter, "exit 0");  // it leaves nothing, also nothing of the time before
    EXPECT_EQ(start(), "failed");
    EXPECT_THAT(said(), HasSubstr("QORDEN.EXE出错"));
    program(kConverter,
            "for f in LF.L1 LF.L2 LF.L3 ST.S1 ST.S2 ST.S3; do head -c 500 /dev/zero | tr '\\0' 'x' > $f; done");
    EXPECT_EQ(start(), "failed");
    EXPECT_THAT(said(), AllOf(HasSubstr("LF.L"), HasSubstr("QORDEN.EXE出错")));
    mend(kConverter);
    expectWholeRun();
}

TEST_F(BadPrograms, ATurnOrderThatFailsIsToldAndTheNextStartWorks) {
    takeAway(kOrder);
    EXPECT_EQ(start(), "failed");
    EXPECT_THAT(said(), HasSubstr("执行QORDEN.EXE失败"));
    program(kOrder, "exec sleep 600");
    EXPECT_EQ(start(70), "failed");
    EXPECT_THAT(said(), HasSubstr("QORDEN.EXE已中止"));
    program(kOrder, "echo wrong >&2; exit 2");
    EXPECT_EQ(start(), "failed");
    EXPECT_THAT(said(), AllOf(HasSubstr("wrong"), HasSubstr("QORDEN.EXE出错，返回码2")));
    mend(kOrder);
    expectWholeRun();
    const auto turns = [] {
        return sql::scalar({}, "SELECT GROUP_CONCAT(DISTINCT RNo,'/',TurnNo ORDER BY RNo) FROM RLY_CASEINF").toString();
    };
    const QString before = turns();
    for (const char* script :
         {"exit 0", "printf '0, 9,\\r\\nxyz\\r\\n' > RELAY.R8", "head -c 500 /dev/zero > RELAY.R8"}) {
        program(kOrder, script);  // the order stays as it was, and the calculation can go on
        EXPECT_EQ(start(), "ready");
        EXPECT_THAT(said(), HasSubstr("读RELAY.R8失败")) << script;
        EXPECT_EQ(turns(), before);
    }
    mend(kOrder);
    expectWholeRun();
}

TEST_F(BadPrograms, AnEngineThatFailsIsToldInEachKindOfRunAndTheNextRunWorks) {
    ASSERT_EQ(start(), "ready") << said();
    RunSession session(*cases.current(), places);
    ASSERT_TRUE(session.open());
    for (const auto kind : {RunSession::Automatic, RunSession::Sensitivity}) {
        said();
        takeAway(kEngine);
        EXPECT_EQ(run(session, kind), "broken");
        EXPECT_THAT(said(), HasSubstr("执行HALDERN.EXE失败"));
        program(kEngine, "exec sleep 600");
        EXPECT_EQ(run(session, kind, 300), "broken");
        EXPECT_THAT(said(), HasSubstr("HALDERN.EXE已中止"));
        program(kEngine, "exit 0");
        run(session, kind);
        EXPECT_THAT(said(), HasSubstr("读RELAY.RP1失败"));
        program(kEngine, "printf '%s\\n' '*****,*****' 'NaN, what' | tee RELAY.RP1 RELAY.RP2 RELAY.RP3 > RELAY.RP5");
        run(session, kind);
        EXPECT_THAT(said(), HasSubstr("RELAY.RP1中有2行不能识别"));
        EXPECT_EQ(session.state(), RunSession::State::Idle);
        mend(kEngine);
        EXPECT_EQ(run(session, kind), "complete") << said();
    }
    EXPECT_THAT(settings(), testing::ElementsAre(Gt(100), Gt(100)));
    EXPECT_GT(sql::scalar({}, "SELECT MIN(RFault1) FROM RLY_RKLMTEM_TEM WHERE PNo=1").toDouble(), 0);
}

TEST_F(BadPrograms, AnEngineThatFailsInAManualRunCanBeTriedAgain) {
    ASSERT_EQ(start(), "ready") << said();
    RunSession session(*cases.current(), places);
    ASSERT_TRUE(session.open());
    takeAway(kEngine);
    EXPECT_EQ(run(session, RunSession::Manual), "broken");
    program(kEngine, "exec sleep 600");
    EXPECT_EQ(run(session, RunSession::Manual, 300), "broken");
    said();
    program(kEngine, "exit 3");
    EXPECT_EQ(run(session, RunSession::Manual), "waiting");
    EXPECT_THAT(said(), HasSubstr("HALDERN.EXE出错，返回码3"));
    session.abort();
    EXPECT_EQ(session.state(), RunSession::State::Idle);
    mend(kEngine);
    EXPECT_EQ(run(session, RunSession::Manual), "waiting");
    EXPECT_EQ(said(), "");
    EXPECT_GT(sql::scalar({}, "SELECT MAX(Rdz) FROM RLY_RDZTEM WHERE RNo=1 AND RuleNo=3101").toDouble(), 100);
}

TEST_F(BadPrograms, AStepWithoutResultsDoesNotRepeatThoseOfTheStepBefore) {
    ASSERT_EQ(start(), "ready") << said();
    program(kEngine,
            "test -e once && exit 0; : > once; printf '1,1,1,3101,600,0,\\r\\n' > RELAY.RP1\n"
            "printf '1,1,1,3101,1,2,0,0,1,\\r\\n' > RELAY.RP2; : > RELAY.RP3; : > RELAY.RP5");
    RunSession session(*cases.current(), places);
    ASSERT_TRUE(session.open());
    said();
    EXPECT_EQ(run(session, RunSession::Automatic), "complete");
    EXPECT_THAT(said(), HasSubstr("读RELAY.RP1失败"));
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM RLY_FAULTINF").toInt(), 1);
}

class Network : public DemoStudy {};

TEST_F(Network, IsBuiltAnewOnlyWhenItsSourceChanges) {
    EXPECT_TRUE(network.SwitchNetwork(0, -1, "基础方案"));
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM RLY_RRBRANCH_TEM WHERE ID_Name='青龙'").toInt(), 1);
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM RLY_RRBRANCH_TEM WHERE I_No<=0 OR J_No<=0").toInt(), 0);
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM RLY_RRBRANCH_TEM WHERE Flg=6 AND (I_No<>J_No OR ID_No<>0)").toInt(),
              0);
    EXPECT_FALSE(network.SwitchNetwork(0, -1, "基础方案"));
    EXPECT_TRUE(network.SwitchNetwork(0, -1, "青龙线停运"));
    EXPECT_EQ(BranchTable::current()->find("青龙", "青山青龙线", "龙泉青龙线"), nullptr);
    EXPECT_TRUE(network.SwitchNetwork(1, 1, " "));
    EXPECT_FALSE(network.SwitchNetwork(1, 1, "青龙线停运"));  // the scheme is that of the load-flow case
    EXPECT_NE(BranchTable::current()->find("青龙", "青山青龙线", "龙泉青龙线"), nullptr);
    EXPECT_TRUE(network.SwitchNetwork(0, 1, "基础方案"));
}

}  // namespace
