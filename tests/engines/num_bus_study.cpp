#include <random>

#include "engines/faults/BusStudy.h"
#include "engines/faults/LocalStudy.h"
#include "tests/engines/num_grid.h"

using namespace num;
using engines::BranchEnd;
using engines::BusStudy;
using engines::Sequences;

namespace {

class Dice {
  public:
    explicit Dice(unsigned seed) : engine_(seed) {}
    int upTo(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }
    double between(double low, double high) { return low + (high - low) * (engine_() / 4294967295.0); }
    Complex impedance(double x) { return {between(.05, .3) * x, between(.6, 1.4) * x}; }

  private:
    std::mt19937 engine_;
};

/// Coupled lines, transformers of every grounding and turns ratio, floating and dead islands, now and then a load flow.
Network randomNetwork(Dice& dice) {
    Grid grid(11);
    grid.source(1, dice.impedance(.1), dice.impedance(.08)).source(4, dice.impedance(.2));
    grid.source(7, dice.impedance(.15), dice.impedance(.1)).source(9, dice.impedance(.3));
    const int ends[][2] = {{1, 2}, {1, 2}, {2, 3}, {3, 4}, {4, 5}, {5, 1}, {2, 5}, {3, 5}, {5, 4}, {9, 8}, {10, 11}};
    int id = 100;
    for (const auto& e : ends) grid.line(++id, e[0], e[1], dice.impedance(.1), dice.impedance(.3));
    const int transformers[][2] = {{3, 6}, {7, 4}, {5, 6}, {5, 8}};
    for (const auto& e : transformers) {
        grid.transformer(++id, e[0], e[1], dice.impedance(.1), dice.impedance(.1), dice.upTo(4));
    }
    grid.mutual(101, 102, dice.impedance(.12), dice.upTo(2) ? 1 : -1).mutual(102, 103, dice.impedance(.05));
    grid.data.loadFlow = dice.upTo(2) == 0;
    for (auto& b : grid.data.buses) b.vMag = dice.between(.9, 1.1), b.vAngle = dice.between(-20, 20);
    Network network = grid.network();
    for (auto& b : network.branches) {
        if (b.kind != exchange::BranchKind::Line) b.ratio = dice.between(.8, 1.2);
    }
    return network;
}

double distance(const Sequences& a, const Sequences& b) {
    return std::abs(a.positive - b.positive) + std::abs(a.negative - b.negative) + std::abs(a.zero - b.zero);
}

/// Largest difference between a fault of the study and the same fault solved on its own.
double difference(const BusStudy& study, const ModeNetwork& mode, const Condition& condition) {
    const Network& network = mode.network();
    const auto solution = mode.solve({&condition, 1});
    const auto fault = study.fault(condition.bus, condition.kind, condition.z);
    if (solution.dead() != fault.dead) return 1e9;
    double worst = std::max(distance(fault.current, solution.faultCurrent()),
                            distance(fault.voltage, solution.voltage(condition.bus)));
    for (const auto end : study.ends(condition.bus)) {
        const auto& b = network.branches[static_cast<std::size_t>(end.branch.value)];
        const auto far = solution.voltage(end.end == End::I ? b.to : b.from);
        worst = std::max({worst, distance(study.current(fault, end), solution.current(end.branch, end.end)),
                          distance(study.farVoltage(fault, end), far)});
    }
    for (const int s : study.sources(condition.bus)) {
        worst = std::max(worst, distance(study.sourceCurrent(fault, s), solution.sourceCurrent(s)));
    }
    return worst;
}

}  // namespace

