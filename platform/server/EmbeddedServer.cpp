#include "platform/server/EmbeddedServer.h"

#include <pwd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QThread>
#include <utility>

#include "platform/host/Text.h"
#include "platform/server/KeeperStart.h"
#include "platform/server/Server.h"

namespace server {

namespace {

constexpr int startLimitMs = 60000;
constexpr int prepareLimitMs = 120000;
constexpr qint64 logLimit = 1 << 20;
const QString logSize = QStringLiteral("--innodb-log-file-size=32M");
const QString versionFile = QStringLiteral("morvane-version");

QString findProgram(const QString& name) {
    QString found = QStandardPaths::findExecutable(name);
    if (found.isEmpty())
        found = QStandardPaths::findExecutable(
            name, {"/usr/sbin", "/usr/local/sbin", "/usr/libexec", "/usr/local/mysql/bin", "/usr/local/mysql/scripts"});
    return found;
}

// A socket's path has room for 107 bytes: a longer one moves to a short folder of the user's own.
QString socketPath(const QString& folder) {
    const QString usual = folder + "/mysql.sock";
    if (QFile::encodeName(usual).size() < static_cast<int>(sizeof(sockaddr_un::sun_path))) return usual;
    const QByteArray mark = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
    const QString name = QString("/morvane-%1-%2.sock").arg(geteuid()).arg(QString::fromLatin1(mark));
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && QFile::encodeName(runtime + name).size() < 100 && QFileInfo(runtime).isDir())
        return runtime + name;
    return QStringLiteral(P_tmpdir) + name;
}

// The first error in the server's own words: those behind it follow from it.
QString firstError(const QByteArray& log) {
    for (const QByteArray& line : log.split('\n')) {
        const auto mark = line.indexOf("ERROR");
        if (mark >= 0 && !line.contains("Aborting")) return QString::fromUtf8(line.mid(mark + 6)).trimmed();
    }
    return Text::tr("没有给出原因");
}

QString errorIn(const QByteArray& log) {
    const QString text = firstError(log);
    const bool full = text.contains("error 28") || text.contains("rrcode: 28") || text.contains("No space left");
    return full ? Text::tr("磁盘空间不足（") + text + "）" : text;
}

QByteArray readFrom(const QString& path, qint64 offset) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(offset)) return {};
    return file.readAll();
}

QString userName() {
    const passwd* user = getpwuid(geteuid());
    return user ? QString::fromLocal8Bit(user->pw_name) : QString();
}

bool fail(QString* error, const QString& text) {
    *error = text;
    return false;
}

}  // namespace

EmbeddedServer::EmbeddedServer(const QString& program)
    : folder_(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/morvane/server"),
      socket_(socketPath(folder_)),
      program_(program.isEmpty() ? findProgram("mariadbd") : program) {}

FileLock EmbeddedServer::join(QString* error) const {
    if (!QDir().mkpath(folder_)) {
        *error = Text::tr("不能建立数据目录") + folder_;
        return {};
    }
    ::chmod(QFile::encodeName(folder_).constData(), 0700);
    // Waits while a keeper is stopping the server, which holds this lock until the server is down.
    FileLock client = FileLock::wait(path("clients.lock"), FileLock::Mode::Shared);
    if (!client.held()) *error = Text::tr("数据目录") + folder_ + Text::tr("不可写");
    if (!client.held() || !ensureRunning(error)) return {};
    return client;
}

bool EmbeddedServer::ensureRunning(QString* error) const {
    const FileLock starter = FileLock::wait(path("start.lock"), FileLock::Mode::Exclusive);
    if (!starter.held()) return fail(error, Text::tr("数据目录") + folder_ + Text::tr("不可写"));
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < startLimitMs) {
        if (answers()) return checkVersion(error);
        FileLock server = FileLock::tryExclusive(path("server.lock"));
        if (server.held()) return prepare(error) && start(std::move(server), error);
        QThread::msleep(5);  // a server is coming up or going down
    }
    return fail(error, Text::tr("数据库服务器没有响应"));
}

bool EmbeddedServer::answers() const {
    const QByteArray name = QFile::encodeName(socket_);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() >= static_cast<int>(sizeof address.sun_path)) return false;
    qstrncpy(address.sun_path, name.constData(), sizeof address.sun_path);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) return false;
    const bool connected = ::connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    ::close(descriptor);
    return connected;
}

bool EmbeddedServer::checkVersion(QString* error) const {
    const int found = readFrom(path("data/") + versionFile, 0).trimmed().toInt();
    if (found <= layoutVersion) return true;
    return fail(error, Text::tr("数据目录%1由较新版本的程序建立（版本%2），请升级程序").arg(folder_).arg(found));
}

