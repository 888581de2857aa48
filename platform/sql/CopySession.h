#pragma once

#include <QDateTime>
#include <QString>
#include <functional>

#include "platform/sql/TableCopy.h"

namespace sql {

/// Copies that one owner made together, as their mark tells: a comment at the first of them, written when all were
/// there. A mark whose program lives is held by a lock on the server, which ends with the program's connection.
struct CopyMark {
    QString id;
    QString owner;
    QString suffix;
    QDateTime opened;
    QVector<TableCopy> copies;

    /// All marks of a database, the earliest first.
    static QVector<CopyMark> on(const QString& connection);
    [[nodiscard]] bool isHeld() const;
    [[nodiscard]] bool sharesCopiesWith(const QVector<TableCopy>& others) const;
    [[nodiscard]] bool sharesBasesWith(const QVector<TableCopy>& others) const;
};

/// Tables that can be taken back to what they were: opened, then ended by commit() or restore(). A session that is
/// destroyed while it is open leaves its copies behind with their mark.
class CopySession {
  public:
    /// \param owner  no "|" in it
    CopySession(QString owner, QString suffix, QVector<TableCopy> copies);
    ~CopySession();
    CopySession(const CopySession&) = delete;
    CopySession& operator=(const CopySession&) = delete;

    using Maker = std::function<bool(const TableCopy&)>;
    /// Makes all copies or none. Copies that nobody holds any more are replaced.
    /// \param make    makes one copy; none of the copies is there
    /// \param failed  the copy that could not be made, or that another session holds
    bool open(const Maker& make, QString* failed);
    /// The tables stay as they are; the copies go.
    bool commit();
    /// The tables go back to what they were; the copies go. On failure the tables and the session stay as they are.
    bool restore();
    [[nodiscard]] bool isOpen() const { return open_; }

  private:
    bool clearTheWay(QString* failed) const;
    bool makeAll(const Maker& make, QString* failed) const;
    bool end();
    void release() const;

    CopyMark mark_;
    bool open_ = false;
};

}  // namespace sql
