#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

#include "tests/engines/interp_study.h"

/// Whole rules on a meshed network with the real fault calculation, held against a dense nodal solution in which
/// outages and mode changes are lines left out and a fault place is a node of its own.
namespace {

using engines::Complex;
using Matrix = std::vector<std::vector<Complex>>;

struct Line {
    int id, i, j;
    Complex z1, z0;
};
const std::vector<Line> kLines{{1, 2, 3, {0.01, 0.08}, {0.03, 0.25}}, {2, 4, 3, {0.02, 0.11}, {0.05, 0.30}},
                               {3, 3, 5, {0.01, 0.06}, {0.04, 0.20}}, {4, 5, 6, {0.02, 0.09}, {0.06, 0.26}},
                               {5, 6, 4, {0.01, 0.07}, {0.03, 0.22}}, {6, 2, 5, {0.02, 0.13}, {0.07, 0.40}},
                               {7, 7, 6, {0.01, 0.05}, {0.02, 0.15}}};
const std::map<int, std::pair<Complex, Complex>> kSources{
    {2, {{0, 0.10}, {0, 0.06}}}, {6, {{0, 0.25}, {0, 0.10}}}, {7, {{0, 0.15}, {0, 0.20}}}};
constexpr double kBaseKa = 0.262431940540;  // 100 MVA at 220 kV

std::vector<Complex> solved(Matrix y, std::vector<Complex> b) {
    const std::size_t n = b.size();
    for (std::size_t k = 0; k < n; ++k)
        for (std::size_t r = 0; r < n; ++r) {
            if (r == k) continue;
            const Complex factor = y[r][k] / y[k][k];
            for (std::size_t c = k; c < n; ++c) y[r][c] -= factor * y[k][c];
            b[r] -= factor * b[k];
        }
    for (std::size_t k = 0; k < n; ++k) b[k] /= y[k][k];
    return b;
}

/// A fault place: so far along a line from its I end; a share of 0 or 1 is the bus.
struct Place {
    int line;
    double share;
};

/// Currents of the fault component for one unit drawn at a place; node 0 is the place inside a line, node k bus k + 1.
class Witness {
  public:
    Witness(bool zero, const std::set<int>& out, Place place) : zero_(zero), place_(place) {
        Matrix y(7, std::vector<Complex>(7));
        for (const Line& l : kLines)
            if (!out.contains(l.id)) addLine(l, y);
        for (const auto& [bus, z] : kSources) y[node(bus)][node(bus)] += 1.0 / (zero ? z.second : z.first);
        if (inside())
            fault_ = 0;
        else
            y[0][0] = 1;
        std::vector<Complex> drawn(7);
        drawn[fault_] = -1;
        v_ = solved(y, drawn);
    }
    Complex drivingPoint() const { return -v_[fault_]; }
    Complex current(int line, int fromBus) const {
        const Line& l = kLines[static_cast<std::size_t>(line - 1)];
        const Complex z = zero_ ? l.z0 : l.z1;
        const bool cut = inside() && line == place_.line;
        const bool fromI = fromBus == l.i;
        const double share = cut ? (fromI ? place_.share : 1 - place_.share) : 1;
        const std::size_t far = cut ? 0 : node(fromI ? l.j : l.i);
        return (v_[node(fromBus)] - v_[far]) / (z * share);
    }

  private:
    static std::size_t node(int bus) { return static_cast<std::size_t>(bus - 1); }
    bool inside() const { return place_.share > 0 && place_.share < 1; }
    void connect(std::size_t a, std::size_t b, Complex z, Matrix& y) const {
        y[a][a] += 1.0 / z, y[b][b] += 1.0 / z, y[a][b] -= 1.0 / z, y[b][a] -= 1.0 / z;
    }
    void addLine(const Line& l, Matrix& y) {
        const Complex z = zero_ ? l.z0 : l.z1;
        if (l.id != place_.line) return connect(node(l.i), node(l.j), z, y);
        if (!inside()) {
            fault_ = node(place_.share == 0 ? l.i : l.j);
            return connect(node(l.i), node(l.j), z, y);
        }
        connect(node(l.i), 0, z * place_.share, y);
        connect(0, node(l.j), z * (1 - place_.share), y);
    }

