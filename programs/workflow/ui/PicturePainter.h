#pragma once

#include <QFont>
#include <QPainter>
#include <optional>

#include "platform/host/diagram/Palette.h"
#include "programs/workflow/ui/PictureFrame.h"

/// The colour of an ink on a light or a dark ground.
QColor inkColour(const PictureInk& ink, const diagram::Palette& palette);

/// Paints a scene: title above, plot with its axes, legend at the right.
class PicturePainter {
  public:
    PicturePainter(const PictureScene& scene, const diagram::Palette& palette, const QFont& font);

    /// \param range  nothing: all of the scene
    void paint(QPainter& painter, const QRectF& area, const std::optional<PictureRange>& range) const;
    /// The frame that paint() uses.
    [[nodiscard]] PictureFrame frame(const QRectF& area, const std::optional<PictureRange>& range) const;
    [[nodiscard]] QRectF legendArea(const QRectF& area) const;
    /// Height that the whole legend needs at a width of the picture.
    [[nodiscard]] double legendHeight(double width) const;

  private:
    [[nodiscard]] QFont bold() const;
    void paintHead(QPainter& painter, const QRectF& area) const;
    [[nodiscard]] QPen gridPen(bool zero) const;
    void paintGrid(QPainter& painter, const PictureFrame& frame) const;
    void paintAxes(QPainter& painter, const PictureFrame& frame) const;
    void paintEmpty(QPainter& painter, const QRectF& area) const;

    const PictureScene& scene_;
    const diagram::Palette& palette_;
    QFont font_;
};
