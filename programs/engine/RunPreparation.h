#pragma once

#include "programs/engine/CKlmCalFlow.h"
#include "programs/engine/CStepCalFlow.h"

/// Sets up a run: clears the working rows of the case, copies the user's main branches, forms the setting rows, writes
/// the files of the case and puts the cursor on the first row.
/// An automatic run depends on its input only: the new values of the settings it calculates become 0 in the working
/// table, and relays of the case stand with their working settings from its first step on. Parts that take no part keep
/// theirs. Nor does any run see how far an earlier one had got.
/// \param run  1 manual, 2 automatic
/// \return false when the case has no relay or nothing to calculate; the dock then says so
bool prepareRun(int run, CStepCalFlow& flow);

/// The same for a sensitivity run of a case.
bool prepareSensitivityRun(int realCaseNo, CKlmCalFlow& flow);
