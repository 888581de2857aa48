#pragma once

#include "platform/host/diagram/Drawing.h"
#include "platform/host/diagram/Palette.h"

class QPainter;

namespace diagram {

/// What a symbol shows besides its shape.
struct SymbolLook {
    QColor colours[3];  ///< of the ends or windings
    QColor background;
    bool open = false;         ///< of a switch
    char windings[4] = "   ";  ///< of a transformer: 'D' delta, 'Y' star, 'N' star grounded
    double width = 1.3;        ///< of its lines
};

/// Draws a symbol around the origin, its first end above.
/// \param angle  by which the painter is turned: what is read stays upright
void paintSymbol(QPainter& painter, Glyph glyph, const SymbolLook& look, double angle);

}  // namespace diagram
