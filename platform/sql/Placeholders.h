#pragma once

#include <QString>
#include <QStringList>

namespace sql {

/// "?,?,?" for as many values of an IN list.
inline QString placeholders(qsizetype count) { return QStringList(count, "?").join(','); }

}  // namespace sql
