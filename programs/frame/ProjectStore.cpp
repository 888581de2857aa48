#include "programs/frame/ProjectStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>

#include "exchange/RealTimeNameFile.h"
#include "platform/host/BaseTables.h"
#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/CRDatabase.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RuleLibrary.h"
#include "programs/frame/TableNames.h"

namespace {

constexpr char kPart[] = ".part-";
constexpr char kRealTimeDirectory[] = "RTDB";
constexpr char kNameFile[] = "RTDB.nm";
constexpr int kLongestName = 40;

std::nullopt_t refuse(const QString& text) {
    ReportError(text, 0);
    return std::nullopt;
}

bool deny(const QString& text) {
    ReportError(text, 0);
    return false;
}

CRDatabase database() { return CRDatabase("QMYSQL3", "", "", ""); }

bool connectServer(CRDatabase& server) { return server.ConnectDB("mysql", tables::serverConnection, true); }

bool databaseExists(const QString& name) {
    return sql::scalar(tables::serverConnection, "SELECT COUNT(*) FROM information_schema.SCHEMATA WHERE SCHEMA_NAME=?",
                       {name})
               .toInt() > 0;
}

/// The tables of a project that are not the module's own: base network, calculation tables, case headers.
QStringList hostTables(const QString& project) {
    QStringList names;
    sql::Query query;
    query.exec(
        "SELECT TABLE_NAME FROM information_schema.TABLES WHERE TABLE_SCHEMA=? AND TABLE_TYPE='BASE TABLE'"
        " AND TABLE_NAME NOT LIKE 'RLY\\_%' ORDER BY TABLE_NAME",
        {project});
    while (query.next()) names.append(query.text(0));
    return names;
}

bool copyHostTables(const QString& oldName, const QString& newName) {
    sql::Query query;
    for (const QString& table : hostTables(oldName)) {
        const QString from = sql::quotedName(oldName) + "." + sql::quotedName(table);
        const QString to = sql::quotedName(newName) + "." + sql::quotedName(table);
        if (!query.exec("DROP TABLE IF EXISTS " + to) || !query.exec("CREATE TABLE " + to + " LIKE " + from) ||
            !query.exec("INSERT INTO " + to + " SELECT * FROM " + from))
            return false;
    }
    return true;
}

/// One change of the projects at a time, among all programs of the user.
class ChangeLock {
  public:
    explicit ChangeLock(const QString& folder) : file_(folder + ".lock") {
        QDir().mkpath(folder);
        file_.setStaleLockTime(0);
        held_ = file_.tryLock(60000);
        if (!held_) ReportError(Text::tr("另一个程序正在改动工程，请稍后再试"), 0);
    }
    [[nodiscard]] bool held() const { return held_; }

  private:
    QLockFile file_;
    bool held_ = false;
};

}  // namespace

QString Project::realTimeFile() const {
    const exchange::RealTimeName at{realTimeName.toStdString(), (directory + realTimeName).toStdString()};
    return QString::fromStdString(exchange::realTimeFile(at));
}

QString deliveredFolder(const QString& name) {
    return QCoreApplication::applicationDirPath() + "/../share/morvane/" + name;
}

ProjectStore::ProjectStore(const QString& folder) : folder_(folder) {
    if (folder_.isEmpty())
        folder_ = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/morvane/projects";
    if (!folder_.endsWith('/')) folder_ += '/';
}

QString ProjectStore::whyNotName(const QString& name) {
    if (name.trimmed().isEmpty()) return Text::tr("工程名不能为空");
    if (name != name.trimmed()) return Text::tr("工程名首尾不能有空格");
    if (name.size() > kLongestName)
        return Text::tr("工程名不能超过") + QString::number(kLongestName) + Text::tr("个字符");
    const auto bad = [](QChar c) {
        return c.category() == QChar::Other_Control || c.isSurrogate() || QString("/\\.:*?\"<>|`").contains(c);
    };
    if (std::any_of(name.begin(), name.end(), bad)) return Text::tr("工程名中不能有路径符号、点号或控制字符");
    if (name.endsWith(tables::ruleSuffix, Qt::CaseInsensitive))
        return Text::tr("工程名不能以") + tables::ruleSuffix + Text::tr("结尾");
    static const QStringList reserved = {"mysql", "sys", "information_schema", "performance_schema"};
    if (reserved.contains(name, Qt::CaseInsensitive)) return Text::tr("工程名") + name + Text::tr("是保留名");
    return {};
}

