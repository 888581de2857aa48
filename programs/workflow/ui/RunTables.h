#pragma once

#include <QHash>
#include <functional>

#include "programs/workflow/IntermediateResults.h"
#include "programs/workflow/SensitivityChecks.h"

class PaintTable;
class RecordTable;

/// The two tables of results in the run window: columns and cells.
namespace run_tables {

enum ResultColumn { RLabel, RSetting, RPart, RNote, RValue, RRelay, RCdz, RButton, RRule, ResultColumns };
enum SensitivityColumn { SLabel, SSetting, SPart, SValue, SNote1, SFault1, SNote2, SFault2, SId, SFlag, Sensitivities };

void setUpResults(RecordTable& table, const QStringList& heads);
void setUpSensitivities(PaintTable& table, const QStringList& heads);

/// What stands in both tables before the figures.
struct Head {
    QString label;  ///< place of the relay
    QString setting;
    int part = 0;
};
/// \param reasons  why rules have no result, by rule; their cells say so instead of 0
/// \param pressed  takes the row whose button is pressed
void showResults(RecordTable& table, const QString& label, const QVector<IntermediateResults::Result>& results,
                 const QHash<int, QString>& reasons, const std::function<void(int)>& pressed);
/// The row is hidden without a sensitivity. The parameter in use is marked.
void showSensitivities(PaintTable& table, const Head& head, const SensitivityChecks::Checks& checks);

}  // namespace run_tables
