#pragma once

#include <QIcon>
#include <QString>

namespace host {

/// A line icon of the resources, "prev" for ":/morvane/icons/prev.svg": drawn anew for every size and screen, in the
/// text colour of the palette in force, so that it suits light and dark.
QIcon icon(const QString& name);
/// The same from any file or resource in which "currentColor" stands for the colour.
QIcon lineIcon(const QString& file);

}  // namespace host
