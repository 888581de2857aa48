#include "programs/engine/MainBranchRows.h"

#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/engine/OutageRows.h"

namespace {

const QStringList kBranchColumns{"FzNo", "ID_No", "I_No", "J_No", "Side", "Flg", "Case_No"};
const QStringList kFaultColumns{"FzNo", "MType", "ID_No", "FINo", "FJNo", "K_Loc", "FType", "R", "X", "Flg", "Case_No"};

bool isFault(const MainBranchFault& f) { return f.mType <= kLastFault; }
bool isOutage(const MainBranchFault& f) { return f.mType >= kFirstOutage && f.mType <= kLastOutage; }
bool isAt(const MainBranchFault& f, int idNo, int iNo, int jNo) {
    return f.flg == 0 && f.idNo == idNo && f.iNo == iNo && f.jNo == jNo;
}

}  // namespace

MainBranchRows::MainBranchRows(int caseNo) : caseNo_(caseNo) { read(); }

void MainBranchRows::read() {
    sql::Query q;
    q.exec("SELECT FzNo,ID_No,I_No,J_No,Side,Flg FROM RLY_CFZXS WHERE Case_No=?", {caseNo_});
    while (q.next()) {
        const Key key{q.number(1), q.number(2), q.number(3), q.number(4)};
        branches_.insert({key, {q.number(0), q.number(5)}});
        lastNo_ = std::max(lastNo_, q.number(0));
    }
    sql::Query f;
    f.exec("SELECT FzNo,MType,ID_No,FINo,FJNo,K_Loc,Flg FROM RLY_CFZXSRM WHERE Case_No=?", {caseNo_});
    while (f.next()) {
        MainBranchFault fault;
        fault.mType = f.number(1);
        fault.idNo = f.number(2);
        fault.iNo = f.number(3);
        fault.jNo = f.number(4);
        fault.kLoc = f.number(5);
        fault.flg = f.number(6);
        faults_[f.number(0)].push_back(fault);
    }
}

const MainBranchRows::Branch* MainBranchRows::find(const End& end) const {
    const auto it = branches_.find(Key{end.idNo, end.iNo, end.jNo, end.side});
    return it == branches_.end() ? nullptr : &it->second;
}

int MainBranchRows::add(const End& end, int flg) {
    const int fzNo = lastNo_ + 1;
    add(end, flg, fzNo);
    return fzNo;
}

void MainBranchRows::add(const End& end, int flg, int fzNo) {
    const Key key{end.idNo, end.iNo, end.jNo, end.side};
    branches_.insert({key, {fzNo, flg}});
    lastNo_ = std::max(lastNo_, fzNo);
    newBranches_.push_back({fzNo, end.idNo, end.iNo, end.jNo, end.side, flg, caseNo_});
}

bool MainBranchRows::hasFault(int fzNo, int idNo, int iNo, int jNo, int kLoc) const {
    const auto rows = faults_.value(fzNo);
    return std::any_of(rows.begin(), rows.end(), [&](const MainBranchFault& f) {
        return isFault(f) && isAt(f, idNo, iNo, jNo) && f.kLoc == kLoc;
    });
}

bool MainBranchRows::hasOutage(int fzNo, int idNo, int iNo, int jNo) const {
    const auto rows = faults_.value(fzNo);
    return std::any_of(rows.begin(), rows.end(),
                       [&](const MainBranchFault& f) { return isOutage(f) && isAt(f, idNo, iNo, jNo); });
}

int MainBranchRows::highest(int fzNo, int from, int to) const {
    int highest = 0;
    for (const MainBranchFault& f : faults_.value(fzNo))
        if (f.mType >= from && f.mType <= to) highest = std::max(highest, f.mType);
    return highest;
}

void MainBranchRows::addFault(int fzNo, const MainBranchFault& f) {
    faults_[fzNo].push_back(f);
    newFaults_.push_back({fzNo, f.mType, f.idNo, f.iNo, f.jNo, f.kLoc, f.fType, f.r, f.x, f.flg, caseNo_});
}

void MainBranchRows::addOutage(int fzNo, int mType, int idNo, int iNo, int jNo, bool line) {
    for (const OutageRow& row : outageRows(line))
        addFault(fzNo, {mType, idNo, iNo, jNo, row.kLoc, row.fType, row.z, row.z, 0});
}

bool MainBranchRows::store() {
    bool stored = newBranches_.isEmpty() || sql::insertRows({}, "RLY_CFZXS", kBranchColumns, newBranches_);
    if (stored && !newFaults_.isEmpty()) stored = sql::insertRows({}, "RLY_CFZXSRM", kFaultColumns, newFaults_);
    newBranches_.clear();
    newFaults_.clear();
    return stored;
}
