#pragma once

#include <QString>
#include <QStringList>
#include <optional>

/// A project: its directory and the names of its databases.
struct Project {
    QString name;
    QString directory;     ///< ends in a slash; holds RTDB.nm, the real-time directory and Temp/
    QString realTimeName;  ///< name of the real-time directory

    [[nodiscard]] QString workDirectory() const { return directory + "Temp/"; }
    /// The real-time directory as the programs see it from the working directory.
    [[nodiscard]] QString realTimePath() const { return "../" + realTimeName; }
    [[nodiscard]] QString realTimeFile() const;
};

/// A folder of the data that is delivered with the programs: "rules", "networks/demo".
QString deliveredFolder(const QString& name);

/// The projects below a folder. A project exists when its directory does: a directory ".part-<name>" marks one whose
/// creation or deletion was cut off, and is cleared away with its databases by the next change. Failures are told in
/// the dock.
class ProjectStore {
  public:
    /// \param folder  empty: `morvane/projects/` below the user's data folder
    explicit ProjectStore(const QString& folder = {});

    /// Why a name cannot be a project's; empty when it can.
    [[nodiscard]] static QString whyNotName(const QString& name);
    [[nodiscard]] QStringList names() const;
    /// Where a project of this name lies, or would lie; ends in a slash.
    [[nodiscard]] QString directoryOf(const QString& name) const { return folder_ + name + "/"; }

    /// Makes a project with all its tables and its rule database, all or nothing, and leaves it open.
    /// \param ruleFolder  the rule library as tables
    std::optional<Project> create(const QString& name, const QString& ruleFolder);
    /// A project by its name, without its databases.
    [[nodiscard]] std::optional<Project> find(const QString& name) const;
    /// Connects the project's databases and makes the tables that are missing.
    std::optional<Project> open(const QString& name);
    /// Copies a project under another name, all or nothing; the new one is open afterwards.
    std::optional<Project> saveAs(const QString& oldName, const QString& newName);
    bool remove(const QString& name);

  private:
    [[nodiscard]] Project project(const QString& directoryName, const QString& name) const;
    [[nodiscard]] bool exists(const QString& name) const;
    bool makeDirectory(const QString& name) const;
    bool isFree(const QString& name) const;
    bool fill(const QString& name, const QString& ruleFolder) const;
    bool fillFrom(const QString& oldName, const QString& newName) const;
    bool complete(const QString& name) const;
    void discard(const QString& name) const;
    void clearParts() const;

    QString folder_;
};
