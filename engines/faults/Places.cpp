#include "engines/faults/Places.h"

#include <algorithm>
#include <cmath>

namespace engines {
namespace {

constexpr double kOpen = 99999;

bool openBeside(std::span<const Condition> conditions, const Condition& shunt) {
    return std::any_of(conditions.begin(), conditions.end(), [&](const Condition& c) {
        return isSeries(c.kind) && c.group == shunt.group && c.branch == shunt.branch && c.percent == shunt.percent;
    });
}

Point pointOf(const Condition& condition) {
    const double x = std::clamp(condition.percent / 100, 0.0, 1.0);
    const bool nearI = x <= 0.5;
    return {x, isSeries(condition.kind) == nearI ? 0 : 1};
}

Port portOf(const Network& network, std::span<const Condition> conditions, const Condition& condition) {
    Port port{condition, isSeries(condition.kind), -1, -1, {}};
    if (condition.branch.value < 0) {
        port.bus = condition.bus.value;
        return port;
    }
    const Branch& branch = network.branches[static_cast<std::size_t>(condition.branch.value)];
    const bool atEnd = condition.percent <= 0 || condition.percent >= 100;
    if (!port.series && atEnd && !openBeside(conditions, condition)) {
        port.bus = (condition.percent <= 0 ? branch.from : branch.to).value;
        return port;
    }
    port.branch = condition.branch.value;
    port.at = pointOf(condition);
    return port;
}

}  // namespace

bool isOpen(Complex z) { return std::abs(z.real()) >= kOpen || std::abs(z.imag()) >= kOpen; }

int Places::fault() const {
    int found = -1;
    for (int p = 0; p < static_cast<int>(ports.size()); ++p) {
        const Port& port = ports[static_cast<std::size_t>(p)];
        if (port.series) continue;
        if (found < 0 || port.condition.group < ports[static_cast<std::size_t>(found)].condition.group) found = p;
    }
    return found;
}

int Places::cutsBefore(int branch, Point point) const {
    const auto it = cuts.find(branch);
    if (it == cuts.end()) return 0;
    return static_cast<int>(std::lower_bound(it->second.begin(), it->second.end(), point) - it->second.begin());
}

int Places::cutsOn(int branch) const {
    const auto it = cuts.find(branch);
    return it == cuts.end() ? 0 : static_cast<int>(it->second.size());
}

bool Places::standWhere(const Places& other) const {
    const auto samePlace = [](const Port& a, const Port& b) {
        return a.series == b.series && a.bus == b.bus && a.branch == b.branch && a.at == b.at;
    };
    return std::ranges::equal(ports, other.ports, samePlace) && cuts == other.cuts;
}

Places placesOf(const Network& network, std::span<const Condition> conditions) {
    Places places;
    for (const Condition& condition : conditions) {
        if (isSeries(condition.kind) && condition.branch.value < 0) continue;
        const Port port = portOf(network, conditions, condition);
        const bool cut = condition.kind == FaultKind::OpenABC && isOpen(condition.z);
        if (cut)
            places.cuts[port.branch].push_back(port.at);
        else
            places.ports.push_back(port);
    }
    for (auto& [branch, points] : places.cuts) std::sort(points.begin(), points.end());
    return places;
}

}  // namespace engines
