#pragma once

#include <QCoreApplication>
#include <QFont>
#include <QPainter>

#include "platform/host/diagram/Palette.h"
#include "programs/workflow/PictureScene.h"

/// The column beside a plot: what is wrong, what the lines mean, what is missing.
class PictureLegend {
    Q_DECLARE_TR_FUNCTIONS(PictureLegend)
  public:
    PictureLegend(const PictureScene& scene, const diagram::Palette& palette, const QFont& font)
        : scene_(scene), palette_(palette), font_(font) {}

    /// Lines that do not fit are left out; the last one then says so.
    void paint(QPainter& painter, const QRectF& area) const;
    [[nodiscard]] double height(double width) const;
    /// All of it as text.
    [[nodiscard]] QString text() const;

  private:
    struct Row {
        QString text;
        QColor colour;
        const PictureLegendEntry* entry = nullptr;
        bool heading = false;
    };
    [[nodiscard]] QVector<Row> rows() const;
    [[nodiscard]] double indent(const Row& row) const;
    [[nodiscard]] QRectF bounds(const Row& row, double width) const;
    void paintSymbol(QPainter& painter, const PictureLegendEntry& entry, QPointF middle) const;

    const PictureScene& scene_;
    const diagram::Palette& palette_;
    QFont font_;
};
