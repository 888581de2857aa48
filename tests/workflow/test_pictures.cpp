#include "programs/netview/VirtualRelays.h"
#include "programs/workflow/CaseStore.h"
#include "programs/workflow/CoordinationSearch.h"
#include "programs/workflow/ImpedancePicture.h"
#include "programs/workflow/StepPicture.h"
#include "tests/workflow/WorkflowFixture.h"

using testing::HasSubstr;

namespace {

/// Relays of one type: 1 on L1 at A, 2 on L2 at B, 3 on L3 at B, 4 on L5 at C. Every line has j6.05 ohm; L1 and L2 run
/// side by side, and behind the T nodes of L3 a line ends in D.
class Pictures : public WorkflowFixture {
  protected:
    void standUp(int type) {
        ASSERT_TRUE(SearchDumRelay());
        ASSERT_TRUE(
            exec("INSERT INTO RLY_RRBRANCH_TEM (ID_Name,ID_No,I_Name,J_Name,I_No,J_No,Flg)"
                 " SELECT ID_Name,ID_No,I_Name,J_Name,10*ASCII(I_Name)+ASCII(RIGHT(I_Name,1)),"
                 " 10*ASCII(J_Name)+ASCII(RIGHT(J_Name,1)),1 FROM L2_0 WHERE NType=1 ORDER BY ID_No"));
        BranchTable::invalidate();
        ASSERT_EQ(RelayStore::install({request("L1", 1, type), request(oddName, 2, type), request("L3", 1, type),
                                       request("L5", 2, type)}),
                  4);
        CaseForm form;
        form.name = "作业";
        form.source = "基础方案";
        cases.insert(type, 0, -1, "基础方案");
        ASSERT_TRUE(cases.addRelays(form, {1, 2, 3, 4}) && cases.SaveRecord(1, form) && cases.LoadCaseRelays());
        ASSERT_TRUE(CoordinationSearch::SearchRlyCop(1));
        ASSERT_TRUE(exec("UPDATE RLY_RLYOBJ_TEM SET NDz11=0,NDz21=0,NDz31=0,NDz41=0"));
    }
    static void set(int rNo, int part, const char* cdz, double value) {
        const QString column = QString("NDz%1").arg(part) + "1";
        ASSERT_TRUE(exec("UPDATE RLY_RLYOBJ_TEM SET " + column + "=? WHERE RNo=? AND Cdz=?", {value, rNo, cdz}));
    }
    /// Values and times of the parts from the first on.
    static void set(int rNo, const char* cdz, const QVector<QPair<double, double>>& parts) {
        for (int part = 1; part <= parts.size(); ++part) {
            set(rNo, part, cdz, parts[part - 1].first);
            set(rNo, part, "t", parts[part - 1].second);
        }
    }
    /// Branch coefficients of relay 1 for the branch of another, as the last run left them.
    static void share(const QString& line, int side, double positive, double zero) {
        ASSERT_TRUE(
            exec("INSERT INTO RLY_KFINF (Case_No,NLRNo,MIDNo,MSide,FZ1,FZ0) SELECT 1,1,ID_No,?,?,? FROM L2_0"
                 " WHERE ID_Name=?",
                 {side, positive, zero, line}));
    }
    static PictureData read(int rNo) { return readPictureData(1, rNo, PictureNetwork(1)); }
    static QStringList sentences(const PictureData& data) {
        QStringList found;
        for (const PictureFinding& finding : data.findings) found << finding.sentence;
        return found;
    }
    static QString texts(const PictureScene& scene) {
        QStringList all = scene.findings + scene.notes;
        for (const PictureLabel& label : scene.labels) all << label.text;
        for (const PictureLegendEntry& entry : scene.legend) all << entry.text;
        return all.join('\n');
    }
    CaseStore cases;
};

}  // namespace

