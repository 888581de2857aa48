#pragma once

#include <QByteArray>
#include <optional>

#include "platform/host/diagram/Plan.h"

namespace diagram {

/// A station, or buses that transformers join: arranged in itself, highest voltage on top, and then placed as a whole.
struct Block {
    std::vector<int> nodes;
    double width = 0, height = 0;
    QPointF seed;  ///< from the station's coordinates
    bool hasSeed = false;
    bool oneVoltage = false;  ///< may stand upside down
};

struct Edge {
    int from = 0, to = 0;  ///< blocks, from < to
    int count = 0;         ///< elements that join them
};

struct Blocks {
    std::vector<Block> blocks;
    std::vector<Edge> edges;
    Plan plan;  ///< each node's place from the middle of its block
};

Blocks arrangeBlocks(const host::NetworkModel& model, const NetworkIndex& index);

/// What the layout program reads: `b WIDTH HEIGHT [X Y]` for each block, `e FROM TO COUNT` for each edge.
QByteArray layoutInput(const Blocks& blocks);
/// The middles of the blocks from what the layout program writes, `X Y` for each; none when it is not complete.
std::optional<std::vector<QPointF>> layoutPlaces(const QByteArray& output, std::size_t count);
/// Rows in the given order: when the layout program gives nothing.
std::vector<QPointF> rowsOf(const Blocks& blocks);

/// The plan with every block in its place; stations whose lines lead downwards stand upside down.
Plan placeBlocks(const host::NetworkModel& model, const NetworkIndex& index, const Blocks& blocks,
                 const std::vector<QPointF>& middles);

}  // namespace diagram
