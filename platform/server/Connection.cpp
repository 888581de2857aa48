#include <pwd.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>

#include "platform/host/Text.h"
#include "platform/server/EmbeddedServer.h"
#include "platform/server/Server.h"

namespace server {

namespace {

enum ServerError {
    CannotReachSocket = 2002,
    CannotReachHost = 2003,
    UnknownHost = 2005,
    ServerGone = 2006,
    ConnectionLost = 2013,
    AccessDenied = 1045
};

QString nameOf(const QString& connection) {
    return connection.isEmpty() ? QString::fromLatin1(QSqlDatabase::defaultConnection) : connection;
}

QString userOfSystem() {
    const passwd* user = getpwuid(geteuid());
    return user ? QString::fromLocal8Bit(user->pw_name) : QString();
}

QString reasonOf(const QSqlDatabase& database) {
    const QString where = database.hostName().isEmpty() ? Text::tr("本机") : database.hostName();
    switch (database.lastError().nativeErrorCode().toInt()) {
        case AccessDenied:
            return Text::tr("数据库服务器") + where + Text::tr("拒绝用户") + database.userName() +
                   Text::tr("登录，请检查用户名和密码");
        case CannotReachSocket:
        case CannotReachHost:
        case UnknownHost:
            return Text::tr("不能连接到数据库服务器") + where + "：" + database.lastError().databaseText();
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
        *error = Text::tr("数据库") + database.databaseName() + Text::tr("由较新版本的程序建立（版本") + mark[1] +
                 Text::tr("），请升级程序");
    else if (mark.size() > 2)
        *error = Text::tr("数据库") + database.databaseName() + Text::tr("没有建立完整，不能打开，请删除后重新建立");
    else
        return true;
    return false;
}

bool isLoss(const QSqlError& error) {
    const int code = error.nativeErrorCode().toInt();
    return code == CannotReachSocket || code == ServerGone || code == ConnectionLost;
}

/// \param lost  set when the server was not there or went away meanwhile
bool openSession(QSqlDatabase& database, QString* error, bool* lost) {
    if (!database.open()) {
        *error = reasonOf(database);
        *lost = isLoss(database.lastError());
        return false;
    }
    QSqlQuery query(database);
    if (!query.exec("SET SESSION sql_mode='STRICT_TRANS_TABLES,NO_ENGINE_SUBSTITUTION'")) {
        *error = query.lastError().databaseText();
        *lost = isLoss(query.lastError());
        return false;
    }
    *lost = false;
    return database.databaseName().isEmpty() || isUsable(database, error);
}

/// Waits for the embedded server, starting it when there is none: one that is being killed still takes connections for
/// a moment.
bool openOnEmbedded(QSqlDatabase& database, QString* error) {
    constexpr int longest = 3000, pause = 20;  // ms
    QElapsedTimer clock;
    clock.start();
    while (EmbeddedServer(current().program).ensureRunning(error)) {
        bool lost = false;
        if (openSession(database, error, &lost)) return true;
        database.close();
        if (!lost || clock.elapsed() > longest) return false;
        QThread::msleep(pause);
    }
    return false;
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
        bool lost = false;
        opened = openSession(handle, error, &lost);
        if (!opened && lost && current().embedded) opened = openOnEmbedded(handle, error);
    }
    if (!opened) closeConnection(connection);
    return opened;
}

bool reopenConnection(const QString& connection, QString* error) {
    QSqlDatabase handle = QSqlDatabase::database(nameOf(connection), false);
    handle.close();
    bool lost = false;
    const bool opened = current().embedded ? openOnEmbedded(handle, error) : openSession(handle, error, &lost);
    if (!opened) handle.close();
    return opened;
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
