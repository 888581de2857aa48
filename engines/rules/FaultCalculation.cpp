#include "engines/rules/FaultCalculation.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <mutex>
#include <optional>

#include "engines/faults/Places.h"

namespace engines {

namespace {

/// Outages, each in one operating mode, of which solutions are kept; the oldest makes room.
constexpr std::size_t kKeptOutages = 128;

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

/// The text under which a case is kept: its numbers as bytes.
std::string keyOf(const FaultCase& faultCase) {
    std::string key;
    append(key, faultCase);
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

void ModeStudies::prepare(std::span<const int> sysNos, int threads) {
    std::vector<std::pair<int, std::unique_ptr<ModeNetwork>*>> missing;
    const std::lock_guard lock(networksMutex_);
    for (const int sysNo : sysNos)
        if (const auto [entry, fresh] = networks_.try_emplace(sysNo); fresh)
            missing.emplace_back(sysNo, &entry->second);
    inParallel(
        static_cast<int>(missing.size()),
        [&](int i) {
            const auto& [sysNo, place] = missing[static_cast<std::size_t>(i)];
            *place = std::make_unique<ModeNetwork>(network_, changes(sysNo));
        },
        threads);
}

const ModeNetwork& ModeStudies::mode(int sysNo) {
    const std::lock_guard lock(networksMutex_);
    auto& kept = networks_[sysNo];
    if (!kept) kept = std::make_unique<ModeNetwork>(network_, changes(sysNo));
    return *kept;
}

std::shared_ptr<ModeStudies::Solutions> ModeStudies::solutionsOf(int sysNo, const FaultCase& outage) {
    std::string key = keyOf(outage);
    append(key, sysNo);
    const std::lock_guard lock(solutionsMutex_);
    if (const auto found = solutions_.find(key); found != solutions_.end()) return found->second;
    if (oldest_.size() >= kKeptOutages) {
        solutions_.erase(oldest_.front());
        oldest_.pop_front();
    }
    oldest_.push_back(key);
    return solutions_.emplace(std::move(key), std::make_shared<Solutions>()).first->second;
}

Solution ModeStudies::solution(int sysNo, const FaultCase& outage, const FaultCase& fault, const Solution* like,
                               Solutions& kept) {
    std::string key = keyOf(fault);
    {
        const std::lock_guard lock(solutionsMutex_);
        if (const auto found = kept.find(key); found != kept.end()) return found->second;
    }
    const std::vector<Condition> conditions = together(outage, fault);
    Solution solved = mode(sysNo).solve(conditions, like);
    const std::lock_guard lock(solutionsMutex_);
    return kept.emplace(std::move(key), std::move(solved)).first->second;
}

std::vector<QuantitiesSeen> ModeStudies::quantities(int sysNo, const FaultCase& outage,
                                                    std::span<const FaultCase* const> faults, const RelayPlace& relay,
                                                    std::span<const QuantityAsked> asked) {
    const auto kept = solutionsOf(sysNo, outage);
    std::vector<QuantitiesSeen> all;
    std::optional<Solution> solved;  // also what the next fault may resemble: often another kind at the same place
    for (const FaultCase* fault : faults) {
        solved = solution(sysNo, outage, *fault, solved ? &*solved : nullptr, *kept);
        QuantitiesSeen& seen = all.emplace_back();
        seen.dead = solved->dead();
        for (const QuantityAsked& q : asked)
            seen.values.push_back(withoutNoise(faultQuantity(q.vType, q.vPos, relay, network_, *solved)));
    }
    return all;
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
