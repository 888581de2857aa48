#pragma once

#include <QSqlDriver>
#include <QString>
#include <QVariant>
#include <optional>

namespace sql {

/// A value as it stands in the text of a statement: text escaped by the driver, a null as NULL, a double in its
/// shortest form that reads back equal. Bytes that are UTF-8 count as text, as the driver gives BINARY columns. \return
/// nothing for a number that is not finite
std::optional<QString> literal(const QSqlDriver& driver, const QVariant& value);

/// Puts the values in the places of the "?" that stand outside quotes.
/// \return nothing, with the reason in `error`, when a value cannot be written or their count is wrong
std::optional<QString> withValues(const QSqlDriver& driver, const QString& text, const QVariantList& values,
                                  QString* error);

}  // namespace sql
