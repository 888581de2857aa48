#include "engines/faults/BusStudy.h"

#include <algorithm>
#include <limits>

#include "engines/faults/ShuntFault.h"
#include "engines/network/SelectedInverse.h"
#include "engines/network/SequenceNetwork.h"
#include "engines/network/Threads.h"

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

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
    Answers result{ComplexVector(at(ordering.n)), ComplexVector(links.size()), ComplexVector(2 * links.size()),
                   std::vector<char>(at(ordering.n)), std::vector<int>(at(ordering.n))};
    for (int i = 0; i < ordering.n; ++i) {
        result.driving[at(i)] = inverse.diagonal(i);
        result.live[at(i)] = net.islands().live(i);
        result.island[at(i)] = net.islands().of(i);
    }
    for (const Link& link : links) {
        const std::size_t k = at(link.branch);
        const Complex between = result.transfer[k] = inverse.slot(ordering.pairSlot[k]);
        if (!link.conducts) continue;
        const int i = branches[k].from.value, j = branches[k].to.value;
        Complex &atI = result.share[2 * k], &atJ = result.share[2 * k + 1];
        if (net.elements().coupledWith(link.branch).size() > 1) {
            atI = link.gain * coupledShare(net, inverse, link.branch, i);
            atJ = -coupledShare(net, inverse, link.branch, j);
            continue;
        }
        const bool through = link.from >= 0 && link.to >= 0;
        const Complex other = through ? between : Complex{}, out = link.y * link.gain;
        if (link.from >= 0) atI = product(out, other - link.gain * result.driving[at(i)]);
        if (link.to >= 0) atJ = product(link.y, link.gain * other - result.driving[at(j)]);
    }
    return result;
}

BusStudy::BusStudy(const ModeNetwork& mode, int threads) : mode_(&mode) {
    const SequenceNetwork &positive = mode.sequence(Sequence::Positive), &zero = mode.sequence(Sequence::Zero);
    const auto piece = [&](int part) {
        if (part == 1) {
            zero_ = answers(zero);
            return;
        }
        positive_ = answers(positive);
        listEnds();
        listSources();
        before_ = positive.prefaultVoltages();
        if (!positive.startsFlat()) beforeAtEnd_ = prefaultCurrents(positive, before_);
    };
    inParallel(2, piece, threads);
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
    result.current = shuntCurrent(kind, before_[i], z1, z0, grounded, z);
    result.voltage = {before_[i] - product(z1, result.current.positive), -product(z1, result.current.negative), {}};
    result.voltage.zero = grounded ? -product(z0, result.current.zero) : displacement(kind, result.voltage);
    return result;
}

std::size_t BusStudy::bytes() const {
    std::size_t values = before_.size() + beforeAtEnd_.size();
    for (const Answers* a : {&positive_, &zero_}) values += a->driving.size() + a->transfer.size() + a->share.size();
    const std::size_t buses = before_.size();
    return values * sizeof(Complex) + buses * 2 * (1 + sizeof(int)) + ends_.items.size() * sizeof(BranchEnd) +
           (ends_.start.size() + sources_.start.size() + sources_.items.size()) * sizeof(int);
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
