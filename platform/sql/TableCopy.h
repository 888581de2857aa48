#pragma once

#include <QString>
#include <QVector>

namespace sql {

/// A table and its copy in the same database.
struct TableCopy {
    QString connection;  ///< empty: the default connection
    QString base;
    QString copy;
};

/// Makes a copy that is not there: the base's columns, keys and rows, in the base's order.
bool makeCopy(const TableCopy& copy);
[[nodiscard]] bool allExist(const QVector<TableCopy>& copies);
/// Takes all bases back from their copies, in one transaction per connection. Touches nothing unless every copy is
/// there. AUTO_INCREMENT counters go back with the rows; not inside a transaction of the caller, where they stay.
bool restoreCopies(const QVector<TableCopy>& copies);
/// Drops those that are there.
bool dropCopies(const QVector<TableCopy>& copies);

}  // namespace sql
