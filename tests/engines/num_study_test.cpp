#include <cmath>
#include <numbers>
#include <random>

#include "engines/network/SequenceNetwork.h"
#include "exchange/TextFile.h"
#include "tests/engines/num_grid.h"

using namespace num;

namespace {

/// A ring with a coupled double line, a tie of next to no impedance, and a radial end.
///   1 =(101,102)= 2 -(103)- 3 -(104)- 1;  3 ~(105)~ 4 -(106)- 2;  4 -(107)- 5
Grid ring() {
    Grid grid(5);
    grid.source(1, {.01, .1}, {.01, .08}).source(3, {.02, .2}, {.02, .15});
    grid.line(101, 1, 2, {.02, .1}, {.06, .3}).line(102, 1, 2, {.02, .1}, {.06, .3});
    grid.line(103, 2, 3, {.03, .15}, {.09, .45}).line(104, 3, 1, {.04, .2}, {.1, .6});
    grid.line(105, 3, 4, j(1e-6), j(3e-6)).line(106, 4, 2, {.02, .12}, {.06, .4});
    grid.line(107, 4, 5, {.03, .2}, {.1, .7}).mutual(101, 102, {.03, .15});
    return grid;
}

Grid without(Grid grid, int id) {
    std::erase_if(grid.data.lines, [&](const auto& l) { return l.idNo == id; });
    std::erase_if(grid.data.mutuals, [&](const auto& m) { return m.firstId == id || m.secondId == id; });
    return grid;
}

double distance(const engines::Sequences& a, const engines::Sequences& b) {
    return std::abs(a.positive - b.positive) + std::abs(a.negative - b.negative) + std::abs(a.zero - b.zero);
}

/// Largest difference of bus voltages and line currents of two solutions of networks with the same buses.
double distance(const Network& one, const engines::Solution& a, const Network& two, const engines::Solution& b) {
    double worst = 0;
    for (const auto& place : one.buses) {
        worst = std::max(worst, distance(a.voltage(one.bus(place.no)), b.voltage(two.bus(place.no))));
    }
    for (const auto& [id, k] : two.branchById) {
        for (const End end : {End::I, End::J}) {
            worst = std::max(worst, distance(a.current(branch(one, id), end), b.current({k}, end)));
        }
    }
    return worst;
}

std::vector<Condition> with(std::vector<Condition> rows, const Condition& more) {
    rows.push_back(more);
    return rows;
}

}  // namespace

TEST(FaultStudy, AFaultAtTheEndOfABranchIsTheFaultAtItsBus) {
    const Network network = ring().network();
    const ModeNetwork mode(network, {});
    for (const FaultKind kind :
         {FaultKind::ThreePhaseGround, FaultKind::PhaseAGround, FaultKind::PhaseBC, FaultKind::PhaseBCGround}) {
        const Condition at2 = atBus(network, 2, kind, {.01, .02});
        const Condition end = along(network, 101, 100, kind, {.01, .02}),
                        near = along(network, 101, 100 - 1e-9, kind, {.01, .02});
        const auto bus2 = mode.solve({&at2, 1}), far = mode.solve({&end, 1}), inside = mode.solve({&near, 1});
        EXPECT_EQ(distance(network, bus2, network, far), 0);
        EXPECT_LT(distance(bus2.faultCurrent(), inside.faultCurrent()), 1e-8);
        EXPECT_LT(distance(bus2.faultVoltage(), bus2.voltage(bus(network, 2))), 1e-12);
        // Just inside, the fault current itself comes out of the branch at bus 2 and nothing else changes.
        EXPECT_LT(distance(bus2.current(branch(network, 102), End::J), inside.current(branch(network, 102), End::J)),
                  1e-8);
    }
}

