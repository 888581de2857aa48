#include "programs/workflow/ui/PicturePainter.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "programs/workflow/ui/PictureLegend.h"
#include "programs/workflow/ui/PictureShapes.h"

namespace {

constexpr double kLegendShare = 0.32, kLeastLegend = 190, kMostLegend = 340;
constexpr double kNothing = 1e-9;
constexpr double kGap = 10;  // pixels between the parts of a picture

QColor stageColour(int pNo, bool dark) {
    static const QRgb onLight[] = {0x1f6fb4, 0x23864c, 0xb06a00, 0x7a4bb0, 0x4f5b66};
    static const QRgb onDark[] = {0x62b0f0, 0x57cf8b, 0xf0b350, 0xc09af0, 0xb8c4d0};
    return QColor::fromRgb((dark ? onDark : onLight)[(pNo + 4) % 5]);
}

QColor neighbourColour(int number, bool dark) {
    static const QRgb onLight[] = {0x8c5a3c, 0x0f7c86, 0x9a3f7a, 0x5c7a1f, 0x5161a8, 0x7d6b12, 0x8a4a4a, 0x3f7267};
    static const QRgb onDark[] = {0xd9a582, 0x5cc9d4, 0xe29ac8, 0xb0d068, 0xa3b2f2, 0xd8c866, 0xe0a3a3, 0x93cfc2};
    return QColor::fromRgb((dark ? onDark : onLight)[number % 8]);
}

}  // namespace

QColor inkColour(const PictureInk& ink, const diagram::Palette& palette) {
    switch (ink.kind) {
        case PictureInk::Kind::Line:
            return palette.text;
        case PictureInk::Kind::Stage:
            return stageColour(ink.number, palette.dark);
        case PictureInk::Kind::Neighbour:
            return neighbourColour(ink.number, palette.dark);
        case PictureInk::Kind::Fault:
            return palette.dark ? QColor(0xff, 0x9e, 0x64) : QColor(0xb3, 0x3f, 0x00);
        case PictureInk::Kind::Bad:
            return palette.dark ? QColor(0xff, 0x6b, 0x6b) : QColor(0xc8, 0x10, 0x2e);
        default:
            return palette.quiet;
    }
}

PicturePainter::PicturePainter(const PictureScene& scene, const diagram::Palette& palette, const QFont& font)
    : scene_(scene), palette_(palette), font_(font) {}

QFont PicturePainter::bold() const {
    QFont font = font_;
    font.setBold(true);
    return font;
}

QRectF PicturePainter::legendArea(const QRectF& area) const {
    const double width = std::clamp(area.width() * kLegendShare, kLeastLegend, kMostLegend);
    const double head = 2.8 * QFontMetricsF(font_).height();
    return {area.right() - width - kGap, area.top() + head, width, area.height() - head - kGap};
}

double PicturePainter::legendHeight(double width) const {
    const QRectF area = legendArea({0, 0, width, 1000});
    return area.top() + PictureLegend(scene_, palette_, font_).height(area.width()) + kGap;
}

PictureFrame PicturePainter::frame(const QRectF& area, const std::optional<PictureRange>& range) const {
    const QFontMetricsF metrics(font_);
    const QRectF legend = legendArea(area);
    const double left = area.left() + metrics.height() * 1.6 + metrics.horizontalAdvance("-000.0"),
                 bottom = area.bottom() - 2.9 * metrics.height();
    const QRectF plot(QPointF(left, legend.top()), QPointF(legend.left() - 2 * kGap, bottom));
    return {scene_, range.value_or(PictureRange::of(scene_)), plot};
}

void PicturePainter::paintHead(QPainter& painter, const QRectF& area) const {
    const double line = QFontMetricsF(font_).height();
    const QRectF row(area.left() + kGap, area.top() + 0.3 * line, area.width() - 2 * kGap, 1.2 * line);
    painter.setFont(bold());
    painter.setPen(palette_.text);
    painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter, scene_.title);
    painter.setFont(font_);
    painter.setPen(palette_.quiet);
    painter.drawText(row.translated(0, 1.1 * line), Qt::AlignLeft | Qt::AlignVCenter, scene_.subtitle);
}

void PicturePainter::paintEmpty(QPainter& painter, const QRectF& area) const {
    painter.setPen(palette_.quiet);
    const QRectF legend = legendArea(area);
    const QRectF plot(area.left() + 2 * kGap, legend.top(), legend.left() - area.left() - 4 * kGap, legend.height());
    painter.drawText(plot, Qt::AlignCenter | Qt::TextWordWrap, scene_.empty);
}

/// \param zero  the line of the origin
QPen PicturePainter::gridPen(bool zero) const { return {zero ? palette_.quiet : palette_.frame, zero ? 1.2 : 0.6}; }

void PicturePainter::paintGrid(QPainter& painter, const PictureFrame& frame) const {
    const QFontMetricsF metrics(font_);
    const QRectF& plot = frame.plot();
    for (const PictureTick& tick : frame.xTicks(5.5 * metrics.averageCharWidth() + 24)) {
        const double x = frame.fromRange({tick.at, 0}).x();
        painter.setPen(gridPen(scene_.equalScales && std::abs(tick.at) < kNothing));
        painter.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
        painter.setPen(palette_.text);
        painter.drawText(QRectF(x - 40, plot.bottom() + 3, 80, metrics.height()), Qt::AlignCenter, tick.text);
    }
    for (const PictureTick& tick : frame.yTicks(2.2 * metrics.height())) {
        const double y = frame.fromRange({0, tick.at}).y();
        painter.setPen(gridPen(std::abs(tick.at) < kNothing));
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter.setPen(palette_.text);
        painter.drawText(QRectF(plot.left() - 86, y - metrics.height() / 2, 80, metrics.height()),
                         Qt::AlignRight | Qt::AlignVCenter, tick.text);
    }
}

void PicturePainter::paintAxes(QPainter& painter, const PictureFrame& frame) const {
    const QFontMetricsF metrics(font_);
    const QRectF& plot = frame.plot();
    paintGrid(painter, frame);
    painter.drawText(QRectF(plot.left(), plot.bottom() + 1.3 * metrics.height(), plot.width(), 1.3 * metrics.height()),
                     Qt::AlignCenter, scene_.xTitle);
    painter.save();
    painter.translate(plot.left() - metrics.horizontalAdvance("-000.0") - 0.9 * metrics.height(), plot.center().y());
    painter.rotate(-90);
    painter.drawText(QRectF(-plot.height() / 2, -metrics.height() / 2, plot.height(), metrics.height()),
                     Qt::AlignCenter, scene_.yTitle);
    painter.restore();
    painter.setPen(QPen(palette_.quiet, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(plot);
}

void PicturePainter::paint(QPainter& painter, const QRectF& area, const std::optional<PictureRange>& range) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(area, palette_.background);
    paintHead(painter, area);
    painter.setFont(font_);
    PictureLegend(scene_, palette_, font_).paint(painter, legendArea(area));
    if (!scene_.empty.isEmpty()) return paintEmpty(painter, area);
    const PictureFrame made = frame(area, range);
    paintAxes(painter, made);
    const PictureShapes shapes(scene_, made, palette_);
    painter.save();
    painter.setClipRect(made.plot());
    shapes.paint(painter);
    painter.restore();
    shapes.paintLabels(painter);
}
