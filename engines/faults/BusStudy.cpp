#include "engines/faults/BusStudy.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "engines/network/SelectedInverse.h"
#include "engines/network/SequenceNetwork.h"

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

std::size_t at(BranchEnd e) { return 2 * at(e.branch.value) + (e.end == End::J ? 1 : 0); }

/// Boundary conditions of the faults: Anderson, Analysis of Faulted Power Systems, ch. 3.
Sequences faultCurrent(FaultKind kind, Complex before, Complex z1, Complex z0, bool grounded, Complex z) {
    switch (kind) {
        case FaultKind::ThreePhaseGround:
            return {before / (z1 + z), {}, {}};
        case FaultKind::PhaseAGround: {
            const Complex i = grounded ? before / (2.0 * z1 + z0 + 3.0 * z) : Complex{};
            return {i, i, i};
        }
        case FaultKind::PhaseBC: {
            const Complex i = before / (2.0 * z1 + z);
            return {i, -i, {}};
        }
        case FaultKind::PhaseBCGround: {
            const Complex share = grounded ? z1 / (z1 + z0 + 3.0 * z) : Complex{};  // of the zero sequence
            const Complex i = before / (z1 + z1 * (1.0 - share));
            return {i, -i * (1.0 - share), -i * share};
        }
        default:
            throw std::invalid_argument("a bus study knows shunt faults only");
    }
}

/// Zero-sequence voltage at the fault where no zero-sequence current can flow.
Complex displacement(FaultKind kind, const Sequences& v) {
    if (kind == FaultKind::PhaseAGround) return -(v.positive + v.negative);
    return kind == FaultKind::PhaseBCGround ? v.positive : Complex{};
}

/// Current into each branch end before the fault.
ComplexVector prefaultCurrents(const SequenceNetwork& net, const ComplexVector& voltages) {
    const auto& links = net.elements().links();
    ComplexVector result(2 * links.size());
    for (std::size_t k = 0; k < links.size(); ++k) {
        const Link& link = links[k];
        if (!link.conducts) continue;
        const Complex i = link.y * (link.gain * voltages[at(link.from)] - voltages[at(link.to)]);
        result[2 * k] = link.gain * i;
        result[2 * k + 1] = -i;
    }
    return result;
}

/// Share of the current of a coupled branch for a unit of fault current at a bus.
Complex coupledShare(const SequenceNetwork& net, const SelectedInverse& inverse, int branch, int bus) {
    const auto members = net.elements().coupledWith(branch);
    const Matrix y = net.admittance(branch);
    const int own = static_cast<int>(std::ranges::find(members, branch) - members.begin());
    Complex sum;
    for (int m = 0; m < y.rows(); ++m) {
        const Link& link = net.elements().links()[at(members[at(m)])];
        sum -= y(own, m) * (link.gain * inverse.entry(link.from, bus) - inverse.entry(link.to, bus));
    }
    return sum;
}

}  // namespace

BusStudy::Answers BusStudy::answers(const SequenceNetwork& net) const {
    const SelectedInverse inverse(net.factors());
    const auto& branches = mode_->network().branches;
    const auto& links = net.elements().links();
    const Ordering& ordering = net.factors().ordering();
    Answers result;
    for (int i = 0; i < ordering.n; ++i) {
        result.driving.push_back(inverse.diagonal(i));
        result.live.push_back(net.islands().live(i));
        result.island.push_back(net.islands().of(i));
    }
    result.transfer.resize(links.size());
    result.share.resize(2 * links.size());
    for (int k = 0; k < static_cast<int>(links.size()); ++k) {
        const Link& link = links[at(k)];
        const Complex between = result.transfer[at(k)] = inverse.slot(ordering.pairSlot[at(k)]);
        if (!link.conducts) continue;
        Complex &atI = result.share[2 * at(k)], &atJ = result.share[2 * at(k) + 1];
        const int i = branches[at(k)].from.value, j = branches[at(k)].to.value;
        if (net.elements().coupledWith(k).size() > 1) {
            atI = link.gain * coupledShare(net, inverse, k, i);
            atJ = -coupledShare(net, inverse, k, j);
            continue;
        }
        const Complex toJ = link.to < 0 ? Complex{} : between, toI = link.from < 0 ? Complex{} : between;
        if (link.from >= 0) atI = product(-link.y * link.gain, link.gain * result.driving[at(i)] - toJ);
        if (link.to >= 0) atJ = product(link.y, link.gain * toI - result.driving[at(j)]);
    }
    return result;
}

template <class T>
std::span<const T> BusStudy::AtBus<T>::of(BusIndex bus) const {
    const auto first = at(start[at(bus.value)]), last = at(start[at(bus.value + 1)]);
    return std::span(items).subspan(first, last - first);
}

