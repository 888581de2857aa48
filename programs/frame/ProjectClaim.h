#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

#include "platform/server/FileLock.h"

/// One program at a time works on a project. The claim is a lock on a file in the project's directory, which the
/// system gives up when the program ends, however it ends; what the file says about its holder counts only as long as
/// the lock is held.
class ProjectClaim {
  public:
    struct Holder {
        QString user, host, program;
        qint64 pid = 0;
        QDateTime since;
        /// Who it is, in one sentence for the user.
        [[nodiscard]] QString text(const QString& project) const;
    };

    /// \param directory  of the project, with a slash at its end
    /// \param waitMs     how long to wait for another program to end
    /// \param holder     set when somebody else has the project; all fields may be empty when that cannot be read
    /// \return nothing when another program has the project, or the file cannot be written (holder has no pid then)
    static std::optional<ProjectClaim> take(const QString& directory, int waitMs, Holder* holder);

  private:
    explicit ProjectClaim(server::FileLock lock) : lock_(std::move(lock)) {}
    server::FileLock lock_;
};
