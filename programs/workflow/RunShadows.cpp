#include "programs/workflow/RunShadows.h"

#include <QString>
#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/frame/CRDatabase.h"

namespace {

struct Shadowed {
    const char* table;
    const char* shadow;
    int code;  ///< of the copy; 0: the working relays, which have a copy form of their own
};
constexpr Shadowed kShadows[] = {
    {"RLY_RLYOBJ_TEM", "RLY_RLYOBJ_TEM_TM", 0},   {"RLY_RDZTEM", "RLY_RDZTEM_TEM_TM", 230},
    {"RLY_FAULTINF", "RLY_FAULTINF_TEM_TM", 233}, {"RLY_KFINF", "RLY_KFINF_TEM_TM", 234},
    {"RLY_RRVIN", "RLY_RRVIN_TEM_TM", 236},       {"RLY_RRNPH", "RLY_RRNPH_TEM_TM", 237},
    {"RLY_CFZXS", "RLY_CFZXS_TEM_TM", 240},       {"RLY_CFZXSRM", "RLY_CFZXSRM_TEM_TM", 241},
    {"RLY_CRUDRM", "RLY_CRUDRM_TEM_TM", 239},
};

bool exists(const char* table) {
    return sql::scalar({},
                       "SELECT COUNT(*) FROM information_schema.TABLES WHERE TABLE_SCHEMA=DATABASE()"
                       " AND TABLE_NAME=?",
                       {QString(table)})
               .toInt() == 1;
}

bool allExist() {
    return std::all_of(std::begin(kShadows), std::end(kShadows),
                       [](const auto& copied) { return exists(copied.shadow); });
}

bool copyWorkingRelays(const Shadowed& copied) {
    sql::Query query;
    return query.exec(QString("DROP TABLE IF EXISTS ") + copied.shadow) &&
           query.exec(QString("CREATE TABLE IF NOT EXISTS ") + copied.shadow + " (PRIMARY KEY(RNo,Cdz))SELECT * FROM " +
                      copied.table);
}

}  // namespace

bool RunShadows::claim() {
    return sql::scalar({}, "SELECT GET_LOCK(CONCAT('morvane run ',MD5(DATABASE())),3)", {}, 0).toInt() == 1;
}

RunShadows::Leftover RunShadows::recover() {
    const bool whole = allExist();
    if (whole && !restore()) return Leftover::Failed;
    drop();
    return whole ? Leftover::Restored : Leftover::None;
}

bool RunShadows::build() {
    for (const Shadowed& copied : kShadows)
        if (!(copied.code == 0 ? copyWorkingRelays(copied) : CRDatabase::BuildTable(copied.shadow, copied.code, 1)))
            return false;
    return true;
}

bool RunShadows::restore() {
    if (!allExist()) return false;
    sql::Transaction transaction;
    sql::Query query;
    for (const Shadowed& copied : kShadows)
        if (!query.exec(QString("DELETE FROM ") + copied.table) ||
            !query.exec(QString("INSERT INTO ") + copied.table + " SELECT * FROM " + copied.shadow))
            return false;
    return transaction.commit();
}

void RunShadows::drop() {
    sql::Query query;
    for (const Shadowed& copied : kShadows) query.exec(QString("DROP TABLE IF EXISTS ") + copied.shadow);
}
