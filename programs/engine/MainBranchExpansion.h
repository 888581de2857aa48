#pragma once

#include "programs/engine/MainBranchRows.h"
#include "programs/engine/RuleData.h"

/// Adds the template's faults, and the outages that the user wants for it, to a main branch as far as they are missing.
/// \param back  the main branch leads back to the relay's own node: faults behind an open
/// \param fzNo  number of the main branch; 0 makes a new one
/// \return false when fault or outage numbers ran out
bool expandMainBranch(const MainBranchRows::End& end, const std::vector<TemplateFault>& faults, bool back, int fzNo,
                      MainBranchRows& rows);
