#include "programs/engine/TemplateFaults.h"

#include <algorithm>

#include "platform/host/Text.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/OutageRows.h"
#include "programs/frame/Messages.h"

namespace {

using exchange::BranchKind;
using exchange::WalkStep;

constexpr int kCopiedLevel = 2;  // of a step that was reached from another one: neither 0 nor 1

bool isTransformer(BranchKind kind) { return kind == BranchKind::Transformer || kind == BranchKind::Winding; }

BranchWalk firstBranchAt(int bus) {
    const exchange::BranchGraph& graph = BranchTable::current()->graph();
    if (graph.at(bus).empty()) return {};
    const exchange::BranchEdge& edge = graph.edges()[graph.at(bus).front()];
    return {{edge.iNo, edge.idNo, edge.jNo, edge.iNo == bus ? 1 : 2, 1, 1, BranchKind::Line}};
}

/// Where the branches behind a relay begin: at the ends of its own section, or at its bus.
BranchWalk sectionEnds(const RelayPlace& place) {
    if (place.atBus) return {{place.node, -1, place.node, 1, 1, 1, BranchKind::Line}};
    return walkFrom(place.node, place.idNo, 1, 1);
}

bool contains(const BranchWalk& steps, int node) {
    return std::any_of(steps.begin(), steps.end(), [&](const WalkStep& s) { return s.node == node; });
}

void takeOver(const BranchWalk& walk, bool lines, BranchWalk& result) {
    for (const WalkStep& step : walk) {
        const bool wanted = lines ? step.kind == BranchKind::Line : isTransformer(step.kind);
        if (step.state == 0 || !wanted || contains(result, step.node)) continue;
        result.insert(result.begin(), step);
        result.front().level = kCopiedLevel;
    }
}

BranchWalk adjacentBranches(const RelayPlace& place, bool lines) {
    const auto branches = BranchTable::current();
    const exchange::BranchGraph& graph = branches->graph();
    BranchWalk result;
    for (const WalkStep& end : sectionEnds(place)) {
        if (end.state != 1) continue;
        for (int position : graph.at(end.node)) {
            const int idNo = graph.edges()[position].idNo;
            if (idNo == end.idNo) continue;
            takeOver(walkFrom(end.node, idNo, 1, end.state), lines, result);
        }
    }
    for (WalkStep& step : result)
        if (step.node == place.node) step.state = -1;
    return result;
}

RuleFaultRow rowAt(const FaultAtSteps& fault, const WalkStep& step, int kLoc, int mType) {
    const bool fromI = step.orient == 2;
    return {fault.pno,
            fault.rMode,
            mType,
            step.idNo,
            fromI ? step.fromNode : step.node,
            fromI ? step.node : step.fromNode,
            fromI ? kLoc : 100 - kLoc,
            fault.fType,
            fault.r,
            fault.x,
            0};
}

bool fitsLine(const FaultAtSteps& fault, const WalkStep& step) {
    if (step.kind != BranchKind::Line || (step.level == 0 && fault.kLoc == 0)) return false;
    return step.state == 1 || (step.level == 1 && fault.kLoc == 0);
}

bool leadsBack(const FaultAtSteps& fault, const WalkStep& step) {
    return step.state == -1 && step.kind == BranchKind::Line && !(step.level == 0 && fault.kLoc == 0);
}

bool fitsTransformer(const FaultAtSteps& fault, const WalkStep& step) {
    if (step.kind != BranchKind::Winding) return step.kind == BranchKind::Transformer;
    // The star point is no place of a fault.
    return !(step.orient == 2 && fault.kLoc == 0) && !(step.orient == 1 && fault.kLoc == 100);
}

/// \pre takesFault(fault, step)
void addAt(const FaultAtSteps& fault, const WalkStep& step, int mType, RuleFaultRows& rows) {
    if (fault.kind == 2 || fitsLine(fault, step)) return rows.add(rowAt(fault, step, fault.kLoc, mType));
    const int inside = fault.kLoc == 100 ? 99 : fault.kLoc == 0 ? 1 : fault.kLoc;
    RuleFaultRow row = rowAt(fault, step, inside, mType);
    rows.add(row);
    row.fType = 5;
    row.r = row.x = kOpenCircuit;
    rows.add(row);
}

bool takesFault(const FaultAtSteps& fault, const WalkStep& step) {
    return fault.kind == 2 ? fitsTransformer(fault, step) : fitsLine(fault, step) || leadsBack(fault, step);
}

}  // namespace

BranchWalk stepsOfTemplate(int lType, const RelayPlace& place) {
    if (!place.found) return {};
    if (lType != 1) return adjacentBranches(place, lType == 2);
    return place.atBus ? firstBranchAt(place.node) : walkFrom(place.node, place.idNo, 1, 1);
}

void insertTemplateFaults(const FaultAtSteps& fault, const BranchWalk& steps, RuleFaultRows& rows) {
    int mType = rows.highest(fault.pno, fault.rMode, 0, kLastFault) + 1;
    if (mType > kLastFault) return ReportError(Text::tr(kTooManyFaults), 0);
    for (const WalkStep& step : steps) {
        if (!takesFault(fault, step)) continue;
        if (mType > kLastFault) return ReportError(Text::tr(kTooManyFaults), 0);
        addAt(fault, step, mType++, rows);
    }
}
