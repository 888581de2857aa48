#include "platform/host/ui/Icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

namespace {

QByteArray drawing(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QColor colourOf(QIcon::Mode mode) {
    const bool off = mode == QIcon::Disabled;
    return QGuiApplication::palette().color(off ? QPalette::Disabled : QPalette::Active,
                                            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
}

class LineIcon : public QIconEngine {
  public:
    explicit LineIcon(QByteArray svg) : svg_(std::move(svg)) {}
    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
        QSvgRenderer renderer(QByteArray(svg_).replace("currentColor", colourOf(mode).name().toLatin1()));
        renderer.render(painter, place);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap image(size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return image;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new LineIcon(svg_); }
    bool isNull() override { return svg_.isEmpty(); }

  private:
    QByteArray svg_;
};

}  // namespace

QIcon host::icon(const QString& name) { return lineIcon(":/morvane/icons/" + name + ".svg"); }

QIcon host::lineIcon(const QString& file) { return QIcon(new LineIcon(drawing(file))); }
