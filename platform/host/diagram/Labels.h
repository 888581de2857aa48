#pragma once

#include <QHash>

#include "platform/host/diagram/ElementText.h"

class QPainter;
class dbDatabase;

namespace diagram {

struct Palette;
struct Detail;

/// One label on the diagram.
struct Label {
    QString text;
    QRectF box;      ///< in scene coordinates
    QPointF anchor;  ///< the place on the element
    int recid = 0;
    int figure = -1;
};

/// Element by the base network's name: what labels, states and searches go by.
class FigureIndex {
  public:
    FigureIndex() = default;
    FigureIndex(const host::NetworkModel& model, const NetworkIndex& index, const Drawing& drawing);
    /// \return position of the figure; -1 when there is none
    [[nodiscard]] int at(Kind kind, const QString& name) const { return byKind_[int(kind)].value(name, -1); }
    [[nodiscard]] int any(const QString& name) const;

  private:
    QHash<QString, int> byKind_[9];
};

/// The live labels of `addition_graph`, placed beside their elements so that they cover each other as little as
/// possible. Labels of elements that are not drawn are left out.
std::vector<Label> readLabels(dbDatabase& realTime, const host::NetworkModel& model, const FigureIndex& figures,
                              const Drawing& drawing);
/// Whole texts, or marks where they would be too small to read.
void paintLabels(QPainter& painter, const std::vector<Label>& labels, const Palette& palette, const QRectF& area,
                 const Detail& detail);
/// Position of the label under a point at this scale; -1: none.
int labelAt(const std::vector<Label>& labels, const QPointF& point, double scale);

/// Service and switching states of the case in the real-time tables. An element that the case lacks is out of service;
/// empty tables leave everything as it is.
void readStates(dbDatabase& realTime, const FigureIndex& figures, Drawing& drawing);

}  // namespace diagram
