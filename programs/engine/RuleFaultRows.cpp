#include "programs/engine/RuleFaultRows.h"

#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/engine/OutageRows.h"

namespace {

const QStringList kColumns{"RNo",  "PNo",   "RuleNo", "RMode", "MType", "ID_No", "I_No",
                           "J_No", "K_Loc", "FType",  "R",     "X",     "Flg",   "Case_No"};

int highestOf(const QVector<RuleFaultRow>& rows, int pno, int rMode, int from, int to) {
    int highest = 0;
    for (const RuleFaultRow& row : rows)
        if (row.pno == pno && row.rMode == rMode && row.mType >= from && row.mType <= to)
            highest = std::max(highest, row.mType);
    return highest;
}

}  // namespace

RuleFaultRows::RuleFaultRows(int caseNo, int rno, int ruleNo) : caseNo_(caseNo), rno_(rno), ruleNo_(ruleNo) {
    sql::Query q;
    q.exec("SELECT PNo,RMode,MType FROM RLY_CRUDRM WHERE RNo=? AND RuleNo=? AND Case_No=?", {rno, ruleNo, caseNo});
    while (q.next()) {
        RuleFaultRow row;
        row.pno = q.number(0);
        row.rMode = q.number(1);
        row.mType = q.number(2);
        stored_.push_back(row);
    }
}

int RuleFaultRows::highest(int pno, int rMode, int from, int to) const {
    return std::max(highestOf(stored_, pno, rMode, from, to), highestOf(added_, pno, rMode, from, to));
}

void RuleFaultRows::addOutage(int pno, int rMode, int mType, int idNo, int iNo, int jNo, bool line) {
    for (const OutageRow& row : outageRows(line))
        add({pno, rMode, mType, idNo, iNo, jNo, row.kLoc, row.fType, row.z, row.z, 0});
}

bool RuleFaultRows::store() {
    if (added_.isEmpty()) return true;
    QVector<QVariantList> rows;
    for (const RuleFaultRow& f : added_)
        rows.push_back(
            {rno_, f.pno, ruleNo_, f.rMode, f.mType, f.idNo, f.iNo, f.jNo, f.kLoc, f.fType, f.r, f.x, f.flg, caseNo_});
    stored_ += added_;
    added_.clear();
    return sql::insertRows({}, "RLY_CRUDRM", kColumns, rows);
}
