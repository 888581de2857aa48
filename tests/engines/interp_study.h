#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "engines/network/SectionGraph.h"
#include "engines/rules/Candidates.h"
#include "engines/rules/FaultCalculation.h"
#include "engines/rules/Interpreter.h"
#include "engines/rules/SettingRun.h"

/// A small study made by hand:
///
///   G1 (2) ---1--- (3) ---2--- (4) ---8--- (11, virtual) ---9--- (12)
///                   |\                        +------------10---- (13)
///                   | 3 (from 5 to 3) ---- (5)
///                   +-- 4 transformer 220/110 -- (6)
///                   +-- 21 winding -- star (7) -- 22 -- (8, 110)
///                                             +-- 23 -- (9, 35)
namespace interp {

inline exchange::NetworkData networkData() {
    exchange::NetworkData data;
    for (const auto& [no, kv] : std::map<int, double>{{2, 220},
                                                      {3, 220},
                                                      {4, 220},
                                                      {5, 220},
                                                      {6, 110},
                                                      {7, 220},
                                                      {8, 110},
                                                      {9, 35},
                                                      {11, 220},
                                                      {12, 220},
                                                      {13, 220}}) {
        exchange::NetBus bus;
        bus.no = no;
        bus.baseKv = kv;
        data.buses.push_back(bus);
    }
    const auto line = [&](int id, int i, int j, double x, double km, double rated, double load) {
        data.lines.push_back({id, i, j, x / 10, x, 3 * x / 10, 3 * x, km, rated, load});
    };
    line(1, 2, 3, 0.1, 50, 1000, 600);
    line(2, 3, 4, 0.05, 25, 800, 0);
    line(3, 5, 3, 0.04, 20, 0, 0);
    line(8, 4, 11, 0.02, 10, 800, 500);
    line(9, 11, 12, 0.02, 10, 800, 500);
    line(10, 11, 13, 0.03, 15, 800, 500);
    const auto transformer = [&](int id, int i, int j, int kind, double x, int path, double kvI, double kvJ) {
        exchange::NetTransformer t;
        t.idNo = id, t.iNo = i, t.jNo = j, t.kind = kind, t.x1 = x, t.x0 = x, t.zcType = path;
        t.ratedMva = 120, t.ratedKvI = kvI, t.ratedKvJ = kvJ;
        data.transformers.push_back(t);
    };
    transformer(4, 3, 6, 1, 0.1, 1, 220, 110);
    transformer(21, 7, 3, 31, 0.06, 3, 220, 220);
    transformer(22, 7, 8, 32, 0.04, 3, 220, 110);
    transformer(23, 7, 9, 33, 0.08, 0, 220, 35);
    exchange::NetGenerator g;
    g.name = "G1", g.no = 2, g.x1 = 0.2, g.x0 = 0.1, g.grounded = true, g.ratedMva = 200, g.ratedKv = 220;
    data.generators.push_back(g);
    exchange::NetShunt reactor;
    reactor.idNo = 31, reactor.no = 4, reactor.x1 = 2, reactor.ratedMvar = 50, reactor.ratedKv = 220;
    data.shunts.push_back(reactor);
    return data;
}

inline exchange::RelayBlock relayBlock(int rno, int iNo, int jNo, int idNo, int side, const std::string& label = "L") {
    exchange::RelayBlock block;
    block.rno = rno, block.label = label, block.iNo = iNo, block.jNo = jNo, block.idNo = idNo, block.side = side;
    return block;
}

inline engines::Study study(const std::vector<int>& virtualNodes = {11}) {
    engines::Study s;
    const exchange::NetworkData data = networkData();
    exchange::VirtualRelays virtualRelays;
    for (const int node : virtualNodes) virtualRelays.relays.push_back({node, 0, 0, 1});
    s.network = engines::buildNetwork(data);
    s.graph = engines::sectionGraph(data, virtualRelays);
    return s;
}

inline engines::StudyRelay& addRelay(engines::Study& s, exchange::RelayBlock block, std::vector<double> settings = {}) {
    if (!settings.empty()) {
        auto& part = block.parts.emplace_back();
        part.fill("0");
        for (std::size_t i = 0; i < settings.size(); ++i) part[i] = exchange::number(settings[i]);
    }
    s.relays.push_back(engines::placeRelay(block, s.network));
    return s.relays.back();
}

inline void addMainBranch(engines::Study& s, int fzNo, int iNo, int jNo, int idNo, int side,
                          std::vector<int> modes = {}, const std::vector<exchange::FaultRow>& rows = {}) {
    engines::StudyMainBranch main;
    main.record.fzNo = fzNo, main.record.iNo = iNo, main.record.jNo = jNo, main.record.idNo = idNo;
    main.record.side = side, main.record.modes = std::move(modes);
    const std::vector<exchange::FaultRow> end{{1, idNo, iNo, jNo, side == 1 ? 100 : 0, 1, "0", "0"}};
    main.cases = engines::faultCases(s.network, rows.empty() ? end : rows, "RELAY.R2", "main branch", s.notes);
    s.mainBranches.push_back(std::move(main));
}

/// Answers from tables that the test fills. What is not in them is dead, without coefficient, without a source.
class TabledCalculation : public engines::FaultCalculation {
  public:
    using Case = std::tuple<int, int, int>;  // operating mode, outage, fault
    std::map<Case, std::vector<double>> seen;
    std::map<std::tuple<int, int, int, bool>, double> coefficients;  // with true for the zero sequence
    std::map<int, double> sources;
    std::map<int, int> cutOut;
    std::vector<std::pair<engines::BranchEnd, engines::BranchEnd>> asked;  // first relay's branch, main branch

