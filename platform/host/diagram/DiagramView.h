#pragma once

#include <QGraphicsView>
#include <memory>

#include "platform/host/NetworkModel.h"

class CHandleGraph;
class dbDatabase;

namespace diagram {
struct Drawing;
struct Label;
}  // namespace diagram

/// The single-line diagram of a base network: drawn at its coordinates, or laid out when it has none.
class DiagramView : public QGraphicsView {
    Q_OBJECT
  public:
    explicit DiagramView(QWidget* parent = nullptr);
    ~DiagramView() override;

    /// Where a computed layout is kept, usually the project's folder; empty: nowhere. Set before showNetwork().
    void setLayoutDirectory(const QString& directory);
    /// Draws a network. Without usable coordinates its layout is computed in the background; ready() tells the end.
    void showNetwork(const host::NetworkModel& network);
    [[nodiscard]] bool isReady() const;
    /// Draws the live labels of `addition_graph`.
    void refreshLabels(dbDatabase& realTime);
    /// Shows what the case in the real-time tables has in service and which switches are closed.
    void refreshStates(dbDatabase& realTime);
    /// Takes the gestures from now on; null: nobody. Not owned.
    void setHandler(CHandleGraph* handler);

    /// Names of elements, buses and stations that contain a text; selectElement() shows one.
    [[nodiscard]] QStringList find(const QString& text) const;
    bool selectElement(const QString& name);
    void fit();
    void zoomBy(double factor);

    /// By the suffix: svg, pdf, png; the whole diagram. \return false with one sentence in `error`
    bool exportTo(const QString& file, QString* error) const;
    /// The same for what the window shows.
    bool exportVisibleTo(const QString& file, QString* error) const;

    [[nodiscard]] const diagram::Drawing& drawing() const;
    [[nodiscard]] const std::vector<diagram::Label>& labels() const;

  signals:
    void elementSelected(const QString& name);
    /// One line about the element under the mouse for the status bar; empty when there is none.
    void hovered(const QString& text);
    /// The network is drawn. \param notice  empty, or one sentence about what is not drawn as it should be
    void ready(const QString& notice);

  protected:
    void drawBackground(QPainter* painter, const QRectF& area) override;
    void drawForeground(QPainter* painter, const QRectF& area) override;
    bool viewportEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};
