#include <optional>

#include "platform/sql/Escape.h"
#include "platform/sql/Session.h"
#include "platform/sql/Sql.h"

namespace sql {

namespace {

constexpr qsizetype statementLimit = 1 << 20;  // characters

QString defaultOf(const Column& column) {
    if (!column.defaultValue.isEmpty()) return column.defaultValue;
    return column.type.startsWith("char") || column.type.startsWith("varchar") ? QStringLiteral("''")
                                                                               : QStringLiteral("0");
}

}  // namespace

QString quotedName(const QString& name) { return '`' + QString(name).replace('`', "``") + '`'; }

QString numberList(const QVector<int>& numbers) {
    if (numbers.isEmpty()) return QStringLiteral("-1");
    QStringList texts;
    for (const int number : numbers) texts << QString::number(number);
    return texts.join(',');
}

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

QString places(qsizetype count) { return '(' + QStringList(count, QStringLiteral("?")).join(',') + ')'; }

/// The values of a row as they stand in a statement; empty when one of them cannot stand there.
QString groupOf(const QSqlDriver& driver, const QVariantList& row) {
    QString group;
    for (const QVariant& value : row) {
        const auto text = literal(driver, value);
        if (!text) return {};
        group += (group.isEmpty() ? '(' : ',') + *text;
    }
    return group + ')';
}

/// The statements that insert the rows; fewer rows than given when one of them cannot be written.
QStringList insertTexts(const QSqlDriver& driver, const QString& head, const QVector<QVariantList>& rows,
                        qsizetype* written) {
    QStringList texts;
    for (*written = 0; *written < rows.size(); ++*written) {
        const QString group = groupOf(driver, rows[*written]);
        if (group.isEmpty()) return texts;
        if (texts.isEmpty() || texts.back().size() > statementLimit)
            texts << head + group;
        else
            texts.back() += ',' + group;
    }
    return texts;
}

}  // namespace

bool insertRows(const QString& connection, const QString& table, const QStringList& columns,
                const QVector<QVariantList>& rows) {
    if (rows.isEmpty()) return true;
    QStringList quoted;
    for (const QString& column : columns) quoted << quotedName(column);
    const QString head = "INSERT INTO " + quotedName(table) + " (" + quoted.join(',') + ") VALUES";
    const QSqlDriver* driver = Session(connection).database().driver();
    qsizetype written = 0;
    const QStringList texts = driver ? insertTexts(*driver, head, rows, &written) : QStringList();
    if (written < rows.size())  // fails, and tells why
        return Query(connection).exec(head + places(columns.size()), rows[written]);
    std::optional<Transaction> whole;  // one statement is all or nothing by itself
    if (texts.size() > 1) whole.emplace(connection);
    for (const QString& text : texts)
        if (!Query(connection).exec(text)) return false;
    return !whole || whole->commit();
}

}  // namespace sql
