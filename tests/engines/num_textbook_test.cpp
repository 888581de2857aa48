#include <fstream>
#include <sstream>

#include "tests/engines/num_grid.h"

using namespace num;

namespace {

// Five-bus example with two delta-wye transformers; per unit on 100 MVA.
Network fiveBus() {
    return Grid(5)
        .source(1, j(.045), j(.0125))
        .source(3, j(.0225), j(.005 + 3 * .0025))
        .line(24, 2, 4, j(.1), j(.3))
        .line(25, 2, 5, j(.05), j(.15))
        .line(45, 4, 5, j(.025), j(.075))
        .transformer(51, 5, 1, j(.02), j(.02), 1)
        .transformer(43, 4, 3, j(.01), j(.01), 1)
        .network();
}

Network threeBus() {
    return Grid(3)
        .source(1, j(.25), j(.40))
        .source(2, j(.25), j(.10))
        .line(12, 1, 2, j(.125), j(.30))
        .line(13, 1, 3, j(.15), j(.35))
        .line(23, 2, 3, j(.25), j(.7125))
        .network();
}

Network elevenBus() {
    Grid grid(11);
    grid.source(1, j(.20), j(.06 + 3 * .05)).source(10, j(.15), j(.04 + 3 * .05)).source(11, j(.25), j(.08));
    grid.transformer(201, 1, 2, j(.06), j(.06), 2).transformer(202, 7, 11, j(.10), j(.34), 1);
    grid.transformer(203, 4, 10, j(.08), j(.08), 3);
    const struct {
        int i, j;
        double x1, x0;
    } lines[] = {{2, 3, .30, .60}, {2, 5, .15, .30}, {2, 6, .45, .90},  {3, 4, .40, .80},
                 {3, 6, .40, .80}, {4, 6, .60, 1.0}, {4, 9, .70, 1.10}, {5, 7, .43, .80},
                 {6, 8, .48, .95}, {7, 8, .35, .70}, {8, 9, .48, .90}};
    int id = 100;
    for (const auto& l : lines) grid.line(++id, l.i, l.j, j(l.x1), j(l.x0));
    return grid.network();
}

FaultKind kindOf(const std::string& type) {
    if (type == "LLL") return FaultKind::ThreePhaseGround;
    if (type == "LG") return FaultKind::PhaseAGround;
    return type == "LL" ? FaultKind::PhaseBC : FaultKind::PhaseBCGround;
}

/// Every row of a printed table: bus, kind, impedance, three phase currents, 3I0, both driving-point impedances.
void expectTable(const Network& network, const std::string& file, double prefault) {
    const auto path = sharedNetworks() / "textbook_networks" / file;
    std::ifstream in(path);
    if (!in) GTEST_SKIP() << "not here: " << path;
    const ModeNetwork mode(network, {});
    std::string line;
    std::getline(in, line);
    int rows = 0;
    for (; std::getline(in, line); ++rows) {
        for (char& c : line) {
            if (c == ',') c = ' ';
        }
        std::istringstream fields(line);
        int no = 0;
        std::string type;
        double zf = 0, expected[6] = {};
        fields >> no >> type >> zf;
        for (double& e : expected) fields >> e;
        ASSERT_TRUE(fields) << line;
        const Condition fault = atBus(network, no, kindOf(type), j(zf));
        const auto current = mode.solve({&fault, 1}).faultCurrent();
        const auto phase = engines::phases(current);
        for (std::size_t p = 0; p < 3; ++p) EXPECT_NEAR(prefault * std::abs(phase[p]), expected[p], 6e-6) << line;
        EXPECT_NEAR(prefault * 3 * std::abs(current.zero), expected[3], 6e-6) << line;
        EXPECT_NEAR(std::abs(mode.sourceImpedance(Sequence::Positive, bus(network, no), {})), expected[4], 6e-7);
        EXPECT_NEAR(std::abs(mode.sourceImpedance(Sequence::Zero, bus(network, no), {})), expected[5], 6e-7) << line;
    }
    EXPECT_GT(rows, 10);
}

}  // namespace

TEST(Textbook, FiveBusTable) { expectTable(fiveBus(), "glover_5bus_fault_results.csv", 1.05); }
TEST(Textbook, ThreeBusTable) { expectTable(threeBus(), "saadat_3bus_fault_results.csv", 1); }
TEST(Textbook, ElevenBusTable) { expectTable(elevenBus(), "saadat_11bus_fault_results.csv", 1); }

TEST(Textbook, FiveBusContributionsAndVoltagesAsPrinted) {
    const Network network = fiveBus();
    const ModeNetwork mode(network, {});
    const auto phaseA = [](const engines::Sequences& s) { return 1.05 * std::abs(engines::phases(s)[0]); };
    const Condition at1 = atBus(network, 1, FaultKind::PhaseAGround), at2 = atBus(network, 2, FaultKind::PhaseAGround);
    const auto one = mode.solve({&at1, 1}), two = mode.solve({&at2, 1});
    EXPECT_NEAR(phaseA(one.sourceCurrent(0)), 34.413, 6e-4);
    EXPECT_NEAR(phaseA(one.current(branch(network, 51), End::J)), 11.609, 6e-4);
    EXPECT_NEAR(phaseA(two.current(branch(network, 24), End::I)), 5.151, 6e-4);
    EXPECT_NEAR(phaseA(two.current(branch(network, 25), End::I)), 8.984, 6e-4);
    const double printed[][4] = {
        {2, .5069, .9440, .9440}, {3, .7888, .9912, .9912}, {4, .6727, .9695, .9695}, {5, .4239, .9337, .9337}};
    for (const auto& row : printed) {
        const auto voltage = engines::phases(one.voltage(bus(network, static_cast<int>(row[0]))));
        for (std::size_t p = 0; p < 3; ++p) EXPECT_NEAR(1.05 * std::abs(voltage[p]), row[p + 1], 6e-5) << row[0];
    }
}

TEST(Textbook, ThreeBusThroughAnImpedanceAsPrinted) {
    const Network network = threeBus();
    const ModeNetwork mode(network, {});
    const auto current = [&](FaultKind kind) {
        const Condition fault = atBus(network, 3, kind, j(.1));
        return mode.solve({&fault, 1}).faultCurrent();
    };
    EXPECT_NEAR(std::abs(current(FaultKind::ThreePhaseGround).positive), 3.1250, 6e-5);
    EXPECT_NEAR(3 * std::abs(current(FaultKind::PhaseAGround).zero), 2.7523, 6e-5);
    EXPECT_NEAR(std::abs(engines::phases(current(FaultKind::PhaseBC))[1]), 3.2075, 6e-5);
    EXPECT_NEAR(3 * std::abs(current(FaultKind::PhaseBCGround).zero), 1.9737, 6e-5);
    const Condition ground = atBus(network, 3, FaultKind::PhaseAGround, j(.1));
    const auto solution = mode.solve({&ground, 1});
    const double printed[][3] = {{.1284, .8807, .1193}, {.0596, .8899, .1101}, {.3211, .7982, .2018}};
    for (int no = 1; no <= 3; ++no) {
        const auto v = solution.voltage(bus(network, no));
        EXPECT_NEAR(std::abs(v.zero), printed[no - 1][0], 6e-5) << no;
        EXPECT_NEAR(std::abs(v.positive), printed[no - 1][1], 6e-5) << no;
        EXPECT_NEAR(std::abs(v.negative), printed[no - 1][2], 6e-5) << no;
    }
}