bool EmbeddedServer::prepare(QString* error) const {
    if (program_.isEmpty() || !QFileInfo(program_).isExecutable())
        return fail(error, Text::tr("找不到数据库服务器程序") +
                               (program_.isEmpty() ? QStringLiteral("mariadbd") : program_) +
                               Text::tr("，请安装MariaDB服务器"));
    if (!QDir().mkpath(path("tmp"))) return fail(error, Text::tr("数据目录") + folder_ + Text::tr("不可写"));
    if (QFileInfo::exists(path("data/") + versionFile)) return checkVersion(error);
    const QString installer = findProgram("mariadb-install-db");
    if (installer.isEmpty()) return fail(error, Text::tr("找不到程序mariadb-install-db，请安装MariaDB服务器"));
    return createDataDirectory(installer, error);
}

// Built aside and renamed when complete, so that a kill leaves nothing half done.
bool EmbeddedServer::createDataDirectory(const QString& installer, QString* error) const {
    for (const QString& leftover : QDir(folder_).entryList({"data.new*"}, QDir::Dirs))
        QDir(path(leftover)).removeRecursively();
    const QString aside = path("data.new" + QString::number(getpid()));
    QStringList options{"--no-defaults",
                        "--datadir=" + aside,
                        "--auth-root-authentication-method=socket",
                        "--auth-root-socket-user=" + userName(),
                        "--skip-test-db",
                        "--skip-name-resolve",
                        "--force",  // also where the machine cannot look up its own name
                        logSize};
    if (geteuid() == 0) options << "--user=root";
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    // A server that starts clears its temporary folder of tables, also of those that others still use. Not an option:
    // the installer splits those at blanks.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", path("tmp"));
    process.setProcessEnvironment(environment);
    process.start(installer, options);
    const bool ended = process.waitForFinished(prepareLimitMs);
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        QDir(aside).removeRecursively();
        return fail(error, Text::tr("不能建立数据库服务器的数据目录：") + errorIn(process.readAll()));
    }
    QFile version(aside + '/' + versionFile);
    if (!version.open(QIODevice::WriteOnly) || version.write(QByteArray::number(layoutVersion) + '\n') < 0 ||
        !version.flush() || !QDir().rename(aside, path("data")))
        return fail(error, Text::tr("不能建立数据库服务器的数据目录：") + version.errorString());
    return true;
}

QStringList EmbeddedServer::arguments() const {
    QStringList options{program_, "--no-defaults", "--datadir=" + path("data"), "--socket=" + socket_,
                        "--tmpdir=" + path("tmp"), "--pid-file=" + path("server.pid"),
                        "--log-error=" + path("server.log"), "--skip-networking", "--skip-name-resolve",
                        "--performance-schema=OFF", "--character-set-server=gbk", "--collation-server=gbk_chinese_ci",
                        "--innodb-buffer-pool-size=96M", "--innodb-log-buffer-size=2M", logSize, "--key-buffer-size=1M",
                        "--aria-pagecache-buffer-size=8M", "--query-cache-size=0", "--max-connections=64",
                        "--table-open-cache=400", "--tmp-table-size=8M", "--max-heap-table-size=8M",
                        "--max-allowed-packet=64M", "--wait-timeout=31536000",
                        // a kill of the server loses nothing; a power failure at most the last second
                        "--innodb-flush-log-at-trx-commit=2"};
    if (geteuid() == 0) options << "--user=root";
    return options;
}

bool EmbeddedServer::start(FileLock serverLock, QString* error) const {
    const QString keeper = keeperProgram();
    if (keeper.isEmpty()) return fail(error, Text::tr("找不到程序morvane-server-keeper，请重新安装"));
    QFile::remove(socket_);
    if (QFileInfo(path("server.log")).size() > logLimit) QFile::remove(path("server.log"));
    const qint64 logStart = QFileInfo(path("server.log")).size();
    if (!startKeeper(keeper, folder_, serverLock.descriptor(), QStringList{path("clients.lock")} + arguments()))
        return fail(error, Text::tr("不能启动程序morvane-server-keeper"));
    serverLock = FileLock();  // the keeper has it now
    return waitUntilReady(logStart, error);
}

bool EmbeddedServer::waitUntilReady(qint64 logStart, QString* error) const {
    QElapsedTimer clock;
    clock.start();
    while (!answers()) {
        if (FileLock::tryExclusive(path("server.lock")).held())
            return fail(error, Text::tr("数据库服务器不能启动：") + errorIn(readFrom(path("server.log"), logStart)));
        if (clock.elapsed() > startLimitMs) return fail(error, Text::tr("数据库服务器没有响应"));
        QThread::msleep(5);
    }
    return true;
}

}  // namespace server
