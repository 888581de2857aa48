#include <algorithm>
#include <cmath>

#include "engines/network/SequenceNetwork.h"
#include "tests/engines/num_phase_witness.h"
#include "tests/engines/property_grid.h"

using namespace property;
using engines::Sequences;

namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// One shunt fault through an impedance or a metallic one, at a bus or along a line, with an outage now and then.
std::vector<Condition> randomFault(Dice& dice, const Network& network, const RandomGrid& random) {
    const auto line = [&] { return random.lines[at(dice.upTo(static_cast<int>(random.lines.size())))]; };
    std::vector<Condition> rows;
    if (dice.once(3)) rows = outage(network, line(), dice.once(2));
    const Complex z = dice.once(2) ? Complex{} : dice.impedance(.05);
    const FaultKind kind = kShunts[dice.upTo(4)];
    if (dice.once(2))
        rows.push_back(atBus(network, random.grid.data.buses[at(dice.upTo(5))].no, kind, z));
    else
        rows.push_back(along(network, line(), dice.between(5, 95), kind, z));
    if (dice.once(4)) rows.push_back(open(network, line(), dice.between(5, 95), 2, FaultKind::OpenA));
    return rows;
}

Sequences operator+(const Sequences& a, const Sequences& b) {
    return {a.positive + b.positive, a.negative + b.negative, a.zero + b.zero};
}
Sequences operator-(const Sequences& a, const Sequences& b) {
    return {a.positive - b.positive, a.negative - b.negative, a.zero - b.zero};
}

/// What flows out of a bus into branches, faults and reactors, less what its sources give.
Sequences outflow(const Network& network, const engines::Solution& s, BusIndex bus) {
    Sequences sum = s.faultCurrentAt(bus);
    for (int k = 0; k < static_cast<int>(network.branches.size()); ++k) {
        const auto& b = network.branches[at(k)];
        if (b.from == bus) sum = sum + s.current({k}, End::I);
        if (b.to == bus) sum = sum + s.current({k}, End::J);
    }
    for (int k = 0; k < static_cast<int>(network.sources.size()); ++k)
        if (network.sources[at(k)].bus == bus) sum = sum - s.sourceCurrent(k);
    for (const auto& shunt : network.zeroShunts)
        if (shunt.bus == bus) sum.zero += s.voltage(bus).zero / shunt.z0;
    return sum;
}

bool hasDeadBus(const Network& network, const engines::Solution& s) {
    for (int b = 0; b < static_cast<int>(network.buses.size()); ++b)
        if (s.voltage({b}).positive == Complex{}) return true;
    return false;
}

RandomGrid randomGrid(Dice& dice) { return GridMaker(dice, 4 + dice.upTo(9)).make(1 + dice.upTo(3)); }

/// The same elements under other numbers and in another order.
Grid renumbered(Grid grid, Dice& dice) {
    auto& d = grid.data;
    const auto no = [](int old) { return 1000 - 7 * old; };
    for (auto& b : d.buses) b.no = no(b.no);
    for (auto& l : d.lines) l.iNo = no(l.iNo), l.jNo = no(l.jNo);
    for (auto& t : d.transformers) t.iNo = no(t.iNo), t.jNo = no(t.jNo);
    for (auto& g : d.generators) g.no = no(g.no);
    for (auto& s : d.shunts) s.no = no(s.no);
    dice.shuffle(d.buses), dice.shuffle(d.lines), dice.shuffle(d.transformers);
    dice.shuffle(d.generators), dice.shuffle(d.shunts), dice.shuffle(d.mutuals);
    return grid;
}

std::shared_ptr<const engines::SequenceNetwork> factorised(const Network& network, Sequence sequence,
                                                           const std::vector<int>& cut) {
    std::vector<engines::ModeChange> changes;
    for (const int k : cut)
        changes.push_back({.branch = {k}, .bus = {}, .second = {}, .sequence = sequence, .z = {}, .cut = true});
    return std::make_shared<engines::SequenceNetwork>(
        std::make_shared<engines::SequenceElements>(network, sequence, changes), engines::ComplexVector{});
}

