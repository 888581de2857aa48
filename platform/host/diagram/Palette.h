#pragma once

#include <QColor>
#include <vector>

class QPalette;

namespace diagram {

/// The diagram's colours on a light or a dark background.
struct Palette {
    bool dark = false;
    QColor background, text, quiet, off, frame, highlight, label, labelText, labelEdge;

    /// \param kv  any; the usual level that is nearest by ratio gives the colour
    [[nodiscard]] QColor level(double kv) const;
};

/// The usual level nearest to a base voltage, kV.
double usualLevel(double kv);
Palette paletteFor(const QPalette& widgets);
/// Dark on white, for paper and files.
Palette paperPalette();

}  // namespace diagram
