#include "platform/import/Islands.h"
#include "platform/import/SequenceDefaults.h"
#include "tests/import/Fixture.h"

namespace import_test {

using namespace import;
using host::Grounding;

namespace {

host::Line line(const std::string& name, const std::string& i, const std::string& j, double x0 = 0.3) {
    host::Line l;
    l.name = name, l.i = i, l.j = j;
    l.r1 = 0.01, l.x1 = 0.1, l.r0 = 0.03, l.x0 = x0;
    return l;
}

/// A generator at G behind a delta-star transformer to A, lines A-B and C-D, and a switch B-C.
host::NetworkModel chain(Grounding star) {
    host::NetworkModel model;
    for (const char* name : {"G", "A", "B", "C", "D"}) {
        model.nodes.emplace_back().name = name;
        model.nodes.back().baseKv = *name == 'G' ? 10 : 110;
    }
    model.schemes.push_back({"基础方案", {}});
    host::Transformer2 t;
    t.name = "T", t.i = {"G", 10, 50, Grounding::Delta}, t.j = {"A", 110, 50, star};
    t.x1 = t.x0 = 0.2;
    model.transformers2.push_back(t);
    host::Generator g;
    g.name = "G1", g.node = "G", g.x1 = 0.3;
    model.generators.push_back(g);
    model.lines = {line("L1", "A", "B"), line("L2", "C", "D")};
    model.switches.push_back({"K", "B", "C", true, true});
    return model;
}

std::string checked(host::NetworkModel model, Report& report) {
    return refusal([&] { check(model, {}, report); });
}

TEST(Check, GroundReachesThroughSwitchesAndEndsAtDeltas) {
    const Islands grounded(chain(Grounding::Grounded));
    EXPECT_TRUE(grounded.hasGround("D"));
    EXPECT_TRUE(grounded.hasSource("D"));
    EXPECT_FALSE(grounded.hasGround("G")) << "behind the delta";
    host::NetworkModel model = chain(Grounding::Isolated);
    EXPECT_THAT(Islands(model).withoutGround(), ::testing::ElementsAre("A"));
    model.switches[0].closed = false;
    EXPECT_THAT(Islands(model).withoutSource(), ::testing::ElementsAre("C"));
    EXPECT_THAT(Islands(model).withoutGround(), ::testing::ElementsAre("A")) << "a dead island needs no ground";
}

TEST(Check, ThreeWindingStarIsGroundedByItsDeltaOnly) {
    host::NetworkModel model = chain(Grounding::Isolated);
    host::Transformer3 t;
    t.name = "T3", t.star = "S";
    for (int w = 0; w < 3; ++w) t.x1[w] = t.x0[w] = 0.1;
    t.winding[0] = {"A", 110, 50, Grounding::Grounded}, t.winding[1] = {"C", 110, 50, Grounding::Isolated};
    t.winding[2] = {"G", 10, 50, Grounding::Isolated};
    model.transformers3.push_back(t);
    EXPECT_FALSE(Islands(model).hasGround("A"));
    model.transformers3[0].winding[2].grounding = Grounding::Delta;
    EXPECT_TRUE(Islands(model).hasGround("A"));
    model.transformers3[0].inService = false;
    EXPECT_FALSE(Islands(model).hasGround("A"));
}

TEST(Check, ZeroImpedancesAreRepairedAndTold) {
    host::NetworkModel model = chain(Grounding::Grounded);
    model.lines[0].r1 = model.lines[0].x1 = 0;
    model.lines[1].x0 = 0;
    Report report;
    check(model, {}, report);
    EXPECT_EQ(model.lines[0].x1, 1e-6);
    EXPECT_EQ(model.lines[1].r0, 0.03) << "only both zero is repaired";
    EXPECT_EQ(told(report, Finding::Kind::Changed, "线路"), 1);
    EXPECT_EQ(told(report, Finding::Kind::Suspicious, "线路"), 1);
    EXPECT_EQ(report.findings.front().kind, Finding::Kind::Came);
}

TEST(Check, VoltagesOfTheWrongLevelAreTold) {
    host::NetworkModel model = chain(Grounding::Grounded);
    model.nodes[4].baseKv = 10;
    model.transformers2[0].j.ratedKv = 11;
    Report report;
    check(model, {}, report);
    EXPECT_EQ(told(report, Finding::Kind::Suspicious, "线路"), 1);
    EXPECT_EQ(told(report, Finding::Kind::Suspicious, "变压器"), 1);
}

TEST(Check, RefusesWhatCannotBeStored) {
    Report report;
    host::NetworkModel model = chain(Grounding::Grounded);
    model.lines[1].name = "L1";
    EXPECT_EQ(checked(model, report), "线路“L1”重名");
    model = chain(Grounding::Grounded);
    model.lines[1].j = "E";
    EXPECT_EQ(checked(model, report), "“L2”：没有节点“E”");
    model = chain(Grounding::Grounded);
    model.lines[1].x1 = NAN;
    EXPECT_EQ(checked(model, report), "“L2”：阻抗不是有限的数");
    model = chain(Grounding::Grounded);
    model.schemes[0].name = "一二三四五六七八九十一";
    EXPECT_THAT(checked(model, report), ::testing::HasSubstr("10 个字符"));
    model = chain(Grounding::Grounded);
    model.transformers3.push_back({});
    model.transformers3[0].name = "T3", model.transformers3[0].star = "A";
    EXPECT_EQ(checked(model, report), "节点“A”重名");
}

TEST(SequenceDefaults, FillOnlyWhatIsMissingAndCountIt) {
    host::NetworkModel model = chain(Grounding::Grounded);
    model.lines[0].r0 = model.lines[0].x0 = NAN;
    model.transformers2[0].r0 = model.transformers2[0].x0 = NAN;
    model.generators[0].r0 = model.generators[0].x0 = NAN;
    Report report;
    Options options;
    options.defaultSequenceData = false;
    host::NetworkModel copy = model;
    EXPECT_THAT(refusal([&] { completeSequenceData(copy, options, report); }), ::testing::HasSubstr("零序数据"));
    completeSequenceData(model, {}, report);
    EXPECT_DOUBLE_EQ(model.lines[0].r0, 0.03);
    EXPECT_EQ(model.lines[1].x0, 0.3);
    EXPECT_EQ(model.transformers2[0].x0, 0.2);
    EXPECT_EQ(told(report, Finding::Kind::Defaulted, "线路"), 1);
    EXPECT_EQ(told(report, Finding::Kind::Defaulted, "发电机"), 0) << "its neutral is not grounded";
}

TEST(Read, TellsTheKindOfInputByItsContent) {
    const Folder folder;
    Report report;
    const auto refused = [&](const std::filesystem::path& path) { return refusal([&] { read(path, {}, report); }); };
    EXPECT_THAT(refused(folder.path() / "absent"), ::testing::HasSubstr("文件不存在"));
    EXPECT_EQ(refused(folder.write("a.txt", "hello")), "a.txt: 不是 CSV 目录、CGMES 模型或 MATPOWER 算例");
    EXPECT_EQ(refused(folder.write("b.dat", "\xEF\xBB\xBF <a/>")), "b.dat:1: 不是 CIM16 或 CIM100 的网络模型");
    EXPECT_THAT(refused(folder.write("c.txt", "mpc.bus = [ 1 ")), ::testing::StartsWith("c.txt:1: mpc.bus"));
    EXPECT_THAT(refused(folder.write("d.zip", "PK\x03\x04")), ::testing::StartsWith("d.zip: "));
    EXPECT_THAT(refused(folder.write("e/node.csv", "name\n").parent_path()), ::testing::StartsWith("node.csv: "));
    EXPECT_THAT(refused(folder.write("f/x.md", "").parent_path()), ::testing::HasSubstr("没有 XML 文件"));
}

}  // namespace

}  // namespace import_test
