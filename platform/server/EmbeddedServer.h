#pragma once

#include <QString>
#include <QStringList>

#include "platform/server/FileLock.h"

namespace server {

/// The user's own MariaDB server: where it lies, how it is prepared and started.
///
/// Every client holds `clients.lock` shared. A keeper process holds nothing but waits for that lock exclusively: it is
/// granted when the last client is gone, and then the keeper stops the server. `server.lock` is held by the keeper and
/// the server itself, so whoever gets it knows that none is running. `start.lock` makes starting a matter of one.
class EmbeddedServer {
  public:
    /// \param program  path of mariadbd; empty: searched in the usual places
    explicit EmbeddedServer(const QString& program = {});

    [[nodiscard]] QString socket() const { return socket_; }
    /// Makes the caller a client and the server run. \return not held() with one sentence in `error` on failure
    FileLock join(QString* error) const;
    /// For a client: starts the server again when it died. \return false with one sentence in `error`
    bool ensureRunning(QString* error) const;

  private:
    bool prepare(QString* error) const;
    bool checkVersion(QString* error) const;
    bool createDataDirectory(const QString& installer, QString* error) const;
    bool start(FileLock serverLock, QString* error) const;
    bool waitUntilReady(qint64 logStart, QString* error) const;
    [[nodiscard]] QStringList arguments() const;
    [[nodiscard]] bool answers() const;
    [[nodiscard]] QString path(const QString& name) const { return folder_ + '/' + name; }

    QString folder_;
    QString socket_;
    QString program_;
};

}  // namespace server
