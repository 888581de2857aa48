#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include "programs/frame/TableDefinitions.h"

/// Connects the databases, creates the tables and their working copies, and saves a project under another name. Holds
/// nothing open between calls; failures are told in the dock and return false.
class CRDatabase {
  public:
    CRDatabase() = default;
    CRDatabase(const QString& driver, const QString& user, const QString& password, const QString& host);
    /// A copy knows how to connect but no tables.
    CRDatabase(const CRDatabase& other);
    CRDatabase& operator=(const CRDatabase&) = delete;

    /// \param openExisting  false: drops the database when it exists and makes a new, empty one; needs "MYSQL"
    bool ConnectDB(const QString& dbName, const QString& connection, bool openExisting);
    bool ConnectToBaseDb(const QString& name);

    /// \param code       selects the definition and the group, whatever the name
    /// \param dropFirst  1: a table of this name is dropped first
    static bool BuildTable(const QString& name, int code, int dropFirst);
    /// Creates the project's tables that are missing and fills the display table when it is empty.
    bool BuildNewTable(const QString& project);
    /// Makes every `_TEM` copy anew and empties the working tables.
    bool BuildTmpTb(const QString& project);
    bool BuildTmpTbDat(const QString& project);
    /// Drops copies and working tables, then closes and removes the four connections.
    bool DeleteTmpTb(const QString& rule, const QString& relay, const QString& cases, const QString& working);
    bool DeleteRLYTM();
    bool DeleteTMTabDat();
    bool DeleteDb(const QString& project);
    /// On entry the rule and default connections stand on the new project's databases, which are there and empty but
    /// for base tables. Until it is complete the new project cannot be opened; a failure removes it and leaves the
    /// connections on the old one.
    bool SaveAsDb(const QString& oldProject, const QString& newProject);

  private:
    using Entries = QVector<tables::Definition>;
    [[nodiscard]] Entries entriesOf(tables::Group group) const;
    bool CreateAndConnect(const QString& dbName, const QString& connection);
    bool Open(const QString& dbName, const QString& connection, QString* reason);
    bool SeedDisplayTable();
    bool ConnectProject(const QString& project, const QStringList& connections);
    bool CopyProject(const QString& oldProject, const QString& newProject);
    bool CopyGroup(tables::Group group, const QString& connection, const QString& from, const QString& to);
    bool ReturnTo(const QString& oldProject, const QString& newProject);

    Entries entries_;
    QString driver_, user_, password_, host_;
};
