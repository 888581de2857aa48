#include "programs/frame/ProjectClaim.h"

#include <pwd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>
#include <QThread>

namespace {

constexpr char kFile[] = "open.lock";
constexpr int kPauseMs = 50;

ProjectClaim::Holder self() {
    const passwd* user = getpwuid(geteuid());
    return {user ? QString::fromLocal8Bit(user->pw_name) : QString(), QSysInfo::machineHostName(),
            QFileInfo("/proc/self/exe").canonicalFilePath().section('/', -1), QCoreApplication::applicationPid(),
            QDateTime::currentDateTime()};
}

bool write(int descriptor, const ProjectClaim::Holder& holder) {
    const QByteArray text = QJsonDocument(QJsonObject{{"user", holder.user},
                                                      {"host", holder.host},
                                                      {"program", holder.program},
                                                      {"pid", holder.pid},
                                                      {"since", holder.since.toString(Qt::ISODate)}})
                                .toJson(QJsonDocument::Compact);
    return ftruncate(descriptor, 0) == 0 && pwrite(descriptor, text.constData(), size_t(text.size()), 0) == text.size();
}

ProjectClaim::Holder readHolder(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    return {object["user"].toString(), object["host"].toString(), object["program"].toString(),
            object["pid"].toInteger(), QDateTime::fromString(object["since"].toString(), Qt::ISODate)};
}

}  // namespace

QString ProjectClaim::Holder::text(const QString& project) const {
    if (pid == 0)
        return QCoreApplication::translate("ProjectClaim", "工程%1不能加锁，或正被另一个程序打开").arg(project);
    // the parts are put in at once: a name may itself look like a place marker
    return QCoreApplication::translate("ProjectClaim", "工程%1已由用户%2在主机%3上打开（程序%4，进程%5，自%6起）")
        .arg(project, user, host, program, QString::number(pid), since.toString("yyyy-MM-dd HH:mm:ss"));
}

std::optional<ProjectClaim> ProjectClaim::take(const QString& directory, int waitMs, Holder* holder) {
    const QString path = directory + kFile;
    const QDeadlineTimer deadline(waitMs);
    for (;;) {
        server::FileLock lock = server::FileLock::tryExclusive(path);
        if (lock.held() && write(lock.descriptor(), self())) return ProjectClaim(std::move(lock));
        if (lock.held() || deadline.hasExpired()) break;
        QThread::msleep(kPauseMs);
    }
    *holder = readHolder(path);
    return std::nullopt;
}
