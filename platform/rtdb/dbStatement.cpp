#include "platform/rtdb/dbStatement.h"

#include <sqlite3.h>

#include <cmath>
#include <limits>

#include "platform/sql/Sql.h"

dbStatement::dbStatement(dbDatabase& database, const QByteArray& text) : database_(database), text_(text) {
    ok_ = database.isOpen() && sqlite3_prepare_v2(database.handle(), text.constData(), static_cast<int>(text.size()),
                                                  &statement_, nullptr) == SQLITE_OK;
    if (!ok_) database.report(text);
}

dbStatement::~dbStatement() { sqlite3_finalize(statement_); }

dbStatement& dbStatement::bind(qint64 value) {
    sqlite3_bind_int64(statement_, ++place_, value);
    return *this;
}

dbStatement& dbStatement::bind(double value) {
    sqlite3_bind_double(statement_, ++place_, value);
    return *this;
}

dbStatement& dbStatement::bind(const QByteArray& value) {
    // An empty text is a text, not NULL: names are compared and sorted as bytes.
    sqlite3_bind_blob(statement_, ++place_, value.isNull() ? "" : value.constData(), static_cast<int>(value.size()),
                      SQLITE_TRANSIENT);
    return *this;
}

dbStatement& dbStatement::bind(const QString& value) { return bind(sql::toGbk(value)); }

dbStatement& dbStatement::bindPlain(const QString& value) {
    const QByteArray text = value.toUtf8();
    sqlite3_bind_text(statement_, ++place_, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    return *this;
}

bool dbStatement::step() {
    if (!ok_) return false;
    const int answer = sqlite3_step(statement_);
    if (answer == SQLITE_ROW) return true;
    ok_ = answer == SQLITE_DONE;
    if (!ok_) database_.report(text_);
    reset();
    return false;
}

bool dbStatement::run() {
    while (step()) {
    }
    return ok_;
}

void dbStatement::reset() {
    sqlite3_reset(statement_);
    place_ = 0;
}

qint64 dbStatement::whole(int column) const { return sqlite3_column_int64(statement_, column); }

double dbStatement::real(int column) const {
    if (sqlite3_column_type(statement_, column) == SQLITE_NULL) return std::numeric_limits<double>::quiet_NaN();
    return sqlite3_column_double(statement_, column);
}

QByteArray dbStatement::bytes(int column) const {
    const auto* data = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    return QByteArray(data, sqlite3_column_bytes(statement_, column));
}

QString dbStatement::text(int column) const { return sql::fromGbk(bytes(column)); }
