#pragma once

#include <QString>

/// Connections and databases of the four groups of tables. Relay, case and working tables lie in one database, the
/// project's own, on the default connection; code keeps the groups apart all the same.
namespace tables {

inline const QString ruleConnection = QStringLiteral("RLYRULE");
inline const QString relayConnection = QStringLiteral("qt_sql_default_connection");
inline const QString caseConnection = relayConnection;
inline const QString workingConnection = relayConnection;

/// What a database's name has behind the project's name.
inline const QString ruleSuffix = QStringLiteral("TEMRLYRULE");
inline const QString relaySuffix;
inline const QString caseSuffix;
inline const QString workingSuffix;

/// The server's own database, for creating and dropping the others.
inline const QString serverConnection = QStringLiteral("MYSQL");

/// Connections of the old project while it is saved under a new name.
inline const QString oldRuleConnection = QStringLiteral("RLYRULE_TEM");
inline const QString oldRelayConnection = QStringLiteral("RELAY_TEM");
inline const QString oldCaseConnection = QStringLiteral("RLYCASE_TEM");
inline const QString oldWorkingConnection = QStringLiteral("RLYTM_TEM");

}  // namespace tables
