#pragma once

#include <QPointF>
#include <limits>
#include <vector>

#include "platform/host/diagram/Drawing.h"
#include "platform/host/diagram/NetworkIndex.h"

namespace diagram {

inline constexpr double pitch = 30;  ///< between neighbours on a bar
inline constexpr double step = 30;   ///< between neighbours of a bay

/// Room that a bar has.
struct BarSpan {
    double left = 0, right = 0;  ///< of an upright one its upper and lower end
    bool fixed = false;          ///< stays within; else it grows with what is connected
    bool upright = false;
};

/// Bays on one side of a yard that may change places: the nodes of each.
using BayRow = std::vector<std::vector<int>>;

/// Where the nodes stand, before anything is connected.
struct Plan {
    std::vector<QPointF> at;     ///< of each node; of a bar its middle
    std::vector<BarSpan> spans;  ///< of each node that is a bar
    std::vector<int> station;    ///< of each node the frame that it belongs to, -1 none
    std::vector<QString> names;  ///< of the frames
    std::vector<BayRow> bayRows;
    bool rightAngled = false;  ///< lines are led round what stands in their way
};

/// The model's own coordinates tell most nodes apart.
bool hasNodePlaces(const host::NetworkModel& model);
/// Nodes at their own coordinates, scaled so that neighbours have room.
Plan planByPlaces(const host::NetworkModel& model, const NetworkIndex& index);

/// Puts neighbouring bays in the order of what they lead to.
void orderBays(const host::NetworkModel& model, const NetworkIndex& index, Plan& plan);

/// Connects what stands on a plan.
Drawing wire(const host::NetworkModel& model, const NetworkIndex& index, const Plan& plan);

/// Finds room for the names.
void placeCaptions(const host::NetworkModel& model, const NetworkIndex& index, Drawing& drawing);

}  // namespace diagram
