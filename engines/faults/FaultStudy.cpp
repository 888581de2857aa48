#include "engines/faults/FaultStudy.h"

#include <algorithm>
#include <limits>

#include "engines/faults/SolutionState.h"
#include "engines/network/Threads.h"

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// Theory (8). Currents that sources and loads send into the buses: those that hold the load-flow voltages in the
/// network as it was.
ComplexVector injections(const Network& network) {
    ComplexVector result;
    if (!network.loadFlow) return result;
    result.resize(network.buses.size());
    for (const Branch& b : network.branches) {
        const double gain = 1 / b.ratio;
        const Complex i =
            (gain * network.buses[at(b.from.value)].voltage - network.buses[at(b.to.value)].voltage) / b.z1;
        result[at(b.from.value)] += gain * i;
        result[at(b.to.value)] -= i;
    }
    for (const Source& s : network.sources) result[at(s.bus.value)] += network.buses[at(s.bus.value)].voltage / s.z1;
    return result;
}

std::shared_ptr<const SequenceNetwork> sequenceNetwork(const Network& network, Sequence sequence,
                                                       const std::vector<ModeChange>& changes,
                                                       const std::shared_ptr<const Ordering>& ordering) {
    return std::make_shared<SequenceNetwork>(std::make_shared<SequenceElements>(network, sequence, changes, ordering),
                                             sequence == Sequence::Positive ? injections(network) : ComplexVector{});
}

BusIndex nearerEnd(const Network& network, const Port& port) {
    if (port.branch < 0) return {port.bus};
    const Branch& branch = network.branches[at(port.branch)];
    return port.at.nearI() ? branch.from : branch.to;
}

void mark(std::array<bool, 3>& phases, FaultKind kind) {
    const bool all = kind == FaultKind::ThreePhaseGround || kind == FaultKind::OpenABC;
    const bool onlyA = kind == FaultKind::PhaseAGround || kind == FaultKind::OpenA;
    phases[0] |= all || onlyA;
    phases[1] |= !onlyA;
    phases[2] |= !onlyA;
}

}  // namespace

Complex emf(const Network& network, const Source& source) {
    if (!network.loadFlow) return 1;
    const Complex voltage = network.buses[at(source.bus.value)].voltage;
    return voltage == Complex{} ? Complex{} : voltage + source.z1 * std::conj(source.power / voltage);
}

/// |relay| / |main| of two currents; 0 when they oppose each other or one of them is nothing.
static double ratioOf(Complex relay, Complex main) {
    // What numerical noise leaves of a current that should be zero.
    constexpr double kNothing = 1e-9;
    if (std::abs(main) < kNothing || std::abs(relay) < kNothing) return 0;
    if ((relay * std::conj(main)).real() < 0) return 0;
    return std::abs(relay) / std::abs(main);
}

struct ModeNetwork::Impl {
    const Network* network;
    std::shared_ptr<const SequenceNetwork> positive, zero;
};

ModeNetwork::ModeNetwork(const Network& network, const std::vector<ModeChange>& changes, int threads)
    : impl_(std::make_unique<Impl>(&network, nullptr, nullptr)) {
    const auto ordering = orderingOf(network);
    const auto one = [&](int part) {
        (part == 0 ? impl_->positive : impl_->zero) =
            sequenceNetwork(network, part == 0 ? Sequence::Positive : Sequence::Zero, changes, ordering);
    };
    inParallel(2, one, threads);
}
ModeNetwork::~ModeNetwork() = default;
ModeNetwork::ModeNetwork(ModeNetwork&&) noexcept = default;
ModeNetwork& ModeNetwork::operator=(ModeNetwork&&) noexcept = default;

const Network& ModeNetwork::network() const { return *impl_->network; }

const SequenceNetwork& ModeNetwork::sequence(Sequence sequence) const {
    return sequence == Sequence::Positive ? *impl_->positive : *impl_->zero;
}

Solution ModeNetwork::solve(std::span<const Condition> conditions, const Solution* like) const {
    const auto places = std::make_shared<const Places>(placesOf(*impl_->network, conditions));
    const bool known = like && places->standWhere(*like->state().places);
    const auto portsOf = [&](const auto& network, const auto& earlier) {
        return known ? earlier(like->state()) : std::make_shared<const SequencePorts>(*impl_->network, network, places);
    };
    const auto positive = portsOf(*impl_->positive, [](const auto& state) { return state.positive; });
    const auto zero = portsOf(*impl_->zero, [](const auto& state) { return state.zero; });
    const int fault = places->fault();
    const bool dead = fault >= 0 && positive->deadAt(fault);
    return Solution(std::make_shared<const Solution::State>(
        impl_->network, places, positive, zero, solvePorts(*places, {positive, positive, zero}), fault, dead));
}

