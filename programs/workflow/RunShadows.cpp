#include "programs/workflow/RunShadows.h"

#include "platform/sql/Sql.h"

const QVector<EditSession::Table>& RunShadows::tables() {
    static const QVector<EditSession::Table> all = {
        {"RLY_RLYOBJ_TEM", 232, "_TM"},
        {"RLY_RDZTEM", 130},
        {"RLY_FAULTINF", 133},
        {"RLY_KFINF", 134},
        {"RLY_RRVIN", 136},
        {"RLY_RRNPH", 137},
        {"RLY_CFZXS", 140},
        {"RLY_CFZXSRM", 141},
        {"RLY_CRUDRM", 139},
    };
    return all;
}

bool RunShadows::claim() {
    return sql::scalar({}, "SELECT GET_LOCK(CONCAT('morvane run ',MD5(DATABASE())),3)", {}, 0).toInt() == 1;
}

RunShadows::Leftover RunShadows::recover() {
    for (const EditSession::Leftover& leftover : EditSession::leftovers())
        if (leftover.owner == owner) return EditSession::goBack(leftover) ? Leftover::Restored : Leftover::Failed;
    return Leftover::None;
}
