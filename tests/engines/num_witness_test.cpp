#include <random>

#include "tests/engines/num_phase_witness.h"

using namespace num;

namespace {

/// Random meshed networks with coupled lines and transformers of every grounding, and random conditions on them.
class Dice {
  public:
    explicit Dice(unsigned seed) : engine_(seed) {}
    int upTo(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }
    double between(double low, double high) { return low + (high - low) * (engine_() / 4294967295.0); }
    Complex impedance(double x) { return {between(.05, .3) * x, between(.6, 1.4) * x}; }

    Grid grid() {
        Grid grid(8);
        grid.source(1, impedance(.1), impedance(.08)).source(4, impedance(.2)).source(7, impedance(.15), impedance(.1));
        const int ends[][2] = {{1, 2}, {1, 2}, {2, 3}, {3, 4}, {4, 5}, {5, 1}, {2, 5}, {3, 5}, {5, 4}};
        int id = 100;
        for (const auto& e : ends) grid.line(++id, e[0], e[1], impedance(.1), impedance(.3));
        grid.transformer(201, 3, 6, impedance(.1), impedance(.1), upTo(4));
        grid.transformer(202, 7, 4, impedance(.1), impedance(.1), upTo(4));
        grid.transformer(203, 5, 6, impedance(.1), impedance(.1), upTo(4));
        grid.transformer(204, 5, 8, impedance(.1), impedance(.1), upTo(4));
        grid.mutual(101, 102, impedance(.12), upTo(2) ? 1 : -1).mutual(102, 103, impedance(.05));
        grid.mutual(105, 109, impedance(.1), upTo(2) ? 1 : -1);
        auto& partly = grid.data.mutuals.back();
        if (upTo(2)) partly.firstFrom = 20, partly.firstTo = 60, partly.secondFrom = 50, partly.secondTo = 90;
        return grid;
    }

    std::vector<Condition> conditions(const Network& network) {
        std::vector<Condition> rows;
        if (upTo(3) == 0) rows = outage(network, 101 + upTo(9), upTo(2) == 0);
        if (upTo(4) == 0) {
            for (const double end : {0.0, 100.0}) rows.push_back(open(network, 201 + upTo(4), end, 22));
        }
        for (int count = 1 + upTo(3), group = 1; group <= count; ++group) add(network, group, rows);
        return rows;
    }

    /// Off-nominal turns ratios, and a load flow that is the state of the sources alone: what a witness that starts
    /// from the sources' voltages sees.
    void changeRatios(const Grid& grid, Network& network) {
        for (auto& b : network.branches) {
            if (b.kind != exchange::BranchKind::Line) b.ratio = between(.8, 1.2);
        }
        const PhaseWitness before(grid.data, network, {});
        for (auto& b : network.buses) b.voltage = before.voltage(b.no.value, 0);
        for (auto& s : network.sources) {
            const Complex v = network.buses[static_cast<std::size_t>(s.bus.value)].voltage;
            s.power = v * std::conj((1.0 - v) / s.z1);
        }
        network.loadFlow = true;
    }
    /// An open at a terminal of a transformer, with or without a fault behind it. Where the zero sequence does not
    /// pass, the displacement behind an open of single phases is anybody's.
    void addAtTransformer(const Network& network, std::vector<Condition>& rows) {
        const int id = 201 + upTo(3), group = 4;
        if (network.branches[static_cast<std::size_t>(branch(network, id).value)].zeroPath !=
            engines::ZeroPath::Through)
            return;
        const double place = upTo(2) ? 100 : 0;
        const Complex across = upTo(2) ? Complex{kOpen, kOpen} : impedance(.5);
        rows.push_back(along(network, id, place, static_cast<FaultKind>(5 + upTo(3)), across, group));
        if (upTo(2))
            rows.push_back(along(network, id, place, static_cast<FaultKind>(1 + upTo(4)), impedance(.05), group));
    }

