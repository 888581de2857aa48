#pragma once

#include <QVector>

#include "programs/frame/Location.h"

/// Which relays the relays of a case have to coordinate with.
namespace CoordinationSearch {

/// Finds the relations of the case anew, RLY_CASERLYCOP: for each rule in force that reads a setting of another relay,
/// the relays behind the far end of the relay's own branch that look away from it. Equal rows are kept once.
/// \return false when a relay's branch is not in the network exactly once (told in the dock; the rows found before it
///         stay) or the database refused
bool SearchRlyCop(int caseNo);

/// A rule of a relay part that has to be calculated again.
struct Dependent {
    int RNo = 0;
    int PNo = 0;
    int RuleNo = 0;
};

/// What depends on setting `dzNo` of part `pNo` of a relay in a case.
/// \param passedRNo, passedId  relay and `ID` of the row on which a manual run stands: only rows before it count, and
///        not those of its own relay; passedId -1: no run, all count
QVector<Dependent> dependents(int caseNo, int rNo, int pNo, int dzNo, int passedRNo = -1, int passedId = -1);

/// The part of the coordinated relay that an input variable of this kind reads.
int coordinatedPart(int vType);

}  // namespace CoordinationSearch
