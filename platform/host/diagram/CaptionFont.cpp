#include "platform/host/diagram/CaptionFont.h"

#include <QPainter>
#include <QPainterPath>

namespace diagram {

QFont captionFont(bool station) {
    QFont font;
    font.setPixelSize(station ? 15 : 11);
    font.setBold(station);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

void paintText(QPainter& painter, const QPointF& baseLine, const QString& text, bool outlines) {
    if (!outlines) return painter.drawText(baseLine, text);
    QPainterPath shapes;
    shapes.addText(baseLine, painter.font(), text);
    painter.fillPath(shapes, painter.pen().color());
}

}  // namespace diagram
