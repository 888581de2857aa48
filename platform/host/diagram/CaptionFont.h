#pragma once

#include <QFont>

class QPainter;
class QPointF;

namespace diagram {

/// The application's font at the diagram's size in scene units.
QFont captionFont(bool station);

/// Draws one line in the painter's font and pen colour.
/// \param outlines  as shapes, which look the same where the fonts of this machine are missing
void paintText(QPainter& painter, const QPointF& baseLine, const QString& text, bool outlines);

}  // namespace diagram