    std::vector<engines::QuantitiesSeen> quantities(int sysNo, const engines::FaultCase& outage,
                                                    std::span<const engines::FaultCase* const> faults,
                                                    const engines::RelayPlace&,
                                                    std::span<const engines::QuantityAsked> q) override {
        std::vector<engines::QuantitiesSeen> all;
        for (const engines::FaultCase* fault : faults) {
            const auto found = seen.find({sysNo, outage.number, fault->number});
            const bool dead = found == seen.end();
            all.push_back({dead ? std::vector<double>(q.size(), 0.0) : found->second, dead});
        }
        return all;
    }
    std::vector<double> branchCoefficients(int sysNo, engines::Sequence sequence, const engines::FaultCase& outage,
                                           const engines::FaultCase& fault, std::span<const engines::BranchEnd> relays,
                                           engines::BranchEnd main) override {
        asked.push_back({relays.front(), main});
        const auto found = coefficients.find({sysNo, outage.number, fault.number, sequence == engines::Sequence::Zero});
        return std::vector<double>(relays.size(), found == coefficients.end() ? 0 : found->second);
    }
    engines::Complex sourceImpedance(int sysNo, engines::Sequence, const engines::RelayPlace&) override {
        const auto found = sources.find(sysNo);
        return found == sources.end() ? std::numeric_limits<double>::infinity() : found->second;
    }
    [[nodiscard]] bool isCutOut(int sysNo, engines::BranchIndex branch) const override {
        const auto found = cutOut.find(sysNo);
        return found != cutOut.end() && found->second == branch.value;
    }
};

/// Evaluates one rule of one relay on a study and a calculation.
inline engines::RuleResult evaluate(const engines::Study& s, engines::FaultCalculation& calculation,
                                    const exchange::RuleBlock& rule, const engines::RuleInHand& inHand,
                                    const std::vector<double>& parameters = {}) {
    const engines::Sections sections(s);
    engines::BranchCoefficients coefficients(s, sections, calculation);
    engines::CandidateFinder finder(s, sections, calculation, coefficients);
    return engines::Interpreter(finder).evaluate(rule, parameters, inHand);
}

/// A rule whose outputs are its inputs.
inline exchange::RuleBlock rule(std::vector<exchange::RuleVariable> variables,
                                std::vector<exchange::RuleModeLine> modeLines = {}) {
    exchange::RuleBlock block;
    block.ruleNo = 1000;
    block.nOutPut = static_cast<int>(variables.size());
    for (const auto& v : variables) block.lines.push_back({v.varNo, 0, 1, 0, 1, exchange::kOutputBase + v.varNo});
    block.variables = std::move(variables);
    block.modeLines = std::move(modeLines);
    return block;
}

/// The line that keeps the candidate with the largest (1) or smallest (2) value of a variable.
inline exchange::RuleModeLine select(int modeNo, int varNo, int consel) {
    return {modeNo, varNo, 0, 1, 0, 1, 9, consel};
}

}  // namespace interp
