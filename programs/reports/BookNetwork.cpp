#include "programs/reports/BookNetwork.h"

#include "platform/sql/Sql.h"

bool BookNetwork::read() {
    sql::Query branches, modes, relays;
    if (!branches.exec("SELECT ID_No,I_No,J_No,ID_Name,I_Name,J_Name,Flg FROM RLY_RRBRANCH_TEM ORDER BY ID DESC") ||
        !modes.exec("SELECT DISTINCT SysNo,SysName FROM RLY_RSYSMODEDLS ORDER BY SysNo") ||
        !relays.exec("SELECT RNo,ID_Name,I_Name,J_Name,Side FROM RLY_RUD"))
        return false;
    while (branches.next())
        elements_.insert({branches.number(0), branches.number(1), branches.number(2)},
                         {branches.text(3), branches.text(4), branches.text(5), branches.number(6)});
    while (modes.next())
        if (!modes_.contains(modes.number(0))) modes_.insert(modes.number(0), modes.text(1));
    while (relays.next())
        relays_.insert(relays.number(0), {relays.text(1), relays.text(2), relays.text(3), relays.number(4)});
    return true;
}

const Location* BookNetwork::relay(int rNo) const {
    const auto it = relays_.constFind(rNo);
    return it == relays_.constEnd() ? nullptr : &*it;
}
