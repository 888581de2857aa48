#include "platform/host/diagram/Legend.h"

#include <QPainter>

namespace diagram {

namespace {

constexpr int swatch = 22, gap = 8;

}  // namespace

void Legend::show(const std::set<double>& baseKv, const Palette& palette) {
    palette_ = palette;
    levels_.clear();
    for (auto kv = baseKv.rbegin(); kv != baseKv.rend(); ++kv) {
        QString& text = levels_[usualLevel(*kv)];
        if (text.count('/') < 2)
            text += (text.isEmpty() ? "" : "/") + QString::number(*kv);
        else if (!text.endsWith(QChar(0x2026)))
            text += QChar(0x2026);
    }
    int width = 0;
    for (auto& [level, text] : levels_) {
        text += " kV";
        width = std::max(width, fontMetrics().horizontalAdvance(text));
    }
    resize(width + swatch + 3 * gap, fontMetrics().height() * static_cast<int>(levels_.size()) + 2 * gap);
    setVisible(!levels_.empty());
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
        p.setPen(QPen(palette_.level(kv->first), 3));
        p.drawLine(QPointF(gap, y + line / 2.0), QPointF(gap + swatch, y + line / 2.0));
        p.setPen(palette_.text);
        p.drawText(QRectF(2 * gap + swatch, y, width(), line), Qt::AlignVCenter, kv->second);
    }
}

}  // namespace diagram