// Every line in turn: in the ring, half of the double line, the tie of no impedance, and the one that splits the
// network.
TEST(FaultStudy, ALineOpenAtBothEndsIsALineThatIsNotThere) {
    const Network whole = ring().network();
    const ModeNetwork mode(whole, {});
    for (int id = 101; id <= 107; ++id) {
        const Network rest = without(ring(), id).network();
        const ModeNetwork fresh(rest, {});
        const Condition fault = along(rest, id == 103 ? 104 : 103, 30, FaultKind::PhaseAGround, {.01, 0});
        const Condition same = along(whole, id == 103 ? 104 : 103, 30, FaultKind::PhaseAGround, {.01, 0});
        const auto opened = mode.solve(with(outage(whole, id, false), same)), removed = fresh.solve({&fault, 1});
        EXPECT_LT(distance(whole, opened, rest, removed), 1e-9) << id;
        EXPECT_LT(distance(opened.current(branch(whole, id), End::I), {}), 1e-12) << id;
    }
}

TEST(SequenceNetwork, TakesABranchOutByAnUpdateUnlessThatWouldLoseAccuracy) {
    const Network network = ring().network();
    for (const Sequence sequence : {Sequence::Positive, Sequence::Zero}) {
        const auto whole = std::make_shared<engines::SequenceNetwork>(
            std::make_shared<engines::SequenceElements>(network, sequence, std::span<const engines::ModeChange>{}),
            engines::ComplexVector{});
        EXPECT_FALSE(whole->without({branch(network, 101).value})->refactorised());
        EXPECT_FALSE(whole->without({branch(network, 101).value, branch(network, 104).value})->refactorised());
        EXPECT_TRUE(whole->without({branch(network, 105).value})->refactorised());
        const auto cutOff = whole->without({branch(network, 107).value});
        EXPECT_FALSE(cutOff->refactorised()) << "bus 5 is held by the update";
        EXPECT_FALSE(cutOff->islands().live(bus(network, 5).value));
        EXPECT_TRUE(cutOff->islands().live(bus(network, 4).value));
        EXPECT_EQ(whole->without({}), whole);
    }
}

TEST(FaultStudy, ALineGroundedAtBothEndsChangesTheCoupledLineAndOnlyInTheZeroSequence) {
    const Network network = ring().network();
    const ModeNetwork mode(network, {});
    const Condition fault = atBus(network, 2, FaultKind::PhaseAGround);
    const auto open = mode.solve(with(outage(network, 101, false), fault));
    const auto grounded = mode.solve(with(outage(network, 101, true), fault));
    const Condition phases3 = atBus(network, 2, FaultKind::ThreePhaseGround);
    EXPECT_LT(distance(network, mode.solve(with(outage(network, 101, false), phases3)), network,
                       mode.solve(with(outage(network, 101, true), phases3))),
              1e-12);
    // The loop through earth lowers the zero-sequence impedance of the line in service.
    EXPECT_GT(std::abs(grounded.faultCurrent().zero), 1.01 * std::abs(open.faultCurrent().zero));
    EXPECT_EQ(distance(grounded.current(branch(network, 101), End::I), {}), 0);
}

TEST(FaultStudy, WhatLosesItsSourceIsZeroAndNeverNaN) {
    const Network network = ring().network();
    const ModeNetwork mode(network, {});
    const auto split = mode.solve(with(outage(network, 107, true), atBus(network, 5, FaultKind::PhaseAGround)));
    EXPECT_TRUE(split.dead());
    EXPECT_EQ(distance(split.faultCurrent(), {}) + distance(split.voltage(bus(network, 1)), {}), 0);
    const auto inside =
        mode.solve(with(outage(network, 101, false), along(network, 101, 40, FaultKind::PhaseBC, {}, 2)));
    EXPECT_TRUE(inside.dead());
    const auto beside = mode.solve(with(outage(network, 107, true), atBus(network, 4, FaultKind::PhaseAGround)));
    EXPECT_FALSE(beside.dead());
    EXPECT_EQ(distance(beside.voltage(bus(network, 5)), {}), 0);
    EXPECT_FALSE(
        std::isfinite(std::abs(mode.sourceImpedance(Sequence::Positive, bus(network, 5), branch(network, 107)))));
    const ModeNetwork cut(network, {{branch(network, 107), {}, {}, Sequence::Positive, {}, true},
                                    {branch(network, 107), {}, {}, Sequence::Zero, {}, true}});
    const Condition far = along(network, 107, 80, FaultKind::ThreePhaseGround);
    EXPECT_TRUE(cut.solve({&far, 1}).dead());
}

