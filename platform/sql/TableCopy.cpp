#include "platform/sql/TableCopy.h"

#include <algorithm>
#include <list>

#include "platform/sql/Session.h"
#include "platform/sql/Sql.h"

namespace sql {

namespace {

QStringList connectionsOf(const QVector<TableCopy>& copies) {
    QStringList connections;
    for (const TableCopy& copy : copies) connections << copy.connection;
    connections.removeDuplicates();
    return connections;
}

QVector<TableCopy> onConnection(const QVector<TableCopy>& copies, const QString& connection) {
    QVector<TableCopy> some;
    std::copy_if(copies.begin(), copies.end(), std::back_inserter(some),
                 [&](const TableCopy& copy) { return copy.connection == connection; });
    return some;
}

bool takeBack(const TableCopy& copy) {
    Query query(copy.connection);
    return query.exec("DELETE FROM " + quotedName(copy.base)) &&
           query.exec("INSERT INTO " + quotedName(copy.base) + " SELECT * FROM " + quotedName(copy.copy));
}

// The rows that went had numbers that the next new row would leave out.
void resetCounters(const QVector<TableCopy>& copies, const QString& connection) {
    if (!Session(connection).isOutside()) return;
    QVariantList names;
    for (const TableCopy& copy : copies) names << copy.base;
    Query counted(connection);
    if (!counted.exec("SELECT TABLE_NAME FROM information_schema.TABLES WHERE TABLE_SCHEMA=DATABASE() AND"
                      " AUTO_INCREMENT IS NOT NULL AND TABLE_NAME IN (" +
                          QStringList(names.size(), QStringLiteral("?")).join(',') + ')',
                      names))
        return;
    while (counted.next()) Query(connection).exec("ALTER TABLE " + quotedName(counted.text(0)) + " AUTO_INCREMENT=1");
}

}  // namespace

bool makeCopy(const TableCopy& copy) {
    Query query(copy.connection);
    return query.exec("DROP TABLE IF EXISTS " + quotedName(copy.copy)) &&
           query.exec("CREATE TABLE " + quotedName(copy.copy) + " LIKE " + quotedName(copy.base)) &&
           query.exec("INSERT INTO " + quotedName(copy.copy) + " SELECT * FROM " + quotedName(copy.base));
}

bool allExist(const QVector<TableCopy>& copies) {
    const QStringList connections = connectionsOf(copies);
    return std::all_of(connections.begin(), connections.end(), [&](const QString& connection) {
        QVariantList names;
        for (const TableCopy& copy : onConnection(copies, connection)) names << copy.copy;
        return scalar(connection,
                      "SELECT COUNT(*) FROM information_schema.TABLES WHERE TABLE_SCHEMA=DATABASE() AND TABLE_NAME"
                      " IN (" +
                          QStringList(names.size(), QStringLiteral("?")).join(',') + ')',
                      names)
                   .toInt() == names.size();
    });
}

bool restoreCopies(const QVector<TableCopy>& copies) {
    if (!allExist(copies)) return false;
    const QStringList connections = connectionsOf(copies);
    std::list<Transaction> transactions;
    for (const QString& connection : connections) transactions.emplace_back(connection);
    if (!std::all_of(copies.begin(), copies.end(), takeBack)) return false;
    bool all = true;
    for (Transaction& transaction : transactions) all = all && transaction.commit();
    if (!all) return false;
    for (const QString& connection : connections) resetCounters(onConnection(copies, connection), connection);
    return true;
}

bool dropCopies(const QVector<TableCopy>& copies) {
    bool all = true;
    for (const QString& connection : connectionsOf(copies)) {
        QStringList names;
        for (const TableCopy& copy : onConnection(copies, connection)) names << quotedName(copy.copy);
        all &= Query(connection).exec("DROP TABLE IF EXISTS " + names.join(','));
    }
    return all;
}

}  // namespace sql
