#include "engines/faults/BusStudy.h"

#include <algorithm>
#include <limits>

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

BusStudy::Answers::Answers(const SequenceNetwork& network)
    : net(&network),
      wholeLive(network.islands().floating() == 0),
      inverse(network.factors()),
      share(2 * network.elements().links().size()) {
    const IndexPair* places = network.elements().ordering()->pairPlace.data();
    const int* slots = network.elements().ordering()->pairSlot.data();
    const bool coupled = !network.elements().couplings().empty();
    for (const Link& link : network.elements().links()) {
        if (!link.conducts) continue;
        const auto k = static_cast<std::size_t>(link.branch);
        Complex &atI = share[2 * k], &atJ = share[2 * k + 1];
        if (coupled && network.elements().coupledWith(link.branch).size() > 1) {
            const auto [i, j] = network.elements().ordering()->pairs[k];
            atI = link.gain * coupledShare(network, inverse, link.branch, i);
            atJ = -coupledShare(network, inverse, link.branch, j);
            continue;
        }
        const bool through = link.from >= 0 && link.to >= 0;
        const Complex other = through ? inverse.slot(slots[k]) : Complex{}, out = link.y * link.gain;
        if (link.from >= 0) atI = product(out, other - link.gain * inverse.diagonalAt(places[k].first));
        if (link.to >= 0) atJ = product(link.y, link.gain * other - inverse.diagonalAt(places[k].second));
    }
}

BusStudy::BusStudy(const ModeNetwork& mode, int threads) : mode_(&mode) {
    const SequenceNetwork &positive = mode.sequence(Sequence::Positive), &zero = mode.sequence(Sequence::Zero);
    const auto piece = [&](int part) {
        if (part == 1) {
            zero_.emplace(zero);
            return;
        }
        positive_.emplace(positive);
        listEnds();
        listSources();
        if (positive.startsFlat()) return;
        before_ = positive.prefaultVoltages();
        beforeAtEnd_ = prefaultCurrents(positive, before_);
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
    const Answers& answers = sequence == Sequence::Positive ? *positive_ : *zero_;
    if (!answers.net->islands().live(bus.value)) return {std::numeric_limits<double>::infinity(), 0};
    return answers.inverse.diagonal(bus.value);
}

Sequences BusStudy::farVoltage(const BusFault& fault, BranchEnd end) const {
    if (fault.dead) return {};
    const Branch& branch = mode_->network().branches[at(end.branch.value)];
    const int far = (end.end == End::I ? branch.to : branch.from).value;
    const int slot = positive_->net->elements().ordering()->pairSlot[at(end.branch.value)];
    const Islands& islands = zero_->net->islands();
    const bool displaced = !islands.live(far) && islands.of(far) == islands.of(fault.bus.value);
    Sequences result;
    result.zero = displaced ? fault.voltage.zero : -product(zero_->inverse.slot(slot), fault.current.zero);
    if (!positive_->net->islands().live(far)) return result;
    const Complex z1 = positive_->inverse.slot(slot);
    result.positive = before(far) - product(z1, fault.current.positive);
    result.negative = -product(z1, fault.current.negative);
    return result;
}

Sequences BusStudy::sourceCurrent(const BusFault& fault, int source) const {
    if (fault.dead) return {};
    const Source& s = mode_->network().sources[at(source)];
    return {(emf(mode_->network(), s) - fault.voltage.positive) / s.z1, -fault.voltage.negative / s.z1,
            s.grounded ? -fault.voltage.zero / s.z0 : Complex{}};
}

std::size_t BusStudy::bytes() const {
    std::size_t values = before_.size() + beforeAtEnd_.size();
    for (const Answers* a : {&*positive_, &*zero_}) values += a->share.size() + a->inverse.size();
    return values * sizeof(Complex) + ends_.items.size() * sizeof(BranchEnd) +
           (ends_.start.size() + sources_.start.size() + sources_.items.size()) * sizeof(int);
}

}  // namespace engines