TEST(FaultStudy, AnOpenPhaseOnTheWayToADeadEndLeavesTheOtherPhasesAsTheyAre) {
    const Network network = ring()
                                .bus(6, 100)
                                .bus(7, 100)
                                .line(108, 5, 6, {.01, .07}, {.05, .31})
                                .line(109, 5, 7, {.03, .11}, {.06, .2})
                                .network();
    const ModeNetwork mode(network, {});
    for (const double place : {0.0, 30.0, 100.0}) {
        const std::vector<Condition> rows{open(network, 107, place, 2, FaultKind::OpenA),
                                          atBus(network, 3, FaultKind::PhaseBC, {.05, 0})};
        const auto solution = mode.solve(rows);
        const auto near = engines::phases(solution.voltage(bus(network, 4)));
        const auto far = engines::phases(solution.voltage(bus(network, 5)));
        EXPECT_LT(std::abs(near[1] - far[1]) + std::abs(near[2] - far[2]), 1e-9) << place;
        EXPECT_LT(std::abs(far[0]), 2) << place;
        EXPECT_LT(distance(solution.current(branch(network, 107), End::I), {}), 1e-9) << place;
    }
}

TEST(FaultStudy, AnUngroundedNetworkCarriesNoEarthCurrentUntilASecondFault) {
    Grid grid(3);
    grid.source(1, j(.1)).line(1, 1, 2, j(.1), j(.3)).line(2, 2, 3, j(.2), j(.6));
    const Network network = grid.network();
    const ModeNetwork mode(network, {});
    const Condition first = atBus(network, 2, FaultKind::PhaseAGround),
                    second = along(network, 2, 50, FaultKind::PhaseBCGround);
    const auto one = mode.solve({&first, 1});
    const auto voltage = engines::phases(one.voltage(bus(network, 3)));
    EXPECT_LT(distance(one.faultCurrent(), {}), 1e-12);
    EXPECT_NEAR(std::abs(voltage[0]), 0, 1e-12);
    EXPECT_NEAR(std::abs(voltage[1]), std::numbers::sqrt3, 1e-12);
    const std::vector<Condition> both{first, second};
    const auto two = mode.solve(both);
    EXPECT_GT(std::abs(engines::phases(two.faultCurrent())[0]), 1);
    EXPECT_LT(std::abs(two.current(branch(network, 1), End::J).zero), 1e-12);
}

TEST(FaultStudy, AModeThatChangesALineIsANetworkBuiltThatWay) {
    const Network network = ring().network();
    Grid changed = ring();
    changed.data.lines[3].r1 = .01, changed.data.lines[3].x1 = .3, changed.data.lines[3].x0 = .9;
    changed.data.shunts.push_back({.idNo = 9, .no = 2, .x1 = .5, .r0 = .02, .x0 = .4, .grounded = true});
    const Network built = changed.network();
    const ModeNetwork mode(network, {{branch(network, 104), {}, {}, Sequence::Positive, {.01, .3}, false},
                                     {branch(network, 104), {}, {}, Sequence::Zero, {.1, .9}, false},
                                     {{}, bus(network, 2), bus(network, 2), Sequence::Zero, {.02, .4}, false}});
    const Condition fault = atBus(network, 2, FaultKind::PhaseAGround);
    EXPECT_LT(distance(network, mode.solve({&fault, 1}), built, ModeNetwork(built, {}).solve({&fault, 1})), 1e-12);
}

