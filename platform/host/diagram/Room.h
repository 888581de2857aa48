#pragma once

#include <optional>
#include <unordered_map>

#include "platform/host/diagram/Drawing.h"

namespace diagram {

/// Room for texts beside bars, symbols, connections and other texts.
class Room {
  public:
    explicit Room(const Drawing& drawing) : drawing_(drawing) {}

    /// The place that covers fewest connections and neither a bar, a symbol nor a text; none when every place does.
    /// \param corners  upper left corners in order of preference
    /// \param own  a figure that the text may touch
    [[nodiscard]] std::optional<QRectF> best(const std::vector<QPointF>& corners, const QSizeF& size, int own) const;
    void take(const QRectF& box);

  private:
    [[nodiscard]] bool isTaken(const QRectF& box) const;
    [[nodiscard]] int crossed(const QRectF& box, int own) const;

    const Drawing& drawing_;
    std::unordered_map<qint64, std::vector<QRectF>> texts_;
};

}  // namespace diagram
