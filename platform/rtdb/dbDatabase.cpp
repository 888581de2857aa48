#include "platform/rtdb/dbDatabase.h"

#include <sqlite3.h>

#include <QFileInfo>
#include <QVector>

#include "exchange/RealTimeTables.h"
#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/rtdb/dbStatement.h"

namespace {

QVector<dbDatabase*>& openDatabases() {
    static QVector<dbDatabase*> list;
    return list;
}

QByteArray firstText(sqlite3* db, const char* text) {
    QByteArray answer;
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, text, -1, &statement, nullptr) == SQLITE_OK && sqlite3_step(statement) == SQLITE_ROW) {
        answer = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    }
    sqlite3_finalize(statement);
    return answer;
}

bool refuse(const QString& file, const QString& why, QString* error) {
    if (error) *error = Text::tr("实时库文件“") + file + "”" + why;
    return false;
}

}  // namespace

dbDatabase::~dbDatabase() { close(); }

dbDatabase* dbDatabase::current() { return openDatabases().isEmpty() ? nullptr : openDatabases().last(); }

bool dbDatabase::open(const QString& file, QString* error) {
    close();
    const bool fresh = !QFileInfo(file).size();
    if (sqlite3_open(file.toUtf8().constData(), &db_) != SQLITE_OK || !prepareTables(file, fresh, error)) {
        if (error && error->isEmpty())
            refuse(file, Text::tr("打不开：") + QString::fromUtf8(sqlite3_errmsg(db_)), error);
        close();
        return false;
    }
    static qint64 opened = 0;
    epoch_ = ++opened << 40;
    openDatabases().append(this);
    return true;
}

bool dbDatabase::prepareTables(const QString& file, bool fresh, QString* error) {
    if (error) error->clear();
    sqlite3_busy_timeout(db_, 5000);
    // The tables can be made again from the project at any time: a commit need not wait for the disk.
    sqlite3_exec(db_, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
    if (!fresh) {
        if (firstText(db_, "PRAGMA quick_check") != "ok")
            return refuse(file, Text::tr("已损坏或不是实时库，不能打开"), error);
        const QByteArray version = firstText(db_, "SELECT value FROM meta WHERE name='version'");
        if (version.isEmpty()) return refuse(file, Text::tr("不是实时库，不能打开"), error);
        if (version.toInt() > exchange::rtdb::kVersion)
            return refuse(file, Text::tr("由更新版本的程序写成，不能打开"), error);
    }
    if (!begin()) return refuse(file, Text::tr("不能写入"), error);
    for (const char* text : exchange::rtdb::kCreate) {
        if (!execute(text)) return refuse(file, Text::tr("不能写入"), error);
    }
    return setFact("version", QString::number(exchange::rtdb::kVersion)) && commit();
}

void dbDatabase::close() {
    openDatabases().removeAll(this);
    sqlite3_close_v2(db_);
    db_ = nullptr;
    inTransaction_ = false;
}

bool dbDatabase::begin() {
    if (!db_) return false;
    if (!inTransaction_) inTransaction_ = execute("BEGIN IMMEDIATE");
    return inTransaction_;
}

bool dbDatabase::commit() {
    if (!inTransaction_) return db_ != nullptr;
    inTransaction_ = !execute("COMMIT");
    return !inTransaction_;
}

void dbDatabase::rollback() {
    if (!inTransaction_) return;
    execute("ROLLBACK");
    inTransaction_ = false;
    ++epoch_;
}

bool dbDatabase::execute(const QByteArray& text) {
    if (db_ && sqlite3_exec(db_, text.constData(), nullptr, nullptr, nullptr) == SQLITE_OK) return true;
    report(text);
    return false;
}

QString dbDatabase::fact(const QString& name) {
    dbStatement statement(*this, "SELECT value FROM meta WHERE name=?");
    return statement.bindPlain(name).step() ? QString::fromUtf8(statement.bytes(0)) : QString();
}

bool dbDatabase::setFact(const QString& name, const QString& value) {
    if (!begin()) return false;
    dbStatement statement(*this, "INSERT OR REPLACE INTO meta(name,value) VALUES(?,?)");
    return statement.bindPlain(name).bindPlain(value).run();
}

qint64 dbDatabase::changeCount() const { return db_ ? sqlite3_total_changes64(db_) + epoch_ : -1; }

void dbDatabase::report(const QByteArray& text) const {
    const QByteArray reason = db_ ? sqlite3_errmsg(db_) : "the real-time database is not open";
    WinDockFeedback::ShowMessage((Text::tr("实时库操作失败：").toUtf8() + reason + "：" + text).constData(), "", "", "",
                                 WinDockFeedback::Error);
}
