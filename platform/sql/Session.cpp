#include "platform/sql/Session.h"

#include <QSqlDriver>
#include <QVariant>
#include <algorithm>
#include <chrono>
#include <iterator>

#include "platform/host/Text.h"
#include "platform/server/Server.h"
#include "platform/sql/Sql.h"

namespace sql {

namespace {

constexpr const char* depthName = "transactionDepth";
constexpr const char* doomedName = "transactionDoomed";
constexpr const char* toldName = "lossTold";
constexpr const char* waitName = "noAttemptBefore";
enum Doom { kept, toUndo, broken };
constexpr int retrySeconds = 3;

// The codes of client and server that say: this connection does not exist any more.
constexpr int lossCodes[] = {2002, 2003, 2006, 2013, 2055, 1053, 1927, 1152, 1158, 1159, 1160, 1161};

int& lossCount() {
    static int count = 0;
    return count;
}

int seconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(now).count());
}

QString nameOf(const QString& connection) {
    return connection.isEmpty() ? QString::fromLatin1(QSqlDatabase::defaultConnection) : connection;
}

}  // namespace

Session::Session(const QString& connection)
    : connection_(connection), database_(QSqlDatabase::database(nameOf(connection), false)) {}

bool Session::ready(QString* error) {
    const bool brokenInside = !isOutside() && (state(doomedName) == broken || !database_.isOpen());
    if (database_.isOpen() && !brokenInside) return true;
    *error = database_.isValid() ? Text::tr("没有与数据库服务器的连接") : Text::tr("没有数据库连接") + connection_;
    if (!database_.isValid() || brokenInside || seconds() < state(waitName)) return false;
    if (server::reopenConnection(connection_, error)) {
        setState(toldName, 0);
        return true;
    }
    setState(waitName, seconds() + retrySeconds);
    return false;
}

bool Session::lossIsNews() {
    if (!database_.isValid()) return true;
    const bool told = state(toldName) != 0;
    setState(toldName, 1);
    return !told;
}

bool Session::wasLost(const QSqlError& error) {
    const int code = error.nativeErrorCode().toInt();
    if (std::find(std::begin(lossCodes), std::end(lossCodes), code) == std::end(lossCodes)) return false;
    database_.close();
    ++lossCount();
    setState(doomedName, broken);
    setState(waitName, 0);
    return true;
}

bool Session::isOutside() const { return !database_.isValid() || state(depthName) == 0; }

void Session::enterTransaction(bool begun) {
    if (isOutside()) setState(doomedName, begun ? kept : broken);
    setState(depthName, state(depthName) + 1);
}

bool Session::leaveTransaction(bool keep) {
    setState(depthName, state(depthName) - 1);
    if (!keep && !isDoomed()) setState(doomedName, toUndo);
    return isOutside();
}

int losses() { return lossCount(); }

bool Session::isDoomed() const { return state(doomedName) != kept; }

int Session::state(const char* name) const { return database_.driver()->property(name).toInt(); }

void Session::setState(const char* name, int value) { database_.driver()->setProperty(name, value); }

}  // namespace sql
