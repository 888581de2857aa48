#include "programs/engine/MainBranchRows.h"

#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/engine/OutageRows.h"

namespace {

const QStringList kBranchColumns{"FzNo", "ID_No", "I_No", "J_No", "Side", "Flg", "Case_No"};
const QStringList kFaultColumns{"FzNo", "MType", "ID_No", "FINo", "FJNo", "K_Loc", "FType", "R", "X", "Flg", "Case_No"};

bool isOutage(const MainBranchFault& f) { return f.mType >= kFirstOutage && f.mType <= kLastOutage; }
bool isAt(const MainBranchFault& f, int idNo, int iNo, int jNo) {
    return f.flg == 0 && f.idNo == idNo && f.iNo == iNo && f.jNo == jNo;
}

template <class Found>
Found* pointerAt(const std::map<int, Found*>& all, int key) {
    const auto it = all.find(key);
    return it == all.end() ? nullptr : it->second;
}

}  // namespace

bool MainBranchRows::Branch::hasFault(int idNo, int iNo, int jNo, int kLoc) const {
    return std::any_of(faults.begin(), faults.end(), [&](const MainBranchFault& f) {
        return f.mType <= kLastFault && isAt(f, idNo, iNo, jNo) && f.kLoc == kLoc;
    });
}

bool MainBranchRows::Branch::hasOutage(int idNo, int iNo, int jNo) const {
    return std::any_of(faults.begin(), faults.end(),
                       [&](const MainBranchFault& f) { return isOutage(f) && isAt(f, idNo, iNo, jNo); });
}

int MainBranchRows::Branch::highest(int from, int to) const {
    int highest = 0;
    for (const MainBranchFault& f : faults)
        if (f.mType >= from && f.mType <= to) highest = std::max(highest, f.mType);
    return highest;
}

MainBranchRows::MainBranchRows(int caseNo) : caseNo_(caseNo) {
    sql::Query q;
    q.exec("SELECT FzNo,ID_No,I_No,J_No,Side,Flg FROM RLY_CFZXS WHERE Case_No=?", {caseNo_});
    while (q.next()) keep({q.number(1), q.number(2), q.number(3), q.number(4)}, q.number(5), q.number(0));
    sql::Query f;
    f.exec("SELECT FzNo,MType,ID_No,FINo,FJNo,K_Loc,FType,R,X,Flg FROM RLY_CFZXSRM WHERE Case_No=?", {caseNo_});
    while (f.next())
        if (Branch* branch = find(f.number(0)))
            branch->faults.push_back({f.number(1), f.number(2), f.number(3), f.number(4), f.number(5), f.number(6),
                                      f.real(7), f.real(8), f.number(9)});
}

MainBranchRows::Branch& MainBranchRows::keep(const End& end, int flg, int fzNo) {
    Branch& branch = branches_.emplace_back(Branch{fzNo, flg, end, {}, {}});
    byEnd_.insert({Key{end.idNo, end.iNo, end.jNo, end.side}, &branch});
    byNo_.insert({fzNo, &branch});
    lastNo_ = std::max(lastNo_, fzNo);
    return branch;
}

MainBranchRows::Branch* MainBranchRows::find(const End& end) {
    const auto it = byEnd_.find(Key{end.idNo, end.iNo, end.jNo, end.side});
    return it == byEnd_.end() ? nullptr : it->second;
}

MainBranchRows::Branch* MainBranchRows::find(int fzNo) { return pointerAt(byNo_, fzNo); }

MainBranchRows::Branch& MainBranchRows::add(const End& end, int flg, int fzNo) {
    Branch& branch = keep(end, flg, fzNo == 0 ? lastNo_ + 1 : fzNo);
    newBranches_.push_back({branch.fzNo, end.idNo, end.iNo, end.jNo, end.side, flg, caseNo_});
    return branch;
}

void MainBranchRows::addFault(Branch& branch, const MainBranchFault& f) {
    branch.faults.push_back(f);
    branch.text.clear();
    newFaults_.push_back({branch.fzNo, f.mType, f.idNo, f.iNo, f.jNo, f.kLoc, f.fType, f.r, f.x, f.flg, caseNo_});
}

void MainBranchRows::addOutage(Branch& branch, int mType, int idNo, int iNo, int jNo, bool line) {
    for (const OutageRow& row : outageRows(line))
        addFault(branch, {mType, idNo, iNo, jNo, row.kLoc, row.fType, row.z, row.z, 0});
}

bool MainBranchRows::store() {
    const QVector<QVariantList> branches = std::exchange(newBranches_, {});
    const QVector<QVariantList> faults = std::exchange(newFaults_, {});
    if (branches.isEmpty() && faults.isEmpty()) return true;
    sql::Transaction whole;
    if (!branches.isEmpty() && !sql::insertRows({}, "RLY_CFZXS", kBranchColumns, branches)) return false;
    if (!faults.isEmpty() && !sql::insertRows({}, "RLY_CFZXSRM", kFaultColumns, faults)) return false;
    return whole.commit();
}
