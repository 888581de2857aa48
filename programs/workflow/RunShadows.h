#pragma once

#include <QVector>

#include "programs/frame/EditSession.h"

/// Copies of the working tables as they stood when a run window opened.
namespace RunShadows {

/// The session of a run: nine tables.
inline const QString owner = QStringLiteral("WinDlgRlyCal");
inline const QString suffix = QStringLiteral("_TEM_TM");
const QVector<EditSession::Table>& tables();

/// Claims the runs of the project for this program until its connection ends, however it ends.
/// \return false when another program still has the claim after some seconds
bool claim();
/// Takes the working tables back that a run left behind without its end, and drops its copies. To be called with the
/// claim. \return what it found; None also for copies that were not complete, which no run had begun to need
enum class Leftover { None, Restored, Failed };
Leftover recover();

}  // namespace RunShadows