    bool zero_;
    Place place_;
    std::size_t fault_ = 0;
    std::vector<Complex> v_;
};

void addOutage(int number, int id, std::vector<exchange::FaultRow>& rows) {
    const Line& l = kLines[static_cast<std::size_t>(id - 1)];
    for (const int percent : {1, 99}) {
        rows.push_back({number, id, l.i, l.j, percent, 5, "99999.9999", "99999.9999"});
        rows.push_back({number, id, l.i, l.j, percent, 1, "0", "0"});
    }
}

class MeshedNetwork : public testing::Test {
  protected:
    MeshedNetwork() {
        exchange::NetworkData data;
        for (int no = 2; no <= 7; ++no) {
            exchange::NetBus bus;
            bus.no = no, bus.baseKv = 220;
            data.buses.push_back(bus);
        }
        for (const Line& l : kLines)
            data.lines.push_back({l.id, l.i, l.j, l.z1.real(), l.z1.imag(), l.z0.real(), l.z0.imag(), 0, 0, 0});
        for (const auto& [bus, z] : kSources) {
            exchange::NetGenerator g;
            g.no = bus, g.x1 = z.first.imag(), g.x0 = z.second.imag(), g.grounded = true;
            data.generators.push_back(g);
        }
        s.network = engines::buildNetwork(data);
        s.graph = engines::sectionGraph(data, {});
        interp::addRelay(s, interp::relayBlock(1, 2, 3, 1, 1));
        for (const int sequence : {1, 0}) addModeChange({2, 4, 5, 6, sequence, "9999999.999999", "9999999.999999"}, s);
    }
    void addRule(const exchange::RuleBlock& rule, std::vector<exchange::RuleFault> faults = {}) {
        s.rules.emplace(rule.ruleNo, rule);
        s.groups.push_back({1, 1, {{rule.ruleNo, 0, {1, 2}, false, std::move(faults)}}});
    }
    engines::Study s;
};

/// What a search over modes, outages and faults has found.
struct Best {
    double value = 0;
    int sysNo = 0, outage = 0, fault = 0;
};

template <typename Value>
Best search(bool largest, const std::map<int, int>& outages, const std::map<int, Place>& faults, Value value) {
    Best best;
    for (const int sysNo : {1, 2})
        for (const auto& [outage, line] : outages)
            for (const auto& [fault, place] : faults) {
                std::set<int> out{line};
                if (sysNo == 2) out.insert(4);
                const double v = value(out, place);
                if (best.sysNo == 0 || (largest ? v > best.value : v < best.value)) best = {v, sysNo, outage, fault};
            }
    return best;
}

TEST_F(MeshedNetwork, LargestAndSmallestCurrentComeFromTheRightModeOutageAndFault) {
    std::vector<exchange::FaultRow> rows{{1, 1, 2, 3, 100, 1, "0", "0"}, {2, 2, 3, 4, 30, 1, "0", "0"}};
    addOutage(21, 3, rows);
    addOutage(22, 5, rows);
    std::vector<exchange::RuleFault> faults;
    for (const int mode : {1, 2})
        for (const exchange::FaultRow& row : rows) faults.push_back({mode, row});
    addRule(interp::rule({{1, 1, 1, 1}, {2, 2, 1, 1}}, {interp::select(1, 1, 1), {2, 2, 0, 1, 0, 1, 8, 2}}), faults);
    engines::ModeStudies calculation(s.network, s.modes);
    const auto results = engines::evaluateRules(s, calculation);

    const std::map<int, int> outages{{0, 0}, {21, 3}, {22, 5}};
    const std::map<int, Place> places{{1, {1, 1}}, {2, {2, 0.7}}};  // 30 percent from bus 3, the J end
    const auto current = [](const std::set<int>& out, Place place) {
        const Witness w(false, out, place);
        return std::abs(w.current(1, 2) / w.drivingPoint()) * kBaseKa;
    };
    ASSERT_EQ(results.choices.size(), 2u);
    for (const bool largest : {true, false}) {
        const Best best = search(largest, outages, places, current);
        const auto& choice = results.choices[largest ? 0 : 1];
        EXPECT_NEAR(results.settings.at(0).values.at(largest ? 0 : 1), best.value, 1e-9);
        EXPECT_EQ(std::tuple(choice.nSys, choice.nSelb, choice.nSela), std::tuple(best.sysNo, best.outage, best.fault));
    }
}

TEST_F(MeshedNetwork, SourceImpedanceIsWhatTheNetworkIsWithoutTheRelaysLineInTheExtremeMode) {
    for (const int consel : {1, 2})
        for (const int vType : {141, 142}) {
            exchange::RuleBlock rule = interp::rule({{1, 0, vType, 1}}, {interp::select(0, 1, consel)});
            rule.ruleNo = 10 * vType + consel;
            addRule(rule);
        }
    engines::ModeStudies calculation(s.network, s.modes);
    const auto results = engines::evaluateRules(s, calculation);
    ASSERT_EQ(results.settings.size(), 4u);
    for (const bool zero : {false, true}) {
        const auto behind = [&](std::set<int> out) {
            out.insert(1);
            return 484 * std::abs(Witness(zero, out, {6, 0}).drivingPoint());
        };
        const auto [least, most] = std::minmax({behind({}), behind({4})});
        ASSERT_GT(most, least * 1.0001);
        EXPECT_NEAR(results.settings[zero ? 1 : 0].values.at(0), most, 1e-7);
        EXPECT_NEAR(results.settings[zero ? 3 : 2].values.at(0), least, 1e-7);
    }
    EXPECT_TRUE(results.choices.empty());
}

TEST_F(MeshedNetwork, TheNumberOfThreadsChangesNothing) {
    std::vector<exchange::FaultRow> rows{{1, 2, 4, 3, 0, 1, "0", "0"}, {2, 2, 4, 3, 60, 4, "0", "0.01"}};
    for (const int line : {3, 5, 6}) addOutage(20 + line, line, rows);
    std::vector<exchange::RuleFault> faults;
    for (const exchange::FaultRow& row : rows) faults.push_back({1, row});
    int rno = 1;
    for (const Line& l : kLines)
        for (const int side : {1, 2}) {
            interp::addRelay(s, interp::relayBlock(++rno, l.i, l.j, l.id, side), {10, 0.5});
            interp::addMainBranch(s, rno, l.i, l.j, l.id, side, {1, 2}, rows);
            s.groups.push_back({rno, 1, {{1000, 0, {1, 2}, false, faults}, {1001, 0, {1, 2}, false, {}}}});
        }
    s.rules.emplace(1000, interp::rule({{1, 1, 8, 1}, {2, 1, 21, 1}}, {interp::select(1, 1, 1)}));
    s.rules.emplace(1001, interp::rule({{1, 21, 451, 1}, {2, 31, 453, 1}}, {interp::select(21, 1, 2)}));
    s.rules.at(1001).ruleNo = 1001;
    const auto textOf = [&](int threads) {
        engines::ModeStudies calculation(s.network, s.modes);
        const auto results = engines::evaluateRules(s, calculation, threads);
        std::string text;
        for (const auto& r : results.settings) text += exchange::format(r);
        for (const auto& r : results.choices) text += exchange::format(r);
        for (const auto& r : results.coefficients) text += exchange::format(r);
        for (const std::string& note : results.notes) text += note + '\n';
        return text;
    };
    const std::string one = textOf(1);
    EXPECT_GT(std::ranges::count(one, '\n'), 60);
    for (const int threads : {2, 5, 0}) EXPECT_EQ(textOf(threads), one) << threads;
}

TEST_F(MeshedNetwork, BranchCoefficientsAreThoseOfTheDenseSolution) {
    std::vector<exchange::FaultRow> rows{{1, 2, 4, 3, 0, 1, "0", "0"}, {2, 2, 4, 3, 60, 1, "0", "0"}};
    addOutage(21, 6, rows);
    interp::addMainBranch(s, 9, 4, 3, 2, 2, {1, 2}, rows);
    addRule(interp::rule({{1, 21, 451, 2}, {2, 21, 452, 2}}));
    engines::ModeStudies calculation(s.network, s.modes);
    const auto results = engines::evaluateRules(s, calculation);
    ASSERT_EQ(results.coefficients.size(), 1u);
    const auto& line = results.coefficients[0];

    const std::map<int, int> outages{{0, 0}, {21, 6}};
    const std::map<int, Place> places{{1, {2, 0}}, {2, {2, 0.6}}};
    for (const bool zero : {false, true}) {
        const Best best = search(true, outages, places, [&](const std::set<int>& out, Place place) {
            const Witness w(zero, out, place);
            const Complex b = w.current(1, 2), m = w.current(2, 3);
            return (b * std::conj(m)).real() < 0 ? 0 : std::abs(b) / std::abs(m);
        });
        ASSERT_GT(best.value, 0);
        EXPECT_NEAR(zero ? line.fz0 : line.fz1, best.value, 1e-9);
        const auto decided =
            zero ? std::tuple(line.nSys0, line.nSel0b, line.nSel0a) : std::tuple(line.nSys1, line.nSel1b, line.nSel1a);
        EXPECT_EQ(decided, std::tuple(best.sysNo, best.outage, best.fault));
        EXPECT_NEAR(results.settings.at(0).values.at(zero ? 1 : 0), best.value, 1e-9);
    }
}

}  // namespace
