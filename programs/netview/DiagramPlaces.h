#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/host/ui/CHandleGraph.h"
#include "programs/frame/Location.h"

class dbDatabase;

/// Where relays can stand, found from what a gesture on the diagram hit.
struct DiagramPlace {
    Location at;
    int rType = -1;  ///< element code; -1 there is no such place
};

/// The location of a label of this module; empty names and no element code when the record is gone. \param recid number
/// of the label
DiagramPlace placeOfLabel(dbDatabase& realTime, int recid);

/// The location of an element of the base network. \return nothing for an element that carries no relays, or with a
/// warning in the dock when the element's data do not lead to one
std::optional<DiagramPlace> placeOfElement(const CHandleGraphInfo& element);

/// The coordination of the relays at a location, as far as their types are shown on labels: lines for the dock, by
/// relay in label order, by part and partner.
QStringList coordinationLines(const DiagramPlace& place);
