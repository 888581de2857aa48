#include "engines/rules/BranchCoefficients.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

#include "engines/network/Threads.h"
#include "engines/rules/ElementData.h"
#include "exchange/TextFile.h"

namespace engines {

namespace {

CoefficientPair pairOf(const exchange::CoefficientResult& r) {
    return {{r.fz1, r.nSel1a, r.nSel1b, r.nSys1}, {r.fz0, r.nSel0a, r.nSel0b, r.nSys0}};
}

/// Digits that the result files keep.
constexpr int kResultDigits = 12;

double rounded(double value) {
    const std::string text = exchange::number(value, kResultDigits);
    double result = 0;
    std::from_chars(text.data(), text.data() + text.size(), result);
    return result;
}

/// A mode list that is empty stands for the network as it stands.
std::vector<int> operatingModes(const std::vector<int>& listed) { return listed.empty() ? std::vector{0} : listed; }

void keepLarger(double value, int fault, int outage, int sysNo, Coefficient& best) {
    constexpr double kBelowEvenWhenRounded = 1 - 1e-11;
    if (!std::isfinite(value) || value <= best.value * kBelowEvenWhenRounded) return;
    if (const double text = rounded(value); text > best.value) best = {text, fault, outage, sysNo};
}

void keepLarger(const Coefficient& other, Coefficient& best) {
    if (other.value > best.value) best = other;
}

}  // namespace

BranchCoefficients::BranchCoefficients(const Study& study, const Sections& sections, FaultCalculation& calculation)
    : study_(study), sections_(sections), calculation_(calculation) {
    for (std::size_t i = 0; i < study.mainBranches.size(); ++i) {
        const StudyMainBranch& main = study.mainBranches[i];
        mainBranchAt_.try_emplace({main.record.idNo, main.startNode()}, static_cast<int>(i));
    }
    for (const exchange::CoefficientResult& result : study.earlier)
        earlier_.try_emplace({result.fzNo, result.nlRNo}, pairOf(result));
}

std::vector<int> BranchCoefficients::mainBranchesOf(const AdjacentBranch& branch) const {
    const auto placeOf = [&](const AdjacentBranch& b) {
        const auto found = mainBranchAt_.find({sections_.edge(b.edge).idNo, b.startNode});
        return found == mainBranchAt_.end() ? -1 : found->second;
    };
    if (const int own = placeOf(branch); own >= 0) return {own};
    std::vector<int> beyond;
    for (const AdjacentBranch& winding : sections_.otherWindings(branch))
        if (const int place = placeOf(winding); place >= 0) beyond.push_back(place);
    return beyond;
}

const CoefficientPair* BranchCoefficients::earlier(int mainBranch, const StudyRelay& relay) const {
    const int number = study_.mainBranches[static_cast<std::size_t>(mainBranch)].record.fzNo;
    const auto found = earlier_.find({number, relay.rno});
    return found == earlier_.end() ? nullptr : &found->second;
}

void BranchCoefficients::consider(const StudyMainBranch& main, int sysNo, std::span<const BranchEnd> relays,
                                  BranchEnd m, std::vector<CoefficientPair>& best) {
    for (const FaultCase& outage : main.cases.outages)
        for (const FaultCase& fault : main.cases.faults) {
            if (exclude(outage, fault)) continue;
            const auto of = [&](Sequence sequence) {
                return calculation_.branchCoefficients(sysNo, sequence, outage, fault, relays, m);
            };
            const std::vector<double> positive = of(Sequence::Positive), zero = of(Sequence::Zero);
            for (std::size_t i = 0; i < relays.size(); ++i) {
                keepLarger(positive[i], fault.number, outage.number, sysNo, best[i].positive);
                keepLarger(zero[i], fault.number, outage.number, sysNo, best[i].zero);
            }
        }
}

std::vector<CoefficientPair> BranchCoefficients::largest(const StudyMainBranch& main, std::span<const BranchEnd> relays,
                                                         BranchEnd m) {
    std::vector<CoefficientPair> best(relays.size());
    for (const int sysNo : operatingModes(main.record.modes)) consider(main, sysNo, relays, m, best);
    return best;
}

const std::vector<std::vector<const StudyRelay*>>& BranchCoefficients::relaysBefore() {
    if (!relaysBefore_.empty()) return relaysBefore_;
    relaysBefore_.resize(study_.mainBranches.size());
    for (const StudyRelay& relay : study_.relays) {
        if (relay.kind != RelayKind::Branch || !relay.located) continue;
        for (const AdjacentBranch& branch : sections_.mainBranches(relay)) {
            const auto found = mainBranchAt_.find({sections_.edge(branch.edge).idNo, branch.startNode});
            if (found != mainBranchAt_.end()) relaysBefore_[static_cast<std::size_t>(found->second)].push_back(&relay);
        }
    }
    return relaysBefore_;
}

/// The relay's end and, since one solution serves them all, those of every other relay that still lacks this main
/// branch.
std::vector<BranchEnd> BranchCoefficients::wantedWith(int mainBranch, const BranchView& m, const StudyRelay& relay) {
    std::set<RelayEnd> wanted{{relay.place.branch.value, relay.place.end}};
    const auto& main = study_.mainBranches[static_cast<std::size_t>(mainBranch)];
    if (study_.network.branches[static_cast<std::size_t>(m.branch.value)].idNo == main.record.idNo)
        for (const StudyRelay* other : relaysBefore()[static_cast<std::size_t>(mainBranch)])
            if (!earlier(mainBranch, *other)) wanted.emplace(other->place.branch.value, other->place.end);
    std::vector<BranchEnd> ends;
    ends.reserve(wanted.size());
    for (const auto& [branch, end] : wanted) ends.push_back({BranchIndex{branch}, end});
    return ends;
}

void BranchCoefficients::compute(int mainBranch, const BranchView& m, const StudyRelay& relay) {
    const std::vector<BranchEnd> ends = wantedWith(mainBranch, m, relay);
    const auto pairs = largest(study_.mainBranches[static_cast<std::size_t>(mainBranch)], ends, {m.branch, m.end});
    const std::lock_guard lock(mutex_);
    for (std::size_t i = 0; i < ends.size(); ++i)
        kept_.emplace(Key{mainBranch, m.branch.value, {ends[i].branch.value, ends[i].end}}, pairs[i]);
}

const CoefficientPair& BranchCoefficients::computed(int mainBranch, const BranchView& m, const StudyRelay& relay) {
    const Key key{mainBranch, m.branch.value, {relay.place.branch.value, relay.place.end}};
    const auto known = [&]() -> const CoefficientPair* {
        const std::lock_guard lock(mutex_);
        const auto found = kept_.find(key);
        return found == kept_.end() ? nullptr : &found->second;
    };
    if (const CoefficientPair* pair = known()) return *pair;
    compute(mainBranch, m, relay);
    return *known();
}

void BranchCoefficients::computeAll(int threads) {
    std::vector<std::pair<int, const StudyRelay*>> missing;
    std::vector<int> modes;
    for (std::size_t place = 0; place < study_.mainBranches.size(); ++place) {
        const auto& relays = relaysBefore()[place];
        const int number = static_cast<int>(place);
        const auto lacking = std::ranges::find_if(relays, [&](auto* relay) { return !earlier(number, *relay); });
        if (lacking == relays.end() || viewOfMain(study_.mainBranches[place]).branch.value < 0) continue;
        missing.emplace_back(number, *lacking);
        std::ranges::copy(operatingModes(study_.mainBranches[place].record.modes), std::back_inserter(modes));
    }
    calculation_.prepare(modes, threads);
    inParallel(
        static_cast<int>(missing.size()),
        [&](int i) {
            const auto& [place, relay] = missing[static_cast<std::size_t>(i)];
            compute(place, viewOfMain(study_.mainBranches[static_cast<std::size_t>(place)]), *relay);
        },
        threads);
}

std::optional<CoefficientPair> BranchCoefficients::of(const AdjacentBranch& branch, const StudyRelay& relay) {
    const BranchView m = viewOf(branch, sections_, study_.network);
    if (m.branch.value < 0 || relay.kind != RelayKind::Branch || !relay.located) return std::nullopt;
    std::optional<CoefficientPair> best;
    for (const int place : mainBranchesOf(branch)) {
        const bool itself = study_.mainBranches[static_cast<std::size_t>(place)].startNode() == branch.startNode;
        const CoefficientPair* known = itself ? earlier(place, relay) : nullptr;
        const CoefficientPair& pair = known ? *known : computed(place, m, relay);
        if (!best) best = CoefficientPair{};
        keepLarger(pair.positive, best->positive);
        keepLarger(pair.zero, best->zero);
    }
    return best;
}

exchange::CoefficientResult BranchCoefficients::line(const StudyMainBranch& main, const StudyRelay& relay,
                                                     const CoefficientPair& pair) const {
    exchange::CoefficientResult r;
    const Branch& b = study_.network.branches[static_cast<std::size_t>(relay.place.branch.value)];
    const auto busNo = [&](BusIndex i) { return study_.network.buses[static_cast<std::size_t>(i.value)].no.value; };
    r.fzNo = main.record.fzNo;
    r.mINo = main.record.iNo;
    r.mJNo = main.record.jNo;
    r.mIdNo = main.record.idNo;
    r.mSide = main.record.side;
    r.bINo = busNo(b.from);
    r.bJNo = busNo(b.to);
    r.bIdNo = b.idNo;
    r.nlRNo = relay.rno;
    r.fz1 = pair.positive.value;
    r.nSel1a = pair.positive.fault;
    r.nSel1b = pair.positive.outage;
    r.nSys1 = pair.positive.sysNo;
    r.fz0 = pair.zero.value;
    r.nSel0a = pair.zero.fault;
    r.nSel0b = pair.zero.outage;
    r.nSys0 = pair.zero.sysNo;
    return r;
}

std::vector<exchange::CoefficientResult> BranchCoefficients::lines() {
    std::vector<exchange::CoefficientResult> result;
    for (std::size_t place = 0; place < study_.mainBranches.size(); ++place) {
        const StudyMainBranch& main = study_.mainBranches[place];
        const int number = static_cast<int>(place);
        if (relaysBefore()[place].empty()) continue;  // nor need the network have such a branch
        const BranchView m = viewOfMain(main);
        for (const StudyRelay* relay : relaysBefore()[place]) {
            if (m.branch.value < 0 || earlier(number, *relay)) continue;
            const CoefficientPair& pair = computed(number, m, *relay);
            if (!pair.none()) result.push_back(line(main, *relay, pair));
        }
    }
    std::ranges::stable_sort(result, {}, [](const auto& r) { return std::pair(r.fzNo, r.nlRNo); });
    result.insert(result.begin(), study_.earlier.begin(), study_.earlier.end());
    return result;
}

BranchView BranchCoefficients::viewOfMain(const StudyMainBranch& main) const {
    const int node = main.startNode();
    return viewOf({study_.graph.find(main.record.idNo, node), node, -1, node, false, false}, sections_, study_.network);
}

}  // namespace engines
