#include "platform/host/diagram/DrawingPainter.h"

#include <QFont>
#include <QPainter>
#include <algorithm>
#include <map>

#include "platform/host/diagram/CaptionFont.h"
#include "platform/host/diagram/Symbols.h"

namespace diagram {

namespace {

constexpr double symbolsFrom = 0.3, signsFrom = 0.55;  ///< scales from which they can be told apart
constexpr double smallestText = 6.5;                   ///< pixels
constexpr double largestGrowth = 1.8;                  ///< of symbols below symbolsFrom
constexpr std::size_t fewFigures = 4000, fewSymbols = 1500;

class DrawingPainter {
  public:
    DrawingPainter(QPainter& painter, const host::NetworkModel& model, const Drawing& drawing, const Palette& palette,
                   const Detail& detail)
        : p_(painter), model_(model), drawing_(drawing), palette_(palette), detail_(detail) {
        exact_ = detail.exact;
    }

    void paint(const QRectF& area) {
        const std::vector<int> visible = drawing_.places.within(area);
        fine_ = exact_ || detail_.scale >= symbolsFrom || visible.size() < fewSymbols;
        p_.setRenderHint(QPainter::Antialiasing, fine_ || visible.size() < fewFigures);
        p_.setRenderHint(QPainter::TextAntialiasing, true);
        if (fine_) frames(area);
        connections(visible);
        fine_ ? symbols(visible) : dots(visible);
        const bool small = !exact_ && captionFont(false).pixelSize() * detail_.scale < smallestText;
        small ? overviewNames(area) : captions(area);
    }

  private:
    QColor colour(const Figure& f, double kv) const { return f.off ? palette_.off : palette_.level(kv); }

    void frames(const QRectF& area) {
        p_.setBrush(Qt::NoBrush);
        p_.setPen(QPen(palette_.frame, 1 / std::min(1.0, detail_.scale), Qt::DashLine));
        for (const Frame& f : drawing_.frames)
            if (f.box.intersects(area)) p_.drawRoundedRect(f.box, 6, 6);
    }

    /// Stretches of one look are drawn together.
    void connections(const std::vector<int>& visible) {
        std::map<std::pair<QRgb, int>, QList<QLineF>> plain, bars;
        for (int number : visible) {
            const Figure& f = drawing_.figures[number];
            if (f.kind == Kind::Point) continue;
            auto& into = f.kind == Kind::Bar ? bars : plain;
            for (std::size_t k = 0; k < f.legs.size(); ++k) collect(f, f.legs[k], into);
        }
        for (auto* layer : {&plain, &bars})
            for (const auto& [look, lines] : *layer) {
                p_.setPen(penFor(QColor::fromRgb(look.first), look.second, layer == &bars));
                p_.drawLines(lines);
            }
    }

    void collect(const Figure& f, const Leg& leg, std::map<std::pair<QRgb, int>, QList<QLineF>>& into) {
        const bool dashed = f.off || f.openAtI || f.openAtJ;
        QList<QLineF>& lines = into[{colour(f, leg.kv).rgb(), dashed && fine_}];
        if (!fine_ && f.glyph != Glyph::None && !leg.path.isEmpty()) lines.append(toSymbol(f, leg));
        for (qsizetype k = 0; k + 1 < leg.path.size(); ++k)
            if (fine_ || leg.path.size() == 2 || !isStub(leg.path[k], leg.path[k + 1]))
                lines.append({leg.path[k], leg.path[k + 1]});
    }

    /// Closes the gap that a symbol would fill.
    static QLineF toSymbol(const Figure& f, const Leg& leg) {
        const QLineF first(leg.path.first(), f.centre), last(leg.path.last(), f.centre);
        return first.length() < last.length() ? first : last;
    }

    bool isStub(const QPointF& a, const QPointF& b) const {
        return (std::abs(a.x() - b.x()) + std::abs(a.y() - b.y())) * detail_.scale < 1;
    }

    QPen penFor(const QColor& colour, bool dashed, bool bar) const {
        const double thin = bar ? 3.6 : 1.3;
        QPen pen(colour);
        pen.setStyle(dashed ? Qt::DashLine : Qt::SolidLine);
        pen.setCapStyle(Qt::FlatCap);
        if (fine_) {
            pen.setWidthF(exact_ ? thin : std::max(thin, (bar ? 2.2 : 1.0) / detail_.scale));
        } else {
            pen.setCosmetic(true);
            pen.setWidthF(bar ? 2 : 1);
        }
        return pen;
    }

    void symbols(const std::vector<int>& visible) {
        const double growth = exact_ ? 1 : std::clamp(symbolsFrom / detail_.scale, 1.0, largestGrowth);
        for (int number : visible) {
            const Figure& f = drawing_.figures[number];
            if (f.glyph == Glyph::None) continue;
            if (f.kind == Kind::Point && !exact_ && detail_.scale < signsFrom) continue;
            p_.save();
            p_.translate(f.centre);
            p_.rotate(f.angle);
            p_.scale(f.mirrored ? -growth : growth, growth);
            paintSymbol(p_, f.glyph, lookOf(f), f.angle);
            p_.restore();
        }
    }