double ModeNetwork::branchCoefficient(Sequence sequence, const Condition& place, std::span<const Condition> conditions,
                                      BranchIndex b, End bEnd, BranchIndex m, End mEnd) const {
    const BranchEnd relay{b, bEnd};
    return branchCoefficients(sequence, place, conditions, std::span(&relay, 1), {m, mEnd}).front();
}

std::vector<double> ModeNetwork::branchCoefficients(Sequence sequence, const Condition& place,
                                                    std::span<const Condition> conditions,
                                                    std::span<const BranchEnd> relays, BranchEnd main) const {
    std::vector<Condition> all{place};
    all.front().kind = FaultKind::ThreePhaseGround;
    for (const Condition& c : conditions) {
        const bool full = c.kind == FaultKind::OpenABC && isOpen(c.z);
        if (!isSeries(c.kind) || full) all.push_back(c);
    }
    const auto places = std::make_shared<const Places>(placesOf(*impl_->network, all));
    const auto& whole = sequence == Sequence::Positive ? *impl_->positive : *impl_->zero;
    const auto ports = std::make_shared<const SequencePorts>(*impl_->network, whole, places);
    std::vector<double> coefficients(relays.size());
    if (ports->deadAt(0)) return coefficients;
    const SequenceField field = solveInjection(ports, 0);
    const Complex mainCurrent = field.current(main.branch.value, main.end);
    for (std::size_t i = 0; i < relays.size(); ++i)
        coefficients[i] = ratioOf(field.current(relays[i].branch.value, relays[i].end), mainCurrent);
    return coefficients;
}

Complex ModeNetwork::sourceImpedance(Sequence sequence, BusIndex bus, BranchIndex without) const {
    const auto& whole = sequence == Sequence::Positive ? impl_->positive : impl_->zero;
    const auto net = without.value < 0 ? whole : whole->without({without.value});
    if (!net->islands().live(bus.value)) return {std::numeric_limits<double>::infinity(), 0};
    const auto half = net->half(bus);
    return net->seen(*half, net->inject(*half));
}

Solution::Solution(std::shared_ptr<const State> state) : state_(std::move(state)), dead_(state_->dead) {}

Sequences Solution::current(BranchIndex branch, End end) const {
    return state_->each([&](const SequenceField& f) { return f.current(branch.value, end); });
}

Sequences Solution::sourceCurrent(int source) const {
    const Source& s = state_->network->sources[at(source)];
    Sequences result = voltage(s.bus);
    if (dead_) return result;
    const bool fed = result.positive != Complex{} || state_->fields[0].ports().network().islands().live(s.bus.value);
    result.positive = fed ? (emf(*state_->network, s) - result.positive) / s.z1 : Complex{};
    result.negative = -result.negative / s.z1;
    result.zero = s.grounded ? -result.zero / s.z0 : Complex{};
    return result;
}

Sequences Solution::voltage(BusIndex bus) const {
    return state_->each([&](const SequenceField& f) { return f.voltage(bus.value); });
}

Sequences Solution::faultVoltage() const {
    if (state_->fault < 0) return {};
    return state_->each([&](const SequenceField& f) { return f.counterpart(state_->fault); });
}

Sequences Solution::faultCurrent() const {
    if (state_->fault < 0) return {};
    return state_->each([&](const SequenceField& f) { return f.value(state_->fault); });
}

Sequences Solution::faultCurrentAt(BusIndex bus) const {
    return state_->each([&](const SequenceField& f) {
        Complex sum;
        for (std::size_t p = 0; p < state_->places->ports.size(); ++p) {
            if (state_->places->ports[p].bus == bus.value && bus.value >= 0) sum += f.value(static_cast<int>(p));
        }
        return sum;
    });
}

BusIndex Solution::faultBus() const {
    if (state_->fault < 0) return {};
    return nearerEnd(*state_->network, state_->places->ports[at(state_->fault)]);
}

std::array<bool, 3> Solution::faultedPhases() const {
    std::array<bool, 3> result{};
    if (state_->fault >= 0) {
        mark(result, state_->places->ports[at(state_->fault)].condition.kind);
        return result;
    }
    for (const Port& port : state_->places->ports) mark(result, port.condition.kind);
    const bool some = result[0] || result[1] || result[2];
    const bool all = result[0] && result[1] && result[2];
    for (bool& phase : result) phase = some && !all ? !phase : true;
    return result;
}

}  // namespace engines
