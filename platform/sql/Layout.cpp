#include <optional>

#include "platform/sql/Sql.h"

namespace sql {

namespace {

constexpr int statementLimit = 4 << 20;

QString defaultOf(const Column& column) {
    if (!column.defaultValue.isEmpty()) return column.defaultValue;
    return column.type.startsWith("char") || column.type.startsWith("varchar") ? QStringLiteral("''")
                                                                               : QStringLiteral("0");
}

QString places(qsizetype count) { return '(' + QStringList(count, QStringLiteral("?")).join(',') + ')'; }

int weight(const QVariantList& row) {
    int sum = 0;
    for (const QVariant& value : row) sum += 16 + 4 * static_cast<int>(value.toString().size());
    return sum;
}

}  // namespace

QString quotedName(const QString& name) { return '`' + QString(name).replace('`', "``") + '`'; }

QString Column::definition() const {
    QString text = quotedName(name) + ' ' + type + (nullable ? "" : " NOT NULL");
    if (autoIncrement) return text + " AUTO_INCREMENT";
    if (nullable) return text + " DEFAULT NULL";
    return text + " DEFAULT " + defaultOf(*this);
}

QString Layout::columnsText() const {
    QStringList parts;
    for (const Column& column : columns) parts << column.definition();
    return '(' + (parts + keys).join(',') + ')';
}

QStringList Layout::columnNames() const {
    QStringList names;
    for (const Column& column : columns) names << column.name;
    return names;
}

namespace {

// One statement for as many rows as it holds, from `next` on.
bool insertSome(const QString& connection, const QString& head, qsizetype columns, const QVector<QVariantList>& rows,
                qsizetype& next) {
    QStringList groups;
    QVariantList values;
    for (int size = 0; next < rows.size() && (groups.isEmpty() || size < statementLimit); ++next) {
        groups << places(columns);
        values += rows[next];
        size += weight(rows[next]);
    }
    return Query(connection).exec(head + groups.join(','), values);
}

}  // namespace

bool insertRows(const QString& connection, const QString& table, const QStringList& columns,
                const QVector<QVariantList>& rows) {
    if (rows.isEmpty()) return true;
    QStringList quoted;
    for (const QString& column : columns) quoted << quotedName(column);
    const QString head = "INSERT INTO " + quotedName(table) + " (" + quoted.join(',') + ") VALUES";
    int total = 0;
    for (const QVariantList& row : rows) total += weight(row);
    std::optional<Transaction> whole;  // one statement is all or nothing by itself
    if (total >= statementLimit) whole.emplace(connection);
    for (qsizetype next = 0; next < rows.size();)
        if (!insertSome(connection, head, columns.size(), rows, next)) return false;
    return !whole || whole->commit();
}

}  // namespace sql
