#pragma once

#include <QByteArray>
#include <QString>

struct sqlite3;

/// The real-time tables of a project, in one file that other programs read (layout: exchange/RealTimeTables.h).
/// Changes gather until commit(); until then only this process sees them.
class dbDatabase {
  public:
    dbDatabase() = default;
    ~dbDatabase();
    dbDatabase(const dbDatabase&) = delete;
    dbDatabase& operator=(const dbDatabase&) = delete;

    /// Opens a file, creating it with empty tables when it is absent, and makes this database the current one.
    /// \return false with one sentence in `error` when the file is damaged, foreign, newer, or cannot be written
    bool open(const QString& file, QString* error = nullptr);
    /// Uncommitted changes are lost.
    void close();
    [[nodiscard]] bool isOpen() const { return db_ != nullptr; }

    /// Makes the changes since the last commit lasting and visible to other programs.
    bool commit();
    void rollback();
    /// Opens the transaction that gathers changes; called by whatever writes.
    bool begin();
    /// Runs one text without a result. A failure is told in the dock.
    bool execute(const QByteArray& text);

    /// What holds for the tables as a whole: "version", "load_flow" ("0" or "1"), "scheme". Empty when unknown.
    [[nodiscard]] QString fact(const QString& name);
    bool setFact(const QString& name, const QString& value);

    /// Differs after every changed row, rollback and opening: what was read under another count may be out of date.
    [[nodiscard]] qint64 changeCount() const;
    [[nodiscard]] sqlite3* handle() const { return db_; }

    /// Tells the dock what the last operation complained about.
    void report(const QByteArray& text) const;

    /// The database that was opened last and is still open; null when there is none.
    static dbDatabase* current();

  private:
    bool prepareTables(const QString& file, bool fresh, QString* error);

    sqlite3* db_ = nullptr;
    bool inTransaction_ = false;
    qint64 epoch_ = 0;
};