TEST_F(Pictures, ReachesOfTheNeighboursStandBehindTheLineAndAreStretchedByTheInfeed) {
    standUp(1);
    set(1, "Zdz", {{5, 0}, {9, 0.3}, {20, 1.5}});
    set(3, "Zdz", {{4, 0}, {7, 0.3}});
    share("L3", 1, 0.5, 0);
    const PictureData data = read(1);
    ASSERT_EQ(data.neighbours.size(), 2);
    EXPECT_NEAR(*data.lineEnd, 6.05, 1e-6);
    EXPECT_NEAR(std::arg(*data.lines->own.first().z), 1.570796, 1e-6);
    const PictureNeighbour& behind = data.neighbours[1];
    EXPECT_EQ(behind.relay.RNo, 3);
    EXPECT_NEAR(std::abs(behind.branch.start), 6.05, 1e-6);
    const auto steps = data.steps(behind);
    ASSERT_EQ(steps.size(), 2);
    EXPECT_NEAR(steps[0].to, 6.05 + 4 / 0.5, 1e-6);
    EXPECT_NEAR(steps[1].to, 6.05 + 7 / 0.5, 1e-6);
    EXPECT_EQ(sentences(data), QStringList());
}

TEST_F(Pictures, OwnLineGoesOnOverTNodesToTheNearestEnd) {
    standUp(1);
    const PictureData data = read(3);  // L3 to T1, there L6 to D and L4 to T2, there L5 to C
    QStringList names;
    for (const PictureBranch& branch : data.lines->own) names << branch.at.ID_Name;
    EXPECT_EQ(names, (QStringList{"L3", "L4", "L5", "L6"}));
    EXPECT_NEAR(*data.lineEnd, 2 * 6.05, 1e-6);
    EXPECT_TRUE(data.neighbours.isEmpty());
    EXPECT_TRUE(data.notes.contains("本线路对侧没有其他线路和变压器"));
}

TEST_F(Pictures, AMissingTimeStepAndAnOverreachAreFoundAndMarked) {
    standUp(1);
    share("L3", 1, 1, 0);
    share(oddName, 2, 0, 0);
    set(1, "Zdz", {{6.2, 0}, {11, 0.3}});
    set(2, "Zdz", {{4, 0}, {7, 0.3}});
    set(3, "Zdz", {{4, 0}, {7, 0.3}});
    PictureData data = read(1);
    EXPECT_EQ(sentences(data),
              (QStringList{"Ⅰ段伸出本线路末端：6.20 ohm > 6.05 ohm", "Ⅱ段与L3线 B侧的Ⅱ段时差 0.00 s < 0.30 s"}));
    EXPECT_NEAR(data.findings[1].from, 10.05, 1e-6);  // from the end of stage I of L3 on
    EXPECT_NEAR(data.findings[1].to, 11, 1e-6);
    EXPECT_THAT(texts(stepPicture(data, {})).toStdString(), HasSubstr("电流方向与本保护相反，不需配合"));
    const auto bad = [](const PictureScene& scene) {
        return std::count_if(scene.shapes.begin(), scene.shapes.end(),
                             [](const PictureShape& shape) { return shape.ink.kind == PictureInk::Kind::Bad; });
    };
    EXPECT_EQ(bad(stepPicture(data, {})), 4);  // a band and a stretch of the steps for each
    set(1, "Zdz", {{5, 0}, {10, 0.3}});
    data = read(1);
    EXPECT_EQ(sentences(data), QStringList());
    EXPECT_EQ(bad(stepPicture(data, {})), 0);
    set(1, 2, "t", 0.2);
    EXPECT_EQ(sentences(read(1)), QStringList{"Ⅱ段与L3线 B侧的Ⅰ段时差 0.20 s < 0.30 s"});
}

