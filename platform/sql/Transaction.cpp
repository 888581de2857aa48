#include "platform/sql/Session.h"
#include "platform/sql/Sql.h"

namespace sql {

Transaction::Transaction(const QString& connection) : connection_(connection) {
    Session session(connection_);
    if (!session.database().isValid()) return;
    // An idle connection may have been lost unnoticed: the second attempt opens it again.
    const auto begin = [this] { return Query(connection_).exec("START TRANSACTION"); };
    session.enterTransaction(!session.isOutside() || begin() || begin());
    open_ = true;
}

Transaction::~Transaction() {
    if (!open_) return;
    Session session(connection_);
    if (session.leaveTransaction(false) && session.database().isOpen()) Query(connection_).exec("ROLLBACK");
}

bool Transaction::commit() {
    if (!open_) return false;
    open_ = false;
    Session session(connection_);
    const bool outermost = session.leaveTransaction(true);
    if (!outermost) return !session.isDoomed();
    if (!session.isDoomed()) return Query(connection_).exec("COMMIT");
    if (session.database().isOpen()) Query(connection_).exec("ROLLBACK");
    return false;
}

}  // namespace sql
