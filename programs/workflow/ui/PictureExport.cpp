#include "programs/workflow/ui/PictureExport.h"

#include <QApplication>
#include <QDate>
#include <QFileInfo>
#include <QSaveFile>
#include <QSvgGenerator>

#include "programs/workflow/ui/PicturePainter.h"

namespace {

constexpr double kWidth = 1100, kLeastHeight = 720, kImageScale = 2;

class Sheet {
  public:
    explicit Sheet(PictureScene scene) : scene_(std::move(scene)) {
        scene_.subtitle += "  " + QDate::currentDate().toString(Qt::ISODate);
        const double height = PicturePainter(scene_, colours_, QApplication::font()).legendHeight(kWidth);
        size_ = QSizeF(kWidth, std::ceil(std::max(kLeastHeight, height)));
    }

    [[nodiscard]] QSizeF size() const { return size_; }
    void paint(QPainter& painter) const {
        PicturePainter(scene_, colours_, QApplication::font()).paint(painter, QRectF(QPointF(0, 0), size_), {});
    }

    [[nodiscard]] QImage image() const {
        QImage image((size_ * kImageScale).toSize(), QImage::Format_RGB32);
        QPainter painter(&image);
        painter.scale(kImageScale, kImageScale);
        paint(painter);
        return image;
    }
    [[nodiscard]] bool writeSvg(QIODevice& out) const {
        QSvgGenerator generator;
        generator.setOutputDevice(&out);
        generator.setSize(size_.toSize());
        generator.setViewBox(QRectF(QPointF(0, 0), size_));
        generator.setTitle(scene_.title);
        generator.setDescription(scene_.subtitle);
        QPainter painter;
        if (!painter.begin(&generator)) return false;
        paint(painter);
        return painter.end();
    }

  private:
    PictureScene scene_;
    diagram::Palette colours_ = diagram::paperPalette();
    QSizeF size_;
};

}  // namespace

bool PictureExport::write(const PictureScene& scene, const QString& file, QString* error) {
    const bool svg = QFileInfo(file).suffix().toLower() == "svg";
    QSaveFile out(file);
    const bool open = out.open(QIODevice::WriteOnly);
    const bool written = open && (svg ? Sheet(scene).writeSvg(out) : image(scene).save(&out, "PNG"));
    if (written && out.commit()) return true;
    *error = tr("不能写文件 %1：%2").arg(file, out.errorString());
    return false;
}

QImage PictureExport::image(const PictureScene& scene) { return Sheet(scene).image(); }
