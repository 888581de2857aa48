#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include "platform/server/FileLock.h"

/// Folders of their own for a test, so that its server and its settings are not the user's. They lie in memory where
/// that can be had.
class PrivateServer {
  public:
    PrivateServer() : folders_((QDir("/dev/shm").exists() ? "/dev/shm" : QDir::tempPath()) + "/morvane-XXXXXX") {
        for (int i = 0; i < count; ++i) before_[i] = qgetenv(names[i]);
        useFolder(folders_.path());
    }
    ~PrivateServer() {
        waitUntilDown();
        for (int i = 0; i < count; ++i)
            before_[i].isNull() ? void(qunsetenv(names[i])) : void(qputenv(names[i], before_[i]));
    }

    /// A folder below the temporary one to be used instead.
    void useFolder(const QString& folder) {
        root_ = folder;
        for (const char* name : names) qputenv(name, folder.toUtf8());
    }

    [[nodiscard]] QString path(const QString& name) const { return root_ + "/morvane/" + name; }

    void write(const QString& name, const QByteArray& text) const {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (file.open(QIODevice::WriteOnly)) file.write(text);
    }

    [[nodiscard]] qint64 processId() const {
        QFile file(path("server/server.pid"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
    }

    void waitUntilDown() const {
        if (QFileInfo::exists(path("server/server.lock")))
            server::FileLock::wait(path("server/server.lock"), server::FileLock::Mode::Exclusive);
    }

  private:
    static constexpr int count = 3;
    static constexpr const char* names[count] = {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"};
    QTemporaryDir folders_;
    QString root_;
    QByteArray before_[count];
};
