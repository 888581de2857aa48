#pragma once

#include <QRectF>
#include <QVector>

#include "programs/workflow/PictureScene.h"

/// What the axes show, a logarithmic one in powers of ten.
struct PictureRange {
    double left = 0, right = 1, bottom = 0, top = 1;

    static PictureRange of(const PictureScene& scene);
    /// About a point of the range; a factor above 1 shows more.
    [[nodiscard]] PictureRange zoomed(QPointF about, double factor) const;
    [[nodiscard]] PictureRange moved(QPointF by) const;
};

/// A tick of an axis: where it stands in the range, and the figure beside it.
struct PictureTick {
    double at = 0;
    QString text;
};

/// The way from the units of a scene to pixels.
class PictureFrame {
  public:
    /// Widens the range where both axes need the same scale.
    PictureFrame(const PictureScene& scene, const PictureRange& range, const QRectF& plot);

    [[nodiscard]] QPointF pixel(QPointF value) const;
    /// The pixel of a point of the range, and the point under a pixel: logarithmic axes in powers of ten.
    [[nodiscard]] QPointF fromRange(QPointF point) const;
    [[nodiscard]] QPointF inRange(QPointF pixel) const;
    [[nodiscard]] double pixels(double length) const;  ///< of a length along x on even axes
    [[nodiscard]] const QRectF& plot() const { return plot_; }
    [[nodiscard]] const PictureRange& range() const { return range_; }
    /// \param space  pixels that a tick needs
    [[nodiscard]] QVector<PictureTick> xTicks(double space) const;
    [[nodiscard]] QVector<PictureTick> yTicks(double space) const;

  private:
    QRectF plot_;
    PictureRange range_;
    bool logX_;
};
