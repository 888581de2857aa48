#include "platform/server/KeeperStart.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <vector>

namespace server {

namespace {

constexpr int keptDescriptor = 3;

// Runs between fork and exec, where only calls that are safe in a signal handler are allowed.
[[noreturn]] void becomeKeeper(const char* folder, int serverLock, char* const* argv) {
    setsid();
    if (fork() != 0) _exit(0);
    const int lock = fcntl(serverLock, F_DUPFD, keptDescriptor + 1);
    const int nothing = open("/dev/null", O_RDWR);
    for (int stream = 0; stream <= 2; ++stream) dup2(nothing, stream);
    dup2(lock, keptDescriptor);
    close_range(keptDescriptor + 1, ~0U, 0);
    if (chdir(folder) == 0) execv(argv[0], argv);
    _exit(127);
}

}  // namespace

QString keeperProgram() {
    const QString self = QFileInfo("/proc/self/exe").canonicalFilePath();
    const QString keeper = QFileInfo(self).path() + "/morvane-server-keeper";
    return QFileInfo(keeper).isExecutable() ? keeper : QString();
}

bool startKeeper(const QString& program, const QString& folder, int serverLock, const QStringList& arguments) {
    std::vector<QByteArray> texts{QFile::encodeName(program)};
    for (const QString& argument : arguments) texts.push_back(QFile::encodeName(argument));
    std::vector<char*> argv;
    for (QByteArray& text : texts) argv.push_back(text.data());
    argv.push_back(nullptr);
    const QByteArray place = QFile::encodeName(folder);
    const pid_t child = fork();
    if (child < 0) return false;
    if (child == 0) becomeKeeper(place.constData(), serverLock, argv.data());
    return waitpid(child, nullptr, 0) == child;
}

}  // namespace server
