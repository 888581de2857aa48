#include "programs/frame/CRDatabase.h"

#include <QSqlDatabase>
#include <algorithm>

#include "platform/host/Text.h"
#include "platform/server/Server.h"
#include "programs/frame/Messages.h"
#include "programs/frame/TableNames.h"

using tables::Group;

CRDatabase::CRDatabase(const QString& driver, const QString& user, const QString& password, const QString& host)
    : entries_(tables::definitions()), driver_(driver), user_(user), password_(password), host_(host) {}

CRDatabase::CRDatabase(const CRDatabase& other)
    : driver_(other.driver_), user_(other.user_), password_(other.password_), host_(other.host_) {}

CRDatabase::Entries CRDatabase::entriesOf(Group group) const {
    Entries some;
    for (const tables::Definition& entry : entries_)
        if (entry.group == group) some << entry;
    return some;
}

bool CRDatabase::Open(const QString& dbName, const QString& connection, QString* reason) {
    return server::openConnection(driver_, dbName, connection, user_, password_, host_, reason);
}

bool CRDatabase::ConnectDB(const QString& dbName, const QString& connection, bool openExisting) {
    if (!server::hasDriver(driver_)) {
        ReportError(Text::tr("不能连接到数据库") + connection, 1);
        return false;
    }
    if (!openExisting) return CreateAndConnect(dbName, connection);
    QString reason;
    if (!Open(dbName, connection, &reason)) {
        ReportError(Text::tr("打开数据库") + dbName + Text::tr("失败: "), 0);
        ReportError(reason, 0);
        return false;
    }
    ReportSuccess(Text::tr("与数据库") + dbName + Text::tr("连接成功!"), 0);
    return true;
}

bool CRDatabase::CreateAndConnect(const QString& dbName, const QString& connection) {
    server::closeConnection(connection);
    if (!QSqlDatabase::contains(tables::serverConnection)) {
        ReportError(Text::tr("没有建立与MYSQL库的连接"), 1);
        return false;
    }
    sql::Query query(tables::serverConnection);
    const QString name = sql::quotedName(dbName);
    if (!query.exec("DROP DATABASE IF EXISTS " + name) ||
        !query.exec("CREATE DATABASE " + name + server::databaseOptions())) {
        ReportError(Text::tr("创建数据库") + dbName + Text::tr("失败"), 1);
        return false;
    }
    ReportSuccess(Text::tr("创建数据库") + dbName + Text::tr("成功"), 0);
    QString reason;
    if (Open(dbName, connection, &reason)) return true;
    ReportError(Text::tr("打开数据库") + dbName + Text::tr("失败: "), 0);
    ReportError(reason, 0);
    return false;
}

bool CRDatabase::ConnectToBaseDb(const QString& name) {
    return ConnectDB(name + tables::relaySuffix, tables::relayConnection, true);
}

namespace {

bool drop(const QString& name, int code) {
    const QString connection = tables::connectionOfCode(code);
    if (connection.isEmpty()) ReportError(Text::tr("无法确认的表"), 1);
    if (!connection.isEmpty() && sql::Query(connection).exec("DROP TABLE IF EXISTS " + sql::quotedName(name)))
        return true;
    ReportError(Text::tr("无法删除已经存在的表") + name + Text::tr("不能执行创建表操作"), 1);
    return false;
}

}  // namespace

bool CRDatabase::BuildTable(const QString& name, int code, int dropFirst) {
    if (dropFirst == 1 && !drop(name, code)) return false;
    const QString statement = tables::creationText(name, code);
    if (statement.isEmpty()) ReportError(name + Text::tr("表没有定义"), 1);
    if (!statement.isEmpty() && sql::Query(tables::connectionOfCode(code)).exec(statement)) return true;
    ReportError(name + Text::tr("表创建失败********************"), 1);
    return false;
}

bool CRDatabase::BuildNewTable(const QString&) {
    for (const tables::Definition& entry : std::as_const(entries_)) {
        if (entry.group == Group::Rule || BuildTable(entry.layout.name, entry.code, 0)) continue;
        ReportError(Text::tr("创建数据表失败"), 1);
        return false;
    }
    return SeedDisplayTable();
}

