#pragma once

#include <QObject>
#include <QString>

class QMenu;

/// What a gesture on the diagram hit.
struct CHandleGraphInfo {
    QString name;      ///< the element's name in the base network; empty: no element
    int type = -1;     ///< 0 bus, 1 generator, 4 capacitor, 5 reactor, 6 line, 10 and 12 transformers, 13 breaker
    int winding = 0;   ///< of a three-winding transformer: 1, 2 or 3
    int percent = 0;   ///< place of the hit along the element
    int nodeKind = 0;  ///< of a bus: 0 it stands for a group of nodes, 1 and 3 a physical bus, else an ordinary node
    int recid = 0;     ///< of the label hit; below 1 when the gesture hit the element
};

/// What a module does with gestures on the diagram. The diagram hands over a click on a label, a double click on a
/// label or an element, and the menu of the right button before it is shown.
class CHandleGraph : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;
    virtual bool OnLabelClicked(const CHandleGraphInfo& info) = 0;
    virtual bool OnElementOpen(const CHandleGraphInfo& info) = 0;
    virtual void OnContextMenu(const CHandleGraphInfo& info, QMenu* menu) = 0;
    /// A gesture that none of the others takes.
    virtual bool OnHandleDefault() = 0;
};
