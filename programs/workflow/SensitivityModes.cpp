#include "programs/workflow/SensitivityModes.h"

#include "platform/sql/Sql.h"

QStringList SensitivityModes::names(int caseNo) {
    QStringList found;
    sql::Query query;
    query.exec("SELECT DISTINCT SysName FROM RLY_KLMFSYS WHERE Case_No=?", {caseNo});
    while (query.next()) found << query.text(0);
    return found;
}

bool SensitivityModes::store(int caseNo, const QList<int>& modes) {
    sql::Transaction transaction;
    sql::Query query;
    bool ok = query.exec("DELETE FROM RLY_KLMFSYS WHERE Case_No=?", {caseNo});
    for (const int mode : modes)
        ok = ok && query.exec(
                       "INSERT INTO RLY_KLMFSYS (Case_No,SysNo,SysName) SELECT DISTINCT ?,SysNo,SysName"
                       " FROM RLY_RSYSMODEDLS WHERE SysNo=?",
                       {caseNo, mode});
    return ok && transaction.commit();
}
