#pragma once

#include <QString>

#include "programs/engine/RuleData.h"

class CRelayInputCal;

/// What a new relay has in place of each parameter; a sensitivity run replaces it, by 0 where it finds nothing.
inline constexpr double kParameterNotComputed = 1.0;

/// How the sensitivity of a setting is formed, `KlmFlg`; 0 where nothing tells.
int klmFlgOf(const RuleData& rules, int rTypeNo, int pno, const QString& cdz);

/// \param flg  11, 12 the first parameter of a check is in use, 21, 22 the second
inline bool firstParameterInUse(int flg) { return flg == 11 || flg == 12; }

/// The parameter that a check uses. \param flg  11, 12 the first, 21, 22 the second
double sensitivityParameter(double parameter1, double parameter2, int flg);

/// Whether the parameter in use still has the value of a new relay: a sensitivity from it would mean nothing.
bool isSensitivityOpen(double parameter1, double parameter2, int flg);

/// What stands for a sensitivity that cannot be formed.
inline constexpr double kNoSensitivity = -1.0, kSettingIsZero = -2.0;

/// Sensitivity from its parameters, without messages: -1.0 when the parameter is 0 or `klmFlg` is none of these, -2.0
/// when the setting is 0.
/// \param flg     11, 12 parameter one is in use, 21, 22 parameter two
/// \param klmFlg  1 parameter over setting, 2 setting over parameter
double quietSensitivity(double parameter1, double parameter2, int flg, int klmFlg, double setting);

/// Sensitivity from its parameters. -1.0 means no result.
/// \param flg     11, 12 parameter one is in use, 21, 22 parameter two
/// \param klmFlg  1 parameter over setting, 2 setting over parameter; a zero divisor is told in the dock
double sensitivityOf(double parameter1, double parameter2, int flg, int klmFlg, double setting);

/// Sensitivity of a setting by its row of RLY_RKLMTEM_TEM; -1.0 without a row or without a result.
double CalSensitivity(int rTypeNo, int rno, int pno, const QString& cdz, double value);
/// The same without messages, and -2.0 when the setting is 0.
double quietSensitivity(int rTypeNo, int rno, int pno, const QString& cdz, double value);

/// Computes `Valsense` of all rows of RLY_RKLMTEM_TEM from the new primary settings of RLY_RLYOBJ_TEM. Rows without a
/// result keep what they have.
bool updateSensitivities(int rTypeNo, const RuleData& rules);

/// Gives the case that stands in RLY_RLYOBJ_TEM its sensitivity rows: those of other relays give way to its own, and
/// figures that were formed with other settings are forgotten. A type without checks has none.
bool takeOverSensitivityRows(int rTypeNo, CRelayInputCal& relayInput);

/// Takes the results of a sensitivity run, which stand under a case number, over into RLY_FKLM as they are.
bool takeSensitivityResults(int caseNo);

/// Takes the results of a sensitivity run (case number 0) over into RLY_FKLM and makes the sensitivity rows anew.
/// A parameter that came out at 0 or below is stored as it is and told in the dock.
bool storeSensitivityParameters(CRelayInputCal& relayInput);