double relative(Complex a, Complex b) { return std::abs(a - b) / (1 + std::abs(b)); }

double worstCurrent(const RandomGrid& random, const Network& network, const engines::Solution& s,
                    const PhaseWitness& witness) {
    double worst = 0;
    for (const int id : random.lines)
        for (const End end : {End::I, End::J}) {
            const auto i = engines::phases(s.current(branch(network, id), end));
            for (int p = 0; p < 3; ++p) worst = std::max(worst, relative(i[at(p)], witness.current(id, end, p)));
        }
    return worst;
}

/// Between phases: without a path to ground the displacement is anybody's, and so is a phase behind its open alone.
double worstVoltage(const RandomGrid& random, const Network& network, const engines::Solution& s,
                    const PhaseWitness& witness, bool opened) {
    double worst = 0;
    for (const auto& b : random.grid.data.buses) {
        const auto v = engines::phases(s.voltage(bus(network, b.no)));
        for (int p = 0, q = 1; p < 3; ++p, q = (p + 1) % 3) {
            const Complex first = witness.voltage(b.no, p), second = witness.voltage(b.no, q);
            if (opened && std::min(std::abs(first), std::abs(second)) < 1e-9) continue;
            worst = std::max(worst, relative(v[at(p)] - v[at(q)], first - second));
        }
    }
    return worst;
}

}  // namespace

// With a load flow the loads draw what they drew before: the balance is that of the changes.
TEST(Property, CurrentsAddUpToZeroAtEveryBus) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        Dice dice(seed);
        const RandomGrid random = randomGrid(dice);
        const Network network = networkOf(random, dice, seed % 2 == 0);
        const ModeNetwork mode(network, {});
        const auto rows = randomFault(dice, network, random);
        const auto before = mode.solve({}), s = mode.solve(rows);
        if (s.dead()) continue;
        SCOPED_TRACE(text(network, rows));
        for (int b = 0; b < static_cast<int>(network.buses.size()); ++b) {
            // A load that has lost its source draws nothing.
            if (network.loadFlow && s.voltage({b}).positive == Complex{}) continue;
            const Sequences change = outflow(network, s, {b}) - outflow(network, before, {b});
            EXPECT_LT(distance(change, {}), 1e-8) << "seed " << seed << " bus " << b;
        }
    }
}

// What a unit of current at one bus makes at another is the same both ways, in the zero sequence too.
TEST(Property, TransferImpedancesAreTheSameBothWays) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        Dice dice(seed);
        const RandomGrid random = randomGrid(dice);
        const Network network = networkOf(random, dice, seed % 2 == 0);
        const ModeNetwork mode(network, {});
        const auto before = mode.solve({});
        const auto transfer = [&](int from, int to) {
            const Condition fault{{}, {from}, 0, FaultKind::PhaseAGround, {.01, 0}, 1};
            const auto s = mode.solve({&fault, 1});
            const Sequences i = s.faultCurrent(), v = s.voltage({to}) - before.voltage({to});
            if (s.dead() || std::abs(i.zero) < 1e-6) return Sequences{};
            return Sequences{v.positive / i.positive, v.negative / i.negative, v.zero / i.zero};
        };
        for (int pair = 0; pair < 6; ++pair) {
            const int a = dice.upTo(static_cast<int>(network.buses.size())),
                      b = dice.upTo(static_cast<int>(network.buses.size()));
            const Sequences there = transfer(a, b), back = transfer(b, a);
            if (distance(there, {}) == 0 || distance(back, {}) == 0) continue;
            EXPECT_LT(distance(there, back), 1e-8 * (1 + distance(there, {}))) << "seed " << seed;
        }
    }
}

