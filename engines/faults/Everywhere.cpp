#include <algorithm>
#include <set>

#include "engines/faults/SolutionState.h"

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// Branches whose current is not that of their ends' voltages alone: with ports or cuts, or coupled.
std::set<int> particular(const Places& places, const SequenceElements& zero) {
    std::set<int> result;
    for (const auto& [branch, points] : places.cuts) result.insert(branch);
    for (const Port& port : places.ports) {
        if (port.branch >= 0) result.insert(port.branch);
    }
    for (const std::vector<int>& set : zero.couplings()) result.insert(set.begin(), set.end());
    return result;
}

Complex through(const Link& link, const ComplexVector& v) {
    if (!link.conducts) return {};
    Complex drop;
    if (link.from >= 0) drop += link.gain * v[at(link.from)];
    if (link.to >= 0) drop -= v[at(link.to)];
    return product(link.y, drop);
}

}  // namespace

ComplexVector SequenceField::components() const {
    BusWeights injection;
    for (int l = 0; l < ports_->size(); ++l) {
        const Complex current = (ports_->places_->ports[at(l)].series ? 1.0 : -1.0) * values_[at(l)];
        if (current == Complex{}) continue;
        for (const auto& [bus, weight] : ports_->views_[at(l)].weights) injection.emplace_back(bus, weight * current);
    }
    if (injection.empty()) return ComplexVector(at(ports_->net_->elements().buses()));
    return ports_->net_->solve(injection);
}

void SequenceField::addLoad(ComplexVector& components) const {
    if (!loaded()) return;
    const ComplexVector before = ports_->net_->prefaultVoltages();
    for (std::size_t i = 0; i < before.size(); ++i) components[i] += before[i];
}

void SequenceField::addCommon(ComplexVector& components) const {
    const Islands& islands = ports_->net_->islands();
    const bool flat = withPrefault_ && !loaded();
    if (islands.floating() == 0) {
        if (!flat) return;
        for (Complex& voltage : components) voltage += 1;
        return;
    }
    for (int i = 0; i < static_cast<int>(components.size()); ++i) {
        if (islands.live(i))
            components[at(i)] += flat ? 1 : 0;
        else
            components[at(i)] = voltage(i);
    }
}

void Solution::branchCurrents(const std::array<ComplexVector, 3>& v, PhaseState& state) const {
    const SequenceElements& positive = state_->fields[0].ports().network().elements();
    const SequenceElements& zero = state_->fields[2].ports().network().elements();
    for (std::size_t k = 0; k < positive.links().size(); ++k) {
        const Link &link = positive.links()[k], &link0 = zero.links()[k];
        const Sequences current{through(link, v[0]), through(link, v[1]), through(link0, v[2])};
        auto &atI = state.currents[2 * k], &atJ = state.currents[2 * k + 1];
        const auto inPhases = phases(current);
        for (std::size_t p = 0; p < 3; ++p) atI[p] = link.gain * inPhases[p], atJ[p] = -inPhases[p];
        // Without a way through, the zero sequence flows at one end only.
        if (link0.conducts && (link0.from < 0 || link0.to < 0)) {
            const auto other = phases({current.positive, current.negative, {}});
            for (std::size_t p = 0; p < 3; ++p) {
                if (link0.from < 0) atI[p] = link.gain * other[p];
                if (link0.to < 0) atJ[p] = -other[p];
            }
        }
    }
    for (const int k : particular(*state_->places, zero)) {
        state.currents[2 * at(k)] = phases(current({k}, End::I));
        state.currents[2 * at(k) + 1] = phases(current({k}, End::J));
    }
}

void Solution::everywhere(PhaseState& state) const {
    const auto& fields = state_->fields;
    state.voltages.resize(state_->network->buses.size());
    state.currents.resize(2 * state_->network->branches.size());
    if (dead_) {
        std::ranges::fill(state.voltages, std::array<Complex, 3>{});
        std::ranges::fill(state.currents, std::array<Complex, 3>{});
        return;
    }
    std::array<ComplexVector, 3> v{fields[0].components(), {}, fields[2].components()};
    const bool alone = fields[0].ports().size() == 1 && fields[0].value(0) != Complex{};
    if (alone) {
        const Complex share = fields[1].value(0) / fields[0].value(0);
        v[1] = v[0];
        for (Complex& voltage : v[1]) voltage = product(voltage, share);
    } else {
        v[1] = fields[1].components();
    }
    for (std::size_t s = 0; s < 3; ++s) fields[s].addLoad(v[s]);
    branchCurrents(v, state);
    for (std::size_t s = 0; s < 3; ++s) fields[s].addCommon(v[s]);
    for (std::size_t i = 0; i < state.voltages.size(); ++i) state.voltages[i] = phases({v[0][i], v[1][i], v[2][i]});
}

}  // namespace engines
