#pragma once

class CRDatabase;

/// Connects the rule database that belongs to the default connection: the project's own, or the plain one where there
/// is no project. A connection that stands on it already stays as it is. \return false when it cannot be opened; the
/// dock then has the reason
bool connectRules(CRDatabase& database);
