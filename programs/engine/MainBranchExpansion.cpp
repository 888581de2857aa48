#include "programs/engine/MainBranchExpansion.h"

#include "platform/sql/Sql.h"
#include "programs/engine/BranchStep.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/OutageRows.h"
#include "programs/frame/Messages.h"

namespace {

using exchange::BranchKind;
using exchange::WalkStep;

struct Ends {
    int iNo, jNo;
};

Ends endsOf(const WalkStep& step) {
    return step.orient == 2 ? Ends{step.fromNode, step.node} : Ends{step.node, step.fromNode};
}

bool takesFaults(const WalkStep& step) {
    return step.state != 0 &&
           (step.kind == BranchKind::Line || step.kind == BranchKind::Transformer || step.kind == BranchKind::Winding);
}

bool tooMany(int mType) {
    if (mType > kLastFault) ReportError(kTooManyFaults, 0);
    return mType > kLastFault;
}

/// Faults of the template along the main branch. A number is used up also where nothing had to be added.
class Filling {
  public:
    Filling(const MainBranchRows::End& end, int fzNo, bool fresh, bool back, MainBranchRows& rows)
        : end_(end), fzNo_(fzNo), fresh_(fresh), back_(back), rows_(rows) {
        mType_ = fresh ? 1 : rows.highest(fzNo, 0, kLastFault) + 1;
    }

    bool run(const std::vector<TemplateFault>& faults) {
        if (tooMany(mType_)) return false;
        for (const WalkStep& step : walkFrom(end_.side == 1 ? end_.iNo : end_.jNo, end_.idNo, 1, 1)) {
            if (!takesFaults(step)) continue;
            for (const TemplateFault& fault : faults)
                if (!addAt(step, fault)) return false;
            fresh_ = false;
        }
        return true;
    }

  private:
    bool addAt(const WalkStep& step, const TemplateFault& fault) {
        const int k = step.orient == 2 ? fault.kLoc : 100 - fault.kLoc;
        if (missing(step, k) && !add(step, {0, 0, 0, 0, k, fault.fType, fault.r, fault.x, 0})) return false;
        const int seen = end_.side == 1 ? fault.kLoc : 100 - fault.kLoc;
        if (back_ && missing(step, seen) && !add(step, {0, 0, 0, 0, k, 5, kOpenCircuit, kOpenCircuit, 0})) return false;
        ++mType_;
        return true;
    }

    bool missing(const WalkStep& step, int k) const {
        const Ends ends = endsOf(step);
        return fresh_ || !rows_.hasFault(fzNo_, step.idNo, ends.iNo, ends.jNo, k);
    }

    bool add(const WalkStep& step, MainBranchFault fault) {
        if (tooMany(mType_)) return false;
        const Ends ends = endsOf(step);
        fault.mType = mType_;
        fault.idNo = step.idNo;
        fault.iNo = ends.iNo;
        fault.jNo = ends.jNo;
        rows_.addFault(fzNo_, fault);
        return true;
    }

    MainBranchRows::End end_;
    int fzNo_;
    bool fresh_, back_;
    MainBranchRows& rows_;
    int mType_ = 1;
};

bool tooManyOutages() {
    ReportError(kTooManyOutages, 0);
    return false;
}

bool addOutages(const MainBranchRows::End& end, int fzNo, MainBranchRows& rows) {
    const int highest = rows.highest(fzNo, kFirstOutage, kLastOutage);
    int mType = highest == 0 ? kFirstOutage : highest + 1;
    if (highest != 0 && mType + kRowsOfOutage - 1 > kLastOutage) return tooManyOutages();
    const auto branches = BranchTable::current();
    const BranchRow* main = branches->find(end.idNo, end.iNo, end.jNo);
    if (!main) return true;
    sql::Query q;
    q.exec(
        "SELECT ID_Name,I_Name,J_Name FROM RLY_CKFCHK WHERE Case_no=? AND ZID_Name=? AND ZI_Name=? AND ZJ_Name=? "
        "AND Side=?",
        {rows.caseNo(), main->idName, main->iName, main->jName, end.side});
    while (q.next()) {
        const BranchRow* element = branches->find(q.text(0), q.text(1), q.text(2));
        if (!element) {
            ReportError("检修元件" + q.text(0) + "已经被删除、无效或不在当前方案中", 1);
            continue;
        }
        if (rows.hasOutage(fzNo, element->idNo, element->iNo, element->jNo)) continue;
        if (mType > kLastOutage) return tooManyOutages();
        rows.addOutage(fzNo, mType++, element->idNo, element->iNo, element->jNo, element->flg == 1);
    }
    return true;
}

}  // namespace

bool expandMainBranch(const MainBranchRows::End& end, const std::vector<TemplateFault>& faults, bool back, int fzNo,
                      MainBranchRows& rows) {
    if (faults.empty()) {
        ReportError("没有对应的模板，不能自动设置分支系数计算信息", 0);
        return false;
    }
    const bool fresh = fzNo == 0;
    if (fresh) fzNo = rows.add(end);
    return Filling(end, fzNo, fresh, back, rows).run(faults) && addOutages(end, fzNo, rows);
}