TEST(FaultStudy, ALoadFlowIsKeptBeforeTheFaultAndRedistributesWhenALineOpens) {
    Grid grid = ring();
    const double angle[] = {0, -4, -2, -2, -5};
    for (std::size_t i = 0; i < 5; ++i)
        grid.data.buses[i].vMag = 1.02 - .01 * double(i), grid.data.buses[i].vAngle = angle[i];
    grid.data.buses[3].vMag = grid.data.buses[2].vMag;
    grid.data.loadFlow = true;
    grid.data.generators[0].pMw = 80, grid.data.generators[0].qMvar = 30;
    const Network network = grid.network();
    const ModeNetwork mode(network, {});
    const auto before = mode.solve({});
    for (const auto& b : network.buses)
        EXPECT_LT(std::abs(before.voltage(network.bus(b.no)).positive - b.voltage), 1e-9);
    const Complex power = network.buses[0].voltage * std::conj(before.sourceCurrent(0).positive);
    EXPECT_LT(std::abs(power - Complex{.8, .3}), 1e-9);
    const auto after = mode.solve(outage(network, 103, false));
    const auto at2 = [&](const engines::Solution& s, int id, End end) {
        return s.current(branch(network, id), end).positive;
    };
    const auto load = [&](const engines::Solution& s) {
        return at2(s, 101, End::J) + at2(s, 102, End::J) + at2(s, 103, End::I) + at2(s, 106, End::J);
    };
    EXPECT_LT(std::abs(load(before) - load(after)), 1e-9);
    EXPECT_GT(std::abs(at2(before, 103, End::I)), .01);
    EXPECT_LT(std::abs(at2(after, 103, End::I)), 1e-12);
}

// Two sources feed bus 2, one of them through B: the branch coefficient is the current divider.
TEST(BranchCoefficient, IsTheShareOfTheCurrentThatTheRelaySees) {
    Grid grid(4);
    grid.source(1, j(.1), j(.1)).source(3, j(.3), j(.2));
    grid.line(1, 1, 2, j(.2), j(.6)).line(3, 3, 2, j(.1), j(.3)).line(2, 2, 4, j(.2), j(.6));
    const Network network = grid.network();
    const ModeNetwork mode(network, {});
    const Condition place = along(network, 2, 100, FaultKind::PhaseAGround);
    const auto coefficient = [&](Sequence sequence, End bEnd, const std::vector<Condition>& rows) {
        return mode.branchCoefficient(sequence, place, rows, branch(network, 1), bEnd, branch(network, 2), End::I);
    };
    EXPECT_NEAR(coefficient(Sequence::Positive, End::I, {}), .4 / .7, 1e-12);
    EXPECT_NEAR(coefficient(Sequence::Zero, End::I, {}), .5 / 1.2, 1e-12);
    EXPECT_EQ(coefficient(Sequence::Positive, End::J, {}), 0);
    EXPECT_NEAR(coefficient(Sequence::Positive, End::I, outage(network, 3, true)), 1, 1e-12);
    EXPECT_EQ(coefficient(Sequence::Positive, End::I, outage(network, 2, false)), 0);
    EXPECT_EQ(coefficient(Sequence::Zero, End::I, outage(network, 1, true)), 0);
}

TEST(FaultQuantity, TheMeasuredImpedanceIsThatOfTheLineUpToTheFault) {
    Grid grid(2, 220);
    grid.source(1, {.01, .1}, {.01, .08}).line(1, 1, 2, {.02, .1}, {.08, .3}).source(2, j(.5));
    const Network network = grid.network();
    const ModeNetwork mode(network, {});
    const engines::RelayPlace relay{branch(network, 1), End::I, bus(network, 1), -1};
    const auto measured = [&](int vType, int vPos, FaultKind kind) {
        const Condition fault = along(network, 1, 60, kind);
        return engines::faultQuantity(vType, vPos, relay, network, mode.solve({&fault, 1}));
    };
    const double reach = .6 * std::abs(Complex{.02, .1}) * 220 * 220 / 100 / 1000;
    EXPECT_NEAR(measured(22, 1, FaultKind::PhaseAGround), reach, 1e-12);
    EXPECT_NEAR(measured(22, 1, FaultKind::PhaseBCGround), reach, 1e-12);
    for (const FaultKind kind : {FaultKind::ThreePhaseGround, FaultKind::PhaseBC, FaultKind::PhaseBCGround}) {
        EXPECT_NEAR(measured(21, 1, kind), reach, 1e-12);
    }
    EXPECT_NEAR(measured(21, 2, FaultKind::PhaseBC), reach * 40 / 60, 1e-12);
    EXPECT_FALSE(std::isfinite(engines::faultQuantity(21, 1, relay, network, mode.solve({}))));
}

