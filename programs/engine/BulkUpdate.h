#pragma once

#include <QStringList>
#include <QVariant>
#include <QVector>

/// Updates existing rows of the default connection by their key, many in one statement.
/// \param columns  the key first, then the columns to set; columns not named must have defaults
/// \param rows     one value per column; keys without a row must not stand here
bool updateByKey(const QString& table, const QStringList& columns, const QVector<QVariantList>& rows);

/// `value` if a column double(13,6) can hold it, else 0 with `refused` set.
double storable(double value, bool& refused);