BusStudy::BusStudy(const ModeNetwork& mode, int) : mode_(&mode) {
    listEnds();
    listSources();
    const SequenceNetwork& positive = mode.sequence(Sequence::Positive);
    positive_ = answers(positive);
    zero_ = answers(mode.sequence(Sequence::Zero));
    before_ = positive.prefaultVoltages();
    if (!positive.startsFlat()) beforeAtEnd_ = prefaultCurrents(positive, before_);
}

void BusStudy::listEnds() {
    const Network& network = mode_->network();
    ends_.start.assign(network.buses.size() + 1, 0);
    for (const Branch& b : network.branches) ++ends_.start[at(b.from.value) + 1], ++ends_.start[at(b.to.value) + 1];
    for (std::size_t i = 1; i < ends_.start.size(); ++i) ends_.start[i] += ends_.start[i - 1];
    ends_.items.resize(2 * network.branches.size());
    std::vector<int> next(ends_.start.begin(), ends_.start.end() - 1);
    for (int k = 0; k < static_cast<int>(network.branches.size()); ++k) {
        const Branch& b = network.branches[at(k)];
        ends_.items[at(next[at(b.from.value)]++)] = {{k}, End::I};
        ends_.items[at(next[at(b.to.value)]++)] = {{k}, End::J};
    }
}

void BusStudy::listSources() {
    const Network& network = mode_->network();
    sources_.start.assign(network.buses.size() + 1, 0);
    for (const Source& s : network.sources) ++sources_.start[at(s.bus.value) + 1];
    for (std::size_t i = 1; i < sources_.start.size(); ++i) sources_.start[i] += sources_.start[i - 1];
    sources_.items.resize(network.sources.size());
    std::vector<int> next(sources_.start.begin(), sources_.start.end() - 1);
    for (int s = 0; s < static_cast<int>(network.sources.size()); ++s) {
        sources_.items[at(next[at(network.sources[at(s)].bus.value)]++)] = s;
    }
}

std::span<const BranchEnd> BusStudy::ends(BusIndex bus) const { return ends_.of(bus); }

std::span<const int> BusStudy::sources(BusIndex bus) const { return sources_.of(bus); }

Complex BusStudy::impedance(Sequence sequence, BusIndex bus) const {
    const Answers& answers = sequence == Sequence::Positive ? positive_ : zero_;
    if (!answers.live[at(bus.value)]) return {std::numeric_limits<double>::infinity(), 0};
    return answers.driving[at(bus.value)];
}

BusFault BusStudy::fault(BusIndex bus, FaultKind kind, Complex z) const {
    const std::size_t i = at(bus.value);
    BusFault result{bus, {}, {}, !positive_.live[i]};
    if (result.dead) return result;
    const bool grounded = zero_.live[i];
    const Complex z1 = positive_.driving[i], z0 = zero_.driving[i];
    result.current = faultCurrent(kind, before_[i], z1, z0, grounded, z);
    result.voltage = {before_[i] - z1 * result.current.positive, -z1 * result.current.negative, {}};
    result.voltage.zero = grounded ? -z0 * result.current.zero : displacement(kind, result.voltage);
    return result;
}

Sequences BusStudy::current(const BusFault& fault, BranchEnd end) const {
    const Complex share1 = positive_.share[at(end)];
    Sequences result{share1 * fault.current.positive, share1 * fault.current.negative,
                     zero_.share[at(end)] * fault.current.zero};
    if (!beforeAtEnd_.empty() && !fault.dead) result.positive += beforeAtEnd_[at(end)];
    return result;
}

Sequences BusStudy::farVoltage(const BusFault& fault, BranchEnd end) const {
    if (fault.dead) return {};
    const Branch& branch = mode_->network().branches[at(end.branch.value)];
    const std::size_t far = at((end.end == End::I ? branch.to : branch.from).value);
    const Complex z1 = positive_.transfer[at(end.branch.value)], z0 = zero_.transfer[at(end.branch.value)];
    const bool displaced = !zero_.live[far] && zero_.island[far] == zero_.island[at(fault.bus.value)];
    Sequences result{before_[far] - z1 * fault.current.positive, -z1 * fault.current.negative,
                     displaced ? fault.voltage.zero : -z0 * fault.current.zero};
    if (!positive_.live[far]) result.positive = result.negative = {};
    return result;
}

Sequences BusStudy::sourceCurrent(const BusFault& fault, int source) const {
    if (fault.dead) return {};
    const Source& s = mode_->network().sources[at(source)];
    return {(emf(mode_->network(), s) - fault.voltage.positive) / s.z1, -fault.voltage.negative / s.z1,
            s.grounded ? -fault.voltage.zero / s.z0 : Complex{}};
}

}  // namespace engines