TEST(BusStudy, IsTheSolutionOfEachFaultOnItsOwn) {
    int dead = 0, ends = 0;
    for (unsigned seed = 1; seed <= 100; ++seed) {
        Dice dice(seed);
        const Network network = randomNetwork(dice);
        std::vector<engines::ModeChange> changes;
        if (seed % 3 == 0) changes.push_back({{dice.upTo(4)}, {}, {}, Sequence::Zero, {}, true});
        const ModeNetwork mode(network, changes);
        const BusStudy study(mode);
        for (int b = 0; b < static_cast<int>(network.buses.size()); ++b) {
            for (int kind = 1; kind <= 4; ++kind) {
                const Condition c{
                    {}, {b}, 0, static_cast<FaultKind>(kind), dice.upTo(2) ? dice.impedance(.1) : Complex{}, 1};
                EXPECT_LT(difference(study, mode, c), 1e-9) << "seed " << seed << " bus " << b << " kind " << kind;
                dead += study.fault(c.bus, c.kind).dead;
            }
            ends += static_cast<int>(study.ends({b}).size());
        }
    }
    EXPECT_EQ(dead, 100 * 2 * 4);
    EXPECT_EQ(ends, 100 * 2 * 15);
}

TEST(BusStudy, GivesTheSameBytesWhateverTheThreads) {
    Dice dice(1);
    const Network network = randomNetwork(dice);
    const ModeNetwork one(network, {}, 1), two(network, {}, 2);
    const BusStudy single(one, 1), shared(two, 2);
    for (int b = 0; b < static_cast<int>(network.buses.size()); ++b) {
        const auto a = single.fault({b}, FaultKind::PhaseBCGround), same = shared.fault({b}, FaultKind::PhaseBCGround);
        EXPECT_EQ(distance(a.current, same.current), 0);
        for (const auto end : single.ends({b})) {
            EXPECT_EQ(distance(single.current(a, end), shared.current(same, end)), 0);
        }
    }
}

// Places at buses and along branches, relays at both ends of every third branch; each branch in turn out: beside them,
// among them, coupled with them, the only one to its bus.
TEST(LocalStudy, IsTheSolutionOfEachFaultUnderEachOutage) {
    int updated = 0, dead = 0;
    for (unsigned seed = 1; seed <= 30; ++seed) {
        Dice dice(seed);
        const Network network = randomNetwork(dice);
        const ModeNetwork mode(network, {});
        const int branches = static_cast<int>(network.branches.size());
        std::vector<BranchEnd> relays;
        for (int k = 0; k < branches; k += 3) relays.push_back({{k}, End::I}), relays.push_back({{k}, End::J});
        std::vector<Condition> places;
        for (const int b : {1, 5, 7}) places.push_back({{}, {b}, 0, FaultKind::ThreePhaseGround, {}, 1});
        places.push_back({{dice.upTo(9)}, {}, dice.between(5, 95), FaultKind::ThreePhaseGround, {}, 1});
        engines::LocalStudy study(mode, places, relays);
        for (int out = -1; out < branches; ++out) {
            const BranchIndex branch{out};
            study.takeOut({&branch, out < 0 ? 0u : 1u});
            updated += study.updated();
            for (int p = 0; p < static_cast<int>(places.size()); ++p) {
                std::vector<Condition> rows{places[static_cast<std::size_t>(p)]};
                rows[0].kind = static_cast<FaultKind>(1 + dice.upTo(4)), rows[0].z = dice.impedance(.05);
                for (const double end : {0., 100.}) {
                    if (out >= 0) rows.push_back({branch, {}, end, FaultKind::OpenABC, {kOpen, kOpen}, 21});
                }
                const auto solution = mode.solve(rows);
                const auto fault = study.fault(p, rows[0].kind, rows[0].z);
                ASSERT_EQ(fault.dead, solution.dead());
                dead += fault.dead;
                double worst =
                    distance(fault.current, solution.faultCurrent()) + distance(fault.voltage, solution.faultVoltage());
                for (std::size_t r = 0; r < relays.size(); ++r) {
                    worst = std::max(worst, distance(study.current(fault, static_cast<int>(r)),
                                                     solution.current(relays[r].branch, relays[r].end)));
                }
                EXPECT_LT(worst, 1e-9) << "seed " << seed << " out " << out << " place " << p;
            }
        }
    }
    EXPECT_GT(updated, 40);
    EXPECT_GT(dead, 0);
}
