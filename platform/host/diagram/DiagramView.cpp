#include "platform/host/diagram/DiagramView.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "platform/host/diagram/DiagramExport.h"
#include "platform/host/diagram/DiagramViewParts.h"

namespace {

constexpr double largestScale = 8, fitScale = 2;
constexpr int flashCount = 6, flashMilliseconds = 160;
constexpr double elementScale = 1.2;

}  // namespace

DiagramView::DiagramView(QWidget* parent) : QGraphicsView(parent), impl_(std::make_unique<Impl>(*this)) {
    setScene(&impl_->scene);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
    setTransformationAnchor(QGraphicsView::NoAnchor);
    setResizeAnchor(QGraphicsView::AnchorViewCenter);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("单线图"));
    impl_->recolour();
    connect(&impl_->layout, &DiagramLayout::finished, this,
            [this](const std::vector<QPointF>& middles, const QString& sentence) {
                impl_->draw(diagram::placeBlocks(impl_->model, *impl_->index, impl_->blocks, middles), sentence);
            });
    connect(&impl_->flash, &QTimer::timeout, this, [this] {
        if (--impl_->flashes <= 0) impl_->flash.stop();
        viewport()->update();
    });
}

DiagramView::~DiagramView() = default;

DiagramView::Impl::Impl(DiagramView& owner) : view(owner), legend(new diagram::Legend(&owner)) {
    flash.setInterval(flashMilliseconds);
    legend->hide();
}

void DiagramView::setLayoutDirectory(const QString& directory) { impl_->layout.setDirectory(directory); }
void DiagramView::setHandler(CHandleGraph* handler) { impl_->handler = handler; }
bool DiagramView::isReady() const { return impl_->ready; }
const diagram::Drawing& DiagramView::drawing() const { return impl_->drawing; }
const std::vector<diagram::Label>& DiagramView::labels() const { return impl_->labels; }
void DiagramView::showNetwork(const host::NetworkModel& network) { impl_->begin(network); }

void DiagramView::Impl::begin(const host::NetworkModel& network) {
    layout.stop();
    leave();
    selectedFigure = -1, ready = false, fitted = false;
    ring.clear();
    labels.clear();
    drawing = {};
    model = network;
    index = std::make_unique<diagram::NetworkIndex>(model);
    if (model.nodes.empty()) return draw({}, tr("网络没有节点，单线图是空的。"));
    if (diagram::hasNodePlaces(model)) return draw(diagram::planByPlaces(model, *index), {});
    blocks = diagram::arrangeBlocks(model, *index);
    if (const auto places = layout.kept(blocks)) return draw(diagram::placeBlocks(model, *index, blocks, *places), {});
    layout.start(blocks);
    changed();
}

void DiagramView::Impl::draw(const diagram::Plan& plan, const QString& notice) {
    drawing = diagram::wire(model, *index, plan);
    diagram::placeCaptions(model, *index, drawing);
    figures = diagram::FigureIndex(model, *index, drawing);
    scene.setSceneRect(drawing.bounds);
    ready = true;
    recolour();
    view.fit();
    const QString leftOut =
        drawing.leftOut > 0 ? tr("有 %1 个元件所接的节点不存在，没有画出。").arg(drawing.leftOut) : QString();
    emit view.ready(notice.isEmpty() || leftOut.isEmpty() ? notice + leftOut : notice + ' ' + leftOut);
}

void DiagramView::Impl::recolour() {
    palette = diagram::paletteFor(view.palette());
    std::set<double> levels;
    for (const host::Node& node : model.nodes) levels.insert(node.baseKv);
    legend->show(levels, palette);
    placeLegend();
    changed();
}

void DiagramView::Impl::placeLegend() { legend->move(12, view.height() - legend->height() - 12); }

void DiagramView::Impl::changed() { view.viewport()->update(); }

QRectF DiagramView::Impl::visibleArea() const { return view.mapToScene(view.viewport()->rect()).boundingRect(); }

void DiagramView::fit() {
    const QRectF bounds = impl_->drawing.bounds;
    impl_->fitted = true;
    if (bounds.isEmpty() || viewport()->width() < 2 || viewport()->height() < 2) return impl_->changed();
    const double scale =
        std::min({viewport()->width() / bounds.width(), viewport()->height() / bounds.height(), fitScale});
    // Room to push the edge of the diagram to the middle of the window.
    const double around = std::max(viewport()->width(), viewport()->height()) / scale;
    setSceneRect(bounds.adjusted(-around, -around, around, around));
    setTransform(QTransform::fromScale(scale, scale));
    centerOn(bounds.center());
    impl_->changed();
}

