#include "platform/host/diagram/Labels.h"

#include <QFontMetricsF>
#include <QPainter>

#include "platform/host/diagram/CaptionFont.h"
#include "platform/host/diagram/DrawingPainter.h"
#include "platform/host/diagram/Room.h"
#include "platform/rtdb/CaseRecords.h"
#include "platform/rtdb/dbCursor.h"

namespace diagram {

namespace {

constexpr int live = 0x02;
constexpr double readableFrom = 0.55;
constexpr double markRadius = 4;  ///< pixels

/// Where a label hangs: the figure, and the place along it.
struct Anchor {
    int figure = -1;
    QPointF point;
};

class Placement {
  public:
    Placement(const host::NetworkModel& model, const FigureIndex& figures, const Drawing& drawing)
        : model_(model), figures_(figures), drawing_(drawing), room_(drawing) {
        for (const Caption& c : drawing.captions)
            if (!c.box.isEmpty()) room_.take(c.box);
    }

    void add(const norvdb::addition_graph& record) {
        const Anchor anchor = anchorOf(record);
        const QString text = record.text.trimmed();
        if (anchor.figure < 0 || text.isEmpty()) return;
        const QSizeF size = metrics_.size(Qt::TextExpandTabs, text) + QSizeF(8, 4);
        const QPointF a = anchor.point;
        std::vector<QPointF> corners;
        for (double far : {8.0, 20.0, 36.0, 60.0})
            for (double y : {-size.height() - far, -size.height() / 2, far})
                for (double x : {far, -size.width() - far, -size.width() / 2})
                    if (y != -size.height() / 2 || x != -size.width() / 2) corners.push_back(a + QPointF(x, y));
        const QRectF box = room_.best(corners, size, anchor.figure).value_or(QRectF(corners.front(), size));
        room_.take(box.adjusted(-1, -1, 1, 1));
        labels.push_back({text, box, a, record.recid, anchor.figure});
    }

    std::vector<Label> labels;

  private:
    Anchor anchorOf(const norvdb::addition_graph& r) const {
        const auto along = [&](Kind kind) -> Anchor {
            const int f = figures_.at(kind, r.id_name);
            if (f < 0) return {};
            return {f, pointAlong(drawing_.figures[f], percentOf(r, drawing_.figures[f]))};
        };
        switch (r.ele_num) {
            case 0: {
                const Anchor bar = along(Kind::Bar);
                return bar.figure >= 0 ? bar : along(Kind::Point);
            }
            case 1:
                return along(Kind::Generator);
            case 4:
            case 5:
                return along(Kind::Shunt);
            case 10:
            case 11:
            case 12: {
                const Anchor two = along(Kind::Transformer2);
                return two.figure >= 0 ? two : winding(r);
            }
            case 13:
                return along(Kind::Switch);
            default:
                return along(Kind::Line);
        }
    }

    /// A record may name the ends in the other order than the network.
    int percentOf(const norvdb::addition_graph& r, const Figure& f) const {
        const bool turned =
            f.kind == Kind::Line && r.i_name != r.j_name && r.i_name == QString::fromStdString(model_.lines[f.index].j);
        return std::clamp(turned ? 100 - r.percent_pos : r.percent_pos, 0, 100);
    }

    Anchor winding(const norvdb::addition_graph& r) const {
        const int f = figures_.at(Kind::Transformer3, r.id_name);
        if (f < 0) return {};
        const auto& windings = model_.transformers3[drawing_.figures[f].index].winding;
        for (int w = 0; w < 3; ++w) {
            const QString node = QString::fromStdString(windings[w].node);
            if (node == r.j_name || node == r.i_name) return {f, pointAlong(drawing_.figures[f], 50, w + 1)};
        }
        return {f, drawing_.figures[f].centre};
    }

    const host::NetworkModel& model_;
    const FigureIndex& figures_;
    const Drawing& drawing_;
    Room room_;
    QFontMetricsF metrics_{captionFont(false)};
};

}  // namespace

FigureIndex::FigureIndex(const host::NetworkModel& model, const NetworkIndex& index, const Drawing& drawing) {
    std::vector<int> bars(model.nodes.size(), -1);
    for (std::size_t f = 0; f < drawing.figures.size(); ++f) {
        const Figure& figure = drawing.figures[f];
        byKind_[int(figure.kind)].insert(nameOf(model, index, figure), static_cast<int>(f));
        if (figure.kind == Kind::Bar) bars[figure.index] = static_cast<int>(f);
    }
    // Every node that a bar stands for leads to it.
    for (std::size_t n = 0; n < model.nodes.size(); ++n)
        if (const int bar = index.bar(static_cast<int>(n)); bar >= 0)
            byKind_[int(Kind::Bar)].insert(QString::fromStdString(model.nodes[n].name), bars[bar]);
}

int FigureIndex::any(const QString& name) const {
    for (const auto& kind : byKind_)
        if (const auto found = kind.find(name); found != kind.end()) return *found;
    return -1;
}

std::vector<Label> readLabels(dbDatabase& realTime, const host::NetworkModel& model, const FigureIndex& figures,
                              const Drawing& drawing) {
    Placement placement(model, figures, drawing);
    dbCursor<norvdb::addition_graph> cursor(realTime);
    cursor.select();
    while (cursor.next())
        if (cursor->flags & live) placement.add(*cursor.get());
    return std::move(placement.labels);
}

void paintLabels(QPainter& painter, const std::vector<Label>& labels, const Palette& palette, const QRectF& area,
                 const Detail& detail) {
    const double scale = detail.scale;
    const bool readable = detail.exact || scale >= readableFrom;
    const QFontMetricsF metrics(captionFont(false));
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setFont(captionFont(false));
    for (const Label& label : labels) {
        if (!label.box.adjusted(-80, -80, 80, 80).intersects(area)) continue;
        painter.setPen(QPen(palette.labelEdge, 1));
        if (readable) painter.drawLine(label.anchor, label.box.center());
    }
    for (const Label& label : labels) {
        if (!label.box.adjusted(-80, -80, 80, 80).intersects(area)) continue;
        painter.setPen(QPen(palette.labelEdge, readable ? 1 : 1 / scale));
        painter.setBrush(readable ? palette.label : palette.highlight);
        if (!readable) {
            painter.drawEllipse(label.anchor, markRadius / scale, markRadius / scale);
            continue;
        }
        painter.drawRoundedRect(label.box, 3, 3);
        painter.setPen(palette.labelText);
        QPointF baseLine = label.box.topLeft() + QPointF(4, 2 + metrics.ascent());
        for (const QString& line : label.text.split('\n')) {
            paintText(painter, baseLine, line, detail.outlines);
            baseLine.ry() += metrics.lineSpacing();
        }
    }
}

int labelAt(const std::vector<Label>& labels, const QPointF& point, double scale) {
    for (std::size_t k = labels.size(); k-- > 0;) {
        const QPointF away = point - labels[k].anchor;
        const double reach = (markRadius + 1) / scale;
        const bool hit =
            scale >= readableFrom ? labels[k].box.contains(point) : QPointF::dotProduct(away, away) <= reach * reach;
        if (hit) return static_cast<int>(k);
    }
    return -1;
}

}  // namespace diagram
