#include <complex>
#include <map>

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
    EXPECT_EQ(told(report, Finding::Kind::Defaulted, "线路"), 3 + 1) << "zero sequence of all, load current of one";
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

using Complex = std::complex<double>;

/// Bus admittance matrix of one sequence with both sides of every transformer grounded.
std::vector<std::vector<Complex>> admittance(const host::NetworkModel& model, bool zero) {
    std::map<std::string, std::size_t> at;
    for (const auto& node : model.nodes) at.emplace(node.name, at.size());
    std::vector<std::vector<Complex>> y(at.size(), std::vector<Complex>(at.size()));
    const auto join = [&](const std::string& i, const std::string& j, Complex z) {
        const std::size_t a = at[i], b = at[j];
        y[a][a] += 1.0 / z, y[b][b] += 1.0 / z, y[a][b] -= 1.0 / z, y[b][a] -= 1.0 / z;
    };
    for (const auto& e : model.lines) join(e.i, e.j, zero ? Complex(e.r0, e.x0) : Complex(e.r1, e.x1));
    for (const auto& e : model.transformers2)
        join(e.i.node, e.j.node, zero ? Complex(e.r0, e.x0) : Complex(e.r1, e.x1));
    for (const auto& e : model.generators)
        y[at[e.node]][at[e.node]] += 1.0 / (zero ? Complex(e.r0, e.x0) : Complex(e.r1, e.x1));
    return y;
}

/// Driving-point impedance of bus k by elimination of all others.
Complex drivingPoint(std::vector<std::vector<Complex>> y, std::size_t k) {
    std::swap(y[k], y.back());
    for (auto& row : y) std::swap(row[k], row.back());
    for (std::size_t p = 0; p + 1 < y.size(); ++p)
        for (std::size_t i = p + 1; i < y.size(); ++i) {
            const Complex factor = y[i][p] / y[p][p];
            for (std::size_t j = p; factor != 0.0 && j < y.size(); ++j) y[i][j] -= factor * y[p][j];
        }
    return 1.0 / y.back().back();
}

TEST(Matpower, Case118GivesThePublishedFaultCurrents) {
    if (!std::filesystem::exists(shared("matpower"))) GTEST_SKIP() << "no public networks in " << shared("");
    Report report;
    const host::NetworkModel model = read(shared("matpower/case118.m"), {}, report);
    struct Bus {
        std::size_t number;
        double threePhase, singlePhase;
    };
    for (const Bus& bus : {Bus{11, 12.55898, 10.348773}, Bus{32, 10.874737, 10.145257}}) {
        const Complex z1 = drivingPoint(admittance(model, false), bus.number - 1);
        const Complex z0 = drivingPoint(admittance(model, true), bus.number - 1);
        const double base = 100 / (std::sqrt(3.0) * model.nodes[bus.number - 1].baseKv);
        EXPECT_NEAR(base / std::abs(z1), bus.threePhase, 1e-5) << bus.number;
        EXPECT_NEAR(3 * base / std::abs(2.0 * z1 + z0), bus.singlePhase, 1e-5) << bus.number;
    }
}

TEST(Matpower, ALargeCaseWrittenAsCsvReadsBackTheSame) {
    if (!std::filesystem::exists(shared("matpower"))) GTEST_SKIP() << "no public networks in " << shared("");
    Report report;
    const host::NetworkModel model = read(shared("matpower/case9241pegase.m"), {}, report);
    const Folder folder;
    writeCsv(model, folder.path());
    const host::NetworkModel again = read(folder.path(), {}, report);
    ASSERT_EQ(again.transformers2.size(), model.transformers2.size());
    for (std::size_t i = 0; i < model.transformers2.size(); ++i) {
        const auto &a = model.transformers2[i], &b = again.transformers2[i];
        EXPECT_NEAR(a.x1, b.x1, 1e-9 * std::hypot(a.r1, a.x1)) << a.name;
        EXPECT_NEAR(a.r0, b.r0, 1e-9 * std::hypot(a.r0, a.x0)) << a.name;
    }
    ASSERT_EQ(again.lines.size(), model.lines.size());
    for (std::size_t i = 0; i < model.lines.size(); ++i)
        EXPECT_NEAR(model.lines[i].x0, again.lines[i].x0, 1e-12 * std::abs(model.lines[i].x0));
    EXPECT_EQ(again.loadFlow.at(0).nodes.size(), model.nodes.size());
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
