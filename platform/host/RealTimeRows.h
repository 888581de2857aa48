#pragma once

#include <QString>

#include "platform/rtdb/dbDatabase.h"

/// Writes the calculation tables of a case into the real-time tables, without a commit. False on failure, with the
/// reason in the dock.
namespace host {

/// Empties all tables of the network.
bool emptyNetwork(dbDatabase& realTime);
/// L1_<n> .. L7_<n>: all elements, with positive-sequence data; zero-sequence data stay unknown.
bool writeNetwork(dbDatabase& realTime, const QString& connection, int n);
/// S2_<n> .. S5_<n>: zero-sequence data of the elements that are there, and mutual impedances of lines in service.
bool writeSequenceData(dbDatabase& realTime, const QString& connection, int n);
/// Node voltages and injections of a load-flow case.
bool writeLoadFlow(dbDatabase& realTime, const QString& connection, int caseNo);

}  // namespace host
