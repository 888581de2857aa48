#pragma once

#include <QByteArrayList>
#include <optional>
#include <vector>

#include "platform/rtdb/dbQuery.h"
#include "platform/rtdb/dbStatement.h"

enum dbCursorType { dbCursorViewOnly, dbCursorForUpdate };

/// Runs over the rows of one real-time table as records (platform/rtdb/Records.h). The rows are those at select();
/// a cursor holds nothing open between its calls.
template <class Record>
class dbCursor {
  public:
    explicit dbCursor(dbDatabase& database, dbCursorType type = dbCursorViewOnly) : database_(database), type_(type) {}

    /// \return number of rows; the first next() goes to the first of them
    int select(const dbQuery& query = {});
    bool next();
    [[nodiscard]] Record* get() { return at_ < rows_.size() ? &rows_[at_].record : nullptr; }
    Record* operator->() { return get(); }

    /// Writes the current record back. An update cursor only, as all that follow.
    bool update();
    bool remove();
    bool insert(const Record& record);
    bool removeAll();

  private:
    struct Row {
        qint64 oid;
        Record record;
    };
    static QByteArray columns(const char* before, const char* after);
    bool writable() const;

    dbDatabase& database_;
    dbCursorType type_;
    std::vector<Row> rows_;
    std::size_t at_ = static_cast<std::size_t>(-1);
    std::optional<dbStatement> insert_, update_;
};

namespace rtdb {
struct ColumnNames {
    QByteArray text, before, after;
    template <class Value>
    void operator()(const char* name, const Value&) {
        text += (text.isEmpty() ? "" : ",") + before + name + after;
    }
};
struct ColumnReader {
    const dbStatement& row;
    int column = 1;
    void operator()(const char*, int& value) { value = static_cast<int>(row.whole(column++)); }
    void operator()(const char*, double& value) { value = row.real(column++); }
    void operator()(const char*, QString& value) { value = row.text(column++); }
};
struct ColumnBinder {
    dbStatement& statement;
    template <class Value>
    void operator()(const char*, const Value& value) {
        statement.bind(value);
    }
};
}  // namespace rtdb

template <class Record>
QByteArray dbCursor<Record>::columns(const char* before, const char* after) {
    rtdb::ColumnNames names{{}, before, after};
    Record().visit(names);
    return names.text;
}

template <class Record>
bool dbCursor<Record>::writable() const {
    if (type_ == dbCursorForUpdate) return database_.begin();
    database_.report(QByteArray("real-time table ") + Record::table + ": the cursor is read-only");
    return false;
}

template <class Record>
int dbCursor<Record>::select(const dbQuery& query) {
    rows_.clear();
    at_ = static_cast<std::size_t>(-1);
    if (!query.valid()) {
        database_.report(QByteArray("real-time table ") + Record::table + ": bad condition " + query.clause());
        return 0;
    }
    dbStatement statement(database_, "SELECT oid," + columns("", "") + " FROM " + Record::table + " " + query.clause());
    for (const QVariant& value : query.values()) {
        value.typeId() == QMetaType::QString ? statement.bind(value.toString()) : statement.bind(value.toInt());
    }
    while (statement.step()) {
        rows_.push_back({statement.whole(0), {}});
        rows_.back().record.visit(rtdb::ColumnReader{statement});
    }
    return static_cast<int>(rows_.size());
}

template <class Record>
bool dbCursor<Record>::next() {
    if (at_ != rows_.size()) ++at_;
    return at_ < rows_.size();
}

template <class Record>
bool dbCursor<Record>::update() {
    if (!get() || !writable()) return false;
    if (!update_) {
        update_.emplace(database_,
                        QByteArray("UPDATE ") + Record::table + " SET " + columns("", "=?") + " WHERE oid=?");
    }
    get()->visit(rtdb::ColumnBinder{*update_});
    return update_->bind(rows_[at_].oid).run();
}

template <class Record>
bool dbCursor<Record>::remove() {
    if (!get() || !writable()) return false;
    dbStatement statement(database_, QByteArray("DELETE FROM ") + Record::table + " WHERE oid=?");
    return statement.bind(rows_[at_].oid).run();
}

template <class Record>
bool dbCursor<Record>::insert(const Record& record) {
    if (!writable()) return false;
    if (!insert_) {
        const QByteArray places = QByteArrayList(columns("", "").count(',') + 1, "?").join(',');
        insert_.emplace(
            database_, QByteArray("INSERT INTO ") + Record::table + "(" + columns("", "") + ") VALUES(" + places + ")");
    }
    Record copy = record;
    copy.visit(rtdb::ColumnBinder{*insert_});
    return insert_->run();
}

template <class Record>
bool dbCursor<Record>::removeAll() {
    return writable() && database_.execute(QByteArray("DELETE FROM ") + Record::table);
}