  private:
    void add(const Network& network, int group, std::vector<Condition>& rows) {
        static const double places[] = {0, 1, 24, 50, 76, 99, 100};
        const int id = 101 + upTo(9);
        const double place = places[upTo(7)];
        const Complex z = upTo(2) ? impedance(.05) : Complex{};
        const auto shunt = static_cast<FaultKind>(1 + upTo(4)), series = static_cast<FaultKind>(5 + upTo(3));
        const Complex across = upTo(2) ? Complex{kOpen, kOpen} : impedance(.5);
        switch (upTo(5)) {
            case 0:
                // Through an impedance: two metallic faults at one place share their current as they like.
                rows.push_back(atBus(network, 1 + upTo(8), shunt, impedance(.05)));
                break;
            case 1:
                rows.push_back(along(network, id, place, series, across, group));
                break;
            case 2:
                rows.push_back(along(network, id, place, series, across, group));
                [[fallthrough]];
            default:
                rows.push_back(along(network, id, place, shunt, z, group));
        }
    }
    std::mt19937 engine_;
};

/// Largest difference of all bus voltages and line currents, phase by phase.
double difference(const Grid& grid, const Network& network, const engines::Solution& solution,
                  const PhaseWitness& witness) {
    double worst = 0;
    engines::PhaseState all;
    solution.everywhere(all);
    const auto compare = [&](Complex a, Complex b) { worst = std::max(worst, std::abs(a - b) / (1 + std::abs(b))); };
    for (const auto& b : grid.data.buses) {
        const auto v = engines::phases(solution.voltage(bus(network, b.no)));
        const auto& same = all.voltages[static_cast<std::size_t>(bus(network, b.no).value)];
        for (int p = 0; p < 3; ++p) compare(v[static_cast<std::size_t>(p)], witness.voltage(b.no, p));
        for (std::size_t p = 0; p < 3; ++p) compare(same[p], v[p]);
    }
    for (std::size_t k = 0; k < network.branches.size(); ++k) {
        const auto atI = engines::phases(solution.current({static_cast<int>(k)}, End::I));
        const auto atJ = engines::phases(solution.current({static_cast<int>(k)}, End::J));
        for (std::size_t p = 0; p < 3; ++p)
            compare(all.currents[2 * k][p], atI[p]), compare(all.currents[2 * k + 1][p], atJ[p]);
    }
    for (const auto& l : grid.data.lines) {
        for (const End end : {End::I, End::J}) {
            const auto i = engines::phases(solution.current(branch(network, l.idNo), end));
            for (int p = 0; p < 3; ++p) compare(i[static_cast<std::size_t>(p)], witness.current(l.idNo, end, p));
        }
    }
    return worst;
}

}  // namespace

TEST(PhaseWitness, AgreesOnRandomNetworksWithSimultaneousFaultsOpensAndOutages) {
    int compared = 0;
    for (unsigned seed = 1; seed <= 500; ++seed) {
        Dice dice(seed);
        const Grid grid = dice.grid();
        const Network network = grid.network();
        const std::vector<Condition> rows = dice.conditions(network);
        const auto solution = ModeNetwork(network, {}).solve(rows);
        if (solution.dead()) continue;
        const PhaseWitness witness(grid.data, network, rows);
        EXPECT_LT(difference(grid, network, solution, witness), 1e-6) << "seed " << seed << '\n' << text(network, rows);
        ++compared;
    }
    EXPECT_GT(compared, 400);
}

TEST(PhaseWitness, AgreesWithOffNominalTurnsRatiosUnderLoad) {
    int compared = 0;
    for (unsigned seed = 1; seed <= 200; ++seed) {
        Dice dice(seed);
        const Grid grid = dice.grid();
        Network network = grid.network();
        dice.changeRatios(grid, network);
        std::vector<Condition> rows = dice.conditions(network);
        if (seed % 2) dice.addAtTransformer(network, rows);
        const auto solution = ModeNetwork(network, {}).solve(rows);
        if (solution.dead()) continue;
        const PhaseWitness witness(grid.data, network, rows);
        EXPECT_LT(difference(grid, network, solution, witness), 1e-6) << "seed " << seed << '\n' << text(network, rows);
        ++compared;
    }
    EXPECT_GT(compared, 160);
}

// The same transformer with a bus at the place of the fault; currents there are per unit of the nearer end.
TEST(FaultStudy, AFaultInsideATransformerWithATurnsRatioIsThatAtABusInItsPlace) {
    const Complex z1{.01, .1}, z0{.02, .13};
    const auto between = [&](Grid grid, double x) {
        grid.bus(3, 100).transformer(1, 1, 3, x * z1, x * z0, 3).transformer(2, 3, 2, (1 - x) * z1, (1 - x) * z0, 3);
        Network network = grid.network();
        network.branches[0].ratio = 1.1;
        return network;
    };
    const Grid ends = Grid(2).source(1, {.01, .2}, {.01, .15}).source(2, {.01, .3}, {.02, .3});
    Network whole = Grid(ends).transformer(1, 1, 2, z1, z0, 3).network();
    whole.branches[0].ratio = 1.1;
    for (const double x : {.3, .8}) {
        const Network split = between(ends, x);
        const double scale = x < .5 ? 1.1 : 1;
        for (const auto kind : {FaultKind::PhaseAGround, FaultKind::PhaseBCGround}) {
            const Condition inside = along(whole, 1, 100 * x, kind, {.02 * scale * scale, 0}),
                            atNode = atBus(split, 3, kind, {.02, 0});
            const ModeNetwork mode(whole, {}), splitMode(split, {});
            const auto a = mode.solve({&inside, 1}), b = splitMode.solve({&atNode, 1});
            // 1.0 before the fault on the nearer end's own base.
            EXPECT_LT(std::abs(scale * scale * a.faultCurrent().zero - b.faultCurrent().zero), 1e-9);
            EXPECT_LT(std::abs(scale * a.current({0}, End::I).zero - b.current({0}, End::I).zero), 1e-9);
            EXPECT_LT(std::abs(scale * a.current({0}, End::J).negative - b.current({1}, End::J).negative), 1e-9);
            EXPECT_GT(std::abs(b.current({1}, End::J).negative), .1);
        }
    }
}
