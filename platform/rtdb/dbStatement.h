#pragma once

#include <QByteArray>
#include <QString>

#include "platform/rtdb/dbDatabase.h"

struct sqlite3_stmt;

/// One prepared text on the real-time tables. Text goes in and out in GBK; NaN goes in and out as NULL.
/// Failures are told in the dock and leave the statement not ok().
class dbStatement {
  public:
    dbStatement(dbDatabase& database, const QByteArray& text);
    ~dbStatement();
    dbStatement(const dbStatement&) = delete;
    dbStatement& operator=(const dbStatement&) = delete;

    /// Values take the places in order, from the first again after run() or the last row.
    dbStatement& bind(qint64 value);
    dbStatement& bind(int value) { return bind(static_cast<qint64>(value)); }
    dbStatement& bind(double value);
    dbStatement& bind(const QByteArray& value);
    dbStatement& bind(const QString& value);
    /// As UTF-8 text, for the facts.
    dbStatement& bindPlain(const QString& value);

    /// \return true on a row
    bool step();
    /// Runs a text without rows. \return false on failure
    bool run();
    [[nodiscard]] bool ok() const { return ok_; }

    [[nodiscard]] qint64 whole(int column) const;
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] QByteArray bytes(int column) const;
    [[nodiscard]] QString text(int column) const;

  private:
    void reset();

    dbDatabase& database_;
    sqlite3_stmt* statement_ = nullptr;
    QByteArray text_;
    int place_ = 0;
    bool ok_ = true;
};
