#pragma once

#include <QPolygonF>
#include <QRect>
#include <QRectF>
#include <QString>
#include <vector>

/// The single-line diagram as geometry, without widgets. Lengths are scene units: one pixel at zoom 1, y downwards.
namespace diagram {

/// The vector of host::NetworkModel that an index counts in. Bar and Point both count nodes.
enum class Kind { Bar, Point, Line, Transformer2, Transformer3, Switch, Generator, Shunt, Load };

enum class Glyph {
    None,
    TNode,
    Breaker,
    Disconnector,
    Transformer2,
    Transformer3,
    Generator,
    Motor,
    Feeder,
    Load,
    Capacitor,
    Reactor
};

/// A stretch of connection at one voltage.
struct Leg {
    QPolygonF path;
    double kv = 0;
};

/// One element as it is drawn.
struct Figure {
    Figure() = default;
    Figure(Kind of, int at, Glyph sign = Glyph::None) : kind(of), index(at), glyph(sign) {}

    Kind kind = Kind::Bar;
    int index = 0;
    Glyph glyph = Glyph::None;
    /// From the I end to the J end; of a three-winding transformer from each node to the symbol.
    std::vector<Leg> legs;
    QPointF centre;         ///< of the symbol
    double angle = 0;       ///< of the symbol, degrees clockwise; 0: from top to bottom
    bool mirrored = false;  ///< the symbol's left and right change places
    bool off = false;       ///< out of service
    bool open = false;      ///< of a switch
    bool openAtI = false, openAtJ = false;

    [[nodiscard]] QRectF bounds() const;
};

/// The outline of a station.
struct Frame {
    QString name;
    QRectF box;
    double kv = 0;  ///< highest in it
};

/// A text of the network itself: the name of a bus, an element, a station.
struct Caption {
    QString text;
    QPointF at;             ///< left end of the base line
    QRectF box;             ///< empty: there is no room for it
    int figure = -1;        ///< -1: a station
    double importance = 0;  ///< when there is room for few of them
};

/// Figures by place: squares of one size, each with the figures that touch it.
class PlaceIndex {
  public:
    void build(const std::vector<Figure>& figures, const QRectF& bounds);
    /// Positions of the figures whose bounds meet a rectangle, ascending.
    [[nodiscard]] std::vector<int> within(const QRectF& area) const;

  private:
    [[nodiscard]] QRect cells(const QRectF& area) const;
    void enter(int figure, const QPointF& centre);
    void enter(int figure, const QPointF& from, const QPointF& to);
    void add(int column, int row, int figure);

    QRectF bounds_;
    double side_ = 1;
    int columns_ = 0, rows_ = 0;
    std::vector<std::vector<int>> cells_;
    std::vector<QRectF> boxes_;
};

struct Drawing {
    std::vector<Figure> figures;
    std::vector<Frame> frames;
    std::vector<Caption> captions;
    QRectF bounds;
    PlaceIndex places;
    int leftOut = 0;  ///< elements not drawn, since a node they name is missing
};

/// What lies under a point.
struct Hit {
    int figure = -1;  ///< -1: nothing
    int winding = 0;  ///< of a three-winding transformer: 1, 2 or 3
    int percent = 0;  ///< along the element from its I end
};

/// The nearest element within `reach`: a symbol, else the bar or node right there, else a connection, else a bar.
Hit hitAt(const Drawing& drawing, const QPointF& point, double reach);

/// Distance of a point from an element's connections.
double distanceTo(const Figure& figure, const QPointF& point);

/// A point of an element by its place from the I end; of a three-winding transformer with `winding` on that winding's
/// leg.
QPointF pointAlong(const Figure& figure, int percent, int winding = 0);

}  // namespace diagram
