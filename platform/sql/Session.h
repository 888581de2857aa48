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
    /// After a vain attempt the next one waits a moment, so that a long loop does not wait for each of its statements.
    /// \return false, with the reason in `error`, when no statement can run
    bool ready(QString* error);
    /// Whether the user is to be told that the connection is gone: once for each loss.
    bool lossIsNews();
    /// Whether an error means that the server is gone; the connection is then closed.
    bool wasLost(const QSqlError& error);

    /// Nested transactions join the outer one.
    [[nodiscard]] bool isOutside() const;
    /// \param begun  false: nothing is to run until the transaction ends, since it would stay for good
    void enterTransaction(bool begun);
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