TEST_F(Pictures, WithoutACoefficientNothingIsJudged) {
    standUp(1);
    set(1, "Zdz", {{5, 0}, {20, 0.3}});
    set(3, "Zdz", {{4, 0}, {7, 0.3}});
    PictureData data = read(1);
    EXPECT_EQ(sentences(data), QStringList());
    EXPECT_THAT(data.notes.join('|').toStdString(), HasSubstr("没有分支系数，按 1 画，不校核时差: L3线 B侧"));
    // The result of a rule tells the coefficient of the relay that decided it: assist 2 for relay 3.
    ASSERT_TRUE(exec("INSERT INTO RLY_FAULTINF (Case_No,NCal,RNo,PNo,RuleNo,RMNo,NSela) VALUES (1,1,1,2,1201,31,3)"));
    ASSERT_TRUE(exec("INSERT INTO RLY_RRVIN (Case_No,NCal,RNo,PNo,RuleNo,V,VarNo) VALUES (1,1,1,2,1201,2,3)"));
    data = read(1);
    EXPECT_EQ(data.neighbours[1].share, 0.5);
    EXPECT_EQ(sentences(data), QStringList{"Ⅱ段与L3线 B侧的Ⅱ段时差 0.00 s < 0.30 s"});
}

TEST_F(Pictures, GroundDistanceTakesTheLargerShareOfBothSequences) {
    standUp(2);
    share("L3", 1, 0.5, 0.8);
    EXPECT_EQ(read(1).neighbours[1].share, 0.8);
}

TEST_F(Pictures, ATimeOfZeroCountsWhereARuleGaveIt) {
    standUp(1);
    set(1, "Zdz", {{5, 0}, {9, 0}});
    PictureData data = read(1);
    EXPECT_EQ(data.relay.stage(1)->time, 0);
    EXPECT_EQ(data.relay.stage(2)->time, std::nullopt);
    EXPECT_TRUE(data.notes.contains("Ⅱ段没有动作时间") && data.notes.contains("Ⅲ段没有定值"));
    ASSERT_TRUE(exec("UPDATE RLY_RDZTEM SET Rdz=0"));
    ASSERT_TRUE(
        exec("INSERT INTO RLY_RDZTEM (Case_No,RNo,PNo,Cdz,RuleNo,Rdz) VALUES (1,1,1,'Zdz',1101,5),"
             "(1,1,2,'Zdz',1201,9),(1,1,2,'t',1201,0)"));
    data = read(1);
    EXPECT_EQ(data.relay.stage(1)->time, std::nullopt);  // the run gave the part something, but no time
    EXPECT_EQ(data.relay.stage(2)->time, 0);
}

TEST_F(Pictures, RelaysOutsideTheCaseShowWhatIsStored) {
    standUp(1);
    ASSERT_TRUE(exec("UPDATE RLY_RDZ SET NRdz11=3.5,NRdz21=0 WHERE RNo=3 AND Cdz='Zdz'"));
    set(3, 1, "Zdz", 4);
    EXPECT_EQ(read(1).neighbours[1].relay.stage(1)->value, 4);
    ASSERT_TRUE(exec("DELETE FROM RLY_RLYOBJ_TEM WHERE RNo=3"));
    EXPECT_EQ(read(1).neighbours[1].relay.stage(1)->value, 3.5);
    EXPECT_EQ(read(1).neighbours[1].relay.stage(2), nullptr);
}

