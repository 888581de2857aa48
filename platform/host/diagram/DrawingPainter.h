#pragma once

#include "platform/host/NetworkModel.h"
#include "platform/host/diagram/Drawing.h"
#include "platform/host/diagram/Palette.h"

class QPainter;

namespace diagram {

/// How much of a drawing is painted.
struct Detail {
    double scale = 1;       ///< device pixels per scene unit
    bool exact = false;     ///< all symbols and texts, whatever the scale: for files
    bool outlines = false;  ///< texts as shapes
};

/// Paints the part of a drawing that meets `area`, in scene coordinates.
void paintDrawing(QPainter& painter, const host::NetworkModel& model, const Drawing& drawing, const Palette& palette,
                  const QRectF& area, const Detail& detail);
/// Paints one element wide in the highlight's colour.
void paintHighlight(QPainter& painter, const Figure& figure, const Palette& palette, double scale, int strength);

}  // namespace diagram
