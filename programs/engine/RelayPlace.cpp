#include "programs/engine/RelayPlace.h"

#include "programs/engine/BranchTable.h"

RelayPlace RelayPlace::of(const SettingRow& row) {
    const auto branches = BranchTable::current();
    RelayPlace place;
    place.atBus = row.iName == row.jName;
    if (place.atBus) {
        const auto node = branches->nodeNumber(row.iName);
        place.found = node.has_value();
        place.node = place.idNo = place.iNo = place.jNo = node.value_or(0);
        return place;
    }
    const BranchRow* branch = branches->find(row.idName, row.iName, row.jName);
    if (!branch) return place;
    return {true, false, row.side == 1 ? branch->iNo : branch->jNo, branch->idNo, branch->iNo, branch->jNo};
}
