#pragma once

#include <QString>
#include <QStringList>

namespace server {

/// The keeper program, which lies beside the running one. \return empty when it is not there
QString keeperProgram();

/// Starts the keeper as a process of its own, no child of this one and outside its terminal session.
/// \param serverLock  descriptor that the keeper and the server hold for their lives
/// \return false when the process cannot be made
bool startKeeper(const QString& program, const QString& folder, int serverLock, const QStringList& arguments);

}  // namespace server
