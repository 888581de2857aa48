#pragma once

#include <QPainter>

#include "platform/host/diagram/Palette.h"
#include "programs/workflow/ui/PictureFrame.h"

/// The shapes and labels of a scene on pixels.
class PictureShapes {
  public:
    PictureShapes(const PictureScene& scene, const PictureFrame& frame, const diagram::Palette& palette)
        : scene_(scene), frame_(frame), palette_(palette) {}

    void paint(QPainter& painter) const;
    /// Each label beside its point where it covers no other; one that finds no room is left to the legend.
    void paintLabels(QPainter& painter) const;
    /// What the pointer tells at a pixel; empty away from all shapes.
    [[nodiscard]] QString tipAt(QPointF pixel) const;

  private:
    void paint(QPainter& painter, const PictureShape& shape) const;
    void paintLine(QPainter& painter, const PictureShape& shape) const;
    void paintArc(QPainter& painter, const PictureShape& shape) const;
    [[nodiscard]] QPolygonF pixels(const PictureShape& shape) const;
    [[nodiscard]] double distance(const PictureShape& shape, QPointF pixel) const;

    const PictureScene& scene_;
    const PictureFrame& frame_;
    const diagram::Palette& palette_;
};
