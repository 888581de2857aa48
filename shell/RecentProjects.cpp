#include "shell/RecentProjects.h"

#include <QSettings>

#include "platform/sql/Sql.h"

namespace shell {

namespace {

constexpr int kKept = 12;
constexpr char kArray[] = "recent";

}  // namespace

NetworkSummary NetworkSummary::ofOpenProject() {
    sql::Query query;
    NetworkSummary found;
    if (!query.exec("SELECT (SELECT COUNT(*) FROM CDB_NODEBAK),(SELECT COUNT(*) FROM CDB_ACLINEBAK),"
                    "(SELECT COUNT(*) FROM CDB_TRANS_2WBAK)+(SELECT COUNT(*) FROM CDB_TRANS_3WBAK),"
                    "(SELECT COUNT(*) FROM CDB_GENERATBAK),(SELECT COUNT(*) FROM RLY_RUD WHERE RTypeNo>0),"
                    "(SELECT COUNT(*) FROM RLY_CASE_RLY),(SELECT IFNULL(MAX(Base_kV),0) FROM CDB_NODEBAK)") ||
        !query.next())
        return found;
    int* const counts[] = {&found.buses,      &found.lines,  &found.transformers,
                           &found.generators, &found.relays, &found.cases};
    for (int i = 0; i < 6; ++i) *counts[i] = query.number(i);
    found.highestKv = query.real(6);
    return found;
}

QString NetworkSummary::text() const {
    if (buses == 0) return tr("还没有网络");
    return tr("%1 kV · 节点 %2 · 线路 %3 · 变压器 %4 · 发电机 %5 · 保护 %6 · 作业 %7")
        .arg(QString::number(highestKv), QString::number(buses), QString::number(lines), QString::number(transformers),
             QString::number(generators), QString::number(relays), QString::number(cases));
}

QVector<RecentProject> RecentProjects::list() const {
    QVector<RecentProject> projects;
    const int count = store_.beginReadArray(kArray);
    for (int i = 0; i < count; ++i) {
        store_.setArrayIndex(i);
        const auto number = [&](const char* key) { return store_.value(key).toInt(); };
        projects.append({store_.value("name").toString(),
                         store_.value("opened").toDateTime(),
                         {number("buses"), number("lines"), number("transformers"), number("generators"),
                          number("relays"), number("cases"), store_.value("kv").toDouble()}});
    }
    store_.endArray();
    return projects;
}

void RecentProjects::put(const QString& name, const NetworkSummary& summary) {
    QVector<RecentProject> projects = list();
    projects.removeIf([&](const RecentProject& project) { return project.name == name; });
    projects.prepend({name, QDateTime::currentDateTime(), summary});
    projects.resize(std::min<qsizetype>(projects.size(), kKept));
    write(projects);
}

void RecentProjects::remove(const QString& name) {
    QVector<RecentProject> projects = list();
    projects.removeIf([&](const RecentProject& project) { return project.name == name; });
    write(projects);
}

void RecentProjects::write(const QVector<RecentProject>& projects) {
    store_.remove(kArray);
    store_.beginWriteArray(kArray, int(projects.size()));
    for (int i = 0; i < projects.size(); ++i) {
        store_.setArrayIndex(i);
        const NetworkSummary& summary = projects[i].summary;
        store_.setValue("name", projects[i].name);
        store_.setValue("opened", projects[i].opened);
        store_.setValue("buses", summary.buses);
        store_.setValue("lines", summary.lines);
        store_.setValue("transformers", summary.transformers);
        store_.setValue("generators", summary.generators);
        store_.setValue("relays", summary.relays);
        store_.setValue("cases", summary.cases);
        store_.setValue("kv", summary.highestKv);
    }
    store_.endArray();
}

}  // namespace shell
