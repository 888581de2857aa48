#include "platform/host/diagram/Palette.h"

#include <QPalette>
#include <algorithm>
#include <cmath>
#include <iterator>

namespace diagram {

namespace {

struct Level {
    double kv;
    QRgb onLight, onDark;
};

/// Neighbouring levels of one grid (500/220/110/35/10, 750/330/110) stay apart in hue on both backgrounds.
constexpr Level levels[] = {
    {1000, 0xff0b3d91, 0xff8ab4ff}, {750, 0xffb45309, 0xfff7a64a}, {500, 0xffc81e1e, 0xffff7070},
    {330, 0xff0f766e, 0xff3dd6c4},  {220, 0xff7e22ce, 0xffcf8bff}, {110, 0xff1d66c8, 0xff63b3ff},
    {66, 0xff7a6a00, 0xffd9c04a},   {35, 0xffa8580a, 0xfff2cf4b},  {20, 0xff8f4a5e, 0xffe0a0b4},
    {10, 0xff15803d, 0xff58d08a},   {6, 0xff4d7c0f, 0xffa3d65c},   {0.4, 0xff5b6472, 0xffa8b0bb},
};

const Level& nearest(double kv) {
    const double value = std::log(std::max(kv, 0.1));
    return *std::min_element(std::begin(levels), std::end(levels), [&](const Level& a, const Level& b) {
        return std::abs(std::log(a.kv) - value) < std::abs(std::log(b.kv) - value);
    });
}

}  // namespace

double usualLevel(double kv) { return nearest(kv).kv; }

QColor Palette::level(double kv) const { return QColor::fromRgb(dark ? nearest(kv).onDark : nearest(kv).onLight); }

Palette paperPalette() {
    Palette p;
    p.background = Qt::white, p.text = 0x1f2430, p.quiet = 0x5a6372, p.off = 0xa3a9b3, p.frame = 0xc3c9d2;
    p.highlight = 0xe07a00, p.label = 0xfff6d8, p.labelText = 0x3a2c00, p.labelEdge = 0xd9c27a;
    return p;
}

Palette paletteFor(const QPalette& widgets) {
    const QColor base = widgets.color(QPalette::Base);
    Palette p = paperPalette();
    if (base.lightness() >= 128) return p;
    p.dark = true;
    p.background = base, p.text = 0xe8ebf0, p.quiet = 0xa4adba, p.off = 0x6b7380, p.frame = 0x4a515c;
    p.highlight = 0xffb84d, p.label = 0x3b3420, p.labelText = 0xf6e7b4, p.labelEdge = 0x857437;
    return p;
}

}  // namespace diagram
