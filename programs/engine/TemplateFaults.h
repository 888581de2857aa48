#pragma once

#include "programs/engine/BranchStep.h"
#include "programs/engine/RelayPlace.h"
#include "programs/engine/RuleFaultRows.h"

/// A template fault to be put at the branches of a walk.
struct FaultAtSteps {
    int pno = 0, rMode = 0;
    int kLoc = 0;  ///< percent from the near end
    int fType = 1;
    double r = 0, x = 0;
    int kind = 1;  ///< 1 on lines, 2 on transformers
};

/// The branches that a place of a template means for a relay: 1 the protected element, 2 the lines, 3 the transformers
/// behind its far end. Branches that lead back to the relay's own node have `state` -1 (2 and 3 only).
BranchWalk stepsOfTemplate(int lType, const RelayPlace& place);

/// Adds a row for each branch that the fault fits, under the next free fault numbers of the mode. At a branch that
/// leads back to the relay's own node the fault lies just inside the branch, behind an open.
void insertTemplateFaults(const FaultAtSteps& fault, const BranchWalk& steps, RuleFaultRows& rows);