TEST(FaultQuantity, CurrentsAndVoltagesComeInKiloUnitsOfTheirOwnEnd) {
    Grid grid;
    grid.bus(1, 220).bus(2, 110).source(1, j(.1), j(.1)).transformer(1, 1, 2, j(.1), j(.1), 3);
    const Network network = grid.network();
    const ModeNetwork mode(network, {});
    const engines::RelayPlace relay{branch(network, 1), End::I, bus(network, 1), -1};
    const Condition fault = atBus(network, 2, FaultKind::PhaseBC), ground = atBus(network, 2, FaultKind::PhaseAGround);
    const auto bc = mode.solve({&fault, 1}), ag = mode.solve({&ground, 1});
    const auto of = [&](int vType, int vPos, const auto& solution) {
        return engines::faultQuantity(vType, vPos, relay, network, solution);
    };
    const double ka220 = 100 / (std::numbers::sqrt3 * 220), bcPerUnit = std::numbers::sqrt3 / .4;
    EXPECT_NEAR(of(2, 1, bc), bcPerUnit * ka220, 1e-12);
    EXPECT_NEAR(of(2, 2, bc), 2 * bcPerUnit * ka220, 1e-12);
    EXPECT_NEAR(of(3, 3, bc), 2 * bcPerUnit * ka220, 1e-12);
    EXPECT_NEAR(of(4, 1, bc), of(5, 1, bc), 1e-12);
    EXPECT_NEAR(of(1, 1, bc), 0, 1e-12);
    EXPECT_NEAR(of(9, 1, bc), 2 * of(2, 1, bc), 1e-12);
    EXPECT_NEAR(of(8, 1, ag), 3 / .6 * ka220, 1e-12);
    EXPECT_NEAR(of(6, 1, ag), of(7, 1, ag), 1e-12);
    EXPECT_NEAR(of(15, 2, bc), 0, 1e-12);
    EXPECT_NEAR(of(16, 2, bc), .5 * 110 / std::numbers::sqrt3, 1e-12);
    EXPECT_NEAR(of(12, 2, bc), .5 * 110 / std::numbers::sqrt3, 1e-12);
    EXPECT_NEAR(of(18, 1, ag), 3 * .1 / .6 * 220 / std::numbers::sqrt3, 1e-12);
}

TEST(BuildNetwork, RefusesWhatHasNoImpedanceOrNoBus) {
    EXPECT_THROW(Grid(2).line(1, 1, 2, 0, j(1)).network(), exchange::FormatError);
    EXPECT_THROW(Grid(2).line(1, 1, 2, j(1), 0).network(), exchange::FormatError);
    EXPECT_THROW(Grid(2).line(1, 1, 3, j(1), j(1)).network(), exchange::FormatError);
    EXPECT_THROW(Grid(2).line(1, 1, 2, {NAN, 1}, j(1)).network(), exchange::FormatError);
    EXPECT_THROW(Grid(2).line(1, 1, 2, j(1), j(1)).mutual(1, 7, j(1)).network(), exchange::FormatError);
    EXPECT_THROW(ring().mutual(103, 104, j(2)).network(), exchange::FormatError);
    EXPECT_THROW(Grid(2).bus(2, 110).network(), exchange::FormatError);
    const Network star = Grid(2).transformer(5, 1, 2, j(1), 0, 0).network();
    EXPECT_EQ(star.branches[0].zeroPath, engines::ZeroPath::None);
    EXPECT_EQ(star.branch(5, {2}, {1}).value, 0);
    EXPECT_EQ(star.branch(6, {2}, {1}).value, -1);
}