TEST_F(Pictures, CurrentsAreComparedUpToTheShortCircuitAtTheEndOfTheLine) {
    standUp(3);
    share("L3", 1, 0.1, 0.5);
    set(1, "Idz", {{1000, 0}, {200, 0.3}});
    set(3, "Idz", {{600, 0}, {300, 0.3}});  // the relay sees 300 A and 150 A
    PictureData data = read(1);
    EXPECT_NEAR(data.neighbours[1].seen(600), 300, 1e-9);
    EXPECT_EQ(sentences(data), QStringList{"Ⅱ段与L3线 B侧的Ⅱ段时差 0.00 s < 0.30 s"});
    EXPECT_NEAR(data.findings[0].from, 300, 1e-6);
    EXPECT_NEAR(data.findings[0].to, 200, 1e-6);
    EXPECT_TRUE(data.notes.contains("没有算出本线路末端短路时的电流，不校核一段是否超越"));
    ASSERT_TRUE(exec("INSERT INTO RLY_FAULTINF (Case_No,NCal,RNo,PNo,RuleNo,RMNo,NSela) VALUES (1,1,1,1,3101,1,2)"));
    ASSERT_TRUE(exec("INSERT INTO RLY_RRVIN (Case_No,NCal,RNo,PNo,RuleNo,V,VarNo) VALUES (1,1,1,1,3101,1.1,1)"));
    ASSERT_TRUE(
        exec("INSERT INTO RLY_CRUDRM (Case_No,RNo,PNo,RuleNo,RMode,MType,ID_No,K_Loc,FType)"
             " SELECT 1,1,1,3101,1,2,ID_No,100,4 FROM L2_0 WHERE ID_Name='L1'"));
    set(1, 2, "Idz", 310);
    data = read(1);
    EXPECT_EQ(data.lineEnd, 1100);
    EXPECT_EQ(sentences(data), QStringList{"Ⅰ段在本线路末端故障时会动作：1000.0 A < 1100.0 A"});
    ASSERT_EQ(data.faults.size(), 1);
    EXPECT_EQ(data.faults[0].fault + "," + data.faults[0].mode, "两相接地短路 L1 100%,基础网络");
    const PictureScene scene = stepPicture(data, {});
    EXPECT_TRUE(scene.logX && scene.left > 0 && scene.left < 150 && scene.right > 1100);
}

TEST_F(Pictures, APictureFollowsTheValuesAndTheMeasure) {
    standUp(1);
    ASSERT_TRUE(exec("UPDATE RLY_RUD SET CTPri=1200,CTSec=5,PTPri=110,PTSec=0.1"));
    set(1, "Zdz", {{5, 0}});
    ASSERT_TRUE(
        exec("INSERT INTO RLY_RKLMTEM_TEM (RNo,PNo,Cdz,RuleNo,RFault1,DRuleNo,RFault2) VALUES"
             " (1,1,'Zdz',1,6.05,2,1)"));
    const auto circle = [&](bool secondary) {
        const PictureScene scene = impedancePicture(read(1), {1, -1, secondary});
        for (const PictureShape& shape : scene.shapes)
            if (shape.form == PictureShape::Form::Circle) return shape;
        return PictureShape();
    };
    EXPECT_NEAR(circle(false).radius, 2.5, 1e-9);
    EXPECT_NEAR(circle(false).points.first().y(), 2.5, 1e-9);
    EXPECT_NEAR(circle(true).radius, 2.5 * (5.0 / 1200) * (0.1 / 110), 1e-12);
    set(1, 1, "Zdz", 5.2);
    EXPECT_NEAR(circle(false).radius, 2.6, 1e-9);
    const PictureScene scene = impedancePicture(read(1), {});
    EXPECT_TRUE(scene.equalScales);
    EXPECT_THAT(texts(scene).toStdString(), HasSubstr("Ⅰ段 5.200 ohm 0.00 s"));
    int arcs = 0;
    for (const PictureShape& shape : scene.shapes) arcs += shape.form == PictureShape::Form::Arc;
    EXPECT_EQ(arcs, 1);  // the second check has never been computed
}

TEST_F(Pictures, SayWhatIsMissing) {
    standUp(1);
    EXPECT_EQ(impedancePicture(read(99), {}).empty, "没有选定保护");
    EXPECT_THAT(stepPicture(read(1), {}).empty.toStdString(), HasSubstr("没有可画的段: Ⅰ段没有定值"));
    ASSERT_TRUE(exec("UPDATE L2_0 SET X1=NULL WHERE ID_Name='L1'"));
    EXPECT_EQ(impedancePicture(read(1), {}).empty, "网络中没有支路“L1”的阻抗或基准电压");
    ASSERT_TRUE(exec("DELETE FROM RLY_RRBRANCH_TEM WHERE ID_Name='L1'"));
    BranchTable::invalidate();
    EXPECT_EQ(impedancePicture(read(1), {}).empty, "保护所在的支路不在当前网络中");
}
