#include "exchange/TextFile.h"
#include "tests/import/Fixture.h"

namespace import_test {

using namespace import;

namespace {

constexpr const char* smallCase = R"(function mpc = small
mpc.version = '2';
mpc.baseMVA = 50;	% half the usual base
mpc.bus = [
	1	3	0	0	0	0	1	1.05	0	220	1	1.1	0.9;  % first
	2	1	20	5	0	10	1	0.98	-3	220	1	1.1	0.9;
	3	1	0	0	0	0	1	1	-5	110	1	1.1	0.9;
	9	4	0	0	0	0	1	1	0	110	1	1.1	0.9;
];
mpc.gen = [
	1	30	4	10	-10	1.05	100	1	5	0;
	1	0	0	10	-10	1.05	100	0	200	0;
];
mpc.branch = [
	1	2	0.01	0.1	0.02	100	0	0	0	0	1	-360	360;
	1	2	0.01	0.1	0.02	0	0	0	0	0	1	-360	360;
	2	3	0	0.05	0	80	0	0	0	0	1	-360	360;
	2	1	0	0	0	0	0	0	0	0	1	-360	360;
	3	9	0	0.1	0	0	0	0	0	0	1	-360	360;
];
mpc.bus_name = {
	'O''Hara 220 kV station';
	'B';
	'B';
	'D';
};
)";

host::NetworkModel readText(const std::string& text, Report& report) {
    const Folder folder;
    return readMatpower(folder.write("small.m", text), {}, report);
}

TEST(Matpower, ReadsCircuitsTransformersAndMachinesOnTheirBase) {
    Report report;
    const host::NetworkModel model = readText(smallCase, report);
    ASSERT_EQ(model.lines.size(), 3U);
    EXPECT_EQ(model.lines[1].name, "LN1-2#2");
    EXPECT_DOUBLE_EQ(model.lines[0].x1, 0.2);
    EXPECT_DOUBLE_EQ(model.lines[0].x0, 0.6);
    EXPECT_NEAR(model.lines[0].ratedA, 262.43, 0.01);
    EXPECT_DOUBLE_EQ(model.lines[2].x1, 1e-6);
    ASSERT_EQ(model.transformers2.size(), 1U);
    EXPECT_EQ(model.transformers2[0].name, "TR2-3");
    ASSERT_EQ(model.generators.size(), 1U);
    EXPECT_NEAR(model.generators[0].x1, 0.2 * 100 / 11, 1e-12);
    EXPECT_DOUBLE_EQ(model.shunts.at(0).x1, -10);
    EXPECT_EQ(model.loadFlow.at(0).nodes.at(1).vAngle, -3);
    EXPECT_EQ(told(report, Finding::Kind::Defaulted, "线路"), 3);
}

TEST(Matpower, NamesAreShortenedAndMadeUniqueAndToldSo) {
    Report report;
    const host::NetworkModel model = readText(smallCase, report);
    EXPECT_EQ(model.nodes[0].name, "O'Hara 220 kV stat~1");
    EXPECT_EQ(model.nodes[2].name, "B~1");
    EXPECT_EQ(told(report, Finding::Kind::Changed, "节点"), 3);
}

TEST(Matpower, RefusesWhatIsNoCaseWithTheLine) {
    const auto refusalOf = [](const std::string& text) {
        Report report;
        return refusal([&] { readText(text, report); });
    };
    const std::string text = smallCase;
    EXPECT_EQ(refusalOf("hello\n"), "small.m: 没有 mpc.baseMVA，不是 MATPOWER 第 2 版算例");
    EXPECT_EQ(refusalOf(text.substr(0, text.find("2	3	0	0.05"))),
              "small.m:17: mpc.branch 从第 14 行开始，没有结束");
    EXPECT_EQ(refusalOf(spoiled(text, "0.98", "abc")), "small.m:6: 不是数：abc");
    EXPECT_EQ(refusalOf(spoiled(text, "0.98", "Inf")), "small.m:6: 第 8 列不是有限的数");
    EXPECT_THAT(refusalOf(spoiled(text, "0.98", "")), ::testing::StartsWith("small.m:6: "));
    EXPECT_EQ(refusalOf(spoiled(text, "	2	3	0	0.05", "	2	7	0	0.05")),
              "small.m:17: 没有节点 7");
    EXPECT_EQ(refusalOf(spoiled(text, "	3	1	0", "	2	1	0")), "small.m:7: 节点号 2 重复");
}

TEST(Matpower, PublishedCasesComeInWhole) {
    struct Case {
        const char* file;
        std::size_t nodes, branches, machines;
    };
    for (const Case& c : {Case{"case118.m", 118, 186, 54}, Case{"case9241pegase.m", 9241, 16049, 1445},
                          Case{"case_ACTIVSg2000.m", 2000, 3206, 432}}) {
        if (!std::filesystem::exists(shared("matpower"))) GTEST_SKIP() << "no public networks in " << shared("");
        Report report;
        const host::NetworkModel model = read(shared("matpower") / c.file, {}, report);
        EXPECT_EQ(model.nodes.size(), c.nodes) << c.file;
        EXPECT_EQ(model.lines.size() + model.transformers2.size(), c.branches) << c.file;
        EXPECT_EQ(model.generators.size(), c.machines) << c.file;
    }
}

}  // namespace

}  // namespace import_test
