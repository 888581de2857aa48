#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleHints>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "platform/host/diagram/DiagramViewParts.h"

namespace {

constexpr double reachPixels = 6;
constexpr double keyZoom = 1.25;
constexpr int keyPan = 80;

}  // namespace

diagram::Hit DiagramView::Impl::hit(const QPoint& at) const {
    return ready ? diagram::hitAt(drawing, view.mapToScene(at), reachPixels / scale()) : diagram::Hit{};
}

int DiagramView::Impl::label(const QPoint& at) const { return diagram::labelAt(labels, view.mapToScene(at), scale()); }

CHandleGraphInfo DiagramView::Impl::info(const QPoint& at) const {
    if (const int l = label(at); l >= 0) {
        diagram::Hit on;
        on.figure = labels[l].figure;
        CHandleGraphInfo found = diagram::infoOf(model, *index, drawing.figures[on.figure], on);
        found.recid = labels[l].recid;
        return found;
    }
    const diagram::Hit on = hit(at);
    return on.figure < 0 ? CHandleGraphInfo{} : diagram::infoOf(model, *index, drawing.figures[on.figure], on);
}

/// A label's text where it is only a mark, else the element's data; empty: none.
QString DiagramView::Impl::toolTip(const QPoint& at) const {
    if (const int l = label(at); l >= 0) return labels[l].text;
    const diagram::Hit on = hit(at);
    return on.figure < 0 ? QString() : diagram::ElementText(model, *index).toolTip(drawing.figures[on.figure]);
}

void DiagramView::Impl::hover(const QPoint& at) {
    const int l = label(at);
    const int figure = l >= 0 ? labels[l].figure : hit(at).figure;
    if (figure == hoveredFigure && l == hoveredLabel) return;
    hoveredFigure = figure, hoveredLabel = l;
    const diagram::ElementText texts(model, *index);
    emit view.hovered(figure < 0 ? QString()
                                 : texts.title(drawing.figures[figure]) + "  " +
                                       texts.rows(drawing.figures[figure]).join(QStringLiteral("  ")));
    changed();
}

void DiagramView::Impl::leave() {
    if (hoveredFigure < 0 && hoveredLabel < 0) return;
    hoveredFigure = hoveredLabel = -1;
    emit view.hovered({});
    changed();
}

bool DiagramView::focusNextPrevChild(bool next) {
    if (impl_->selectedFigure < 0) return QGraphicsView::focusNextPrevChild(next);
    impl_->selectNext(next ? 1 : -1);
    return true;
}

bool DiagramView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), impl_->toolTip(help->pos()), this);
        return true;
    }
    if (event->type() == QEvent::Leave) impl_->leave();
    return QGraphicsView::viewportEvent(event);
}

void DiagramView::wheelEvent(QWheelEvent* event) {
    if (event->angleDelta().y() == 0 || !impl_->ready) return event->ignore();
    const QPointF under = mapToScene(event->position().toPoint());
    impl_->fitted = false;
    zoomBy(std::pow(1.0015, event->angleDelta().y()));
    // The point under the mouse stays there.
    const QPointF moved = mapFromScene(under) - event->position();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(moved.x()));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(moved.y()));
    event->accept();
}

void DiagramView::mousePressEvent(QMouseEvent* event) {
    impl_->pressed = impl_->panned = event->pos();
    impl_->moved = false;
    impl_->panning = event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton;
    if (event->button() == Qt::LeftButton && impl_->ready) {
        impl_->ring.clear();
        impl_->select(impl_->hit(event->pos()).figure);
    }
    event->accept();
}

void DiagramView::mouseMoveEvent(QMouseEvent* event) {
    if (!impl_->panning) return impl_->hover(event->pos());
    const bool far =
        (event->pos() - impl_->pressed).manhattanLength() >= QGuiApplication::styleHints()->startDragDistance();
    if (!impl_->moved && !far) return;
    if (!impl_->moved) viewport()->setCursor(Qt::ClosedHandCursor);
    impl_->moved = true, impl_->fitted = false;
    const QPoint by = event->pos() - impl_->panned;
    impl_->panned = event->pos();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - by.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - by.y());
}