// Every setting of every relay type gets a display number, counted within its type; nothing is shown yet.
bool CRDatabase::SeedDisplayTable() {
    sql::Query display(tables::relayConnection);
    if (!display.exec("SELECT * FROM RLY_RLYDSP")) return false;
    if (display.size() > 0) return true;
    sql::Query types(tables::ruleConnection);
    if (!types.exec("SELECT RTypeNo,CDz,DzNo,RTypeCode,DspCDz FROM RTYPE ORDER BY RTypeNo,DzNo ASC")) return true;
    QVector<QVariantList> rows;
    int type = -1, number = 0;
    while (types.next()) {
        number = types.number(0) == type ? number + 1 : 1;
        type = types.number(0);
        rows << QVariantList{0, 0, 0, type, number, types.text(1), types.text(3), 0, types.text(4)};
    }
    return sql::insertRows(
        tables::relayConnection, "RLY_RLYDSP",
        {"AllDsp", "RlyAss", "RlyDspNo", "RTypeNo", "DzDspNo", "CDz", "RTypeCode", "RlyLoc", "DspDz"}, rows);
}

bool CRDatabase::BuildTmpTb(const QString&) {
    for (const tables::Definition& entry : std::as_const(entries_)) {
        const bool built = entry.group == Group::Working
                               ? BuildTable(entry.layout.name, entry.code, 1)
                               : BuildTable(entry.layout.name + "_TEM", entry.code + tables::copyOffset, 1);
        if (!built) return false;
    }
    return true;
}

bool CRDatabase::BuildTmpTbDat(const QString&) { return true; }

namespace {

bool report(bool done, const QString& text, const QString& good, const QString& bad) {
    if (done)
        ReportSuccess(text + good, 0);
    else
        ReportError(text + bad, 1);
    return done;
}

}  // namespace

bool CRDatabase::DeleteTmpTb(const QString& rule, const QString& relay, const QString& cases, const QString& working) {
    const QStringList connections{rule, relay, cases, working};
    if (std::none_of(connections.begin(), connections.end(),
                     [](const QString& connection) { return QSqlDatabase::contains(connection); })) {
        ReportError(Text::tr("数据库连接错误，不能删除临时表"), 1);
        return false;
    }
    bool all = true;
    for (const tables::Definition& entry : std::as_const(entries_)) {
        const QString ending = entry.group == Group::Working ? "" : "_TEM";
        sql::Query query(connections[static_cast<int>(entry.group)]);
        const bool done = query.exec("DROP TABLE IF EXISTS " + sql::quotedName(entry.layout.name + ending));
        const QString separator = ending.isEmpty() ? "" : " ";
        all &= report(done, Text::tr("删除临时数据表") + entry.layout.name + ending, separator + Text::tr("成功"),
                      separator + Text::tr("失败!"));
    }
    for (const QString& connection : connections) server::closeConnection(connection);
    return all;
}

bool CRDatabase::DeleteRLYTM() {
    if (!QSqlDatabase::contains(tables::workingConnection)) {
        ReportError(Text::tr("与RLYTM库的数据连接错误，无法删除RLYTM库中各表数据"), 1);
        return false;
    }
    for (const tables::Definition& entry : entriesOf(Group::Working)) {
        if (!sql::Query(tables::workingConnection).exec("TRUNCATE TABLE " + sql::quotedName(entry.layout.name))) {
            ReportError(Text::tr("无法删除RLYTM库中各表数据"), 1);
            return false;
        }
        ReportSuccess(Text::tr("删除") + entry.layout.name + Text::tr("表中数据"), 0);
    }
    return true;
}

bool CRDatabase::DeleteTMTabDat() {
    for (const tables::Definition& entry : std::as_const(entries_)) {
        if (entry.group == Group::Working) continue;
        sql::Query query(tables::connectionOf(entry.group));
        const bool done = query.exec("TRUNCATE TABLE " + sql::quotedName(entry.layout.name + "_TEM") + ' ');
        report(done, Text::tr("删除临时数据表") + entry.layout.name + Text::tr("_TEM 数据"), Text::tr("成功"),
               Text::tr("失败!"));
    }
    return true;
}

bool CRDatabase::DeleteDb(const QString& project) {
    for (const Group group : {Group::Rule, Group::Relay, Group::Case, Group::Working})
        server::closeConnection(tables::connectionOf(group));
    if (!QSqlDatabase::contains(tables::serverConnection) && !ConnectDB("mysql", tables::serverConnection, true)) {
        ReportError(Text::tr("建立与mysql库的连接失败，不能删除数据库"), 1);
        return false;
    }
    bool all = true;
    for (const QString& suffix : {tables::ruleSuffix, tables::relaySuffix, tables::caseSuffix, tables::workingSuffix}) {
        const QString name = project + suffix;
        const bool done = sql::Query(tables::serverConnection).exec("DROP DATABASE IF EXISTS " + sql::quotedName(name));
        all &= report(done, Text::tr("删除数据库") + name, "", Text::tr("失败"));
    }
    server::closeConnection(tables::serverConnection);
    return all;
}
