#include "programs/frame/RuleConnection.h"

#include <QSqlDatabase>

#include "platform/sql/Sql.h"
#include "programs/frame/CRDatabase.h"
#include "programs/frame/TableNames.h"

namespace {

QString nameOn(const QString& connection) {
    const QSqlDatabase database = QSqlDatabase::database(connection, false);
    return database.isOpen() ? database.databaseName() : QString();
}

bool exists(const QString& database) {
    return sql::scalar(tables::relayConnection, "SELECT COUNT(*) FROM information_schema.SCHEMATA WHERE SCHEMA_NAME=?",
                       {database})
               .toInt() > 0;
}

}  // namespace

bool connectRules(CRDatabase& database) {
    const QString project = nameOn(tables::relayConnection);
    const QString own = project + tables::ruleSuffix;
    if (nameOn(tables::ruleConnection) == own) return true;
    const bool hasOwn = !project.isEmpty() && exists(own);
    return database.ConnectDB(hasOwn ? own : tables::ruleSuffix, tables::ruleConnection, true);
}
