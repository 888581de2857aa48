#pragma once

#include <QList>
#include <QStringList>

/// The operating modes for which the sensitivity parameters of a case are computed, RLY_KLMFSYS.
namespace SensitivityModes {

QStringList names(int caseNo);
/// Puts modes in place of those that the case had, all or nothing. \param modes  numbers of operating modes
bool store(int caseNo, const QList<int>& modes);

}  // namespace SensitivityModes
