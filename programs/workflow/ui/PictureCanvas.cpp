#include "programs/workflow/ui/PictureCanvas.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>

#include "programs/workflow/ui/PictureLegend.h"
#include "programs/workflow/ui/PicturePainter.h"
#include "programs/workflow/ui/PictureShapes.h"

namespace {

constexpr double kZoomStep = 1.25;
constexpr double kMoveStep = 40;  // pixels

}  // namespace

PictureCanvas::PictureCanvas(const char* name, QWidget* parent) : QWidget(parent) {
    setObjectName(name);
    setMinimumSize(560, 340);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

void PictureCanvas::setScene(const PictureScene& scene) {
    if (scene.xTitle != scene_.xTitle || scene.title != scene_.title) range_.reset();
    scene_ = scene;
    setAccessibleName(scene.title);
    setAccessibleDescription(QStringList(scene.findings + scene.notes).join('\n'));
    update();
}

PictureFrame PictureCanvas::frame() const {
    return PicturePainter(scene_, diagram::paletteFor(palette()), font()).frame(rect(), range_);
}

QString PictureCanvas::tipAt(QPointF pixel) const {
    const diagram::Palette colours = diagram::paletteFor(palette());
    if (PicturePainter(scene_, colours, font()).legendArea(rect()).contains(pixel))
        return PictureLegend(scene_, colours, font()).text();
    const PictureFrame made = frame();
    return scene_.empty.isEmpty() ? PictureShapes(scene_, made, colours).tipAt(pixel) : QString();
}

void PictureCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    PicturePainter(scene_, diagram::paletteFor(palette()), font()).paint(painter, rect(), range_);
}

void PictureCanvas::zoom(QPointF about, double factor) {
    if (!scene_.empty.isEmpty()) return;
    const PictureFrame made = frame();
    range_ = made.range().zoomed(made.inRange(about), factor);
    update();
}

void PictureCanvas::zoomMiddle(double factor) { zoom(frame().plot().center(), factor); }
void PictureCanvas::zoomIn() { zoomMiddle(1 / kZoomStep); }
void PictureCanvas::zoomOut() { zoomMiddle(kZoomStep); }

void PictureCanvas::showAll() {
    range_.reset();
    update();
}

void PictureCanvas::move(QPointF pixels) {
    if (!scene_.empty.isEmpty()) return;
    const PictureFrame made = frame();
    range_ = made.range().moved(made.inRange({0, 0}) - made.inRange(pixels));
    update();
}

void PictureCanvas::wheelEvent(QWheelEvent* event) {
    zoom(event->position(), std::pow(kZoomStep, -event->angleDelta().y() / 120.0));
    event->accept();
}

void PictureCanvas::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) grip_ = event->position();
}

void PictureCanvas::mouseMoveEvent(QMouseEvent* event) {
    if (!grip_) return;
    move(event->position() - *grip_);
    grip_ = event->position();
    setCursor(Qt::ClosedHandCursor);
}

void PictureCanvas::mouseReleaseEvent(QMouseEvent*) {
    grip_.reset();
    unsetCursor();
}

void PictureCanvas::mouseDoubleClickEvent(QMouseEvent*) { showAll(); }

void PictureCanvas::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Plus:
            return zoomIn();
        case Qt::Key_Minus:
            return zoomOut();
        case Qt::Key_0:
            return showAll();
        case Qt::Key_Left:
            return move({kMoveStep, 0});
        case Qt::Key_Right:
            return move({-kMoveStep, 0});
        case Qt::Key_Up:
            return move({0, kMoveStep});
        case Qt::Key_Down:
            return move({0, -kMoveStep});
        default:
            QWidget::keyPressEvent(event);
    }
}

bool PictureCanvas::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString tip = tipAt(help->pos());
    tip.isEmpty() ? QToolTip::hideText() : QToolTip::showText(help->globalPos(), tip, this);
    return true;
}
