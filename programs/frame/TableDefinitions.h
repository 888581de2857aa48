#pragma once

#include <QString>
#include <QVector>

#include "platform/sql/Sql.h"

/// Every table of the system, by code. The copy of a table has the table's code + 100.
namespace tables {

enum class Group { Rule, Relay, Case, Working };

struct Definition {
    int code = 0;
    Group group = Group::Rule;
    sql::Layout layout;
    QString copyKeys;  ///< keys of a copy; empty: none
};

inline constexpr int copyOffset = 100;

/// All tables in list order: rule, relay, case, working.
const QVector<Definition>& definitions();
/// \return null for a code that is neither a table's nor a copy's
const Definition* ofCode(int code);
const Definition* ofName(const QString& name);
/// Whether the code makes a copy of another table; RLY_RKLMTEM_TEM, RLY_RLYOBJ_TEM and RLY_RRBRANCH_TEM are none.
bool isCopyCode(int code);

/// Connection on which the table of a code is made; empty for a code of no group.
QString connectionOfCode(int code);
const QString& connectionOf(Group group);

/// The statement that creates a table or a copy under a name; empty for an unknown code.
QString creationText(const QString& name, int code);

/// Creates the tables of the rule database that are missing, for whatever fills it.
bool CreateRuleTables(const QString& connection);

}  // namespace tables
