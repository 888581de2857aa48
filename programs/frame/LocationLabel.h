#pragma once

#include <QString>

/// Where a relay stands, as the diagram shows it: name and kind of the element, and the node at the relay's end for
/// lines and transformers; empty for a kind of element without words of its own.
/// \param rType  element code \param side  1 the I end, else the J end
QString knownLocationLabel(int rType, const QString& idName, const QString& iName, const QString& jName, int side);

/// The same for tables, which show the element's name where there are no words for its kind.
QString locationLabel(int rType, const QString& idName, const QString& iName, const QString& jName, int side);
