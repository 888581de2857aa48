#pragma once

#include <QString>
#include <QStringList>

/// The delivered rule library: one CSV file per table of the rule database, column names in the first line.
class RuleLibrary {
  public:
    /// Creates the rule tables and fills them from a folder, all or nothing; what stood in them before is replaced.
    /// \param connection  a connection to the rule database
    /// \param error  on failure one line, `FILE:LINE: what is wrong`
    static bool load(const QString& folder, const QString& connection, QString* error);

    /// What is wrong with the library in a rule database: references that do not resolve, operand codes that do not
    /// parse or stand for nothing, counts of RULEINF that are not those of the other tables, names that miss.
    /// \return one sentence per fault; empty when it is sound
    static QStringList faults(const QString& connection);
};
