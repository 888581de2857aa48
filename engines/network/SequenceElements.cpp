#include "engines/network/SequenceElements.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// What the zero sequence lets through of a transformer.
void restrict(Link& link, ZeroPath path) {
    link.conducts = path != ZeroPath::None;
    if (path != ZeroPath::GroundAtI) link.from = -1;
    if (path != ZeroPath::GroundAtJ) link.to = -1;
}

Stretch clipped(Stretch part, double from, double to) {
    const double length = to - from;
    return {std::clamp((part.from - from) / length, 0.0, 1.0), std::clamp((part.to - from) / length, 0.0, 1.0)};
}

double overlap(Stretch a, Stretch b) { return std::max(0.0, std::min(a.to, b.to) - std::max(a.from, b.from)); }

/// Share of the coupled stretch that lies along both parts.
double coupledShare(const Mutual& mutual, Stretch onFirst, Stretch onSecond) {
    const Stretch first = clipped(onFirst, mutual.firstFrom / 100, mutual.firstTo / 100);
    const Stretch second = clipped(onSecond, mutual.secondFrom / 100, mutual.secondTo / 100);
    return overlap(first, mutual.opposite ? Stretch{1 - second.to, 1 - second.from} : second);
}

}  // namespace

SequenceElements::SequenceElements(const Network& network, Sequence sequence, std::span<const ModeChange> changes,
                                   std::shared_ptr<const Ordering> ordering)
    : sequence_(sequence),
      buses_(static_cast<int>(network.buses.size())),
      ordering_(ordering ? std::move(ordering) : orderingOf(network)) {
    const bool zero = sequence == Sequence::Zero;
    links_.reserve(network.branches.size());
    int place = 0;
    for (const Branch& b : network.branches) {
        const double gain = b.ratio == 1 ? 1 : 1 / b.ratio;
        links_.push_back({b.from.value, b.to.value, reciprocal(zero ? b.z0 : b.z1), gain, place++, true});
        if (!zero || b.zeroPath == ZeroPath::Through) continue;
        restrict(links_.back(), b.zeroPath);
        allThrough_ = false;
    }
    shunts_.reserve(network.sources.size() + network.zeroShunts.size());
    for (const Source& s : network.sources) {
        if (!zero || s.grounded) shunts_.push_back({s.bus.value, reciprocal(zero ? s.z0 : s.z1)});
    }
    if (zero) {
        for (const ZeroShunt& s : network.zeroShunts) shunts_.push_back({s.bus.value, 1.0 / s.z0, true});
    }
    for (const ModeChange& change : changes) {
        if (change.sequence == sequence_) apply(change);
    }
    if (zero) couple(network);
}

void SequenceElements::apply(const ModeChange& change) {
    if (change.branch.value >= 0) {
        Link& link = links_[at(change.branch.value)];
        if (change.cut)
            link.conducts = allThrough_ = false;
        else
            link.y = reciprocal(change.z);
        return;
    }
    if (sequence_ != Sequence::Zero) return;
    std::erase_if(shunts_, [&](const NodeShunt& s) { return s.reactor && s.bus == change.bus.value; });
    if (!change.cut) shunts_.push_back({change.bus.value, 1.0 / change.z, true});
}

void SequenceElements::couple(const Network& network) {
    for (const Mutual& m : network.mutuals) {
        mutuals_[std::minmax(m.first.value, m.second.value)].push_back(m);
    }
    sets_ = coupledSets(network);
    if (!sets_.empty()) setOf_.assign(links_.size(), -1);
    for (std::size_t s = 0; s < sets_.size(); ++s) {
        for (const int k : sets_[s]) setOf_[at(k)] = static_cast<int>(s);
    }
}

std::span<const int> SequenceElements::coupledWith(int branch) const {
    if (!setOf_.empty() && setOf_[at(branch)] >= 0) return sets_[at(setOf_[at(branch)])];
    return std::span(&links_[at(branch)].branch, 1);
}

Complex SequenceElements::impedance(int a, Stretch onA, int b, Stretch onB) const {
    if (a == b) return reciprocal(links_[at(a)].y) * overlap(onA, onB);
    const auto it = mutuals_.find({std::min(a, b), std::max(a, b)});
    if (it == mutuals_.end()) return {};
    Complex sum;
    for (const Mutual& m : it->second) {
        const bool straight = m.first.value == a;
        sum += m.z0 * coupledShare(m, straight ? onA : onB, straight ? onB : onA);
    }
    return sum;
}

}  // namespace engines
