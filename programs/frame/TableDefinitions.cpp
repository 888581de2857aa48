#include "programs/frame/TableDefinitions.h"

#include <QHash>
#include <algorithm>

#include "programs/frame/TableNames.h"
#include "programs/frame/TableSource.h"

namespace tables {

namespace {

// Removes a word at the end of the type and says whether it was there.
bool takeEnd(QString& type, const QString& end) {
    if (!type.endsWith(end)) return false;
    type.chop(end.size());
    return true;
}

sql::Column columnOf(const QString& text) {
    const auto blank = text.indexOf(' ');
    sql::Column column{text.left(blank), text.mid(blank + 1)};
    column.autoIncrement = takeEnd(column.type, " AUTO_INCREMENT");
    column.nullable = takeEnd(column.type, " NULL");
    const auto given = column.type.indexOf(" DEFAULT ");
    if (given < 0) return column;
    column.defaultValue = column.type.mid(given + 9);
    column.type.truncate(given);
    return column;
}

Definition definitionOf(const TableSource& source, Group group) {
    Definition definition{source.code, group, {QString::fromLatin1(source.name)}, {}};
    for (const QString& column : QString::fromLatin1(source.columns).split(", "))
        definition.layout.columns << columnOf(column);
    const QString keys = QString::fromLatin1(source.keys);
    if (!keys.isEmpty()) definition.layout.keys << keys;
    definition.copyKeys = source.copyKeys ? QString::fromLatin1(source.copyKeys) : keys;
    return definition;
}

QVector<Definition> readSources() {
    QVector<Definition> all;
    for (const TableSource& source : ruleSources()) all << definitionOf(source, Group::Rule);
    for (const TableSource& source : relaySources()) all << definitionOf(source, Group::Relay);
    for (const TableSource& source : caseSources()) all << definitionOf(source, Group::Case);
    for (const TableSource& source : workingSources()) all << definitionOf(source, Group::Working);
    return all;
}

QHash<int, const Definition*> indexByCode() {
    QHash<int, const Definition*> index;
    for (const Definition& definition : definitions()) {
        index[definition.code] = &definition;
        if (definition.code < 200) index[definition.code + copyOffset] = &definition;
    }
    return index;
}

}  // namespace

const QVector<Definition>& definitions() {
    static const QVector<Definition> all = readSources();
    return all;
}

const Definition* ofCode(int code) {
    static const QHash<int, const Definition*> index = indexByCode();
    return index.value(code, nullptr);
}

const Definition* ofName(const QString& name) {
    const auto& all = definitions();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Definition& table) { return table.layout.name == name; });
    return found == all.end() ? nullptr : &*found;
}

bool isCopyCode(int code) {
    const Definition* definition = ofCode(code);
    return definition && definition->code != code;
}

const QString& connectionOf(Group group) {
    switch (group) {
        case Group::Rule:
            return ruleConnection;
        case Group::Relay:
            return relayConnection;
        case Group::Case:
            return caseConnection;
        default:
            return workingConnection;
    }
}

QString connectionOfCode(int code) {
    const Definition* definition = ofCode(code);
    if (!definition) return {};
    // the coordination relations of a case and the copies of working tables are made with the relay tables
    const bool withRelays = definition->layout.name == "RLY_CASERLYCOP" ||
                            (definition->group == Group::Working && definition->code != code);
    return withRelays ? relayConnection : connectionOf(definition->group);
}

QString creationText(const QString& name, int code) {
    const Definition* definition = ofCode(code);
    if (!definition) return {};
    const QString head = "CREATE TABLE IF NOT EXISTS " + sql::quotedName(name) + ' ';
    if (!isCopyCode(code)) return head + definition->layout.columnsText();
    const QString keys = definition->copyKeys.isEmpty() ? QString() : '(' + definition->copyKeys + ')';
    return head + keys + "SELECT * FROM " + sql::quotedName(definition->layout.name);
}

bool CreateRuleTables(const QString& connection) {
    for (const Definition& definition : definitions())
        if (definition.group == Group::Rule &&
            !sql::Query(connection).exec(creationText(definition.layout.name, definition.code)))
            return false;
    return true;
}

}  // namespace tables
