#pragma once

#include <vector>

#include "exchange/BranchGraph.h"

/// One element of the list that a walk over the branches builds; new elements go to the head.
struct BranchStep {
    int node = 0;      ///< far node of the branch, the one that the walk reached
    int idNo = 0;      ///< -1 where the list is made by hand for a bus
    int fromNode = 0;  ///< node from which the walk came
    int orient = 0;    ///< 2 when the I node of the branch is `fromNode`, 1 when the J node is
    int state = 0;     ///< 0 passed a virtual relay, 1 ended, 2 passed a star point, -1 the relay's own node
    int level = 0;     ///< what the caller passed
    int flg = 0;       ///< kind of branch
    BranchStep* next = nullptr;
};

/// Walks over the current branch table from `node` out along the branch `idNo`.
/// \param list  steps found so far; the caller owns it and what comes back
/// \return      the new head
BranchStep* WalkBranches(int node, int idNo, BranchStep* list, int goOn, int level);

/// Frees a list made by WalkBranches.
void FreeBranchSteps(BranchStep* list);

/// The same walk as a list of values, newest step first, for callers that need no chain.
using BranchWalk = std::vector<exchange::WalkStep>;
BranchWalk valuesOf(const BranchStep* list);
BranchWalk walkFrom(int node, int idNo, int goOn, int level);
