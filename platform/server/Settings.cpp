#include <QFile>
#include <QStandardPaths>

#include "platform/server/Server.h"

#include "platform/host/Text.h"

namespace server {

namespace {

QString settingsPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/morvane/server.ini";
}

Settings& settingsInUse() {
    static Settings settings;
    return settings;
}

bool setPort(Settings& settings, const QString& value) {
    bool ok = false;
    settings.port = value.toInt(&ok);
    return ok && settings.port > 0 && settings.port < 65536;
}

bool setValue(Settings& settings, const QString& name, const QString& value) {
    if (name == "port") return setPort(settings, value);
    QString* const place = name == "host"       ? &settings.host
                           : name == "user"     ? &settings.user
                           : name == "password" ? &settings.password
                           : name == "socket"   ? &settings.socket
                           : name == "program"  ? &settings.program
                                                : nullptr;
    if (place) *place = value;
    return place != nullptr;
}

// A value is taken as it stands: a password may hold any character.
bool readLine(Settings& settings, const QString& line) {
    const QString text = line.trimmed();
    if (text.isEmpty() || text.startsWith('#') || text.startsWith(';') || text == "[server]") return true;
    const auto equals = text.indexOf('=');
    return equals > 0 && setValue(settings, text.left(equals).trimmed(), text.mid(equals + 1).trimmed());
}

}  // namespace

Settings readSettings(QString* error) {
    Settings settings;
    QFile file(settingsPath());
    if (!file.exists()) return settings;
    if (!file.open(QIODevice::ReadOnly)) {
        *error = Text::tr("不能读设置文件") + file.fileName() + "：" + file.errorString();
        return settings;
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        if (readLine(settings, lines[i])) continue;
        *error =
            Text::tr("设置文件") + file.fileName() + Text::tr("第") + QString::number(i + 1) + Text::tr("行有错误");
        return settings;
    }
    settings.embedded = settings.host.isEmpty() && settings.socket.isEmpty();
    return settings;
}

void setCurrent(const Settings& settings) { settingsInUse() = settings; }

const Settings& current() { return settingsInUse(); }

}  // namespace server