    /// Transformers and generators where there are too many for symbols.
    void dots(const std::vector<int>& visible) {
        std::map<QRgb, QPolygonF> places;
        for (int number : visible) {
            const Figure& f = drawing_.figures[number];
            const bool told = f.kind == Kind::Transformer2 || f.kind == Kind::Transformer3 || f.kind == Kind::Generator;
            if (told && !f.legs.empty()) places[colour(f, f.legs.front().kv).rgb()].append(f.centre);
        }
        for (const auto& [look, points] : places) {
            QPen pen(QColor::fromRgb(look), 3, Qt::SolidLine, Qt::RoundCap);
            pen.setCosmetic(true);
            p_.setPen(pen);
            p_.drawPoints(points);
        }
    }

    SymbolLook lookOf(const Figure& f) const {
        SymbolLook look;
        look.background = palette_.background;
        look.open = f.open;
        look.width = exact_ ? 1.3 : std::clamp(1 / detail_.scale, 1.3, 1 / symbolsFrom);
        for (std::size_t k = 0; k < 3; ++k)
            look.colours[k] = colour(f, f.legs.empty() ? 0 : f.legs[std::min(k, f.legs.size() - 1)].kv);
        if (!exact_ && detail_.scale < signsFrom) return look;
        const auto sign = [](host::Grounding g) {
            return g == host::Grounding::Delta ? 'D' : g == host::Grounding::Grounded ? 'N' : 'Y';
        };
        if (f.kind == Kind::Transformer2) {
            look.windings[0] = sign(model_.transformers2[f.index].i.grounding);
            look.windings[1] = sign(model_.transformers2[f.index].j.grounding);
        } else if (f.kind == Kind::Transformer3) {
            for (int w = 0; w < 3; ++w) look.windings[w] = sign(model_.transformers3[f.index].winding[w].grounding);
        }
        return look;
    }

    void captions(const QRectF& area) {
        for (const bool station : {false, true}) {
            const QFont font = captionFont(station);
            if (!exact_ && font.pixelSize() * detail_.scale < smallestText) continue;
            p_.setFont(font);
            for (const Caption& c : drawing_.captions) {
                if ((c.figure < 0) != station || c.box.isEmpty() || !c.box.intersects(area)) continue;
                const bool bar = c.figure >= 0 && drawing_.figures[c.figure].kind == Kind::Bar;
                p_.setPen(station || bar ? palette_.text : palette_.quiet);
                paintText(p_, c.at, c.text, detail_.outlines);
            }
        }
    }

    /// At a small scale names keep their size on the screen, the most important first, as long as there is room.
    void overviewNames(const QRectF& area) {
        std::vector<const Caption*> order;
        for (const Caption& c : drawing_.captions)
            if (c.importance > 0 && area.contains(c.at)) order.push_back(&c);
        std::sort(order.begin(), order.end(), [](auto* a, auto* b) { return a->importance > b->importance; });
        p_.save();
        QFont font = captionFont(false);
        font.setPixelSize(12);
        p_.setFont(font);
        p_.setPen(palette_.text);
        const QTransform toDevice = p_.worldTransform();
        p_.setWorldTransform(QTransform());
        const QFontMetricsF metrics(font);
        std::vector<QRectF> taken;
        for (const Caption* c : order) {
            const QSizeF size(metrics.horizontalAdvance(c->text), metrics.height());
            const QRectF box(overviewCorner(*c, toDevice, size), size);
            const QRectF wide = box.adjusted(-6, -4, 6, 4);
            if (std::any_of(taken.begin(), taken.end(), [&](const QRectF& t) { return t.intersects(wide); })) continue;
            taken.push_back(box);
            QColor veil = palette_.background;
            veil.setAlpha(200);
            p_.fillRect(box.adjusted(-2, -1, 2, 1), veil);
            p_.drawText(box.topLeft() + QPointF(0, metrics.ascent()), c->text);
            if (taken.size() > 150) break;
        }
        p_.restore();
    }

    /// Above the middle of a bar; where a station's name stands.
    QPointF overviewCorner(const Caption& c, const QTransform& toDevice, const QSizeF& size) const {
        if (c.figure < 0) return toDevice.map(c.at) - QPointF(0, size.height() - 4);
        const QRectF bar = drawing_.figures[c.figure].bounds();
        return toDevice.map(QPointF(bar.center().x(), bar.top())) - QPointF(size.width() / 2, size.height() + 1);
    }

    QPainter& p_;
    const host::NetworkModel& model_;
    const Drawing& drawing_;
    const Palette& palette_;
    Detail detail_;
    bool exact_ = false, fine_ = true;
};

}  // namespace

void paintDrawing(QPainter& painter, const host::NetworkModel& model, const Drawing& drawing, const Palette& palette,
                  const QRectF& area, const Detail& detail) {
    DrawingPainter(painter, model, drawing, palette, detail).paint(area);
}

void paintHighlight(QPainter& painter, const Figure& figure, const Palette& palette, double scale, int strength) {
    QColor colour = palette.highlight;
    colour.setAlpha(strength);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(QPen(colour, std::max(7.0, 5 / scale), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    for (const Leg& leg : figure.legs) painter.drawPolyline(leg.path);
    if (figure.glyph == Glyph::None || figure.kind == Kind::Point) return;
    painter.setPen(QPen(colour, std::max(2.5, 2 / scale)));
    painter.drawEllipse(figure.centre, 19, 19);
}

}  // namespace diagram
