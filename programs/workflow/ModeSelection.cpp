#include "programs/workflow/ModeSelection.h"

#include "platform/sql/Sql.h"

QVector<OfferedMode> offeredModes() {
    QVector<OfferedMode> modes;
    sql::Query query;
    query.exec("SELECT DISTINCT SysName,SysNo FROM RLY_RSYSMODEDLS ORDER BY SysNo ASC");
    while (query.next()) modes.append({query.number(1), query.text(0)});
    return modes;
}
