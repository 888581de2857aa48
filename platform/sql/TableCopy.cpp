#include "platform/sql/TableCopy.h"

#include <algorithm>
#include <list>
#include <optional>

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

/// Names of those copies that are there; nothing when the server does not say.
std::optional<QStringList> existing(const QString& connection, const QVector<TableCopy>& copies) {
    QVariantList names;
    for (const TableCopy& copy : copies) names << copy.copy;
    QStringList found;
    Query query(connection);
    if (!query.exec(
            "SELECT TABLE_NAME FROM information_schema.TABLES WHERE TABLE_SCHEMA=DATABASE() AND TABLE_NAME IN (" +
                QStringList(names.size(), QStringLiteral("?")).join(',') + ')',
            names))
        return std::nullopt;
    while (query.next()) found << query.text(0);
    return found;
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
    return query.exec("CREATE TABLE " + quotedName(copy.copy) + " LIKE " + quotedName(copy.base)) &&
           query.exec("INSERT INTO " + quotedName(copy.copy) + " SELECT * FROM " + quotedName(copy.base));
}

bool allExist(const QVector<TableCopy>& copies) {
    const QStringList connections = connectionsOf(copies);
    return std::all_of(connections.begin(), connections.end(), [&](const QString& connection) {
        const QVector<TableCopy> some = onConnection(copies, connection);
        const auto found = existing(connection, some);
        return found && found->size() == some.size();
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

// A DROP of a table that is not there still costs several writes of the server's log through to the disk.
bool dropCopies(const QVector<TableCopy>& copies) {
    bool all = true;
    for (const QString& connection : connectionsOf(copies)) {
        const auto found = existing(connection, onConnection(copies, connection));
        QStringList names;
        for (const QString& name : found.value_or(QStringList())) names << quotedName(name);
        all &= found && (names.isEmpty() || Query(connection).exec("DROP TABLE IF EXISTS " + names.join(',')));
    }
    return all;
}

}  // namespace sql
