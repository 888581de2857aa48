#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "platform/host/diagram/CaptionFont.h"
#include "platform/host/diagram/ElementText.h"
#include "platform/host/diagram/Plan.h"
#include "platform/host/diagram/Room.h"

namespace diagram {

namespace {

class Captions {
  public:
    Captions(const host::NetworkModel& model, const NetworkIndex& index, Drawing& drawing)
        : model_(model), index_(index), drawing_(drawing), room_(drawing) {}

    void run() {
        for (const Frame& frame : drawing_.frames) stationName(frame);
        for (Kind kind : {Kind::Bar, Kind::Transformer3, Kind::Transformer2, Kind::Generator, Kind::Line, Kind::Shunt,
                          Kind::Load, Kind::Switch})
            for (std::size_t f = 0; f < drawing_.figures.size(); ++f)
                if (drawing_.figures[f].kind == kind) elementName(static_cast<int>(f));
    }

  private:
    void stationName(const Frame& frame) {
        const QFontMetricsF metrics(captionFont(true));
        const QSizeF size(metrics.horizontalAdvance(frame.name), metrics.height());
        const QRectF box(frame.box.topLeft() - QPointF(0, size.height() + 2), size);
        Caption c{frame.name, box.topLeft() + QPointF(0, metrics.ascent()), box, -1, 1e4 + frame.kv};
        room_.take(box);
        drawing_.captions.push_back(c);
    }

    void elementName(int number) {
        const Figure& f = drawing_.figures[number];
        const QString text = nameOf(model_, index_, f);
        if (text.isEmpty()) return;
        const QSizeF size(small_.horizontalAdvance(text), small_.height());
        std::vector<QPointF> corners = f.kind == Kind::Bar ? besideBar(f, size) : besideSymbol(f, size);
        const auto box = room_.best(corners, size, number);
        Caption c{text, f.centre, {}, number, importance(f)};
        if (box) c.box = *box, c.at = box->topLeft() + QPointF(0, small_.ascent()), room_.take(*box);
        if (box || c.importance > 0) drawing_.captions.push_back(c);
    }

    /// A bus that no station's name stands for, by its voltage and width.
    double importance(const Figure& f) const {
        if (f.kind != Kind::Bar || !drawing_.frames.empty()) return 0;
        return f.legs[0].kv + f.bounds().width() / 1000;
    }

    static std::vector<QPointF> besideBar(const Figure& f, const QSizeF& s) {
        const QPointF left = f.legs[0].path.first(), right = f.legs[0].path.last();
        const double up = -s.height() - 2;
        if (left.x() == right.x())
            return {{left.x() - s.width() / 2, left.y() + up},
                    {left.x() - s.width() / 2, right.y() + 3},
                    {left.x() + 5, left.y() + up},
                    {left.x() - s.width() - 5, left.y() + up},
                    {left.x() + 5, right.y() + 3},
                    {left.x() - s.width() - 5, right.y() + 3}};
        return {{left.x() - s.width() - 5, left.y() - s.height() / 2},
                {right.x() + 5, right.y() - s.height() / 2},
                {left.x(), left.y() + up},
                {right.x() - s.width(), right.y() + up},
                {left.x(), left.y() + 3},
                {right.x() - s.width(), right.y() + 3},
                {left.x() - s.width() - 5, left.y() + up},
                {right.x() + 5, right.y() + up},
                {left.x() - s.width() - 5, left.y() + 3},
                {right.x() + 5, right.y() + 3}};
    }

    static std::vector<QPointF> besideSymbol(const Figure& f, const QSizeF& s) {
        const double radius = f.kind == Kind::Line                                           ? 3
                              : f.kind == Kind::Switch                                       ? 8
                              : f.kind == Kind::Transformer2 || f.kind == Kind::Transformer3 ? 18
                                                                                             : 12;
        const QPointF c = f.centre;
        return {{c.x() + radius, c.y() - s.height() / 2},
                {c.x() - radius - s.width(), c.y() - s.height() / 2},
                {c.x() - s.width() / 2, c.y() + radius},
                {c.x() - s.width() / 2, c.y() - radius - s.height()},
                {c.x() + radius, c.y() + radius / 2},
                {c.x() + radius, c.y() - s.height() - radius / 2},
                {c.x() - radius - s.width(), c.y() + radius / 2},
                {c.x() - radius - s.width(), c.y() - s.height() - radius / 2}};
    }

    const host::NetworkModel& model_;
    const NetworkIndex& index_;
    Drawing& drawing_;
    Room room_;
    QFontMetricsF small_{captionFont(false)};
};

}  // namespace

void placeCaptions(const host::NetworkModel& model, const NetworkIndex& index, Drawing& drawing) {
    drawing.captions.clear();
    Captions(model, index, drawing).run();
}

}  // namespace diagram
