#pragma once

#include <QCoreApplication>

#include "platform/host/diagram/DrawingPainter.h"
#include "platform/host/diagram/Labels.h"

namespace diagram {

/// Writes a part of a drawing into a file: svg, pdf or png by its suffix, dark on white, with everything that the
/// whole diagram shows at full size.
class DiagramExport {
    Q_DECLARE_TR_FUNCTIONS(DiagramView)
  public:
    DiagramExport(const host::NetworkModel& model, const Drawing& drawing, const std::vector<Label>& labels)
        : model_(model), drawing_(drawing), labels_(labels) {}

    /// \return false with one sentence in `error`, when there is one
    bool write(const QString& file, const QRectF& area, QString* error) const;

  private:
    void paint(QPainter& painter, const QRectF& area, double scale, bool outlines) const;
    bool writeSvg(QIODevice& out, const QRectF& area) const;
    bool writePdf(QIODevice& out, const QRectF& area) const;
    bool writePng(QIODevice& out, const QRectF& area) const;

    const host::NetworkModel& model_;
    const Drawing& drawing_;
    const std::vector<Label>& labels_;
};

}  // namespace diagram
