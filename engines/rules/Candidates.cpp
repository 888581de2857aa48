#include "engines/rules/Candidates.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engines/rules/Arithmetic.h"
#include "engines/rules/ElementData.h"
#include "engines/rules/VariableKind.h"

namespace engines {

using exchange::BranchKind;
using exchange::RuleVariable;

namespace {

constexpr int kLinesOnly = 2;
constexpr int kTransformersOnly = 3;

std::string lackOf(const RuleVariable& variable, double value) {
    if (!std::isnan(value)) return {};
    const std::string name = operandName(variable.varNo);
    if (isRelaySetting(variable.vType)) return name + ": the part of that relay is not set yet";
    if (isBranchCoefficient(variable.vType)) return name + ": no branch coefficient for that main branch";
    return name + " (kind " + std::to_string(variable.vType) + ") has no value there";
}

/// The relay feeds nothing into the branch behind it: every branch coefficient of the mode is 0, every assist
/// coefficient infinite. One sequence alone says nothing: the other still has to be coordinated with.
bool feedsNothing(std::span<const RuleVariable> variables, const Candidate& candidate) {
    bool any = false;
    for (std::size_t i = 0; i < variables.size(); ++i) {
        if (!isBranchCoefficient(variables[i].vType)) continue;
        if (candidate.values[i] != 0 && !std::isinf(candidate.values[i])) return false;
        any = true;
    }
    return any;
}

void noteLack(std::span<const RuleVariable> variables, Candidate& candidate) {
    for (std::size_t i = 0; i < variables.size() && candidate.lack.empty(); ++i)
        candidate.lack = lackOf(variables[i], candidate.values[i]);
    if (candidate.lack.empty() && feedsNothing(variables, candidate))
        candidate.lack = "the relay feeds nothing into that branch, or against its current";
}

/// Kinds of branch that the mode's variables ask for, by their place number.
bool isAskedFor(BranchKind kind, std::span<const RuleVariable> variables) {
    const auto asks = [&](int vPos) { return std::ranges::any_of(variables, [=](auto& v) { return v.vPos == vPos; }); };
    if (asks(kLinesOnly)) return kind == BranchKind::Line;
    if (asks(kTransformersOnly)) return kind != BranchKind::Line;
    return true;
}

std::vector<QuantityAsked> quantitiesAsked(std::span<const RuleVariable> variables) {
    std::vector<QuantityAsked> asked;
    for (const RuleVariable& v : variables) asked.push_back({v.vType, v.vPos});
    return asked;
}

/// Only currents are asked for and all are zero. A voltage of zero is a value like any other.
bool bringsNoCurrent(const std::vector<QuantityAsked>& asked, const std::vector<double>& values) {
    constexpr int kLastCurrent = 9;
    const bool currents = std::ranges::all_of(asked, [](const QuantityAsked& q) { return q.vType <= kLastCurrent; });
    return currents && std::ranges::all_of(values, [](double v) { return v == 0; });
}

}  // namespace

double settingOf(const StudyRelay& relay, int vType) {
    const SettingPlace place = settingPlace(vType);
    if (place.part > static_cast<int>(relay.settings.size())) return kNoValue;
    const auto& part = relay.settings[static_cast<std::size_t>(place.part - 1)];
    return part[0] == 0 ? kNoValue : part[static_cast<std::size_t>(place.number - 1)];
}

CandidateFinder::CandidateFinder(const Study& study, const Sections& sections, FaultCalculation& calculation,
                                 BranchCoefficients& coefficients)
    : study_(study), sections_(sections), calculation_(calculation), coefficients_(coefficients) {}

std::vector<Candidate> CandidateFinder::find(int modeNo, Variables variables, const RuleInHand& rule) {
    std::vector<Candidate> found;
    switch (modeClass(modeNo)) {
        case ModeClass::OwnData:
            found = ownData(variables, rule);
            break;
        case ModeClass::Faults:
            found = faults(modeNo, variables, rule);
            break;
        case ModeClass::BranchesBehind:
            found = branches(sections_.branchesBehind(rule.relay), variables, rule);
            break;
        case ModeClass::RelaysBehind:
            found = relays(variables, rule);
            break;
        case ModeClass::BranchesHere:
            found = branches(sections_.branchesHere(rule.relay), variables, rule);
            break;
        case ModeClass::None:
            break;
    }
    for (Candidate& candidate : found) {
        candidate.choice.modeNo = modeNo;
        noteLack(variables, candidate);
    }
    return found;
}

double CandidateFinder::ownValue(const RuleVariable& variable, int sysNo, const StudyRelay& relay) {
    if (!isSourceImpedance(variable.vType)) return ownDatum(variable.vType, variable.vPos, relay, study_.network);
    const Sequence sequence = variable.vType == vtype::kSourceImpedance1 ? Sequence::Positive : Sequence::Zero;
    return std::abs(calculation_.sourceImpedance(sysNo, sequence, relay.place)) *
           ohmBase(study_.network, relay.place.bus);
}

std::vector<Candidate> CandidateFinder::ownData(Variables variables, const RuleInHand& rule) {
    const bool byMode = std::ranges::any_of(variables, [](auto& v) { return isSourceImpedance(v.vType); });
    std::vector<Candidate> found;
    for (const int sysNo : rule.operatingModes) {
        Candidate candidate;
        candidate.choice.nSys = sysNo;
        for (const RuleVariable& v : variables) candidate.values.push_back(ownValue(v, sysNo, rule.relay));
        found.push_back(std::move(candidate));
        if (!byMode) break;
    }
    return found;
}

void CandidateFinder::faultsUnder(int sysNo, const FaultCases& cases, Variables variables, const RuleInHand& rule,
                                  std::vector<Candidate>& found) {
    const std::vector<QuantityAsked> asked = quantitiesAsked(variables);
    for (const FaultCase& outage : cases.outages) {
        if (touches(outage, rule.relay.place.branch)) continue;
        std::vector<const FaultCase*> faults;
        for (const FaultCase& fault : cases.faults)
            if (!exclude(outage, fault)) faults.push_back(&fault);
        auto seen = calculation_.quantities(sysNo, outage, faults, rule.relay.place, asked);
        for (std::size_t i = 0; i < faults.size(); ++i) {
            Candidate candidate{{0, faults[i]->number, outage.number, 0, sysNo}, {}, {}, false};
            candidate.unseen = seen[i].dead || bringsNoCurrent(asked, seen[i].values);
            candidate.values = std::move(seen[i].values);
            found.push_back(std::move(candidate));
        }
    }
}

std::vector<Candidate> CandidateFinder::faults(int modeNo, Variables variables, const RuleInHand& rule) {
    std::vector<Candidate> found;
    const auto cases = rule.cases.find(modeNo);
    if (cases == rule.cases.end()) return found;
    for (const int sysNo : rule.operatingModes)
        if (!calculation_.isCutOut(sysNo, rule.relay.place.branch))
            faultsUnder(sysNo, cases->second, variables, rule, found);
    return found;
}

double CandidateFinder::coefficient(int vType, const AdjacentBranch& branch, const StudyRelay& relay) {
    const bool transformerOnly = vType >= vtype::kTransformerAssist1;
    if (transformerOnly && sections_.edge(branch.edge).kind == BranchKind::Line) return kNoValue;
    const std::optional<CoefficientPair> pair = coefficients_.of(branch, relay);
    if (!pair) return kNoValue;
    const bool positive =
        vType == vtype::kCoefficient1 || vType == vtype::kAssist1 || vType == vtype::kTransformerAssist1;
    const double value = positive ? pair->positive.value : pair->zero.value;
    if (vType < vtype::kAssist1) return std::max(value, 0.0);
    return value > 0 ? 1 / value : std::numeric_limits<double>::infinity();
}

double CandidateFinder::branchValue(int vType, const AdjacentBranch& branch, const StudyRelay& relay) {
    if (isBranchCoefficient(vType)) return coefficient(vType, branch, relay);
    return elementDatum(vType, viewOf(branch, sections_, study_.network), study_.network);
}

Candidate CandidateFinder::branchCandidate(const AdjacentBranch& branch, Variables variables, const RuleInHand& rule) {
    const exchange::BranchEdge& edge = sections_.edge(branch.edge);
    Candidate candidate{{0, edge.iNo, edge.jNo, edge.idNo, 0}, {}, {}, false};
    for (const RuleVariable& v : variables) candidate.values.push_back(branchValue(v.vType, branch, rule.relay));
    return candidate;
}

std::vector<Candidate> CandidateFinder::branches(const std::vector<AdjacentBranch>& found, Variables variables,
                                                 const RuleInHand& rule) {
    std::vector<Candidate> candidates;
    for (const AdjacentBranch& branch : found)
        if (isAskedFor(sections_.edge(branch.edge).kind, variables))
            candidates.push_back(branchCandidate(branch, variables, rule));
    return candidates;
}

std::vector<Candidate> CandidateFinder::relays(Variables variables, const RuleInHand& rule) {
    std::vector<Candidate> candidates;
    for (const AdjacentRelay& adjacent : sections_.relaysBehind(rule.relay)) {
        Candidate candidate{{0, adjacent.relay->rno, 0, 0, 0}, {}, {}, false};
        for (const RuleVariable& v : variables)
            candidate.values.push_back(isRelaySetting(v.vType) ? settingOf(*adjacent.relay, v.vType)
                                                               : branchValue(v.vType, adjacent.branch, rule.relay));
        candidates.push_back(std::move(candidate));
    }
    return candidates;
}

}  // namespace engines
