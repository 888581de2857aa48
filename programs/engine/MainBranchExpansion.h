#pragma once

#include "programs/engine/MainBranchRows.h"
#include "programs/engine/RuleData.h"
#include "programs/engine/RunInputs.h"

/// Adds the template's faults to a main branch as far as they are missing.
/// \param back   the main branch leads back to the relay's own node: faults behind an open
/// \param fresh  the main branch has just been made
/// \return false when the fault numbers ran out
bool addTemplateFaults(MainBranchRows::Branch& branch, const std::vector<TemplateFault>& faults, bool back, bool fresh,
                       MainBranchRows& rows);

/// Adds the outages that the user wants for a main branch as far as they are missing.
void addMainBranchOutages(MainBranchRows::Branch& branch, const QVector<ElementName>& outages, MainBranchRows& rows);
