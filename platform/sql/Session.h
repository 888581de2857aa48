#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

namespace sql {

/// What is known of a connection between statements: whether it was lost and whether a transaction is open. The state
/// lives with the connection and goes with it.
class Session {
  public:
    /// \param connection  empty: the default connection
    explicit Session(const QString& connection);

    [[nodiscard]] const QSqlDatabase& database() const { return database_; }

    /// Opens a lost connection again. Not inside a transaction: its first half is gone, so its second must not run.
    /// \return false when no statement can run; `error` stays empty when that was told before
    bool ready(QString* error);
    /// Whether an error means that the server is gone; the connection is then closed.
    bool wasLost(const QSqlError& error);

    /// Nested transactions join the outer one.
    [[nodiscard]] bool isOutside() const;
    void enterTransaction();
    /// \param keep  false: what was done is to be undone
    /// \return whether this was the outermost
    bool leaveTransaction(bool keep);
    /// Whether anything in the transaction asked to undo it, or the connection was lost in it.
    [[nodiscard]] bool isDoomed() const;

  private:
    [[nodiscard]] int state(const char* name) const;
    void setState(const char* name, int value);

    QString connection_;
    QSqlDatabase database_;
};

}  // namespace sql