void DiagramView::mouseReleaseEvent(QMouseEvent* event) {
    const bool clicked = impl_->panning && !impl_->moved && event->button() == Qt::LeftButton;
    impl_->panning = false;
    viewport()->unsetCursor();
    event->accept();
    if (!clicked || !impl_->handler || !impl_->ready) return;
    const CHandleGraphInfo info = impl_->info(event->pos());
    info.recid > 0 ? impl_->handler->OnLabelClicked(info) : impl_->handler->OnHandleDefault();
}

void DiagramView::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
    impl_->panning = false;
    if (event->button() != Qt::LeftButton || !impl_->handler || !impl_->ready) return;
    const CHandleGraphInfo info = impl_->info(event->pos());
    if (info.recid > 0 || !info.name.isEmpty()) impl_->handler->OnElementOpen(info);
}

void DiagramView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (!impl_->handler || !impl_->ready) return;
    QPoint at = event->pos(), global = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        if (impl_->selectedFigure < 0) return;
        at = mapFromScene(diagram::pointAlong(impl_->drawing.figures[impl_->selectedFigure], 50));
        global = viewport()->mapToGlobal(at);
    } else {
        impl_->select(impl_->hit(at).figure);
    }
    QMenu menu(this);
    impl_->handler->OnContextMenu(impl_->info(at), &menu);
    if (!menu.isEmpty()) menu.exec(global);
}

/// Elements that end on this one, or that it ends on.
std::vector<int> DiagramView::Impl::neighbours(int figure) const {
    const auto endsOn = [](const diagram::Figure& from, const diagram::Figure& to) {
        return std::any_of(from.legs.begin(), from.legs.end(), [&](const diagram::Leg& leg) {
            return diagram::distanceTo(to, leg.path.first()) < 1 || diagram::distanceTo(to, leg.path.last()) < 1;
        });
    };
    std::vector<int> near;
    const diagram::Figure& own = drawing.figures[figure];
    for (int other : drawing.places.within(own.bounds().adjusted(-2, -2, 2, 2))) {
        const diagram::Figure& f = drawing.figures[other];
        if (other != figure && (endsOn(f, own) || endsOn(own, f))) near.push_back(other);
    }
    return near;
}

/// Tab goes round the neighbours of the element that was chosen by mouse or name.
void DiagramView::Impl::selectNext(int by) {
    if (selectedFigure < 0) return;
    if (ring.empty()) {
        ring = neighbours(selectedFigure);
        ring.insert(ring.begin(), selectedFigure);
        ringAt = 0;
    }
    ringAt = (ringAt + ring.size() + static_cast<std::size_t>(by + static_cast<int>(ring.size()))) % ring.size();
    select(ring[ringAt]);
    view.ensureVisible(drawing.figures[selectedFigure].bounds(), 40, 40);
}

void DiagramView::keyPressEvent(QKeyEvent* event) {
    const auto pan = [this](int x, int y) {
        impl_->fitted = false;
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + x);
        verticalScrollBar()->setValue(verticalScrollBar()->value() + y);
    };
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return event->ignore();
    event->accept();
    switch (event->key()) {
        case Qt::Key_Left:
            return pan(-keyPan, 0);
        case Qt::Key_Right:
            return pan(keyPan, 0);
        case Qt::Key_Up:
            return pan(0, -keyPan);
        case Qt::Key_Down:
            return pan(0, keyPan);
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            return zoomBy(keyZoom);
        case Qt::Key_Minus:
            return zoomBy(1 / keyZoom);
        case Qt::Key_Home:
        case Qt::Key_F:
            return fit();
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (impl_->handler && impl_->selectedFigure >= 0) {
                const CHandleGraphInfo info =
                    diagram::infoOf(impl_->model, *impl_->index, impl_->drawing.figures[impl_->selectedFigure],
                                    {impl_->selectedFigure});
                if (!info.name.isEmpty()) impl_->handler->OnElementOpen(info);
            }
            return;
        case Qt::Key_Escape:
            return impl_->select(-1);
        default:
            event->ignore();
            return QGraphicsView::keyPressEvent(event);
    }
}

void DiagramView::resizeEvent(QResizeEvent* event) {
    QGraphicsView::resizeEvent(event);
    impl_->placeLegend();
    // Until the user moves it, the whole diagram fills the window.
    if (impl_->ready && impl_->fitted) fit();
}

void DiagramView::changeEvent(QEvent* event) {
    QGraphicsView::changeEvent(event);
    const bool colours = event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange;
    if (impl_ && colours) impl_->recolour();
}
