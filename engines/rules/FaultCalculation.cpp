#include "engines/rules/FaultCalculation.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "engines/faults/Places.h"

namespace engines {

namespace {

/// Solutions kept at most; a run that asks for more starts keeping anew.
constexpr std::size_t kKeptSolutions = 4096;

/// Rounding noise of the solution, in kA, kV and kilo-ohm: a microampere and less is nothing.
constexpr double kNoise = 1e-9;

void append(std::string& key, double value) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    key.append(bytes, sizeof value);
}

void append(std::string& key, const FaultCase& faultCase) {
    for (const Condition& c : faultCase.conditions)
        for (const double value : {double(c.branch.value), double(c.bus.value), c.percent, double(c.kind), c.z.real(),
                                   c.z.imag(), double(c.group)})
            append(key, value);
}

/// The text under which a state is kept: its numbers as bytes.
std::string keyOf(int sysNo, const FaultCase& outage, const FaultCase& fault) {
    std::string key;
    append(key, sysNo);
    append(key, outage);
    append(key, fault);
    return key;
}

std::vector<Condition> together(const FaultCase& outage, const FaultCase& fault) {
    std::vector<Condition> all = outage.conditions;
    all.insert(all.end(), fault.conditions.begin(), fault.conditions.end());
    return all;
}

double withoutNoise(double value) { return std::abs(value) < kNoise ? 0.0 : value; }

}  // namespace

ModeStudies::ModeStudies(const Network& network, const std::map<int, std::vector<ModeChange>>& modes)
    : network_(network), modes_(modes) {}

ModeStudies::~ModeStudies() = default;

const std::vector<ModeChange>& ModeStudies::changes(int sysNo) const {
    static const std::vector<ModeChange> none;
    const auto found = modes_.find(sysNo);
    return found == modes_.end() ? none : found->second;
}

const ModeNetwork& ModeStudies::mode(int sysNo) {
    auto& kept = networks_[sysNo];
    if (!kept) kept = std::make_unique<ModeNetwork>(network_, changes(sysNo));
    return *kept;
}

const Solution& ModeStudies::solution(int sysNo, const FaultCase& outage, const FaultCase& fault) {
    std::string key = keyOf(sysNo, outage, fault);
    if (const auto found = solutions_.find(key); found != solutions_.end()) return found->second;
    if (solutions_.size() >= kKeptSolutions) solutions_.clear();
    const std::vector<Condition> conditions = together(outage, fault);
    return solutions_.emplace(std::move(key), mode(sysNo).solve(conditions)).first->second;
}

QuantitiesSeen ModeStudies::quantities(int sysNo, const FaultCase& outage, const FaultCase& fault,
                                       const RelayPlace& relay, std::span<const QuantityAsked> asked) {
    const Solution& solved = solution(sysNo, outage, fault);
    QuantitiesSeen seen;
    seen.dead = solved.dead();
    for (const QuantityAsked& q : asked)
        seen.values.push_back(withoutNoise(faultQuantity(q.vType, q.vPos, relay, network_, solved)));
    return seen;
}

std::vector<double> ModeStudies::branchCoefficients(int sysNo, Sequence sequence, const FaultCase& outage,
                                                    const FaultCase& fault, std::span<const BranchEnd> relays,
                                                    BranchEnd main) {
    const auto& rows = fault.conditions;
    const auto shunt = std::ranges::find_if(rows, [](const Condition& c) { return !isSeries(c.kind); });
    if (shunt == rows.end()) return std::vector<double>(relays.size());
    std::vector<Condition> conditions = outage.conditions;
    std::ranges::copy_if(rows, std::back_inserter(conditions), [](const Condition& c) { return isSeries(c.kind); });
    return mode(sysNo).branchCoefficients(sequence, *shunt, conditions, relays, main);
}

Complex ModeStudies::sourceImpedance(int sysNo, Sequence sequence, const RelayPlace& relay) {
    return mode(sysNo).sourceImpedance(sequence, relay.bus, relay.branch);
}

bool ModeStudies::isCutOut(int sysNo, BranchIndex branch) const {
    if (branch.value < 0) return false;
    return std::ranges::any_of(changes(sysNo), [&](const ModeChange& change) {
        return change.branch == branch && change.cut && change.sequence == Sequence::Positive;
    });
}

}  // namespace engines
