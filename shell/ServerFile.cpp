#include "shell/ServerFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace shell {

namespace {

QByteArray textOf(const server::Settings& settings) {
    QString text = "[server]\n";
    const auto add = [&](const char* name, const QString& value) {
        if (!value.isEmpty()) text += QString(name) + " = " + value + "\n";
    };
    if (!settings.embedded) {
        add("host", settings.host);
        if (!settings.host.isEmpty()) add("port", QString::number(settings.port));
        add("user", settings.user);
        add("password", settings.password);
        add("socket", settings.socket);
    }
    add("program", settings.program);
    return text.toUtf8();
}

// A line holds one value, without blanks around it.
bool isOneLine(const server::Settings& settings) {
    for (const QString* value :
         {&settings.host, &settings.user, &settings.password, &settings.socket, &settings.program})
        if (value->trimmed() != *value || value->contains('\n') || value->contains('\r')) return false;
    return true;
}

}  // namespace

bool writeServerSettings(const server::Settings& settings, QString* error) {
    const QString path =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/morvane/server.ini";
    if (!isOneLine(settings)) {
        *error = QCoreApplication::translate("shell::ServerFile", "服务器设置的首尾不能有空格");
        return false;
    }
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    // the password is for the user's eyes only, also while the file is being written
    const bool written = file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
                         file.write(textOf(settings)) > 0 && file.commit();
    if (!written)
        *error = QCoreApplication::translate("shell::ServerFile", "不能写文件%1：%2").arg(path, file.errorString());
    return written;
}

}  // namespace shell
