#include "programs/workflow/ui/PictureShapes.h"

#include <QFontMetricsF>
#include <QLineF>
#include <algorithm>
#include <cmath>

#include "programs/workflow/ui/PicturePainter.h"

namespace {

constexpr double kNear = 6;  // pixels within which the pointer means a shape
constexpr int kFill = 20;    // opacity of a stage, of 255
constexpr int kBandFill = 44;
constexpr double kLeastBand = 5;  // pixels, so that a short stretch is seen

double distanceToSegment(QPointF p, QPointF a, QPointF b) {
    const QPointF along = b - a;
    const double square = QPointF::dotProduct(along, along);
    const double t = square > 0 ? std::clamp(QPointF::dotProduct(p - a, along) / square, 0.0, 1.0) : 0;
    return QLineF(p, a + along * t).length();
}

double angleOf(QPointF from, QPointF to) { return QLineF(from, to).angle(); }

bool within(double angle, double from, double to) {
    const double turned = std::fmod(angle - from + 720, 360);
    return turned <= to - from;
}

/// Where a label may stand around its point, the best first.
QVector<QPointF> places(QSizeF size) {
    QVector<QPointF> found;
    for (const double far : {7.0, 20.0, 38.0, 60.0})
        for (const QPointF side : {QPointF(1, -1), QPointF(-1, -1), QPointF(1, 1), QPointF(-1, 1), QPointF(0, -1),
                                   QPointF(0, 1), QPointF(1, 0), QPointF(-1, 0)})
            found.append({side.x() * far + (side.x() - 1) / 2 * size.width(),
                          side.y() * far + (side.y() - 1) / 2 * size.height()});
    return found;
}

void drawLabel(QPainter& painter, const QRectF& box, QPointF at, const QString& text, const QColor& colour,
               const QColor& ground) {
    const QPointF nearest(std::clamp(at.x(), box.left(), box.right()), std::clamp(at.y(), box.top(), box.bottom()));
    painter.setPen(QPen(colour, 0.8));
    if (QLineF(nearest, at).length() > 14) painter.drawLine(nearest, at);
    QColor veil = ground;
    veil.setAlpha(215);
    painter.fillRect(box, veil);
    painter.drawText(box, Qt::AlignCenter, text);
}

}  // namespace

QPolygonF PictureShapes::pixels(const PictureShape& shape) const {
    QPolygonF points;
    for (const QPointF& point : shape.points) points << frame_.pixel(point) - QPointF(0, shape.lift);
    return points;
}

void PictureShapes::paintLine(QPainter& painter, const PictureShape& shape) const {
    const QPolygonF points = pixels(shape);
    painter.drawPolyline(points);
    if (!shape.openEnd || points.size() < 2) return;
    const QLineF last(points[points.size() - 2], points.last());
    const double angle = last.angle();
    painter.setPen(QPen(painter.pen().color(), shape.width));
    for (const double side : {150.0, -150.0})
        painter.drawLine(QLineF::fromPolar(9, angle + side).translated(points.last()));
}

void PictureShapes::paintArc(QPainter& painter, const PictureShape& shape) const {
    const double radius = frame_.pixels(shape.radius);
    const QPointF centre = frame_.pixel(shape.points.first());
    const QRectF box(centre - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
    painter.drawArc(box, int(shape.fromAngle * 16), int((shape.toAngle - shape.fromAngle) * 16));
}

void PictureShapes::paint(QPainter& painter, const PictureShape& shape) const {
    const QColor colour = inkColour(shape.ink, palette_);
    QColor fill = colour;
    painter.setPen(QPen(colour, shape.width, shape.dashed ? Qt::DashLine : Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    if (shape.form == PictureShape::Form::Circle) {
        fill.setAlpha(shape.ink.kind == PictureInk::Kind::Stage ? kFill : 0);
        painter.setBrush(fill);
        const double radius = frame_.pixels(shape.radius);
        painter.drawEllipse(frame_.pixel(shape.points.first()), radius, radius);
    } else if (shape.form == PictureShape::Form::Arc) {
        paintArc(painter, shape);
    } else if (shape.form == PictureShape::Form::Mark) {
        painter.setBrush(palette_.background);
        painter.drawEllipse(frame_.pixel(shape.points.first()), 3.5, 3.5);
    } else if (shape.form == PictureShape::Form::Band) {
        fill.setAlpha(kBandFill);
        const QPolygonF corners = pixels(shape);
        const QRectF box = QRectF(corners[0], corners[1]).normalized();
        const double lacking = std::max(0.0, kLeastBand - box.width()) / 2;
        painter.fillRect(box.adjusted(-lacking, 0, lacking, 0), fill);
    } else {
        paintLine(painter, shape);
    }
}

void PictureShapes::paint(QPainter& painter) const {
    for (const PictureShape& shape : scene_.shapes) paint(painter, shape);
}

void PictureShapes::paintLabels(QPainter& painter) const {
    QVector<PictureLabel> labels = scene_.labels;
    const auto rank = [](const PictureLabel& label) {
        return label.ink.kind == PictureInk::Kind::Bad ? -1 : int(label.ink.kind);
    };
    std::stable_sort(labels.begin(), labels.end(), [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
    const QFontMetricsF metrics(painter.font());
    QVector<QRectF> taken;
    for (const PictureLabel& label : labels) {
        const QPointF at = frame_.pixel(label.at);
        if (!frame_.plot().adjusted(-1, -1, 1, 1).contains(at)) continue;
        const QSizeF size(metrics.horizontalAdvance(label.text) + 6, metrics.height());
        for (const QPointF& place : places(size)) {
            QRectF box(at + place, size);
            box.moveLeft(
                std::max(frame_.plot().left() + 1, std::min(box.left(), frame_.plot().right() - size.width() - 1)));
            const auto covers = [&](const QRectF& other) { return other.intersects(box); };
            if (!frame_.plot().contains(box) || std::any_of(taken.begin(), taken.end(), covers)) continue;
            taken.append(box.adjusted(-2, -1, 2, 1));
            drawLabel(painter, box, at, label.text, inkColour(label.ink, palette_), palette_.background);
            break;
        }
    }
}

double PictureShapes::distance(const PictureShape& shape, QPointF pixel) const {
    const QPolygonF points = pixels(shape);
    if (points.isEmpty()) return kNear + 1;
    const double fromFirst = QLineF(pixel, points.first()).length();
    switch (shape.form) {
        case PictureShape::Form::Circle:
            return std::abs(fromFirst - frame_.pixels(shape.radius));
        case PictureShape::Form::Arc:
            if (!within(angleOf(points.first(), pixel), shape.fromAngle, shape.toAngle)) return kNear + 1;
            return std::abs(fromFirst - frame_.pixels(shape.radius));
        case PictureShape::Form::Mark:
            return fromFirst;
        case PictureShape::Form::Band:
            return QRectF(points[0], points[1]).normalized().contains(pixel) ? kNear : kNear + 1;
        default:
            break;
    }
    double nearest = kNear + 1;
    for (qsizetype k = 1; k < points.size(); ++k)
        nearest = std::min(nearest, distanceToSegment(pixel, points[k - 1], points[k]));
    return nearest;
}

QString PictureShapes::tipAt(QPointF pixel) const {
    if (!frame_.plot().contains(pixel)) return {};
    double nearest = kNear + 0.5;
    QString tip;
    for (const PictureShape& shape : scene_.shapes) {
        const double far = shape.tip.isEmpty() ? nearest : distance(shape, pixel);
        if (far >= nearest) continue;
        nearest = far;
        tip = shape.tip;
    }
    return tip;
}
