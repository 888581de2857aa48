#include "programs/netview/VirtualRelays.h"

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/frame/Messages.h"

bool SearchDumRelay() {
    ReportSuccess(Text::tr("开始自动装设虚拟保护....."), 0);
    sql::Query query;
    const bool ok = query.exec(
        "INSERT INTO RLY_DUMRLY (Valid,RTypeNo,ID_Name,I_Name,J_Name,Side)"
        " SELECT 1,0,e.ID_Name,e.I_Name,e.J_Name,e.Side FROM"
        " (SELECT l.ID_Name,l.I_Name,l.J_Name,1 AS Side FROM CDB_NODEBAK n"
        "  JOIN CDB_ACLINEBAK l ON l.I_Name=n.Node_Name WHERE n.NodeType=1"
        " UNION SELECT l.ID_Name,l.I_Name,l.J_Name,2 FROM CDB_NODEBAK n"
        "  JOIN CDB_ACLINEBAK l ON l.J_Name=n.Node_Name AND l.I_Name<>l.J_Name WHERE n.NodeType=1) e"
        " LEFT JOIN RLY_DUMRLY d ON d.ID_Name=e.ID_Name AND d.I_Name=e.I_Name AND d.J_Name=e.J_Name AND d.Side=e.Side"
        " WHERE d.ID_Name IS NULL ORDER BY e.ID_Name,e.Side");
    BranchTable::invalidate();
    ReportSuccess(Text::tr("自动装设虚拟保护完毕"), 0);
    return ok;
}
