#include "engines/study/FaultReport.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "engines/faults/Loops.h"

namespace engines {

namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

Sequences scaled(const Sequences& s, double factor) {
    return {factor * s.positive, factor * s.negative, factor * s.zero};
}
double currentBase(const Bus& bus) { return 100 / (std::numbers::sqrt3 * bus.baseKv); }
double voltageBase(const Bus& bus) { return bus.baseKv / std::numbers::sqrt3; }

double largestPhase(const Sequences& s) {
    double largest = 0;
    for (const Complex& phase : phases(s)) largest = std::max(largest, std::abs(phase));
    return largest;
}

}  // namespace

FaultReporter::FaultReporter(const ModeNetwork& mode, ReportScope scope, std::vector<double> chargingAtEnd)
    : mode_(&mode), scope_(std::move(scope)), charging_(std::move(chargingAtEnd)) {}

BusIndex FaultReporter::busAt(BranchEnd end) const {
    const Branch& branch = network().branches[at(end.branch.value)];
    return end.end == End::I ? branch.from : branch.to;
}

Sequences FaultReporter::withCharging(BranchEnd end, Sequences current, Complex zeroVoltage) const {
    if (!charging_.empty()) current.zero += Complex{0, charging_[at(end.branch.value)]} * zeroVoltage;
    return current;
}

void FaultReporter::addBranch(BranchEnd end, const Solution& solution, double factor, FaultReport& report) const {
    const BusIndex bus = busAt(end);
    const Sequences current = solution.current(end.branch, end.end);
    const Sequences whole = charging_.empty() ? current : withCharging(end, current, solution.voltage(bus).zero);
    report.branches.push_back({end, scaled(whole, factor * currentBase(network().buses[at(bus.value)]))});
}

/// At a bus its branch ends and sources, along a branch the two ends of that branch.
void FaultReporter::addTouching(std::span<const Condition> conditions, const Solution& solution, double factor,
                                FaultReport& report) const {
    const auto touches = [&](BranchEnd end) {
        return std::ranges::any_of(conditions, [&](const Condition& c) {
            return c.branch.value >= 0 ? c.branch == end.branch : c.bus == busAt(end);
        });
    };
    for (int k = 0; k < static_cast<int>(network().branches.size()); ++k)
        for (const BranchEnd end : {BranchEnd{{k}, End::I}, BranchEnd{{k}, End::J}})
            if (touches(end)) addBranch(end, solution, factor, report);
    for (int s = 0; s < static_cast<int>(network().sources.size()); ++s) {
        const BusIndex bus = network().sources[at(s)].bus;
        const auto here = [&](const Condition& c) { return c.branch.value < 0 && c.bus == bus; };
        if (std::ranges::any_of(conditions, here))
            report.sources.push_back(
                {s, scaled(solution.sourceCurrent(s), factor * currentBase(network().buses[at(bus.value)]))});
    }
}

void FaultReporter::addAll(const Solution& solution, double factor, FaultReport& report) const {
    for (int k = 0; k < static_cast<int>(network().branches.size()); ++k)
        for (const End end : {End::I, End::J}) addBranch({{k}, end}, solution, factor, report);
    for (int s = 0; s < static_cast<int>(network().sources.size()); ++s) {
        const Bus& bus = network().buses[at(network().sources[at(s)].bus.value)];
        report.sources.push_back({s, scaled(solution.sourceCurrent(s), factor * currentBase(bus))});
    }
    for (int i = 0; i < static_cast<int>(network().buses.size()); ++i)
        report.voltages.push_back({{i}, scaled(solution.voltage({i}), factor * voltageBase(network().buses[at(i)]))});
}

ApparentImpedance FaultReporter::impedanceAt(BranchEnd end, const Solution& solution) const {
    const BusIndex bus = busAt(end);
    const Branch& branch = network().branches[at(end.branch.value)];
    const double baseKv = network().buses[at(bus.value)].baseKv;
    const Sequences voltage = solution.voltage(bus);
    const Sequences current = withCharging(end, solution.current(end.branch, end.end), voltage.zero);
    const MeasuredLoops loops = measuredLoops(voltage, current, groundFactor(branch));
    ApparentImpedance result{end, loops.ground, loops.phase};
    for (auto* z : {&result.ground, &result.phase})
        for (Complex& loop : *z) loop *= baseKv * baseKv / 100;
    return result;
}

FaultReport FaultReporter::report(std::span<const Condition> conditions, double factor) const {
    const Solution solution = mode_->solve(conditions);
    FaultReport report;
    report.bus = solution.faultBus();
    report.dead = solution.dead();
    if (report.bus.value >= 0) {
        const Bus& bus = network().buses[at(report.bus.value)];
        report.ka = scaled(solution.faultCurrent(), factor * currentBase(bus));
        report.kv = scaled(solution.faultVoltage(), factor * voltageBase(bus));
        report.mva = std::numbers::sqrt3 * bus.baseKv * largestPhase(report.ka);
    }
    if (scope_.currents == Currents::Touching) addTouching(conditions, solution, factor, report);
    if (scope_.currents == Currents::All) addAll(solution, factor, report);
    for (const BranchEnd end : scope_.relays) report.impedances.push_back(impedanceAt(end, solution));
    return report;
}

FaultReport FaultReporter::report(const BusStudy& study, BusIndex place, FaultKind kind, Complex z,
                                  double factor) const {
    const BusFault fault = study.fault(place, kind, z);
    const Bus& bus = network().buses[at(place.value)];
    const double toKa = factor * currentBase(bus);
    FaultReport report;
    report.bus = place;
    report.dead = fault.dead;
    report.ka = scaled(fault.current, toKa);
    report.kv = scaled(fault.voltage, factor * voltageBase(bus));
    report.mva = std::numbers::sqrt3 * bus.baseKv * largestPhase(report.ka);
    if (scope_.currents != Currents::Touching) return report;
    for (const BranchEnd end : study.ends(place))
        report.branches.push_back(
            {end, scaled(withCharging(end, study.current(fault, end), fault.voltage.zero), toKa)});
    for (const int s : study.sources(place)) report.sources.push_back({s, scaled(study.sourceCurrent(fault, s), toKa)});
    return report;
}

}  // namespace engines
