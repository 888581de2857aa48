#include "programs/frame/RuleLibrary.h"

#include <QDir>
#include <QFile>
#include <algorithm>

#include "platform/host/Text.h"
#include "platform/import/CsvTable.h"
#include "platform/import/Import.h"
#include "platform/sql/Sql.h"
#include "programs/frame/TableDefinitions.h"

namespace {

bool isNumberType(const QString& type) { return !type.startsWith("char"); }

struct TableText {
    const tables::Definition* table = nullptr;
    QString file;
    import::CsvTable content;
};

[[noreturn]] void fail(const TableText& text, int line, const QString& what) {
    throw import::ImportError(text.file.toStdString(), line, what.toStdString());
}

TableText readTable(const QString& folder, const tables::Definition& table) {
    TableText text{&table, QDir(folder).filePath(table.layout.name + ".csv"), {}};
    QFile file(text.file);
    if (!file.open(QIODevice::ReadOnly)) fail(text, 0, Text::tr("规则库文件打不开"));
    text.content = import::parseCsv(file.readAll().toStdString(), text.file.toStdString());
    return text;
}

QStringList columnsOf(const TableText& text) {
    QStringList columns;
    for (const std::string& cell : text.content.header.cells) columns << QString::fromStdString(cell);
    for (const QString& column : columns)
        if (!text.table->layout.columnNames().contains(column, Qt::CaseInsensitive))
            fail(text, text.content.header.line, Text::tr("没有这一列：") + column);
    for (const sql::Column& column : text.table->layout.columns)
        if (!columns.contains(column.name, Qt::CaseInsensitive))
            fail(text, text.content.header.line, Text::tr("缺少列：") + column.name);
    return columns;
}

int charLength(const QString& type) { return type.mid(5, type.indexOf(')') - 5).toInt(); }

QVariant valueOf(const TableText& text, const sql::Column& column, const QString& cell, int line) {
    if (isNumberType(column.type)) {
        bool ok = false;
        const double value = cell.toDouble(&ok);
        if (!ok) fail(text, line, column.name + Text::tr(" 不是数值：") + cell);
        return value;
    }
    const QString reason = sql::whyNotStorable(cell, charLength(column.type));
    if (!reason.isEmpty()) fail(text, line, column.name + "：" + reason);
    return cell;
}

QVector<QVariantList> rowsOf(const TableText& text, const QStringList& columns) {
    QVector<const sql::Column*> layout;
    for (const QString& name : columns)
        layout << &*std::find_if(text.table->layout.columns.begin(), text.table->layout.columns.end(),
                                 [&](const sql::Column& c) { return c.name.compare(name, Qt::CaseInsensitive) == 0; });
    QVector<QVariantList> rows;
    for (const import::CsvRecord& record : text.content.records) {
        QVariantList row;
        for (int i = 0; i < layout.size(); ++i)
            row << valueOf(text, *layout[i], QString::fromStdString(record.cells[static_cast<size_t>(i)]), record.line);
        rows << row;
    }
    return rows;
}

bool fill(const QVector<TableText>& texts, const QString& connection) {
    sql::Transaction transaction(connection);
    for (const TableText& text : texts) {
        const QStringList columns = columnsOf(text);
        if (!sql::Query(connection).exec("DELETE FROM " + text.table->layout.name)) return false;
        if (!sql::insertRows(connection, text.table->layout.name, columns, rowsOf(text, columns))) return false;
    }
    return transaction.commit();
}

}  // namespace

bool RuleLibrary::load(const QString& folder, const QString& connection, QString* error) {
    try {
        QVector<TableText> texts;
        for (const tables::Definition& table : tables::definitions())
            if (table.group == tables::Group::Rule) texts << readTable(folder, table);
        if (tables::CreateRuleTables(connection) && fill(texts, connection)) return true;
        *error = Text::tr("规则库没有装入：数据库拒绝了规则表");
    } catch (const import::ImportError& refused) {
        *error = QString::fromUtf8(refused.what());
    }
    return false;
}
