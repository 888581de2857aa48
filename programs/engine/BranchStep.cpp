#include "programs/engine/BranchStep.h"

#include "programs/engine/BranchTable.h"

namespace {

exchange::WalkStep valueOf(const BranchStep& s) {
    return {s.node, s.idNo, s.fromNode, s.orient, s.state, s.level, static_cast<exchange::BranchKind>(s.flg)};
}

BranchStep* newStep(const exchange::WalkStep& s, BranchStep* next) {
    return new BranchStep{s.node, s.idNo, s.fromNode, s.orient, s.state, s.level, static_cast<int>(s.kind), next};
}

}  // namespace

BranchStep* WalkBranches(int node, int idNo, BranchStep* list, int goOn, int level) {
    BranchWalk walk = valuesOf(list);
    const std::size_t before = walk.size();
    BranchTable::current()->graph().walk(node, idNo, walk, goOn, level);
    for (std::size_t k = walk.size() - before; k-- > 0;) list = newStep(walk[k], list);
    return list;
}

void FreeBranchSteps(BranchStep* list) {
    while (list) {
        BranchStep* next = list->next;
        delete list;
        list = next;
    }
}

BranchWalk valuesOf(const BranchStep* list) {
    BranchWalk walk;
    for (; list; list = list->next) walk.push_back(valueOf(*list));
    return walk;
}

BranchWalk walkFrom(int node, int idNo, int goOn, int level) {
    BranchWalk walk;
    BranchTable::current()->graph().walk(node, idNo, walk, goOn, level);
    return walk;
}
