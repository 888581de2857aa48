#include "platform/host/diagram/DiagramExport.h"

#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <algorithm>

namespace diagram {

namespace {

constexpr double largestImage = 12000;  ///< pixels on the longer side
constexpr double imageScale = 2;
constexpr double pointsPerUnit = 0.75;
constexpr double largestPage = 14000;  ///< points, what readers of the format take

}  // namespace

bool DiagramExport::write(const QString& file, const QRectF& area, QString* error) const {
    const QString suffix = QFileInfo(file).suffix().toLower();
    const auto fail = [&](const QString& sentence) {
        if (error) *error = sentence;
        return false;
    };
    if (suffix != "svg" && suffix != "pdf" && suffix != "png")
        return fail(tr("单线图只能导出为 svg、pdf 或 png 文件：%1").arg(file));
    if (area.isEmpty()) return fail(tr("单线图是空的，没有可以导出的内容。"));
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly)) return fail(tr("不能写文件 %1：%2").arg(file, out.errorString()));
    const bool written = suffix == "svg"   ? writeSvg(out, area)
                         : suffix == "pdf" ? writePdf(out, area)
                                           : writePng(out, area);
    if (!written || !out.commit()) return fail(tr("不能写文件 %1：%2").arg(file, out.errorString()));
    return true;
}

void DiagramExport::paint(QPainter& painter, const QRectF& area, double scale, bool outlines) const {
    const Palette palette = paperPalette();
    painter.fillRect(QRectF(QPointF(0, 0), area.size() * scale), palette.background);
    painter.scale(scale, scale);
    painter.translate(-area.topLeft());
    painter.setClipRect(area);
    paintDrawing(painter, model_, drawing_, palette, area, {scale, true, outlines});
    paintLabels(painter, labels_, palette, area, {scale, true, outlines});
}

bool DiagramExport::writeSvg(QIODevice& out, const QRectF& area) const {
    QSvgGenerator generator;
    generator.setOutputDevice(&out);
    generator.setSize(area.size().toSize());
    generator.setViewBox(QRectF(QPointF(0, 0), area.size()));
    generator.setTitle(QString::fromStdString(model_.name));
    QPainter painter;
    if (!painter.begin(&generator)) return false;
    paint(painter, area, 1, true);
    return painter.end();
}

bool DiagramExport::writePdf(QIODevice& out, const QRectF& area) const {
    const double longer = std::max(area.width(), area.height());
    const double scale = std::min(pointsPerUnit, largestPage / longer);
    QPdfWriter writer(&out);
    writer.setResolution(72);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setPageSize(QPageSize(area.size() * scale, QPageSize::Point, {}, QPageSize::ExactMatch));
    writer.setTitle(QString::fromStdString(model_.name));
    QPainter painter;
    if (!painter.begin(&writer)) return false;
    paint(painter, area, scale, false);
    return painter.end();
}

bool DiagramExport::writePng(QIODevice& out, const QRectF& area) const {
    const double scale = std::min(imageScale, largestImage / std::max(area.width(), area.height()));
    QImage image((area.size() * scale).toSize().expandedTo({1, 1}), QImage::Format_RGB32);
    if (image.isNull()) return false;
    QPainter painter(&image);
    paint(painter, area, scale, false);
    painter.end();
    return image.save(&out, "PNG");
}

}  // namespace diagram
