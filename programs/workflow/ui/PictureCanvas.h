#pragma once

#include <QWidget>
#include <optional>

#include "programs/workflow/ui/PictureFrame.h"

/// Shows a scene: the wheel and + - zoom, the left button and the arrow keys move, a double click and 0 show all again.
/// The pointer tells what it is at.
class PictureCanvas : public QWidget {
    Q_OBJECT
  public:
    PictureCanvas(const char* name, QWidget* parent);

    void setScene(const PictureScene& scene);  ///< keeps what the axes show while their kind stays
    [[nodiscard]] const PictureScene& scene() const { return scene_; }
    [[nodiscard]] bool isZoomed() const { return range_.has_value(); }
    /// What stands at a pixel.
    [[nodiscard]] QString tipAt(QPointF pixel) const;

  public slots:
    void zoomIn();
    void zoomOut();
    void showAll();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

  private:
    [[nodiscard]] PictureFrame frame() const;
    void zoom(QPointF about, double factor);
    void zoomMiddle(double factor);
    void move(QPointF pixels);

    PictureScene scene_;
    std::optional<PictureRange> range_;
    std::optional<QPointF> grip_;  ///< where the button went down or the last move ended
};
