#include <zip.h>

#include <QString>

#include "exchange/TextFile.h"
#include "tests/import/Fixture.h"

namespace import_test {

using namespace import;
using host::Grounding;

namespace {

constexpr const char* cim16 = "http://iec.ch/TC57/2013/CIM-schema-cim16#";
constexpr const char* cim100 = "http://iec.ch/TC57/CIM100#";

std::string document(const std::string& profile, const std::string& objects, const std::string& space = cim16) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rdf:RDF xmlns:cim=\"" + space +
           "\" xmlns:md=\"m#\" xmlns:dm=\"d#\" xmlns:rdf=\"r#\">\n<md:FullModel rdf:about=\"urn:uuid:" + profile +
           "\"><md:Model.profile>http://x/" + profile + "/3/1</md:Model.profile></md:FullModel>\n" + objects +
           "</rdf:RDF>\n";
}

/// An object with its attributes; a value that begins with "#" or is an address is a reference.
std::string object(const std::string& className, const std::string& id,
                   const std::vector<std::pair<std::string, std::string>>& values, const char* how = "ID") {
    const std::string prefix = std::string(how) == "ID" ? "_" : "#_";
    std::string text = "<cim:" + className + " rdf:" + how + "=\"" + prefix + id + "\">\n";
    for (const auto& [key, value] : values)
        text += value.starts_with("#") || value.starts_with("http")
                    ? "<cim:" + key + " rdf:resource=\"" + value + "\"/>\n"
                    : "<cim:" + key + ">" + value + "</cim:" + key + ">\n";
    return text + "</cim:" + className + ">\n";
}

std::string terminal(const std::string& id, const std::string& equipment, int number) {
    return object(
        "Terminal", id,
        {{"ACDCTerminal.sequenceNumber", std::to_string(number)}, {"Terminal.ConductingEquipment", "#_" + equipment}});
}

std::string line(const std::string& id, const std::string& x0) {
    return object("ACLineSegment", id,
                  {{"IdentifiedObject.name", id},
                   {"Conductor.length", "40"},
                   {"ACLineSegment.r", "1.21"},
                   {"ACLineSegment.x", "12.1"},
                   {"ACLineSegment.r0", x0 == "0" ? "0" : "3"},
                   {"ACLineSegment.x0", x0}}) +
           terminal(id + "t1", id, 1) + terminal(id + "t2", id, 2);
}

/// Two coupled lines between A and B, the second drawn from B to A, and a machine with its terminals crossed.
std::string equipment() {
    return line("L1", "36.3") + line("L2", "0") +
           object("MutualCoupling", "M",
                  {{"MutualCoupling.r0", "0.605"},
                   {"MutualCoupling.x0", "6.05"},
                   {"MutualCoupling.First_Terminal", "#_L1t1"},
                   {"MutualCoupling.Second_Terminal", "#_L2t2"},
                   {"MutualCoupling.distance11", "10"},
                   {"MutualCoupling.distance12", "40"},
                   {"MutualCoupling.distance21", "10"},
                   {"MutualCoupling.distance22", "40"}}) +
           object("SynchronousMachine", "G",
                  {{"IdentifiedObject.name", "G"},
                   {"RotatingMachine.ratedS", "50"},
                   {"RotatingMachine.ratedU", "121"},
                   {"SynchronousMachine.satDirectSubtransX", "0.2"},
                   {"SynchronousMachine.earthing", "true"}}) +
           terminal("Gt", "G", 1) + object("BaseVoltage", "V", {{"BaseVoltage.nominalVoltage", "110"}});
}

std::string topology() {
    const auto node = [](const char* id) {
        return object("TopologicalNode", id, {{"IdentifiedObject.name", id}, {"TopologicalNode.BaseVoltage", "#_V"}});
    };
    const auto at = [](const char* id, const char* where) {
        return object("Terminal", id, {{"Terminal.TopologicalNode", std::string("#_") + where}}, "about");
    };
    return node("A") + node("B") + at("L1t1", "A") + at("L1t2", "B") + at("L2t1", "B") + at("L2t2", "A") +
           at("Gt", "A");
}

/// A folder with the small exchange, of which a test replaces documents.
class Exchange : public Folder {
  public:
    explicit Exchange(const char* space = cim16) {
        write("a_tp.xml", document("Topology", topology(), space));
        write("b_eq.xml", document("EquipmentCore", equipment(), space));
        write("c_ssh.xml", document("SteadyStateHypothesis",
                                    object("Terminal", "L1t2", {{"ACDCTerminal.connected", "false"}}, "about") +
                                        object("SynchronousMachine", "G", {{"RotatingMachine.p", "-30"}}, "about"),
                                    space));
    }
    [[nodiscard]] std::string refusal() const {
        Report report;
        return import_test::refusal([&] { read(path(), {}, report); });
    }
};

void pack(const std::filesystem::path& archive, const std::vector<std::filesystem::path>& files) {
    zip_t* const zip = zip_open(archive.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const auto& file : files)
        zip_file_add(zip, ("inner/" + file.filename().string()).c_str(), zip_source_file(zip, file.c_str(), 0, -1),
                     ZIP_FL_OVERWRITE);
    ASSERT_EQ(zip_close(zip), 0);
}

TEST(Cgmes, ReadsBothVersionsWithCouplingAndState) {
    for (const char* space : {cim16, cim100}) {
        const Exchange exchange(space);
        Report report;
        const host::NetworkModel model = read(exchange.path(), {}, report);
        ASSERT_EQ(model.lines.size(), 2U);
        EXPECT_NEAR(model.lines[0].x1, 0.1, 1e-12);
        EXPECT_NEAR(model.lines[0].x0, 0.3, 1e-12);
        EXPECT_TRUE(model.lines[0].openAtJ);
        EXPECT_NEAR(model.lines[1].x0, 0.3, 1e-12) << "three times x1, not zero";
        EXPECT_EQ(told(report, Finding::Kind::Defaulted, "线路"), 1);
        ASSERT_EQ(model.mutuals.size(), 1U);
        EXPECT_NEAR(model.mutuals[0].x0, 0.05, 1e-12);
        EXPECT_EQ(model.mutuals[0].sense, -1);
        EXPECT_NEAR(model.mutuals[0].firstFrom, 25, 1e-9);
        EXPECT_NEAR(model.mutuals[0].secondTo, 75, 1e-9) << "measured from the far end";
        EXPECT_NEAR(model.generators.at(0).x1, 0.2 * 2 * 1.21, 1e-12);
        EXPECT_EQ(model.generators[0].pMw, 30);
    }
}

std::string end(const std::string& id, int number, const std::string& kind, bool grounded, double kv, double x) {
    return object("PowerTransformerEnd", id,
                  {{"TransformerEnd.endNumber", std::to_string(number)},
                   {"TransformerEnd.grounded", grounded ? "true" : "false"},
                   {"TransformerEnd.xground", "7"},
                   {"TransformerEnd.Terminal", "#_" + id + "t"},
                   {"PowerTransformerEnd.PowerTransformer", "#_T"},
                   {"PowerTransformerEnd.connectionKind", std::string(cim16) + "WindingConnection." + kind},
                   {"PowerTransformerEnd.ratedU", std::to_string(kv)},
                   {"PowerTransformerEnd.x", std::to_string(x)},
                   {"PowerTransformerEnd.x0", std::to_string(x / 2)}});
}

/// Connectivity node with its voltage level, station V's level of that voltage.
std::string place(const std::string& id, const std::string& kv) {
    return object("ConnectivityNode", id,
                  {{"IdentifiedObject.name", "N" + id}, {"ConnectivityNode.ConnectivityNodeContainer", "#_VL" + id}}) +
           object("VoltageLevel", "VL" + id,
                  {{"VoltageLevel.Substation", "#_S"}, {"VoltageLevel.BaseVoltage", "#_BV" + id}}) +
           object("BaseVoltage", "BV" + id, {{"BaseVoltage.nominalVoltage", kv}});
}

std::string at(const std::string& terminalId, const std::string& equipmentId, const std::string& node, int number = 1) {
    return object("Terminal", terminalId,
                  {{"ACDCTerminal.sequenceNumber", std::to_string(number)},
                   {"Terminal.ConnectivityNode", "#_" + node},
                   {"Terminal.ConductingEquipment", "#_" + equipmentId}});
}

/// A three-winding transformer whose ends are numbered against its terminals, a bus bar behind a breaker, a capacitor,
/// a motor, and loads of what the other profiles add.
TEST(Cgmes, NodeBreakerEquipmentFollowsEndsNotTerminalNumbers) {
    const Folder folder;
    folder.write("eq.xml",
                 document("EquipmentCore",
                          object("Substation", "S", {{"IdentifiedObject.name", "站"}}) + place("H", "220") +
                              place("M", "110") + place("B", "110") + place("L", "10") +
                              object("PowerTransformer", "T", {{"IdentifiedObject.name", "T"}}) +
                              end("e2", 2, "Y", false, 121, 0) + end("e3", 3, "D", false, 11, 0.5) +
                              end("e1", 1, "Yn", true, 242, 58.08) + at("e1t", "T", "H", 3) + at("e2t", "T", "M", 1) +
                              at("e3t", "T", "L", 2) + object("Breaker", "K", {{"IdentifiedObject.name", "K"}}) +
                              at("k1", "K", "M", 1) + at("k2", "K", "B", 2) +
                              object("BusbarSection", "BB", {{"IdentifiedObject.name", "母线"}}) + at("bb", "BB", "B") +
                              object("LinearShuntCompensator", "C",
                                     {{"IdentifiedObject.name", "C"},
                                      {"ShuntCompensator.normalSections", "1"},
                                      {"LinearShuntCompensator.bPerSection", "0.001"}}) +
                              at("ct", "C", "B") +
                              object("AsynchronousMachine", "A",
                                     {{"IdentifiedObject.name", "A"},
                                      {"RotatingMachine.ratedU", "10"},
                                      {"RotatingMachine.ratedPowerFactor", "0.8"},
                                      {"AsynchronousMachine.efficiency", "100"},
                                      {"AsynchronousMachine.iaIrRatio", "5"},
                                      {"AsynchronousMachine.ratedMechanicalPower", "8"}}) +
                              at("at", "A", "L")));
    folder.write("ssh.xml",
                 document("SteadyStateHypothesis",
                          object("Breaker", "K", {{"Switch.open", "true"}}, "about") +
                              object("LinearShuntCompensator", "C", {{"ShuntCompensator.sections", "3"}}, "about")));
    folder.write("tp.xml", document("Topology", object("TopologicalNode", "TN", {}) +
                                                    object("ConnectivityNode", "H",
                                                           {{"ConnectivityNode.TopologicalNode", "#_TN"}}, "about")));
    folder.write(
        "sv.xml",
        document("StateVariables",
                 object("SvVoltage", "v",
                        {{"SvVoltage.v", "231"}, {"SvVoltage.angle", "-4"}, {"SvVoltage.TopologicalNode", "#_TN"}})));
    folder.write("dl.xml",
                 document("DiagramLayout", object("DiagramObject", "o", {{"DiagramObject.IdentifiedObject", "#_BB"}}) +
                                               object("DiagramObjectPoint", "p",
                                                      {{"DiagramObjectPoint.xPosition", "10"},
                                                       {"DiagramObjectPoint.yPosition", "40"},
                                                       {"DiagramObjectPoint.DiagramObject", "#_o"}}) +
                                               object("DiagramObjectPoint", "q",
                                                      {{"DiagramObjectPoint.xPosition", "20"},
                                                       {"DiagramObjectPoint.yPosition", "40"},
                                                       {"DiagramObjectPoint.DiagramObject", "#_o"}})));
    Report report;
    const host::NetworkModel model = read(folder.path(), {}, report);
    const auto& t = model.transformers3.at(0);
    EXPECT_EQ(t.star, "T中性点");
    EXPECT_EQ(t.winding[0].node, "NH");
    EXPECT_EQ(t.winding[0].xn, 7);
    EXPECT_EQ(t.winding[0].grounding, Grounding::Grounded);
    EXPECT_EQ(t.winding[2].node, "NL");
    EXPECT_EQ(t.winding[2].grounding, Grounding::Delta);
    // ohm on 242 kV over 484 ohm; the 11 kV end through (242 / 11)^2; the middle one is zero and repaired
    EXPECT_NEAR(t.x1[0], 58.08 / 484, 1e-12);
    EXPECT_NEAR(t.x1[1], 1e-6, 1e-12);
    EXPECT_NEAR(t.x0[2], 0.25 * 484 / 484, 1e-12);
    EXPECT_FALSE(model.switches.at(0).closed);
    const auto& bus = named(model.nodes, "母线");
    EXPECT_TRUE(bus.physicalBus);
    EXPECT_EQ(bus.station, "站");
    EXPECT_EQ(bus.x, 15);
    EXPECT_NEAR(model.shunts.at(0).x1, -1 / (0.003 * 121), 1e-12);
    EXPECT_NEAR(model.generators.at(0).x1, 100 / 10.0 / 5, 1e-12);
    EXPECT_EQ(model.loadFlow.at(0).nodes.size(), 1U);
    EXPECT_NEAR(model.loadFlow[0].nodes[0].vMag, 1.05, 1e-12);
}

/// A limit of a type at the I end of L1.
std::string limit(const std::string& id, const std::string& type, const std::string& ampere) {
    return object("OperationalLimitType", "ty" + id, {{"OperationalLimitType.limitType", cim16 + type}}) +
           object("OperationalLimitSet", "se" + id, {{"OperationalLimitSet.Terminal", "#_L1t1"}}) +
           object("CurrentLimit", id,
                  {{"OperationalLimit.OperationalLimitSet", "#_se" + id},
                   {"OperationalLimit.OperationalLimitType", "#_ty" + id},
                   {"CurrentLimit.value", ampere}});
}

TEST(Cgmes, RatedCurrentIsThePermanentLimit) {
    const Exchange exchange;
    exchange.write("b_eq.xml", document("EquipmentCore", equipment() + limit("a", "LimitTypeKind.tatl", "900") +
                                                             limit("b", "LimitTypeKind.patl", "600") +
                                                             limit("c", "LimitTypeKind.alarm", "500")));
    Report report;
    const host::NetworkModel model = read(exchange.path(), {}, report);
    EXPECT_EQ(model.lines[0].ratedA, 600);
    EXPECT_EQ(told(report, Finding::Kind::Missing, "线路"), 1) << "the other line has no limit";
}

TEST(Cgmes, MissingProfilesAreToldAndTopologyIsNeeded) {
    const Exchange exchange;
    std::filesystem::remove(exchange.path() / "c_ssh.xml");
    Report report;
    const host::NetworkModel model = read(exchange.path(), {}, report);
    EXPECT_FALSE(model.lines[0].openAtJ);
    EXPECT_TRUE(model.loadFlow.empty());
    for (const char* what : {"运行状态", "短路数据", "潮流"})
        EXPECT_EQ(told(report, Finding::Kind::Missing, what), 1) << what;
    std::filesystem::remove(exchange.path() / "a_tp.xml");
    EXPECT_THAT(exchange.refusal(), ::testing::HasSubstr("端子没有节点，可能缺少拓扑文件"));
}

TEST(Cgmes, SourcesWithoutImpedanceBecomeLoadsAndFeedersFollowTheirCurrent) {
    const Exchange exchange;
    const auto feeder = [](const std::string& id, const std::string& ampere) {
        const std::string n = "ExternalNetworkInjection.";
        return object("ExternalNetworkInjection", id,
                      {{"IdentifiedObject.name", id},
                       {n + "maxInitialSymShCCurrent", ampere},
                       {n + "maxR1ToX1Ratio", "0.75"},
                       {n + "maxZ0ToZ1Ratio", "2"}}) +
               terminal(id + "t", id, 1);
    };
    exchange.write("b_eq.xml", document("EquipmentCore", equipment() + feeder("Q1", "10000") + feeder("Q2", "0")));
    exchange.write("d_tp.xml",
                   document("Topology", object("Terminal", "Q1t", {{"Terminal.TopologicalNode", "#_A"}}, "about") +
                                            object("Terminal", "Q2t", {{"Terminal.TopologicalNode", "#_B"}}, "about")));
    Report report;
    const host::NetworkModel model = read(exchange.path(), {}, report);
    // 1.1 * 110 / (sqrt 3 * 10) = 6.98594 ohm over 121 ohm, split 3 : 4 : 5
    const auto& q1 = named(model.generators, "Q1");
    EXPECT_NEAR(q1.x1, 6.98594 / 121 * 0.8, 1e-7);
    EXPECT_NEAR(q1.r1, 6.98594 / 121 * 0.6, 1e-7);
    EXPECT_NEAR(std::hypot(q1.r0, q1.x0), 2 * 6.98594 / 121, 1e-7);
    EXPECT_TRUE(q1.grounded);
    EXPECT_EQ(model.loads.at(0).name, "Q2");
}

TEST(Cgmes, ZippedAndNestedArchivesReadLikeTheFolder) {
    const Exchange exchange;
    const Folder packed;
    pack(packed.path() / "eq.zip", {exchange.path() / "b_eq.xml"});
    pack(packed.path() / "all.zip",
         {packed.path() / "eq.zip", exchange.path() / "a_tp.xml", exchange.path() / "c_ssh.xml"});
    Report report;
    EXPECT_EQ(read(packed.path() / "all.zip", {}, report).lines.size(), 2U);
    const std::string bytes = exchange::readAll(packed.path() / "all.zip");
    packed.write("cut.zip", bytes.substr(0, bytes.size() / 2));
    EXPECT_THAT(refusal([&] { read(packed.path() / "cut.zip", {}, report); }), ::testing::StartsWith("cut.zip: "));
}

TEST(Cgmes, RefusesWhatIsNoFullModelWithFileAndLine) {
    using ::testing::HasSubstr;
    using ::testing::StartsWith;
    const std::string eq = document("EquipmentCore", equipment());
    const auto with = [](const std::string& text) {
        const Exchange exchange;
        exchange.write("b_eq.xml", text);
        return exchange.refusal();
    };
    EXPECT_THAT(with(eq.substr(0, eq.find("<cim:MutualCoupling rdf"))), StartsWith("b_eq.xml:35: XML 有错"));
    EXPECT_THAT(with("<html>\n</html>\n"), HasSubstr("b_eq.xml:1: 不是 CIM16 或 CIM100"));
    EXPECT_THAT(with(document("EquipmentCore", "<dm:DifferenceModel rdf:about=\"x\"/>")),
                AllOf(StartsWith("b_eq.xml:4: "), HasSubstr("差异模型")));
    EXPECT_THAT(with(document("Topology", "")), HasSubstr("没有设备模型（EQ）文件"));
    EXPECT_THAT(with(spoiled(eq, "12.1", "12,1")), AllOf(StartsWith("b_eq.xml:4: "), HasSubstr("“12,1”不是数")));
    EXPECT_THAT(with(spoiled(eq, "\"#_L1\"", "\"#_XX\"")), HasSubstr("应有两个端子，有 1 个"));
}

#define NEEDS_SHARED(name) \
    if (!std::filesystem::exists(shared(name))) GTEST_SKIP() << "no public networks in " << shared("")

/// The node-breaker base case with the boundary that lies in another folder.
host::NetworkModel nodeBreakerMiniGrid(Report& report) {
    const Folder folder;
    for (const char* part : {"BaseCase_Complete_v3", "Boundary_v3"})
        std::filesystem::copy(shared("cgmes_minigrid/NodeBreaker") / part, folder.path() / part);
    return read(folder.path(), {}, report);
}

TEST(PublicCgmes, MiniGridHasThePrintedData) {
    NEEDS_SHARED("cgmes_minigrid");
    Report report;
    const host::NetworkModel model = nodeBreakerMiniGrid(report);
    EXPECT_EQ(told(report, Finding::Kind::Came, "开关"), 90);
    EXPECT_EQ(std::count_if(model.nodes.begin(), model.nodes.end(), [](const auto& n) { return n.physicalBus; }), 11);
    EXPECT_NEAR(named(model.lines, "L1").x1, 7.8 / 121, 1e-12);
    EXPECT_NEAR(named(model.lines, "L5").r0, 3.3 / 121, 1e-12);
    EXPECT_TRUE(named(model.lines, "XQ1-N1").openAtI || named(model.lines, "XQ1-N1").openAtJ);
    // 21 % and 0.26 % of 400 kV, 350 MVA, per unit on 380 kV
    const auto& t3 = named(model.transformers3, "T3");
    EXPECT_NEAR(std::hypot(t3.r1[0] + t3.r1[1], t3.x1[0] + t3.x1[1]), 0.21 / 3.5 * 400 * 400 / 380 / 380, 1e-7);
    EXPECT_EQ(t3.winding[0].grounding, Grounding::Grounded);
    EXPECT_EQ(t3.winding[1].grounding, Grounding::Isolated);
    EXPECT_EQ(t3.winding[2].grounding, Grounding::Delta);
    const auto& t4 = named(model.transformers3, "T4");
    EXPECT_EQ(t4.winding[0].grounding, Grounding::Isolated);
    EXPECT_EQ(t4.winding[1].grounding, Grounding::Grounded);
    const auto& t1 = named(model.transformers2, "T1");
    EXPECT_EQ(t1.i.ratedKv, 115);
    EXPECT_EQ(t1.i.xn, 22);
    // 1.1 * 380 kV / (sqrt 3 * 38 kA) = 6.3509 ohm at R/X = 0.1; motor 5 MW / (0.975 * 0.88) at 5 times the current
    EXPECT_NEAR(named(model.generators, "Q1").x1, 6.3509 / std::sqrt(1.01) / 1444, 1e-7);
    const auto& m3 = named(model.generators, "M3");
    EXPECT_NEAR(std::hypot(m3.r1, m3.x1), 100 / (5 / (0.975 * 0.88)) / 5, 1e-9);
    EXPECT_EQ(m3.kind, "motor");
}

TEST(PublicCgmes, BothFormsOfMiniGridHaveTheSameElements) {
    NEEDS_SHARED("cgmes_minigrid");
    Report report;
    const host::NetworkModel detailed = nodeBreakerMiniGrid(report);
    const host::NetworkModel plain = read(shared("cgmes_minigrid/BusBranch"), {}, report);
    EXPECT_EQ(plain.nodes.size(), 13U);
    ASSERT_EQ(plain.lines.size(), detailed.lines.size());
    for (const auto& e : plain.lines) {
        const auto& other = named(detailed.lines, e.name);
        EXPECT_DOUBLE_EQ(e.x1, other.x1);
        EXPECT_DOUBLE_EQ(e.r0, other.r0);
    }
    ASSERT_EQ(plain.transformers2.size(), detailed.transformers2.size());
    for (const auto& e : plain.transformers2) {
        const auto& other = named(detailed.transformers2, e.name);
        EXPECT_DOUBLE_EQ(e.x1, other.x1);
        EXPECT_DOUBLE_EQ(e.x0, other.x0);
        EXPECT_EQ(e.i.grounding, other.i.grounding);
    }
    ASSERT_EQ(plain.generators.size(), detailed.generators.size());
    for (const auto& e : plain.generators) EXPECT_DOUBLE_EQ(e.x1, named(detailed.generators, e.name).x1);
}

TEST(PublicCgmes, MicroGridAndSmallGridSayWhatTheyLack) {
    NEEDS_SHARED("cgmes3_smallgrid");
    Report micro, small, breakers;
    EXPECT_EQ(read(shared("cgmes_microgrid/BaseCase_BC"), {}, micro).transformers3.size(), 1U);
    EXPECT_EQ(told(micro, Finding::Kind::Missing, "等值注入"), 10);
    EXPECT_EQ(read(shared("cgmes_microgrid/Type4_T4"), {}, breakers).switches.size(), 26U);
    EXPECT_EQ(told(breakers, Finding::Kind::Changed, "串联补偿"), 1);
    const host::NetworkModel model = read(shared("cgmes3_smallgrid"), {}, small);
    EXPECT_EQ(model.switches.size(), 369U + 738U);
    EXPECT_EQ(told(small, Finding::Kind::Defaulted, "变压器"), 20) << "grounding and impedance of ten";
    EXPECT_EQ(told(small, Finding::Kind::Defaulted, "发电机"), 19);
    for (const auto& node : model.nodes) EXPECT_LE(QString::fromStdString(node.name).size(), 20);
    Options strict;
    strict.defaultSequenceData = false;
    EXPECT_THAT(refusal([&] { read(shared("cgmes3_smallgrid"), strict, small); }), ::testing::HasSubstr("零序数据"));
}

TEST(PublicCgmes, DifferenceFilesAreRefused) {
    NEEDS_SHARED("cgmes_minigrid");
    Report report;
    EXPECT_THAT(refusal([&] { read(shared("cgmes_minigrid/NodeBreaker"), {}, report); }),
                ::testing::HasSubstr("差异模型"));
}

}  // namespace

}  // namespace import_test
