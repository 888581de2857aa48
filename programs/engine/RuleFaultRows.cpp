#include "programs/engine/RuleFaultRows.h"

#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/engine/OutageRows.h"

namespace {

const QStringList kColumns{"RNo",  "PNo",   "RuleNo", "RMode", "MType", "ID_No", "I_No",
                           "J_No", "K_Loc", "FType",  "R",     "X",     "Flg",   "Case_No"};

}  // namespace

RunFaultRows::RunFaultRows(int caseNo) : caseNo_(caseNo) {
    sql::Query q;
    q.exec("SELECT RNo,RuleNo,PNo,RMode,MType,ID_No,I_No,J_No,K_Loc,FType,R,X,Flg FROM RLY_CRUDRM WHERE Case_No=?",
           {caseNo});
    while (q.next())
        rows_[{q.number(0), q.number(1)}].push_back({q.number(2), q.number(3), q.number(4), q.number(5), q.number(6),
                                                     q.number(7), q.number(8), q.number(9), q.real(10), q.real(11),
                                                     q.number(12)});
}

const QVector<RuleFaultRow>& RunFaultRows::of(int rno, int ruleNo) const {
    static const QVector<RuleFaultRow> none;
    const auto it = rows_.find({rno, ruleNo});
    return it == rows_.end() ? none : it->second;
}

void RunFaultRows::add(int rno, int ruleNo, const RuleFaultRow& f) {
    rows_[{rno, ruleNo}].push_back(f);
    added_.push_back(
        {rno, f.pno, ruleNo, f.rMode, f.mType, f.idNo, f.iNo, f.jNo, f.kLoc, f.fType, f.r, f.x, f.flg, caseNo_});
}

bool RunFaultRows::store() {
    const QVector<QVariantList> rows = std::exchange(added_, {});
    return rows.isEmpty() || sql::insertRows({}, "RLY_CRUDRM", kColumns, rows);
}

int RuleFaultRows::highest(int pno, int rMode, int from, int to) const {
    int highest = 0;
    for (const RuleFaultRow& row : all_.of(rno_, ruleNo_))
        if (row.pno == pno && row.rMode == rMode && row.mType >= from && row.mType <= to)
            highest = std::max(highest, row.mType);
    return highest;
}

void RuleFaultRows::addOutage(int pno, int rMode, int mType, int idNo, int iNo, int jNo, bool line) {
    for (const OutageRow& row : outageRows(line))
        add({pno, rMode, mType, idNo, iNo, jNo, row.kLoc, row.fType, row.z, row.z, 0});
}
