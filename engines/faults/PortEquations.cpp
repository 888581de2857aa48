#include "engines/faults/PortEquations.h"

#include <utility>

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// One condition: sum over the sequences (positive, negative, zero) of voltage[s] V_s + current[s] I_s = 0.
struct Equation {
    std::array<Complex, 3> voltage{}, current{};
};
using Equations = std::array<Equation, 3>;
using Triple = std::array<Complex, 3>;

constexpr Triple kNone{};
constexpr Triple kSum{1, 1, 1};
constexpr Triple kPositiveLessNegative{1, -1, 0};
constexpr Triple kPositiveLessZero{1, 0, -1};

Triple times(const Triple& t, Complex factor) { return {t[0] * factor, t[1] * factor, t[2] * factor}; }

/// V_s = z I_s in every sequence.
Equations inEveryPhase(Complex z) {
    Equations e;
    for (std::size_t s = 0; s < 3; ++s) e[s].voltage[s] = 1, e[s].current[s] = -z;
    return e;
}

// Theory (12) to (15). Anderson, Analysis of Faulted Power Systems, ch. 3 and 4.
Equations shuntEquations(FaultKind kind, Complex z) {
    switch (kind) {
        case FaultKind::PhaseAGround:
            return {{{kNone, kPositiveLessNegative}, {kNone, kPositiveLessZero}, {kSum, times(kSum, -z)}}};
        case FaultKind::PhaseBC:
            return {{{kNone, {0, 0, 1}}, {kNone, {1, 1, 0}}, {kPositiveLessNegative, {-z, 0, 0}}}};
        case FaultKind::PhaseBCGround:
            return {{{kPositiveLessNegative, kNone}, {kNone, kSum}, {kPositiveLessZero, {0, 0, 3.0 * z}}}};
        default:
            return inEveryPhase(z);
    }
}

// Theory (12), (16), (17).
Equations openEquations(FaultKind kind, Complex z) {
    const bool open = isOpen(z);
    if (kind == FaultKind::OpenA) {
        const Equation phaseA = open ? Equation{kNone, kSum} : Equation{kSum, times(kSum, -z)};
        return {{{kPositiveLessNegative, kNone}, {kPositiveLessZero, kNone}, phaseA}};
    }
    if (kind == FaultKind::OpenBC) {
        const auto equal = [&](const Triple& difference) {
            return open ? Equation{kNone, difference} : Equation{difference, times(difference, -z)};
        };
        return {{{kSum, kNone}, equal(kPositiveLessNegative), equal(kPositiveLessZero)}};
    }
    return inEveryPhase(z);
}

/// Places of the unknowns: the three of port 0, of port 1, ..., then the floating voltages of each sequence.
struct Layout {
    std::array<int, 3> floats{};
    int ports = 0, size = 0;

    explicit Layout(const PortNetworks& networks) : ports(networks[0]->size()), size(3 * ports) {
        for (std::size_t s = 0; s < 3; ++s) floats[s] = std::exchange(size, size + networks[s]->floats());
    }
    static int of(int port, std::size_t sequence) { return 3 * port + static_cast<int>(sequence); }
};

/// Adds factor x counterpart(port, s) to a row of the system.
void addCounterpart(Matrix& a, ComplexVector& rhs, int row, Complex factor, const PortNetworks& networks,
                    const Layout& layout, int port, std::size_t s) {
    const SequencePorts& network = *networks[s];
    for (int l = 0; l < layout.ports; ++l) a(row, Layout::of(l, s)) += factor * network.response()(port, l);
    if (const int f = network.floatOf(port); f >= 0) a(row, layout.floats[s] + f) += factor;
    if (s == 0) rhs[at(row)] -= factor * network.prefault(port);
}

ComplexVector sliced(const ComplexVector& x, int first, int count, int step) {
    ComplexVector result;
    for (int i = 0; i < count; ++i) result.push_back(x[at(first + i * step)]);
    return result;
}

void addFloatBalance(Matrix& a, const PortNetworks& networks, const Layout& layout) {
    for (std::size_t s = 0; s < 3; ++s) {
        for (int port = 0; port < layout.ports; ++port) {
            const int f = networks[s]->floatOf(port);
            if (f >= 0) a(layout.floats[s] + f, Layout::of(port, s)) = 1;
        }
    }
}

}  // namespace

SequenceFields solvePorts(const Places& places, const PortNetworks& networks) {
    const Layout layout(networks);
    Matrix a(layout.size, layout.size);
    ComplexVector rhs(at(layout.size));
    for (int port = 0; port < layout.ports; ++port) {
        const Port& p = places.ports[at(port)];
        const auto& c = p.condition;
        const Equations equations = p.series ? openEquations(c.kind, c.z) : shuntEquations(c.kind, c.z);
        for (std::size_t e = 0; e < 3; ++e) {
            const int row = Layout::of(port, e);
            const Triple& own = p.series ? equations[e].voltage : equations[e].current;
            const Triple& counterpart = p.series ? equations[e].current : equations[e].voltage;
            for (std::size_t s = 0; s < 3; ++s) {
                a(row, Layout::of(port, s)) += own[s];
                if (counterpart[s] != Complex{}) {
                    addCounterpart(a, rhs, row, counterpart[s], networks, layout, port, s);
                }
            }
        }
    }
    addFloatBalance(a, networks, layout);
    const ComplexVector x = DenseFactors(std::move(a)).solve(rhs);
    const auto field = [&](std::size_t s) {
        return SequenceField(networks[s], sliced(x, static_cast<int>(s), layout.ports, 3),
                             sliced(x, layout.floats[s], networks[s]->floats(), 1), s == 0);
    };
    return {field(0), field(1), field(2)};
}

SequenceField solveInjection(const std::shared_ptr<const SequencePorts>& network, int port) {
    const int ports = network->size(), floats = network->floats();
    Matrix a(ports + floats, ports + floats);
    ComplexVector rhs(at(ports + floats));
    for (int j = 0; j < ports; ++j) {
        const int f = network->floatOf(j);
        if (f >= 0) a(ports + f, j) = 1;
        if (j == port) {
            a(j, j) = 1;
            rhs[at(j)] = -1;
            continue;
        }
        for (int l = 0; l < ports; ++l) a(j, l) = network->response()(j, l);
        if (f >= 0) a(j, ports + f) = 1;
    }
    const ComplexVector x = DenseFactors(std::move(a)).solve(rhs);
    return {network, sliced(x, 0, ports, 1), sliced(x, ports, floats, 1), false};
}

}  // namespace engines
