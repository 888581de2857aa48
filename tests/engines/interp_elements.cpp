#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "exchange/ControlFile.h"
#include "exchange/FileNames.h"
#include "exchange/ModeFile.h"
#include "exchange/RelayFile.h"
#include "exchange/ResultFiles.h"
#include "exchange/RuleFaultFile.h"
#include "exchange/RuleFile.h"
#include "exchange/VirtualRelayFile.h"
#include "tests/TemporaryDirectory.h"
#include "tests/engines/EngineRun.h"
#include "tests/engines/num_phase_witness.h"

/// HALDERN.EXE for relays at a line, a generator, a bus and a reactor: every fault quantity at every place against the
/// dense solution in phases.
///
///   G1 (2) ==1,2, coupled along their middle== (3) --3-- (4, reactor) --6-- (5) --transformer-- (7)
///                                               +---5--- (6, G2) --4-- (4)
namespace {

using namespace num;
namespace file = exchange::file;
using Phases = std::array<Complex, 3>;
using Rows = std::vector<exchange::FaultRow>;

constexpr double kKv = 220;
const Complex kReactorZ0{0.05, 1.2}, kG1{0.004, 0.12}, kG1Zero{0.01, 0.07}, kG2{0.006, 0.2}, kG2Zero{0.02, 0.1};

Grid grid() {
    Grid g;
    for (const int no : {2, 3, 4, 5, 6}) g.bus(no, kKv);
    g.bus(7, 110);
    g.source(2, kG1, kG1Zero).source(6, kG2, kG2Zero);
    g.data.generators[0].name = "G1", g.data.generators[1].name = "G2";
    g.line(1, 2, 3, {0.01, 0.08}, {0.04, 0.25}).line(2, 2, 3, {0.012, 0.09}, {0.05, 0.27});
    g.mutual(1, 2, {0.02, 0.1});
    auto& middle = g.data.mutuals.back();
    middle.firstFrom = 20, middle.firstTo = 80, middle.secondFrom = 25, middle.secondTo = 75;
    g.line(3, 3, 4, {0.02, 0.11}, {0.07, 0.31}).line(4, 4, 6, {0.01, 0.07}, {0.03, 0.2});
    g.line(5, 6, 3, {0.02, 0.13}, {0.06, 0.37}).line(6, 4, 5, {0.01, 0.05}, {0.02, 0.15});
    g.transformer(10, 5, 7, {0.002, 0.1}, {0.002, 0.1}, 1);
    return g;
}

/// A reactor is a path to ground of the zero sequence: for the dense solution a source that feeds next to nothing.
exchange::NetworkData forTheWitness() {
    Grid g = grid();
    g.source(4, {0, 1e9}, kReactorZ0);
    return g.data;
}

exchange::NetworkData forTheProgram() {
    exchange::NetworkData data = grid().data;
    exchange::NetShunt reactor;
    reactor.idNo = 31, reactor.no = 4, reactor.x1 = 2, reactor.ratedMvar = 50, reactor.ratedKv = kKv;
    reactor.r0 = kReactorZ0.real(), reactor.x0 = kReactorZ0.imag(), reactor.grounded = true;
    data.shunts.push_back(reactor);
    return data;
}

struct Sequence3 {
    Complex zero, positive, negative;
};
const Complex kA = std::polar(1.0, 2 * M_PI / 3);
Sequence3 sequences(const Phases& p) {
    return {(p[0] + p[1] + p[2]) / 3.0, (p[0] + kA * p[1] + kA * kA * p[2]) / 3.0,
            (p[0] + kA * kA * p[1] + kA * p[2]) / 3.0};
}
Phases inPhases(const Sequence3& s) {
    return {s.zero + s.positive + s.negative, s.zero + kA * kA * s.positive + kA * s.negative,
            s.zero + kA * s.positive + kA * kA * s.negative};
}
Phases operator+(const Phases& a, const Phases& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
Phases operator-(const Phases& a, const Phases& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

/// What is measured at one place, per unit.
struct Seen {
    Phases current, voltage;
};

double largest(const Phases& p) { return std::max({std::abs(p[0]), std::abs(p[1]), std::abs(p[2])}); }
double smallest(const Phases& p) { return std::min({std::abs(p[0]), std::abs(p[1]), std::abs(p[2])}); }
Phases between(const Phases& p) { return {p[0] - p[1], p[1] - p[2], p[2] - p[0]}; }

double smallestLoop(const Phases& u, const Phases& i) {
    double result = INFINITY;
    for (std::size_t k = 0; k < 3; ++k)
        if (std::abs(i[k]) > 1e-6) result = std::min(result, std::abs(u[k] / i[k]));
    return result;
}

/// A quantity in kA, kV, kilo-ohm, from its definition. `kind` is that of the fault, `k0` that of the relay's line.
double quantity(int vType, const Seen& s, int kind, Complex k0) {
    const double ka = 100 / (std::sqrt(3) * kKv), kv = kKv / std::sqrt(3), kiloOhm = kKv * kKv / 100 / 1000;
    const auto i = sequences(s.current), u = sequences(s.voltage);
    const Phases faulted = kind == 1   ? s.current
                           : kind == 2 ? Phases{s.current[0], s.current[0], s.current[0]}
                                       : Phases{s.current[1], s.current[1], s.current[2]};
    const Phases earth{3.0 * k0 * i.zero, 3.0 * k0 * i.zero, 3.0 * k0 * i.zero};
    const std::map<int, double> values{{1, std::abs(s.current[0]) * ka},
                                       {2, std::abs(s.current[1]) * ka},
                                       {3, std::abs(s.current[2]) * ka},
                                       {4, largest(faulted) * ka},
                                       {5, smallest(faulted) * ka},
                                       {6, std::abs(i.positive) * ka},
                                       {7, std::abs(i.negative) * ka},
                                       {8, 3 * std::abs(i.zero) * ka},
                                       {9, largest(between(s.current)) * ka},
                                       {11, std::abs(s.voltage[0]) * kv},
                                       {12, std::abs(s.voltage[1]) * kv},
                                       {13, std::abs(s.voltage[2]) * kv},
                                       {14, smallest(s.voltage) * kv},
                                       {15, smallest(between(s.voltage)) * kv},
                                       {16, std::abs(u.positive) * kv},
                                       {17, std::abs(u.negative) * kv},
                                       {18, 3 * std::abs(u.zero) * kv},
                                       {21, smallestLoop(between(s.voltage), between(s.current)) * kiloOhm},
                                       {22, smallestLoop(s.voltage, s.current + earth) * kiloOhm}};
    return values.at(vType);
}

const std::vector<int> kQuantities{1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 12, 13, 14, 15, 16, 17, 18, 21, 22};

Condition condition(const Network& network, const exchange::FaultRow& row) {
    const Complex z{std::stod(row.r), std::stod(row.x)};
    const auto kind = static_cast<FaultKind>(row.fType);
    if (row.iNo == row.jNo) return {{}, bus(network, row.iNo), 0, kind, z, row.mType};
    return along(network, row.idNo, row.kLoc, kind, z, row.mType);
}

/// The network under some rows, and what can be measured in it.
class Dense {
  public:
    explicit Dense(const Rows& rows) : network_(engines::buildNetwork(data_)) {
        for (const auto& row : rows) conditions_.push_back(condition(network_, row));
        witness_ = std::make_unique<PhaseWitness>(data_, network_, conditions_);
    }
    Phases voltage(int no) const {
        return {witness_->voltage(no, 0), witness_->voltage(no, 1), witness_->voltage(no, 2)};
    }
    Phases current(int id, End end) const {
        return {witness_->current(id, end, 0), witness_->current(id, end, 1), witness_->current(id, end, 2)};
    }
    /// Of a source into the network; without an EMF, that of the reactor.
    Phases source(int no, Complex z1, Complex z0, double emf = 1) const {
        const auto v = sequences(voltage(no));
        return inPhases({-v.zero / z0, (emf - v.positive) / z1, -v.negative / z1});
    }
    /// Inside line 3, which is not coupled, at a share of its length from bus 3.
    Seen atFaultOnLine3(double share) const {
        const auto i = sequences(current(3, End::I)), u = sequences(voltage(3));
        const auto& line = data_.lines[2];
        const Complex z1 = Complex{line.r1, line.x1} * share, z0 = Complex{line.r0, line.x0} * share;
        return {current(3, End::I) + current(3, End::J),
                inPhases({u.zero - z0 * i.zero, u.positive - z1 * i.positive, u.negative - z1 * i.negative})};
    }
    Seen atFaultOfBus6() const {
        return {source(6, kG2, kG2Zero) - current(4, End::J) - current(5, End::I), voltage(6)};
    }
    Seen atFaultOfBus4() const {
        return {source(4, {0, 1e9}, kReactorZ0, 0) - current(3, End::J) - current(4, End::I) - current(6, End::I),
                voltage(4)};
    }

  private:
    exchange::NetworkData data_ = forTheWitness();
    Network network_;
    std::vector<Condition> conditions_;
    std::unique_ptr<PhaseWitness> witness_;
};

exchange::FaultRow atBus(int mType, int no, int kind) { return {mType, 0, no, no, 0, kind, "0.003", "0.01"}; }
exchange::FaultRow onLine(int mType, int id, int i, int j, int place, int kind) {
    return {mType, id, i, j, place, kind, kind > 4 ? "99999.9999" : "0.005", kind > 4 ? "99999.9999" : "0.02"};
}
Rows outAndGrounded(int mType, int id, int i, int j) {
    Rows rows;
    for (const int place : {1, 99}) {
        rows.push_back(onLine(mType, id, i, j, place, 5));
        rows.push_back({mType, id, i, j, place, 1, "0", "0"});
    }
    return rows;
}
Rows with(Rows rows, const Rows& more) {
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

/// Outputs are the quantities at each of the places, place by place.
exchange::RuleBlock quantitiesRule(int number, const std::vector<int>& vTypes, const std::vector<int>& places) {
    exchange::RuleBlock rule{number, 1, 0, 0, 0, 0, {}, {}, {}, {}};
    int varNo = 0;
    for (const int vPos : places)
        for (const int vType : vTypes) {
            rule.variables.push_back({++varNo, 1, vType, vPos});
            rule.lines.push_back({varNo, 0, 1, 0, 1, exchange::kOutputBase + varNo});
        }
    rule.nVarin = rule.nRule = rule.nOutPut = varNo;
    return rule;
}

class EveryRelay : public TemporaryDirectory {
  protected:
    void SetUp() override {
        TemporaryDirectory::SetUp();
        exchange::writeNetwork(directory, forTheProgram());
        put(file::kControl, exchange::format(exchange::Control{2, 0, 0, 0}));
        const auto relay = [](int rno, const std::string& label, int i, int j, int id) {
            return exchange::format(exchange::RelayBlock{1, rno, label, i, j, id, 1, {{"0", "0", "0", "0"}}});
        };
        put(file::kRelays, relay(1, "L3  B3  T", 3, 4, 3) + relay(2, "G1  B2  T", 2, 2, 0) +
                               relay(3, "Bus6  B6  T", 6, 6, 0) + relay(4, "R1  B4  T", 4, 4, 31));
        put(file::kMainBranches, "");
        put(file::kModes, "");
        put(file::kVirtualRelays, exchange::format(exchange::VirtualRelays{}));
    }
    void put(const char* name, const std::string& bytes) { ASSERT_TRUE(exchange::write(directory / name, bytes)); }
    void putRules(const std::vector<exchange::RuleBlock>& rules) {
        std::string text;
        for (const auto& rule : rules) text += exchange::format(rule);
        put(file::kRules, text);
    }
    /// One section for each case, all of one rule.
    static exchange::RelayRules group(int rno, int ruleNo, const std::vector<Rows>& cases) {
        exchange::RelayRules rules{rno, 1, {}};
        for (const Rows& rows : cases) {
            auto& section = rules.sections.emplace_back(exchange::RuleSection{ruleNo, 0, {}, true, {}});
            for (const auto& row : rows) section.faults.push_back({1, row});
        }
        return rules;
    }
    std::vector<exchange::SettingResult> run() {
        const EngineRun ended = runEngine(file::kEngineProgram, directory);
        EXPECT_EQ(ended.status, 0) << ended.error;
        EXPECT_EQ(ended.error, "");
        return exchange::parseSettingResults(exchange::readAll(directory / file::kSettingResults));
    }
    static void expectSeen(const exchange::SettingResult& result, const std::vector<int>& vTypes,
                           const std::vector<Seen>& places, int kind, Complex k0, const std::string& what) {
        ASSERT_EQ(result.values.size(), vTypes.size() * places.size()) << what;
        std::size_t k = 0;
        for (const Seen& place : places)
            for (const int vType : vTypes) {
                const double expected = quantity(vType, place, kind, k0);
                EXPECT_NEAR(result.values[k++], expected, 1e-7 + 1e-6 * expected)
                    << what << ", quantity " << vType << " at place " << k / vTypes.size();
            }
    }
};

TEST_F(EveryRelay, ALineRelaySeesEveryQuantityAtBothEndsAndAtTheFault) {
    std::vector<Rows> cases;
    for (const int kind : {1, 2, 3, 4}) cases.push_back({onLine(1, 3, 3, 4, 30, kind)});
    cases.push_back({onLine(1, 3, 3, 4, 30, 2), atBus(1, 6, 3)});
    cases.push_back(with({onLine(1, 3, 3, 4, 30, 4)}, outAndGrounded(1, 1, 2, 3)));
    cases.push_back({onLine(1, 3, 3, 4, 30, 2), onLine(1, 4, 4, 6, 50, 7), onLine(1, 5, 6, 3, 20, 6)});
    putRules({quantitiesRule(100, kQuantities, {1, 2, 3})});
    put(file::kRuleFaults, exchange::format(group(1, 100, cases)));
    const auto results = run();
    ASSERT_EQ(results.size(), cases.size());
    const Complex z1{0.02, 0.11}, k0 = (Complex{0.07, 0.31} - z1) / (3.0 * z1);
    for (std::size_t c = 0; c < cases.size(); ++c) {
        const Dense dense(cases[c]);
        const std::vector<Seen> places{{dense.current(3, End::I), dense.voltage(3)},
                                       {dense.current(3, End::J), dense.voltage(4)},
                                       dense.atFaultOnLine3(0.3)};
        expectSeen(results[c], kQuantities, places, cases[c].front().fType, k0, "case " + std::to_string(c));
    }
}

TEST_F(EveryRelay, RelaysAtAGeneratorABusAndAReactor) {
    const std::vector<int> types(kQuantities.begin(), kQuantities.end() - 1);  // K0 is that of a line
    const std::vector<Rows> generator{{onLine(1, 3, 3, 4, 30, 2)}, {onLine(1, 3, 3, 4, 30, 4)}};
    const std::vector<Rows> busBar{{atBus(1, 6, 2)}, {atBus(1, 6, 4)}}, reactor{{atBus(1, 4, 1)}, {atBus(1, 4, 3)}};
    putRules({quantitiesRule(101, types, {1, 3})});
    put(file::kRuleFaults, exchange::format(group(2, 101, generator)) + exchange::format(group(3, 101, busBar)) +
                               exchange::format(group(4, 101, reactor)));
    const auto results = run();
    ASSERT_EQ(results.size(), 6u);
    for (std::size_t c = 0; c < 2; ++c) {
        const Dense far(generator[c]), six(busBar[c]), four(reactor[c]);
        expectSeen(results[c], types, {{far.source(2, kG1, kG1Zero), far.voltage(2)}, far.atFaultOnLine3(0.3)},
                   generator[c][0].fType, 0, "generator");
        expectSeen(results[2 + c], types, {six.atFaultOfBus6(), six.atFaultOfBus6()}, busBar[c][0].fType, 0, "bus");
        expectSeen(results[4 + c], types, {four.atFaultOfBus4(), four.atFaultOfBus4()}, reactor[c][0].fType, 0,
                   "reactor");
    }
}

// Line 2 carries the earth fault while line 1 beside it is out, grounded or not.
TEST_F(EveryRelay, TheLargestEarthCurrentComesFromTheOutageThatTheDenseSolutionNames) {
    exchange::RuleBlock rule = quantitiesRule(102, {8}, {1});
    rule.modeLines = {{1, 1, 0, 1, 0, 1, 9, 1}};
    putRules({rule});
    put(file::kRelays, exchange::format(exchange::RelayBlock{1, 1, "L2", 2, 3, 2, 1, {}}));
    const std::map<int, Rows> outages{{0, {}},
                                      {21, outAndGrounded(21, 1, 2, 3)},
                                      {22, {onLine(22, 1, 2, 3, 1, 5), onLine(22, 1, 2, 3, 99, 5)}},
                                      {23, outAndGrounded(23, 4, 4, 6)}};
    const std::map<int, Rows> faults{{1, {onLine(1, 2, 2, 3, 60, 2)}}, {2, {onLine(2, 3, 3, 4, 0, 2)}}};
    Rows all;
    std::tuple<double, int, int> best{0, 0, 0};
    for (const auto& [number, rows] : outages) {
        all = with(all, rows);
        for (const auto& [faultNo, fault] : faults) {
            const Dense dense(with(fault, rows));
            const double earth = quantity(8, {dense.current(2, End::I), dense.voltage(2)}, 2, 0);
            if (earth > std::get<0>(best)) best = {earth, faultNo, number};
        }
    }
    for (const auto& [faultNo, fault] : faults) all = with(all, fault);
    put(file::kRuleFaults, exchange::format(group(1, 102, {all})));
    EXPECT_NEAR(run().at(0).values.at(0), std::get<0>(best), 1e-6 * std::get<0>(best));
    const auto choice = exchange::parseFaultResults(exchange::readAll(directory / file::kFaultResults)).at(0);
    EXPECT_EQ(std::tuple(choice.nSela, choice.nSelb), std::tuple(std::get<1>(best), std::get<2>(best)));
}

}  // namespace
