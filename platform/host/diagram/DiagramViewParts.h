#pragma once

#include <QPointer>
#include <QTimer>

#include "platform/host/diagram/DiagramLayout.h"
#include "platform/host/diagram/DiagramView.h"
#include "platform/host/diagram/DrawingPainter.h"
#include "platform/host/diagram/Labels.h"
#include "platform/host/diagram/Legend.h"

/// What the view keeps between its events.
struct DiagramView::Impl {
    explicit Impl(DiagramView& owner);

    void begin(const host::NetworkModel& network);
    void draw(const diagram::Plan& plan, const QString& notice);
    void recolour();
    void placeLegend();
    void changed();
    [[nodiscard]] double scale() const { return view.transform().m11(); }
    [[nodiscard]] QRectF visibleArea() const;
    [[nodiscard]] diagram::Hit hit(const QPoint& at) const;
    [[nodiscard]] int label(const QPoint& at) const;
    /// What a handler is told about a place of the window.
    [[nodiscard]] CHandleGraphInfo info(const QPoint& at) const;
    [[nodiscard]] QString toolTip(const QPoint& at) const;
    void hover(const QPoint& at);
    void leave();
    void select(int figure);
    void showFigure(int figure);
    void showStation(const QRectF& box);
    void selectNext(int by);
    [[nodiscard]] std::vector<int> neighbours(int figure) const;

    DiagramView& view;
    QGraphicsScene scene;
    host::NetworkModel model;
    std::unique_ptr<diagram::NetworkIndex> index;
    diagram::Blocks blocks;
    diagram::Drawing drawing;
    diagram::FigureIndex figures;
    std::vector<diagram::Label> labels;
    diagram::Palette palette;
    DiagramLayout layout;
    diagram::Legend* legend;
    QPointer<CHandleGraph> handler;
    QTimer flash;
    int flashes = 0;
    int hoveredFigure = -1, selectedFigure = -1, hoveredLabel = -1;
    std::vector<int> ring;  ///< neighbours that Tab goes through
    std::size_t ringAt = 0;
    QPoint pressed, panned;
    bool panning = false, moved = false;
    bool ready = false, fitted = false;
};
