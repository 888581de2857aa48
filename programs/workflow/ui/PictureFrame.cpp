#include "programs/workflow/ui/PictureFrame.h"

#include <algorithm>
#include <cmath>

namespace {

/// 1, 2 or 5 times a power of ten, at least so much.
double roundStep(double least) {
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * power >= least * 0.999) return digit * power;
    return 10 * power;
}

QVector<PictureTick> evenTicks(double from, double to, double count) {
    const double step = roundStep((to - from) / std::max(count, 2.0));
    const int digits = std::clamp(int(-std::floor(std::log10(step))), 0, 6);
    QVector<PictureTick> ticks;
    for (double k = std::ceil(from / step - 1e-9); k * step <= to + 1e-9 * step; ++k)
        ticks.append({k * step, QString::number(k * step + 0.0, 'f', digits)});
    return ticks;
}

QVector<PictureTick> logTicks(double from, double to, double count) {
    QVector<PictureTick> ticks;
    const bool dense = (to - from) * 3 <= count;
    for (double power = std::floor(from); power <= to; ++power)
        for (const double digit : {1.0, 2.0, 5.0}) {
            const double at = power + std::log10(digit);
            if (at < from || at > to || (!dense && digit != 1)) continue;
            const double value = digit * std::pow(10, power);
            ticks.append({at, QString::number(value, 'f', std::max(0, int(-power)))});
        }
    return ticks.size() < 2 ? QVector<PictureTick>{{from, QString::number(std::pow(10, from), 'g', 3)},
                                                   {to, QString::number(std::pow(10, to), 'g', 3)}}
                            : ticks;
}

void widen(double& from, double& to, double length) {
    const double middle = (from + to) / 2;
    from = middle - length / 2;
    to = middle + length / 2;
}

}  // namespace

PictureRange PictureRange::of(const PictureScene& scene) {
    if (!scene.logX) return {scene.left, scene.right, scene.bottom, scene.top};
    return {std::log10(scene.left), std::log10(scene.right), scene.bottom, scene.top};
}

PictureRange PictureRange::zoomed(QPointF about, double factor) const {
    return {about.x() + (left - about.x()) * factor, about.x() + (right - about.x()) * factor,
            about.y() + (bottom - about.y()) * factor, about.y() + (top - about.y()) * factor};
}

PictureRange PictureRange::moved(QPointF by) const {
    return {left + by.x(), right + by.x(), bottom + by.y(), top + by.y()};
}

PictureFrame::PictureFrame(const PictureScene& scene, const PictureRange& range, const QRectF& plot)
    : plot_(plot), range_(range), logX_(scene.logX) {
    if (!scene.equalScales) return;
    const double scale =
        std::min(plot.width() / (range.right - range.left), plot.height() / (range.top - range.bottom));
    widen(range_.left, range_.right, plot.width() / scale);
    widen(range_.bottom, range_.top, plot.height() / scale);
}

QPointF PictureFrame::fromRange(QPointF point) const {
    return {plot_.left() + (point.x() - range_.left) / (range_.right - range_.left) * plot_.width(),
            plot_.bottom() - (point.y() - range_.bottom) / (range_.top - range_.bottom) * plot_.height()};
}

QPointF PictureFrame::pixel(QPointF value) const {
    return fromRange({logX_ ? std::log10(std::max(value.x(), 1e-12)) : value.x(), value.y()});
}

QPointF PictureFrame::inRange(QPointF pixel) const {
    return {range_.left + (pixel.x() - plot_.left()) / plot_.width() * (range_.right - range_.left),
            range_.bottom + (plot_.bottom() - pixel.y()) / plot_.height() * (range_.top - range_.bottom)};
}

double PictureFrame::pixels(double length) const { return length / (range_.right - range_.left) * plot_.width(); }

QVector<PictureTick> PictureFrame::xTicks(double space) const {
    const double count = plot_.width() / space;
    return logX_ ? logTicks(range_.left, range_.right, count) : evenTicks(range_.left, range_.right, count);
}

QVector<PictureTick> PictureFrame::yTicks(double space) const {
    return evenTicks(range_.bottom, range_.top, plot_.height() / space);
}
