#include <QSet>

#include "platform/host/Text.h"
#include "platform/server/Server.h"
#include "programs/frame/CRDatabase.h"
#include "programs/frame/Messages.h"
#include "programs/frame/TableNames.h"

using tables::Group;

namespace {

constexpr Group groups[] = {Group::Rule, Group::Relay, Group::Case, Group::Working};

QStringList oldConnections() {
    return {tables::oldRuleConnection, tables::oldRelayConnection, tables::oldCaseConnection,
            tables::oldWorkingConnection};
}

QStringList usualConnections() {
    return {tables::ruleConnection, tables::relayConnection, tables::caseConnection, tables::workingConnection};
}

QString databaseOf(const QString& project, Group group) {
    const QStringList suffixes{tables::ruleSuffix, tables::relaySuffix, tables::caseSuffix, tables::workingSuffix};
    return project + suffixes[static_cast<int>(group)];
}

void close(const QStringList& connections) {
    for (const QString& connection : connections) server::closeConnection(connection);
}

QSet<QString> tablesIn(const QString& connection) {
    QSet<QString> names;
    sql::Query query(connection);
    query.exec("SHOW TABLES");
    while (query.next()) names << query.text(0);
    return names;
}

// The new table has rows already where it was filled on creation.
bool copyRows(const QString& connection, const QString& target, const QString& source) {
    sql::Query query(connection);
    return query.exec("DELETE FROM " + target) && query.exec("INSERT INTO " + target + " SELECT * FROM " + source);
}

bool copyAndReport(const QString& connection, const QString& target, const QString& source, const QString& shown) {
    const bool done = copyRows(connection, target, source);
    if (done)
        ReportSuccess(Text::tr("另存数据表") + shown + Text::tr("成功!"), 0);
    else
        ReportError(Text::tr("另存数据表") + shown + Text::tr("失败!"), 1);
    return done;
}

bool failed(const QString& text) {
    ReportError(text, 1);
    return false;
}

}  // namespace

bool CRDatabase::ConnectProject(const QString& project, const QStringList& connections) {
    for (const Group group : groups)
        if (!ConnectDB(databaseOf(project, group), connections[static_cast<int>(group)], true)) return false;
    return true;
}

bool CRDatabase::CopyGroup(Group group, const QString& connection, const QString& from, const QString& to) {
    const QSet<QString> present = tablesIn(connection);
    const auto place = [](const QString& database, const QString& table) {
        return sql::quotedName(database) + '.' + sql::quotedName(table);
    };
    for (const tables::Definition& entry : entriesOf(group)) {
        const QString& name = entry.layout.name;
        // a project that was closed properly has neither working tables nor copies
        if (group == Group::Working && !present.contains(name)) continue;
        if (!copyAndReport(connection, place(to, name), place(from, name), name)) return false;
        if (group == Group::Working) continue;
        const QString copy = name + "_TEM";
        const QString& source = present.contains(copy) ? copy : name;
        if (!copyAndReport(connection, place(to, copy), place(from, source), copy)) return false;
    }
    return true;
}

bool CRDatabase::CopyProject(const QString& oldProject, const QString& newProject) {
    for (const tables::Definition& entry : entriesOf(Group::Rule))
        if (!BuildTable(entry.layout.name, entry.code, 0)) return false;
    if (!BuildNewTable(newProject) || !BuildTmpTb(newProject)) return false;
    for (const Group group : groups)
        if (!CopyGroup(group, oldConnections()[static_cast<int>(group)], databaseOf(oldProject, group),
                       databaseOf(newProject, group)))
            return false;
    return true;
}

bool CRDatabase::ReturnTo(const QString& oldProject, const QString& newProject) {
    DeleteDb(newProject);
    if (ConnectProject(oldProject, usualConnections())) {
        close(oldConnections());
        return false;
    }
    ReportError(Text::tr("不能转换回连接，致命错误，请重新启动程序！"), 0);
    DeleteTmpTb(tables::oldRuleConnection, tables::oldRelayConnection, tables::oldCaseConnection,
                tables::oldWorkingConnection);
    return false;
}

bool CRDatabase::SaveAsDb(const QString& oldProject, const QString& newProject) {
    if (oldProject == newProject) return failed(Text::tr("不能另存为同名工程"));
    if (!ConnectProject(oldProject, oldConnections())) {
        close(oldConnections());
        return failed(Text::tr("不能另存工程"));
    }
    const QStringList targets{databaseOf(newProject, Group::Rule), databaseOf(newProject, Group::Relay)};
    const bool copied = server::markDatabases(tables::oldRelayConnection, targets, false) &&
                        CopyProject(oldProject, newProject) &&
                        server::markDatabases(tables::oldRelayConnection, targets, true);
    if (!copied) {
        ReportError(Text::tr("另存工程失败"), 1);
        return ReturnTo(oldProject, newProject);
    }
    if (DeleteTmpTb(tables::oldRuleConnection, tables::oldRelayConnection, tables::oldCaseConnection,
                    tables::oldWorkingConnection))
        ReportSuccess(Text::tr("另存工程成功"), 0);
    else
        ReportError(Text::tr("不能关闭旧工程的数据库"), 1);
    return true;
}