TEST(Property, NumbersAndOrderDoNotMatter) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        Dice dice(seed), same(seed + 1000), again(seed + 1000);
        const RandomGrid random = randomGrid(dice);
        RandomGrid other = random;
        other.grid = renumbered(random.grid, dice);
        const Network one = random.grid.network(), two = other.grid.network();
        // The faults name branches by number and buses by place in the grid's own list.
        const auto rows = randomFault(same, one, random);
        std::vector<Condition> rowsThere = rows;
        for (Condition& c : rowsThere) {
            if (c.branch.value >= 0) c.branch = branch(two, one.branches[at(c.branch.value)].idNo);
            if (c.bus.value >= 0) c.bus = bus(two, 1000 - 7 * one.buses[at(c.bus.value)].no.value);
        }
        const ModeNetwork modeOne(one, {}), modeTwo(two, {});
        const auto a = modeOne.solve(rows), b = modeTwo.solve(rowsThere);
        ASSERT_EQ(a.dead(), b.dead());
        SCOPED_TRACE(text(one, rows));
        for (int k = 0; k < static_cast<int>(one.branches.size()); ++k) {
            const BranchIndex there = branch(two, one.branches[at(k)].idNo);
            for (const End end : {End::I, End::J})
                EXPECT_LT(distance(a.current({k}, end), b.current(there, end)), 1e-8) << "seed " << seed;
        }
    }
}

TEST(Property, AFaultAtTheEndOfAnyBranchIsTheFaultAtItsBus) {
    for (unsigned seed = 1; seed <= 100; ++seed) {
        Dice dice(seed);
        const RandomGrid random = randomGrid(dice);
        const Network network = networkOf(random, dice, true);
        const ModeNetwork mode(network, {});
        const BranchIndex k{dice.upTo(static_cast<int>(network.branches.size()))};
        const Complex z = dice.impedance(.05);
        for (const FaultKind kind : kShunts)
            for (const double percent : {0.0, 100.0}) {
                const BusIndex bus =
                    percent == 0 ? network.branches[at(k.value)].from : network.branches[at(k.value)].to;
                const Condition atEnd{k, {}, percent, kind, z, 1}, atItsBus{{}, bus, 0, kind, z, 1};
                const auto a = mode.solve({&atEnd, 1}), b = mode.solve({&atItsBus, 1});
                EXPECT_EQ(distance(a.faultCurrent(), b.faultCurrent()), 0) << "seed " << seed;
                // Just inside a line nothing but the line's own current jumps.
                if (network.branches[at(k.value)].kind != exchange::BranchKind::Line) continue;
                const Condition inside{k, {}, percent == 0 ? 1e-7 : 100 - 1e-7, kind, z, 1};
                EXPECT_LT(distance(mode.solve({&inside, 1}).faultCurrent(), b.faultCurrent()),
                          1e-6 * (1 + distance(b.faultCurrent(), {})))
                    << "seed " << seed;
            }
    }
}

// Several lines at once, coupled ones and bridges among them.
TEST(Property, OpenedLinesAreLinesThatAreNotThere) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        Dice dice(seed);
        const RandomGrid random = randomGrid(dice);
        auto left = random.grid;
        left.data.loadFlow = false;
        const Network whole = left.network();
        std::set<int> gone;
        for (int count = 1 + dice.upTo(3); count > 0; --count)
            gone.insert(random.lines[at(dice.upTo(static_cast<int>(random.lines.size())))]);
        std::erase_if(left.data.lines, [&](const auto& l) { return gone.contains(l.idNo); });
        std::erase_if(left.data.mutuals,
                      [&](const auto& m) { return gone.contains(m.firstId) || gone.contains(m.secondId); });
        const Network rest = left.network();
        std::vector<Condition> rows{atBus(whole, 2, FaultKind::PhaseBCGround, {.01, 0})};
        for (const int id : gone) {
            rows.push_back(open(whole, id, 1, 21));
            rows.push_back(open(whole, id, 99, 21));
        }
        const ModeNetwork modeWhole(whole, {}), modeRest(rest, {});
        const auto opened = modeWhole.solve(rows), removed = modeRest.solve({&rows.front(), 1});
        ASSERT_EQ(opened.dead(), removed.dead()) << "seed " << seed;
        for (int b = 0; b < static_cast<int>(whole.buses.size()); ++b) {
            const Sequences v = opened.voltage({b}), w = removed.voltage({b});
            EXPECT_LT(std::abs(v.positive - w.positive) + std::abs(v.negative - w.negative), 1e-8) << "seed " << seed;
            EXPECT_LT(std::abs(v.zero - w.zero), 1e-8) << "seed " << seed;
        }
    }
}