void DiagramView::zoomBy(double factor) {
    const QRectF bounds = impl_->drawing.bounds;
    if (bounds.isEmpty() || !(factor > 0)) return;
    const double smallest =
        std::min({viewport()->width() / bounds.width() / 2, viewport()->height() / bounds.height() / 2, fitScale});
    const double scale = std::clamp(impl_->scale() * factor, std::min(smallest, 1.0), largestScale);
    const QPointF middle = mapToScene(viewport()->rect().center());
    setTransform(QTransform::fromScale(scale, scale));
    centerOn(middle);
    impl_->fitted = false;
    impl_->changed();
}

void DiagramView::refreshLabels(dbDatabase& realTime) {
    if (!impl_->ready) return;
    impl_->hoveredLabel = -1;
    impl_->labels = diagram::readLabels(realTime, impl_->model, impl_->figures, impl_->drawing);
    impl_->changed();
}

void DiagramView::refreshStates(dbDatabase& realTime) {
    if (!impl_->ready) return;
    diagram::readStates(realTime, impl_->figures, impl_->drawing);
    impl_->changed();
}

QStringList DiagramView::find(const QString& text) const {
    QStringList names;
    if (!impl_->index || text.isEmpty()) return names;
    const auto take = [&](const QString& name) {
        if (name.contains(text, Qt::CaseInsensitive)) names << name;
    };
    for (const diagram::Frame& frame : impl_->drawing.frames) take(frame.name);
    for (const diagram::Figure& figure : impl_->drawing.figures)
        take(diagram::nameOf(impl_->model, *impl_->index, figure));
    for (const host::Node& node : impl_->model.nodes) take(QString::fromStdString(node.name));
    names.sort();
    names.removeDuplicates();
    return names;
}

bool DiagramView::selectElement(const QString& name) {
    if (const int figure = impl_->figures.any(name); figure >= 0) return impl_->showFigure(figure), true;
    for (const diagram::Frame& frame : impl_->drawing.frames)
        if (frame.name == name) return impl_->showStation(frame.box), true;
    return false;
}

void DiagramView::Impl::select(int figure) {
    selectedFigure = figure;
    emit view.elementSelected(figure < 0 ? QString() : diagram::nameOf(model, *index, drawing.figures[figure]));
    changed();
}

void DiagramView::Impl::showFigure(int figure) {
    select(figure);
    const diagram::Figure& f = drawing.figures[figure];
    fitted = false;
    if (scale() < elementScale) view.setTransform(QTransform::fromScale(elementScale, elementScale));
    view.centerOn(f.centre);
    flashes = flashCount;
    flash.start();
}

void DiagramView::Impl::showStation(const QRectF& box) {
    const double s = std::min(
        {view.viewport()->width() / box.width() * 0.8, view.viewport()->height() / box.height() * 0.8, fitScale});
    fitted = false;
    view.setTransform(QTransform::fromScale(s, s));
    view.centerOn(box.center());
    changed();
}

bool DiagramView::exportTo(const QString& file, QString* error) const {
    return diagram::DiagramExport(impl_->model, impl_->drawing, impl_->labels)
        .write(file, impl_->drawing.bounds, error);
}

bool DiagramView::exportVisibleTo(const QString& file, QString* error) const {
    return diagram::DiagramExport(impl_->model, impl_->drawing, impl_->labels)
        .write(file, impl_->visibleArea() & impl_->drawing.bounds, error);
}

void DiagramView::drawBackground(QPainter* painter, const QRectF& area) {
    painter->fillRect(area, impl_->palette.background);
    if (!impl_->ready) {
        painter->resetTransform();
        painter->setPen(impl_->palette.quiet);
        const QString text = impl_->layout.isRunning() ? tr("正在排布单线图……") : QString();
        painter->drawText(viewport()->rect(), Qt::AlignCenter, text);
        return;
    }
    diagram::paintDrawing(*painter, impl_->model, impl_->drawing, impl_->palette, area, {impl_->scale()});
}

void DiagramView::drawForeground(QPainter* painter, const QRectF& area) {
    if (!impl_->ready) return;
    diagram::paintLabels(*painter, impl_->labels, impl_->palette, area, {impl_->scale()});
    const auto highlight = [&](int figure, int strength) {
        if (figure >= 0)
            diagram::paintHighlight(*painter, impl_->drawing.figures[figure], impl_->palette, impl_->scale(), strength);
    };
    if (impl_->hoveredFigure != impl_->selectedFigure) highlight(impl_->hoveredFigure, 90);
    highlight(impl_->selectedFigure, impl_->flashes % 2 ? 230 : 130);
}
