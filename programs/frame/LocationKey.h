#pragma once

#include <QString>

/// A place in the network as one text, for look-ups in memory. Names hold no control characters.
/// \param side  end of the element; 0 where the end does not matter
inline QString locationKey(const QString& idName, const QString& iName, const QString& jName, int side = 0) {
    return idName + '\n' + iName + '\n' + jName + '\n' + QString::number(side);
}
