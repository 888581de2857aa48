#pragma once

#include <compare>
#include <map>
#include <span>
#include <vector>

#include "engines/faults/FaultStudy.h"

/// Where conditions stand: at a bus, inside a branch, and in which order along it.
namespace engines {

/// A place along a branch. `order` tells conditions at one place apart: an open lies nearer to the near end.
struct Point {
    double x = 0;  ///< 0 to 1 from the I end
    int order = 0;
    auto operator<=>(const Point&) const = default;
    [[nodiscard]] bool nearI() const { return x <= 0.5; }
};

/// A shunt condition (unknown: its current), or an open of some phases or through an impedance (unknown: the voltage
/// across it, positive at the I side).
struct Port {
    Condition condition;
    bool series = false;
    int bus = -1;     ///< at a bus
    int branch = -1;  ///< inside a branch
    Point at;
};

struct Places {
    std::vector<Port> ports;
    std::map<int, std::vector<Point>> cuts;  ///< per branch where all phases are open, ascending
    /// Place in `ports` of the fault: the first shunt of the smallest group; -1 none.
    [[nodiscard]] int fault() const;
    /// Cuts of a branch that lie before a point of it.
    [[nodiscard]] int cutsBefore(int branch, Point point) const;
    [[nodiscard]] int cutsOn(int branch) const;
    /// The same ports and cuts at the same places, whatever their kinds and impedances.
    [[nodiscard]] bool standWhere(const Places& other) const;
};

/// 99999.9999 and what its printed forms read as.
bool isOpen(Complex z);

/// A shunt at 0 or 100 percent is at the bus, unless an open of its own group stands there.
Places placesOf(const Network& network, std::span<const Condition> conditions);

}  // namespace engines
