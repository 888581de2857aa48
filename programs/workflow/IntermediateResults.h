#pragma once

#include <QSet>
#include <QVector>

#include "programs/frame/RelayTypes.h"
#include "programs/frame/StageColumns.h"

/// What a run has come to so far, in the working tables.
namespace IntermediateResults {

/// What a rule of a relay part gives for one setting.
struct Result {
    int RNo = 0;
    int PNo = 0;
    int RuleNo = 0;
    QString Cdz;
    QString DspCdz;  ///< `Cdz` where the type has no such setting
    QString Note;    ///< of the rule
    QString RDz;     ///< primary; 0 also where the rule has given nothing
};
/// The results of the setting rules of a relay part, by rule.
QVector<Result> ofPart(int caseNo, const RelayTypeInfo& type, int rNo, int pNo);

/// Parameter group that a case uses for a rule of a relay part; 0 where it has none.
int parameterGroup(int caseNo, const Result& rule);

/// New primary values of a setting as they stand in RLY_RLYOBJ_TEM.
struct Values {
    int RNo = 0;
    QString Cdz;
    std::array<QString, kStages> primary;
};
QVector<Values> workingValues(const QSet<int>& relays);

}  // namespace IntermediateResults
