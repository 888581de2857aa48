#pragma once

#include <QString>
#include <QVector>
#include <array>

#include "programs/frame/StageColumns.h"

/// A setting rule of a relay in a case.
struct RuleChoice {
    int RuleNo = 0;
    int ParNo = 0;        ///< parameter group; 0 for a rule without parameters
    bool RValid = false;  ///< in use
    QString Note, Formula;
    QString parameters;  ///< parameterLine() of the group
};

/// A part of a relay with its rules, by number.
struct PartChoice {
    int part = 0;
    bool PValid = false;  ///< to be set
    QVector<RuleChoice> rules;
};

/// Which setting rules the relays of a case use, in RLY_CASEINF.
namespace RuleSelection {

/// Takes the parts of a relay type that a case does not set out of use, for all its relays.
/// \param partFlags  1 where the case sets the part
bool leaveOutParts(int caseNo, int rTypeNo, const std::array<int, kStages>& partFlags);
/// The parts of a relay that the case sets.
QVector<PartChoice> read(int caseNo, int rNo, int rTypeNo, const std::array<int, kStages>& partFlags);
/// All or nothing.
/// \param forAllRelays  the other relays of the case get rules and parameter groups too, but keep their parts
bool store(int caseNo, int rNo, const QVector<PartChoice>& parts, bool forAllRelays);

}  // namespace RuleSelection
