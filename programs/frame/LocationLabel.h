#pragma once

#include <QString>

/// Where a relay stands, as tables show it: name and kind of the element, and the node at the relay's end for lines and
/// transformers. \param rType  element code \param side  1 the I end, else the J end
QString locationLabel(int rType, const QString& idName, const QString& iName, const QString& jName, int side);
