#include "platform/host/diagram/Legend.h"

#include <QPainter>

namespace diagram {

namespace {

constexpr int swatch = 22, gap = 8;

QString textOf(double kv) { return QString::number(kv) + " kV"; }

}  // namespace

void Legend::show(const std::set<double>& levels, const Palette& palette) {
    levels_ = levels, palette_ = palette;
    int width = 0;
    for (double kv : levels) width = std::max(width, fontMetrics().horizontalAdvance(textOf(kv)));
    resize(width + swatch + 3 * gap, fontMetrics().height() * static_cast<int>(levels.size()) + 2 * gap);
    setVisible(!levels.empty());
    update();
}

void Legend::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QColor veil = palette_.background;
    veil.setAlpha(225);
    p.setPen(palette_.frame);
    p.setBrush(veil);
    p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    const int line = fontMetrics().height();
    int y = gap;
    for (auto kv = levels_.rbegin(); kv != levels_.rend(); ++kv, y += line) {
        p.setPen(QPen(palette_.level(*kv), 3));
        p.drawLine(QPointF(gap, y + line / 2.0), QPointF(gap + swatch, y + line / 2.0));
        p.setPen(palette_.text);
        p.drawText(QRectF(2 * gap + swatch, y, width(), line), Qt::AlignVCenter, textOf(*kv));
    }
}

}  // namespace diagram
