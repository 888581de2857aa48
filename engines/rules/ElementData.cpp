#include "engines/rules/ElementData.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "engines/rules/Arithmetic.h"
#include "engines/rules/VariableKind.h"

namespace engines {

namespace {

constexpr double kBaseMva = 100;
constexpr double kSqrt3 = std::numbers::sqrt3;
/// Lowest working voltage where the network gives none, as a share of the base voltage.
constexpr double kLowestWorkingVoltage = 0.9;

const Complex kNoImpedance{kNoValue, kNoValue};

const Branch& at(const Network& network, BranchIndex i) { return network.branches[static_cast<std::size_t>(i.value)]; }
const Bus& at(const Network& network, BusIndex i) { return network.buses[static_cast<std::size_t>(i.value)]; }

double known(double value) { return value > 0 ? value : kNoValue; }

double ampere(double mva, double kv) { return mva > 0 && kv > 0 ? mva * 1000 / (kSqrt3 * kv) : kNoValue; }

/// Series impedances in ohm.
struct Impedances {
    Complex z1, z0;
};

double impedanceDatum(int vType, const Impedances& z) {
    switch (vType) {
        case vtype::kZ1:
            return std::abs(z.z1);
        case vtype::kZ0:
            return std::abs(z.z0);
        case vtype::kR1:
            return z.z1.real();
        case vtype::kX1:
            return z.z1.imag();
        case vtype::kR0:
            return z.z0.real();
        case vtype::kX0:
            return z.z0.imag();
        case vtype::kK0:
            return std::abs((z.z0 - z.z1) / (3.0 * z.z1));
        case vtype::kLineAngle:
            return std::arg(z.z1) * 180 / std::numbers::pi;
        default:
            return kNoValue;
    }
}

Complex seriesZ0(const Branch& branch) { return branch.zeroPath == ZeroPath::None ? kNoImpedance : branch.z0; }

/// A winding passed on the way adds to the zero sequence only where both let it through.
Complex chainedZ0(const Branch& entered, const Branch& branch) {
    const bool through = entered.zeroPath == ZeroPath::Through && branch.zeroPath == ZeroPath::Through;
    return through ? entered.z0 + branch.z0 : kNoImpedance;
}

Impedances impedances(const BranchView& view, const Network& network) {
    const Branch& branch = at(network, view.branch);
    Impedances z{branch.z1, seriesZ0(branch)};
    if (view.entered.value >= 0) {
        const Branch& entered = at(network, view.entered);
        z = {entered.z1 + branch.z1, chainedZ0(entered, branch)};
    }
    const double ohm = ohmBase(network, view.entry);
    return {z.z1 * ohm, z.z0 * ohm};
}

double ratedKv(const Branch& branch, End end, const Network& network) {
    const double plate = end == End::I ? branch.ratedKvI : branch.ratedKvJ;
    return plate > 0 ? plate : known(at(network, end == End::I ? branch.from : branch.to).baseKv);
}

double ratedDatum(int vType, const BranchView& view, const Network& network) {
    const Branch& branch = at(network, view.branch);
    const double kv = ratedKv(branch, view.end, network);
    const bool line = branch.kind == exchange::BranchKind::Line;
    switch (vType) {
        case vtype::kRatedVoltage:
            return kv;
        case vtype::kRatedCurrent:
            return line ? known(branch.ratedA) : ampere(branch.ratedMva, kv);
        case vtype::kRatedPower:
            return known(line ? kSqrt3 * kv * branch.ratedA / 1000 : branch.ratedMva);
        default:
            return kNoValue;
    }
}

/// Rated power and voltage of an element at a bus; `z` in ohm.
struct BusElement {
    double mva = 0;
    double kv = 0;
    Impedances z;
};

BusElement busElement(const StudyRelay& relay, const Network& network) {
    const double ohm = ohmBase(network, relay.place.bus);
    BusElement element{0, at(network, relay.place.bus).baseKv, {kNoImpedance, kNoImpedance}};
    if (relay.kind == RelayKind::Generator) {
        const Source& s = network.sources[static_cast<std::size_t>(relay.place.source)];
        element = {s.ratedMva, s.ratedKv, {s.z1 * ohm, s.grounded ? s.z0 * ohm : kNoImpedance}};
    } else if (relay.kind == RelayKind::Shunt) {
        const exchange::NetShunt& s = network.shunts[static_cast<std::size_t>(relay.shunt)];
        const Complex z0 = s.grounded ? Complex{s.r0, s.x0} * ohm : kNoImpedance;
        element = {s.ratedMvar, s.ratedKv, {Complex{0, s.x1} * ohm, z0}};
    }
    if (element.kv <= 0) element.kv = at(network, relay.place.bus).baseKv;
    return element;
}

double busElementDatum(int vType, const StudyRelay& relay, const Network& network) {
    const BusElement element = busElement(relay, network);
    switch (vType) {
        case vtype::kRatedVoltage:
            return known(element.kv);
        case vtype::kRatedCurrent:
            return ampere(element.mva, element.kv);
        case vtype::kRatedPower:
            return known(element.mva);
        default:
            return impedanceDatum(vType, element.z);
    }
}

/// Load current at an end; the rated current stands in for an unknown one.
double loadCurrent(BranchIndex index, End end, const Network& network) {
    const Branch& branch = at(network, index);
    if (branch.maxLoadA <= 0) return ratedDatum(vtype::kRatedCurrent, {index, end, {}, {}}, network);
    if (end == End::I || branch.kind == exchange::BranchKind::Line) return branch.maxLoadA;
    return branch.maxLoadA * ratedKv(branch, End::I, network) / ratedKv(branch, End::J, network);
}

/// The largest among the branches at a bus.
double feederLoad(BusIndex bus, const Network& network) {
    double largest = 0;
    for (std::size_t i = 0; i < network.branches.size(); ++i) {
        const Branch& branch = network.branches[i];
        if (branch.from != bus && branch.to != bus) continue;
        const End end = branch.from == bus ? End::I : End::J;
        const double load = loadCurrent(BranchIndex{static_cast<int>(i)}, end, network);
        if (load > largest) largest = load;
    }
    return known(largest);
}

double relayLoad(const StudyRelay& relay, const Network& network) {
    if (relay.kind == RelayKind::Branch) return loadCurrent(relay.place.branch, relay.place.end, network);
    if (relay.kind == RelayKind::Bus) return feederLoad(relay.place.bus, network);
    return busElementDatum(vtype::kRatedCurrent, relay, network);
}

double lowestVoltage(const Bus& bus) { return bus.vMinKv > 0 ? bus.vMinKv : known(kLowestWorkingVoltage * bus.baseKv); }

BranchIndex indexOf(const exchange::BranchEdge& edge, const Network& network) {
    return network.branch(edge.idNo, BusNo{edge.iNo}, BusNo{edge.jNo});
}

}  // namespace

double ohmBase(const Network& network, BusIndex bus) {
    const double kv = at(network, bus).baseKv;
    return kv * kv / kBaseMva;
}

BranchView viewOf(const AdjacentBranch& branch, const Sections& sections, const Network& network) {
    BranchView view;
    view.branch = indexOf(sections.edge(branch.edge), network);
    if (view.branch.value < 0) return view;
    const bool fromI = at(network, view.branch).from == network.bus(BusNo{branch.startNode});
    view.end = fromI ? End::I : End::J;
    if (branch.entered >= 0) view.entered = indexOf(sections.edge(branch.entered), network);
    view.entry = network.bus(BusNo{branch.entryNode});
    return view;
}

double elementDatum(int vType, const BranchView& view, const Network& network) {
    if (view.branch.value < 0 || view.entry.value < 0) return kNoValue;
    if (vType == vtype::kLength) return known(at(network, view.branch).lengthKm);
    if (vType >= vtype::kRatedCurrent) return ratedDatum(vType, view, network);
    return impedanceDatum(vType, impedances(view, network));
}

double ownDatum(int vType, int vPos, const StudyRelay& relay, const Network& network) {
    if (!relay.located) return kNoValue;
    if (vType == vtype::kLoadCurrent) return relayLoad(relay, network);
    if (relay.kind != RelayKind::Branch) {
        if (vType == vtype::kLowestVoltage) return lowestVoltage(at(network, relay.place.bus));
        return busElementDatum(vType, relay, network);
    }
    const Branch& branch = at(network, relay.place.branch);
    const bool atI = (relay.place.end == End::I) != (vPos == 2);
    const BusIndex bus = atI ? branch.from : branch.to;
    if (vType == vtype::kLowestVoltage) return lowestVoltage(at(network, bus));
    return elementDatum(vType, {relay.place.branch, atI ? End::I : End::J, {}, bus}, network);
}

}  // namespace engines
