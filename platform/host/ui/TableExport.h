#pragma once

#include <QString>
#include <QtGlobal>

class QTableView;

namespace host {

/// Role under which a model gives what a cell is outside of its table, a number where it shows the text of one; a
/// model without it gives what it shows.
inline constexpr int ExportRole = Qt::UserRole + 100;

}  // namespace host
