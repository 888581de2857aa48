#include "platform/sql/Session.h"

#include <QSqlDriver>
#include <QVariant>
#include <algorithm>
#include <iterator>

#include "platform/server/Server.h"

namespace sql {

namespace {

constexpr const char* depthName = "transactionDepth";
constexpr const char* doomedName = "transactionDoomed";
constexpr const char* toldName = "lossTold";

// The codes of client and server that say: this connection does not exist any more.
constexpr int lossCodes[] = {2002, 2003, 2006, 2013, 2055, 1053, 1927, 1152, 1158, 1159, 1160, 1161};

QString nameOf(const QString& connection) {
    return connection.isEmpty() ? QString::fromLatin1(QSqlDatabase::defaultConnection) : connection;
}

}  // namespace

Session::Session(const QString& connection)
    : connection_(connection), database_(QSqlDatabase::database(nameOf(connection), false)) {}

bool Session::ready(QString* error) {
    if (!database_.isValid()) {
        *error = "没有数据库连接" + connection_;
        return false;
    }
    if (database_.isOpen()) return true;
    if (state(depthName) > 0) return false;
    if (server::reopenConnection(connection_, error)) {
        setState(toldName, 0);
        return true;
    }
    if (state(toldName) != 0) error->clear();
    setState(toldName, 1);
    return false;
}

bool Session::wasLost(const QSqlError& error) {
    const int code = error.nativeErrorCode().toInt();
    if (std::find(std::begin(lossCodes), std::end(lossCodes), code) == std::end(lossCodes)) return false;
    database_.close();
    setState(doomedName, 1);
    setState(toldName, 1);
    return true;
}

bool Session::isOutside() const { return state(depthName) == 0; }

void Session::enterTransaction() {
    if (isOutside()) setState(doomedName, 0);
    setState(depthName, state(depthName) + 1);
}

bool Session::leaveTransaction(bool keep) {
    const int depth = state(depthName) - 1;
    setState(depthName, depth);
    if (!keep) setState(doomedName, 1);
    return depth == 0;
}

bool Session::isDoomed() const { return state(doomedName) != 0; }

int Session::state(const char* name) const { return database_.driver()->property(name).toInt(); }

void Session::setState(const char* name, int value) { database_.driver()->setProperty(name, value); }

}  // namespace sql
