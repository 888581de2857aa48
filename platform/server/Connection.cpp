#include <pwd.h>
#include <unistd.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include "platform/server/EmbeddedServer.h"
#include "platform/server/Server.h"

namespace server {

namespace {

enum ServerError { CannotReachSocket = 2002, CannotReachHost = 2003, UnknownHost = 2005, AccessDenied = 1045 };

QString nameOf(const QString& connection) {
    return connection.isEmpty() ? QString::fromLatin1(QSqlDatabase::defaultConnection) : connection;
}

QString userOfSystem() {
    const passwd* user = getpwuid(geteuid());
    return user ? QString::fromLocal8Bit(user->pw_name) : QString();
}

QString reasonOf(const QSqlDatabase& database) {
    const QString where = database.hostName().isEmpty() ? QStringLiteral("本机") : database.hostName();
    switch (database.lastError().nativeErrorCode().toInt()) {
        case AccessDenied:
            return "数据库服务器" + where + "拒绝用户" + database.userName() + "登录，请检查用户名和密码";
        case CannotReachSocket:
        case CannotReachHost:
        case UnknownHost:
            return "不能连接到数据库服务器" + where + "：" + database.lastError().databaseText();
        default:
            return database.lastError().databaseText().isEmpty() ? database.lastError().driverText()
                                                                 : database.lastError().databaseText();
    }
}

QString markOf(bool complete) { return QString("morvane %1").arg(layoutVersion) + (complete ? "" : " filling"); }

// The mark as databaseOptions() writes it; a database of another origin has none and is let in.
bool isUsable(const QSqlDatabase& database, QString* error) {
    QSqlQuery query(database);
    if (!query.exec("SELECT SCHEMA_COMMENT FROM information_schema.SCHEMATA WHERE SCHEMA_NAME=DATABASE()")) return true;
    const QStringList mark = query.next() ? query.value(0).toString().split(' ') : QStringList();
    if (mark.value(0) != "morvane") return true;
    if (mark.value(1).toInt() > layoutVersion)
        *error = "数据库" + database.databaseName() + "由较新版本的程序建立（版本" + mark[1] + "），请升级程序";
    else if (mark.size() > 2)
        *error = "数据库" + database.databaseName() + "没有建立完整，不能打开，请删除后重新建立";
    else
        return true;
    return false;
}

bool openSession(QSqlDatabase& database, QString* error) {
    if (!database.open()) {
        *error = reasonOf(database);
        return false;
    }
    QSqlQuery query(database);
    if (!query.exec("SET SESSION sql_mode='STRICT_TRANS_TABLES,NO_ENGINE_SUBSTITUTION'")) {
        *error = query.lastError().databaseText();
        return false;
    }
    return database.databaseName().isEmpty() || isUsable(database, error);
}

QString pluginOf(const QString& driver) {
    return driver.isEmpty() || driver == "QMYSQL3" ? QStringLiteral("QMYSQL") : driver;
}

QSqlDatabase registerConnection(const QString& driver, const QString& connection) {
    closeConnection(connection);
    return QSqlDatabase::addDatabase(pluginOf(driver), nameOf(connection));
}

void describe(QSqlDatabase& database, const QString& name, const QString& user, const QString& password,
              const QString& host) {
    const Settings& settings = current();
    const bool bySocket = !settings.socket.isEmpty() && host.isEmpty();
    QString login = user.isEmpty() ? settings.user : user;
    if (login.isEmpty()) login = userOfSystem();
    database.setDatabaseName(name);
    database.setUserName(login);
    database.setPassword(password.isEmpty() ? settings.password : password);
    if (!bySocket) database.setHostName(host.isEmpty() ? settings.host : host);
    if (!bySocket) database.setPort(settings.port);
    database.setConnectOptions(bySocket ? "UNIX_SOCKET=" + settings.socket : QString("MYSQL_OPT_CONNECT_TIMEOUT=10"));
}

}  // namespace

bool openConnection(const QString& driver, const QString& database, const QString& connection, const QString& user,
                    const QString& password, const QString& host, QString* error) {
    bool opened = false;
    {
        QSqlDatabase handle = registerConnection(driver, connection);
        describe(handle, database, user, password, host);
        opened = openSession(handle, error);
    }
    if (!opened) closeConnection(connection);
    return opened;
}

bool reopenConnection(const QString& connection, QString* error) {
    QSqlDatabase handle = QSqlDatabase::database(nameOf(connection), false);
    handle.close();
    if (current().embedded && !EmbeddedServer(current().program).ensureRunning(error)) return false;
    if (openSession(handle, error)) return true;
    handle.close();
    return false;
}

void closeConnection(const QString& connection) {
    if (!QSqlDatabase::contains(nameOf(connection))) return;
    QSqlDatabase::database(nameOf(connection), false).close();
    QSqlDatabase::removeDatabase(nameOf(connection));
}

bool hasDriver(const QString& driver) { return QSqlDatabase::isDriverAvailable(pluginOf(driver)); }

QString databaseOptions() { return " CHARACTER SET gbk COMMENT '" + markOf(true) + '\''; }

bool markDatabases(const QString& connection, const QStringList& names, bool complete) {
    QSqlQuery query(QSqlDatabase::database(nameOf(connection), false));
    for (const QString& name : names)
        if (!query.exec("ALTER DATABASE `" + QString(name).replace('`', "``") + "` COMMENT '" + markOf(complete) +
                        '\''))
            return false;
    return true;
}

}  // namespace server
