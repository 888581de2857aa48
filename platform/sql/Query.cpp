#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlRecord>

#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/server/Server.h"
#include "platform/sql/Escape.h"
#include "platform/sql/Session.h"
#include "platform/sql/Sql.h"

namespace sql {

namespace {

constexpr int shownLength = 500;

void tell(const QString& text) {
    WinDockFeedback::ShowMessage(text.toUtf8().constData(), "", "", "", WinDockFeedback::Error);
}

QString shortened(const QString& statement) {
    return statement.size() <= shownLength ? statement : statement.left(shownLength) + "...";
}

QString textOf(const QVariant& value) {
    return value.typeId() == QMetaType::QByteArray ? QString::fromUtf8(value.toByteArray()) : value.toString();
}

}  // namespace

Query::Query(const QString& connection) : connection_(connection) {}

Query& Query::quietly() {
    quiet_ = true;
    return *this;
}

bool Query::fail(const QString& reason, const QString& statement) {
    error_ = reason;
    if (!quiet_) tell(Text::tr("数据库语句失败：") + reason + "（" + shortened(statement) + "）");
    return false;
}

bool Query::exec(const QString& text, const QVariantList& values) {
    Session session(connection_);
    error_.clear();
    if (!session.ready(&error_)) {
        if (session.lossIsNews()) tell(error_);
        return false;
    }
    const auto statement =
        values.isEmpty() ? std::optional(text) : withValues(*session.database().driver(), text, values, &error_);
    if (!statement) return fail(error_, text);
    query_ = QSqlQuery(session.database());
    if (query_.exec(*statement)) return true;
    const QSqlError error = query_.lastError();
    if (!session.wasLost(error)) return fail(error.databaseText(), *statement);
    error_ = Text::tr("与数据库服务器的连接中断：") + error.databaseText();
    if (session.lossIsNews()) tell(error_);
    return false;
}

bool Query::next() { return query_.next(); }
int Query::size() const { return query_.size(); }
QString Query::text(int column) const { return textOf(query_.value(column)); }
int Query::number(int column) const { return query_.value(column).toInt(); }
double Query::real(int column) const { return query_.value(column).toDouble(); }
bool Query::isNull(int column) const { return query_.isNull(column); }
QString Query::raw(int column) const { return textOf(query_.value(column)); }
QString Query::errorText() const { return error_; }

QVariant scalar(const QString& connection, const QString& text, const QVariantList& values, const QVariant& fallback) {
    Query query(connection);
    if (!query.exec(text, values) || !query.next()) return fallback;
    const QVariant value = query.cursor().value(0);
    return value.typeId() == QMetaType::QByteArray ? QVariant(textOf(value)) : value;
}

}  // namespace sql
