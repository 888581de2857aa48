#pragma once

#include <QVector>

#include "programs/workflow/CaseNode.h"

/// The settings of the relays of a case: working table RLY_RLYOBJ_TEM and case table RLY_CASERDZ.
namespace CaseSettings {

/// Fills RLY_RLYOBJ_TEM: old values from RLY_RDZ, new ones from the case, 0 where it has none.
/// \return false, with an empty table, for a relay type that is no more
/// \param missing  set when the case names relays that do not exist; told in the dock once
bool load(int caseNo, int rTypeNo, bool* missing);
/// The rows of RLY_RLYOBJ_TEM in order of calculation, with labels.
QVector<CaseSettingRow> rows(int rTypeNo, bool primary);
/// Rows for relays that a case does not have yet: new values 0, old ones as stored.
QVector<CaseSettingRow> newRows(const QVector<int>& relays, int rTypeNo, bool primary);

// The other measure of each value follows by the factor of its kind and the relay's ratios; that of a value which
// stands as RLY_RLYOBJ_TEM has it stays to the last digit. The rows of a relay that does not exist any more are left
// out, for its ratios are not known: `missing` is set then, and the dock told. No transaction of their own.
bool storeCase(int caseNo, int rTypeNo, const CaseForm& form, bool* missing);
bool storeWorking(int rTypeNo, const CaseForm& form, bool* missing);

}  // namespace CaseSettings
