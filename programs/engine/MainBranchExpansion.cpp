#include "programs/engine/MainBranchExpansion.h"

#include "platform/host/Text.h"
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
    if (mType > kLastFault) ReportError(Text::tr(kTooManyFaults), 0);
    return mType > kLastFault;
}

/// Faults of the template along the main branch. A number is used up also where nothing had to be added.
class Filling {
  public:
    Filling(MainBranchRows::Branch& branch, bool fresh, bool back, MainBranchRows& rows)
        : branch_(branch), fresh_(fresh), back_(back), rows_(rows) {
        mType_ = fresh ? 1 : branch.highest(0, kLastFault) + 1;
    }

    bool run(const std::vector<TemplateFault>& faults) {
        if (tooMany(mType_)) return false;
        const MainBranchRows::End& end = branch_.end;
        for (const WalkStep& step : walkFrom(end.side == 1 ? end.iNo : end.jNo, end.idNo, 1, 1)) {
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
        const int seen = branch_.end.side == 1 ? fault.kLoc : 100 - fault.kLoc;
        if (back_ && missing(step, seen) && !add(step, {0, 0, 0, 0, k, 5, kOpenCircuit, kOpenCircuit, 0})) return false;
        ++mType_;
        return true;
    }

    bool missing(const WalkStep& step, int k) const {
        const Ends ends = endsOf(step);
        return fresh_ || !branch_.hasFault(step.idNo, ends.iNo, ends.jNo, k);
    }

    bool add(const WalkStep& step, MainBranchFault fault) {
        if (tooMany(mType_)) return false;
        const Ends ends = endsOf(step);
        fault.mType = mType_;
        fault.idNo = step.idNo;
        fault.iNo = ends.iNo;
        fault.jNo = ends.jNo;
        rows_.addFault(branch_, fault);
        return true;
    }

    MainBranchRows::Branch& branch_;
    bool fresh_, back_;
    MainBranchRows& rows_;
    int mType_ = 1;
};

}  // namespace

bool addTemplateFaults(MainBranchRows::Branch& branch, const std::vector<TemplateFault>& faults, bool back, bool fresh,
                       MainBranchRows& rows) {
    return Filling(branch, fresh, back, rows).run(faults);
}

void addMainBranchOutages(MainBranchRows::Branch& branch, const QVector<ElementName>& outages, MainBranchRows& rows) {
    numberOutages(
        outages, branch.highest(kFirstOutage, kLastOutage), Text::tr("已经被删除、无效或不在当前方案中"),
        [&](const BranchRow& e) { return branch.hasOutage(e.idNo, e.iNo, e.jNo); },
        [&](int mType, const BranchRow& e) { rows.addOutage(branch, mType, e.idNo, e.iNo, e.jNo, e.flg == 1); });
}