// Whole columns and single entries, of islands with a path to ground; the others know voltages up to a common value.
TEST(Property, ALowRankUpdateGivesWhatNewFactorsGive) {
    int updated = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        Dice dice(seed);
        const RandomGrid random = randomGrid(dice);
        const Network network = networkOf(random, dice, true);
        const Sequence sequence = seed % 2 ? Sequence::Positive : Sequence::Zero;
        std::set<int> chosen;
        for (int count = 1 + dice.upTo(4); count > 0; --count)
            chosen.insert(dice.upTo(static_cast<int>(network.branches.size())));
        const std::vector<int> cut(chosen.begin(), chosen.end());
        const auto whole = factorised(network, sequence, {}), fresh = factorised(network, sequence, cut);
        const auto less = whole->without(cut);
        updated += less != whole && !less->refactorised();
        for (int b = 0; b < static_cast<int>(network.buses.size()); ++b) {
            if (!fresh->islands().live(b)) continue;
            const auto one = less->solve({{b, 1.0}}), other = fresh->solve({{b, 1.0}});
            const auto injected = less->inject(*less->half(BusIndex{b}));
            for (int i = 0; i < static_cast<int>(one.size()); ++i) {
                if (!fresh->islands().live(i)) continue;
                const double allowed = 1e-9 * std::max(std::abs(other[at(b)]), 1.0);
                EXPECT_LT(std::abs(one[at(i)] - other[at(i)]), allowed) << "seed " << seed;
                EXPECT_LT(std::abs(less->seen(*less->half(BusIndex{i}), injected) - other[at(i)]), allowed)
                    << "seed " << seed;
            }
        }
    }
    EXPECT_GT(updated, 100);
}

// The whole of a solution against the network written out in phases: islands, stars, neutral impedances, reactors,
// loads, partly coupled lines, an outage and two conditions at once.
TEST(Property, PhasesWrittenOutAgree) {
    int compared = 0;
    for (unsigned seed = 1; seed <= 250; ++seed) {
        Dice dice(seed);
        const RandomGrid random = GridMaker(dice, 4 + dice.upTo(3)).make(1 + dice.upTo(2));
        const Network network = networkOf(random, dice, random.grid.data.loadFlow);
        const auto rows = randomFault(dice, network, random);
        const bool opened = std::ranges::any_of(rows, [](const Condition& c) { return c.kind == FaultKind::OpenA; });
        const auto s = ModeNetwork(network, {}).solve(rows);
        // A load has nowhere to draw its current from where its source is gone or one phase leads to it no more.
        if (s.dead() || (network.loadFlow && (opened || hasDeadBus(network, s)))) continue;
        const PhaseWitness witness(random.grid.data, network, rows);
        EXPECT_LT(worstCurrent(random, network, s, witness), 1e-6) << "seed " << seed << '\n' << text(network, rows);
        EXPECT_LT(worstVoltage(random, network, s, witness, opened), 1e-6) << "seed " << seed << '\n'
                                                                           << text(network, rows);
        ++compared;
    }
    EXPECT_GT(compared, 170);
}
