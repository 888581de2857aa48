#pragma once

#include <QByteArray>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include "platform/server/FileLock.h"

/// Folders of its own for one test program, so that its server and its settings are not the user's.
class PrivateServer {
  public:
    PrivateServer() {
        for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
            qputenv(name, folders_.path().toUtf8());
    }
    ~PrivateServer() { waitUntilDown(); }

    [[nodiscard]] QString path(const QString& name) const { return folders_.path() + "/morvane/" + name; }

    void waitUntilDown() const {
        if (QFileInfo::exists(path("server/server.lock")))
            server::FileLock::wait(path("server/server.lock"), server::FileLock::Mode::Exclusive);
    }

  private:
    QTemporaryDir folders_;
};
