#include "exchange/TextFile.h"
#include "platform/import/Islands.h"
#include "tests/import/Fixture.h"

namespace import_test {

using namespace import;

namespace {

const char* const demoFolder = MORVANE_SOURCE_DIR "/data/networks/demo";

/// A copy of the demo network in which a test spoils one file.
class Copy : public Folder {
  public:
    Copy() { std::filesystem::copy(demoFolder, path(), std::filesystem::copy_options::recursive); }

    void replace(const std::string& file, const std::string& from, const std::string& to) const {
        write(file, spoiled(exchange::readAll(path() / file), from, to));
    }
    [[nodiscard]] std::string refusal() const {
        Report report;
        return import_test::refusal([&] { readCsv(path(), {}, report); });
    }
};

TEST(DemoNetwork, ReadsWithNothingToReportButWhatCame) {
    Report report;
    const host::NetworkModel model = read(demoFolder, {}, report);
    for (const Finding& f : report.findings) EXPECT_EQ(f.kind, Finding::Kind::Came) << f.subject << f.text;
    EXPECT_EQ(told(report, Finding::Kind::Came, "线路"), 16);
    EXPECT_EQ(model.schemes.size(), 2U);
    EXPECT_EQ(model.loadFlow.at(0).generators.size(), model.generators.size());
    for (const auto& node : model.nodes) EXPECT_TRUE(node.hasPosition) << node.name;
}

TEST(DemoNetwork, ImpedancesAgreeWithHandCalculation) {
    Report report;
    const host::NetworkModel model = read(demoFolder, {}, report);
    // 56 km at 0.08 + j0.41 and 0.25 + j1.20 ohm/km on 220^2 / 100 = 484 ohm
    const auto& line = named(model.lines, "青龙");
    EXPECT_NEAR(line.r1, 4.48 / 484, 1e-9);
    EXPECT_NEAR(line.x1, 22.96 / 484, 1e-9);
    EXPECT_NEAR(line.x0, 67.2 / 484, 1e-9);
    // 13 % and 480 kW of 150 MVA at 230 kV on 220 kV: r = 0.0032, x = 0.129961, times 100 / 150 times 1.092975
    const auto& t2 = named(model.transformers2, "白水1号主变");
    EXPECT_NEAR(t2.r1, 0.0023317, 1e-7);
    EXPECT_NEAR(t2.x1, 0.0946958, 1e-7);
    // pairs 14, 11.5, 3.75 % on 150, 75, 75 MVA: z12 = 0.0933, z13 = 0.1533, z23 = 0.05 (resistance is small)
    const auto& t3 = named(model.transformers3, "青山1号主变");
    EXPECT_NEAR(t3.x1[0], (0.093306 + 0.153321 - 0.049974) / 2, 2e-5);
    EXPECT_NEAR(t3.x1[1], (0.093306 + 0.049974 - 0.153321) / 2, 2e-5);
    // 16.5 % of 141.2 MVA at 10.5 kV on 10 kV
    EXPECT_NEAR(named(model.generators, "白水1号机").x1, 0.165 * 100 / 141.2 * 1.1025, 1e-9);
    EXPECT_LT(named(model.shunts, "龙泉35kV电容器").x1, 0);
}

TEST(DemoNetwork, BehindEveryLineEndStandASourceAndAGroundInEveryMode) {
    Report report;
    const host::NetworkModel model = read(demoFolder, {}, report);
    for (const auto& mode : model.modes)
        for (std::size_t l = 0; l < model.lines.size(); ++l) {
            host::NetworkModel without = model;
            without.lines[l].inService = false;
            for (const auto& change : mode.changes)
                for (auto& t : without.transformers2) t.inService &= !(change.cut && change.element == t.name);
            const Islands islands(without);
            for (const std::string& end : {model.lines[l].i, model.lines[l].j}) {
                EXPECT_TRUE(islands.hasSource(end)) << mode.name << " " << end;
                EXPECT_TRUE(islands.hasGround(end)) << mode.name << " " << end;
            }
        }
}

TEST(IecNetwork, AgreesWithThePublicExchangeOfTheSameNetwork) {
    Report own, report;
    const host::NetworkModel model = read(MORVANE_SOURCE_DIR "/data/networks/iec60909-4", {}, own);
    EXPECT_EQ(model.generators.size(), 8U);
    if (!std::filesystem::exists(shared("cgmes_minigrid"))) GTEST_SKIP() << "no public networks in " << shared("");
    const host::NetworkModel other = read(shared("cgmes_minigrid/BusBranch"), {}, report);
    for (const char* name : {"L1", "L2", "L4", "L5", "L6"}) {
        EXPECT_NEAR(named(model.lines, name).x1, named(other.lines, name).x1, 1e-12) << name;
        EXPECT_NEAR(named(model.lines, name).x0, named(other.lines, name).x0, 1e-12) << name;
    }
    for (const char* name : {"T1", "T2", "T5", "T6"}) {
        const auto &a = named(model.transformers2, name), &b = named(other.transformers2, name);
        EXPECT_NEAR(a.x1 / b.x1, 1, 1e-5) << name;
        EXPECT_NEAR(a.x0 / b.x0, 1, 1e-5) << name;
        EXPECT_EQ(a.i.grounding, b.i.grounding) << name;
        EXPECT_EQ(a.j.grounding, b.j.grounding) << name;
    }
    for (const char* name : {"T3", "T4"})
        for (int w : {0, 2}) {
            const auto &a = named(model.transformers3, name), &b = named(other.transformers3, name);
            EXPECT_NEAR(a.x1[w] / b.x1[w], 1, 1e-5) << name << w;
            EXPECT_NEAR(a.x0[w] / b.x0[w], 1, 1e-5) << name << w;
        }
    for (const char* name : {"G1", "G2", "G3", "Q1", "Q2", "M2a"}) {
        const auto &a = named(model.generators, name), &b = named(other.generators, name);
        EXPECT_NEAR(a.x1 / b.x1, 1, 1e-6) << name;
        EXPECT_NEAR(a.r1 / b.r1, 1, 1e-6) << name;
        EXPECT_EQ(a.grounded, b.grounded) << name;
        if (a.grounded) {
            EXPECT_NEAR(a.x0 / b.x0, 1, 1e-6) << name;
        }
    }
}

TEST(DemoNetwork, WrittenAndReadAgainIsTheSameNetwork) {
    Report report;
    const host::NetworkModel model = read(demoFolder, {}, report);
    const Folder folder;
    writeCsv(model, folder.path());
    const host::NetworkModel again = read(folder.path(), {}, report);
    for (std::size_t i = 0; i < model.transformers3.size(); ++i)
        for (int w = 0; w < 3; ++w) {
            EXPECT_NEAR(again.transformers3[i].x1[w], model.transformers3[i].x1[w], 1e-12);
            EXPECT_NEAR(again.transformers3[i].r0[w], model.transformers3[i].r0[w], 1e-12);
            EXPECT_EQ(again.transformers3[i].winding[w].grounding, model.transformers3[i].winding[w].grounding);
        }
    const Folder third;
    writeCsv(again, third.path());
    for (const char* file : {"nodes.csv", "switches.csv", "schemes.csv", "modes.csv", "loadflow_nodes.csv"})
        EXPECT_EQ(exchange::readAll(third.path() / file), exchange::readAll(folder.path() / file)) << file;
}

TEST(CsvReader, TellsFileAndLineOfWhatItRefuses) {
    struct Case {
        const char *file, *from, *to, *place, *words;
    };
    for (const Case& c : {
             Case{"lines.csv", "length_km", "length_mi", "lines.csv:1: ", "没有定义的列“length_mi”"},
             Case{"lines.csv", "name,node_i", "node_i", "lines.csv:2: ", "个字段"},
             Case{"nodes.csv", ",station,", ",bus,", "nodes.csv:1: ", "列“bus”重复"},
             Case{"lines.csv", "青龙,", "青龙 ,", "lines.csv:4: ", "名称末尾有空格"},
             Case{"lines.csv", "青龙,", "青\t龙,", "lines.csv:4: ", "控制字符"},
             Case{"lines.csv", "青龙,", "一二三四五六七八九十一二三四五六七八九十一,", "lines.csv:4: ", "20 个字符"},
             Case{"lines.csv", "青龙,", "青龙\xF0\x9F\x98\x80,", "lines.csv:4: ", "GBK"},
             Case{"lines.csv", "青龙,", "\xFF\xFE,", "lines.csv:4: ", "UTF-8"},
             Case{"lines.csv", "青龙,", "青白I,", "lines.csv:4: ", "与第 2 行重名"},
             Case{"lines.csv", "22.96", "22,96", "lines.csv:4: ", "16 个字段"},
             Case{"lines.csv", "22.96", "22.96x", "lines.csv:4: ", "“22.96x”不是数"},
             Case{"lines.csv", "22.96", "inf", "lines.csv:4: ", "不是数"},
             Case{"lines.csv", "22.96", "", "lines.csv:4: ", "x1_ohm：不能为空"},
             Case{"lines.csv", "柳林变110kV母线", "柳林变", "lines.csv:9: ", "没有节点“柳林变”"},
             Case{"loads.csv", "青山变10kV母线", "青山1号主变中性点", "loads.csv:2: ", "没有节点"},
             Case{"transformers2.csv", "YN,D", "YN,Z", "transformers2.csv:2: ", "“Z”不是 D、Y、YN 之一"},
             Case{"transformers2.csv", ",13,480,", ",13,48000,", "transformers2.csv:2: ", "短路损耗"},
             Case{"switches.csv", "breaker,1", "breaker,是", "switches.csv:3: ", "不是 0 或 1"},
             Case{"modes.csv", ",青龙,", ",青龙路,", "modes.csv:2: ", "没有支路“青龙路”"},
             Case{"scheme_changes.csv", "青龙线停运", "青龙停", "scheme_changes.csv:2: ", "没有定义“青龙停”"},
             Case{"schemes.csv", "青龙线停运", "一二三四五六七八九十一", "schemes.csv:3: ", "10 个字符"},
             Case{"stations.csv", "青山变", "\"青山变", "stations.csv:2: ", "引号没有结束"},
         }) {
        const Copy copy;
        copy.replace(c.file, c.from, c.to);
        EXPECT_THAT(copy.refusal(), ::testing::AllOf(::testing::StartsWith(c.place), ::testing::HasSubstr(c.words)))
            << c.file << ": " << c.from << " -> " << c.to;
    }
}

TEST(CsvReader, MissingColumnsAndFilesAreRefused) {
    const Copy copy;
    copy.replace("stations.csv", "name,x,y", "name,x,z");
    EXPECT_THAT(copy.refusal(), ::testing::HasSubstr("stations.csv:1: "));
    copy.write("stations.csv", "name,x\nA,1\n");
    EXPECT_EQ(copy.refusal(), "stations.csv:1: 缺少列“y”");
    copy.write("line.csv", "name\n");
    EXPECT_EQ(copy.refusal(), "line.csv: 不是网络数据的文件名");
    std::filesystem::remove(copy.path() / "line.csv");
    std::filesystem::remove(copy.path() / "stations.csv");
    std::filesystem::remove(copy.path() / "nodes.csv");
    EXPECT_EQ(copy.refusal(), "nodes.csv: 文件不存在");
}

TEST(CsvReader, QuotedNamesAndLineNumbersBehindThemAreKept) {
    const Copy copy;
    copy.write("stations.csv", "\xEF\xBB\xBFname,x,y\r\n\r\n\" a'\"\"\\%,b\",1,2\r\n坏 ,1,2");
    EXPECT_THAT(copy.refusal(), ::testing::StartsWith("stations.csv:4: "));
    const Folder folder;
    folder.write("nodes.csv",
                 "name,base_kv,node_type,bus,physical_bus,station,x,y,v_min_kv\n\" a'\"\"\\%,b\",110,0,,1,,,,\n");
    Report report;
    const host::NetworkModel model = readCsv(folder.path(), {}, report);
    EXPECT_EQ(model.nodes.at(0).name, " a'\"\\%,b");
    EXPECT_FALSE(model.nodes.at(0).hasPosition);
    EXPECT_EQ(model.schemes.at(0).name, "基础方案");
}

TEST(Check, TellsZeroSequenceFaultsAndIslands) {
    const Copy copy;
    copy.replace("lines.csv", ",67.2,", ",0,");
    copy.replace("lines.csv", ",10.5,50.4,", ",1,50.4,");
    Report report;
    readCsv(copy.path(), {}, report);
    EXPECT_EQ(told(report, Finding::Kind::Suspicious, "线路"), 2);
}

}  // namespace

}  // namespace import_test