QStringList ProjectStore::names() const {
    QStringList found;
    for (const QString& entry : QDir(folder_).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        if (QFile::exists(folder_ + entry + "/" + kNameFile)) found.append(entry);
    return found;
}

bool ProjectStore::exists(const QString& name) const { return QFileInfo(folder_ + name).isDir(); }

Project ProjectStore::project(const QString& directoryName, const QString& name) const {
    Project project{name, folder_ + directoryName + "/", {}};
    QFile file(project.directory + kNameFile);
    if (file.open(QIODevice::ReadOnly)) project.realTimeName = QString::fromUtf8(file.readLine()).trimmed();
    return project;
}

bool ProjectStore::makeDirectory(const QString& name) const {
    const QString directory = folder_ + kPart + name + "/";
    QSaveFile file(directory + kNameFile);
    const bool made = QDir().mkpath(directory + "Temp") && QDir().mkpath(directory + kRealTimeDirectory) &&
                      file.open(QIODevice::WriteOnly) && file.write(kRealTimeDirectory) > 0 && file.write("\n") > 0 &&
                      file.commit();
    if (!made) ReportError(Text::tr("不能建立工程目录") + directory, 0);
    return made;
}

bool ProjectStore::isFree(const QString& name) const {
    const QString why = whyNotName(name);
    if (!why.isEmpty()) return deny(why);
    if (exists(name)) return deny(Text::tr("工程") + name + Text::tr("已经存在"));
    CRDatabase server = database();
    if (!connectServer(server)) return false;
    for (const QString& taken : {name, name + tables::ruleSuffix})
        if (databaseExists(taken)) return deny(Text::tr("服务器上已有不属于本机工程的数据库") + taken);
    return true;
}

bool ProjectStore::fill(const QString& name, const QString& ruleFolder) const {
    CRDatabase rules = database();
    QString error;
    if (!rules.ConnectDB(name + tables::ruleSuffix, tables::ruleConnection, false) ||
        !rules.ConnectDB(name, tables::relayConnection, false))
        return false;
    if (!RuleLibrary::load(ruleFolder, tables::ruleConnection, &error)) {
        ReportError(error, 0);
        return false;
    }
    return rules.BuildNewTable("") && host::createBaseTables();
}

bool ProjectStore::fillFrom(const QString& oldName, const QString& newName) const {
    CRDatabase rules = database();
    if (!rules.ConnectDB(newName + tables::ruleSuffix, tables::ruleConnection, false) ||
        !rules.ConnectDB(newName, tables::relayConnection, false))
        return false;
    return tables::CreateRuleTables(tables::ruleConnection) && rules.SaveAsDb(oldName, newName) &&
           copyHostTables(oldName, newName);
}

bool ProjectStore::complete(const QString& name) const {
    if (QDir().rename(folder_ + kPart + name, folder_ + name)) return true;
    ReportError(Text::tr("不能建立工程目录") + folder_ + name, 0);
    return false;
}

void ProjectStore::discard(const QString& name) const {
    database().DeleteDb(name);
    QDir(folder_ + kPart + name).removeRecursively();
}

void ProjectStore::clearParts() const {
    for (const QString& entry :
         QDir(folder_).entryList({QString(kPart) + "*"}, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot))
        discard(entry.mid(int(strlen(kPart))));
}

std::optional<Project> ProjectStore::create(const QString& name, const QString& ruleFolder) {
    const ChangeLock lock(folder_);
    if (!lock.held()) return std::nullopt;
    clearParts();
    if (!isFree(name)) return std::nullopt;
    if (!makeDirectory(name) || !fill(name, ruleFolder) || !complete(name)) {
        discard(name);
        return std::nullopt;
    }
    return project(name, name);
}

std::optional<Project> ProjectStore::find(const QString& name) const {
    if (!whyNotName(name).isEmpty() || !exists(name)) return refuse(Text::tr("没有名为") + name + Text::tr("的工程"));
    Project found = project(name, name);
    if (found.realTimeName.isEmpty()) return refuse(Text::tr("读 ") + kNameFile + Text::tr(" 失败"));
    return found;
}

std::optional<Project> ProjectStore::open(const QString& name) {
    const std::optional<Project> opened = find(name);
    if (!opened) return std::nullopt;
    CRDatabase rules = database();
    // a project that was saved under another name has lost its working tables; one of an earlier version lacks columns
    if (!rules.ConnectDB(name + tables::ruleSuffix, tables::ruleConnection, true) || !rules.ConnectToBaseDb(name) ||
        !rules.BuildNewTable(name) || !host::createBaseTables())
        return std::nullopt;
    QDir().mkpath(opened->workDirectory());
    QDir().mkpath(opened->directory + opened->realTimeName);
    return opened;
}

std::optional<Project> ProjectStore::saveAs(const QString& oldName, const QString& newName) {
    const ChangeLock lock(folder_);
    if (!lock.held()) return std::nullopt;
    clearParts();
    if (oldName == newName) return refuse(Text::tr("不能另存为同名工程"));
    if (!open(oldName) || !isFree(newName)) return std::nullopt;
    const Project old = project(oldName, oldName);
    if (!makeDirectory(newName) || !fillFrom(oldName, newName)) {
        discard(newName);
        return std::nullopt;
    }
    const Project made = project(kPart + newName, newName);
    if (QFile::exists(old.realTimeFile())) QFile::copy(old.realTimeFile(), made.realTimeFile());
    if (complete(newName)) return project(newName, newName);
    discard(newName);
    return std::nullopt;
}

bool ProjectStore::remove(const QString& name) {
    const ChangeLock lock(folder_);
    if (!lock.held()) return false;
    clearParts();
    if (!whyNotName(name).isEmpty() || !exists(name)) return deny(Text::tr("没有名为") + name + Text::tr("的工程"));
    if (!QDir().rename(folder_ + name, folder_ + kPart + name))
        return deny(Text::tr("不能删除工程目录") + folder_ + name);
    discard(name);
    return !QFileInfo::exists(folder_ + kPart + name);
}
