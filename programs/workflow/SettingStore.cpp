#include "programs/workflow/SettingStore.h"

#include "platform/sql/Sql.h"
#include "programs/frame/StageColumns.h"

namespace {

constexpr char kCaseRelays[] = "(SELECT DISTINCT RNo FROM RLY_RLYOBJ_TEM) o";

QString values(const QStringList& columns) {
    QStringList texts;
    for (const QString& column : columns) texts.append(column + "=VALUES(" + column + ")");
    return texts.join(',');
}

}  // namespace

bool SettingStore::saveChangingBackup() {
    const QString columns = (stageColumns("NRdz") + stageColumns("BRdz")).join(',');
    const QString sources = (stageColumns("NDz") + stageColumns("ODz")).join(',');
    sql::Transaction transaction;
    sql::Query query;
    return query.exec(QString("DELETE z FROM RLY_RDZ z JOIN ") + kCaseRelays + " ON o.RNo=z.RNo WHERE z.Cdz!='L'") &&
           query.exec("INSERT INTO RLY_RDZ (RNo,DzNo,Cdz," + columns + ") SELECT RNo,DzNo,Cdz," + sources +
                      " FROM RLY_RLYOBJ_TEM ORDER BY RNo,DzNo") &&
           transaction.commit();
}

bool SettingStore::saveKeepingBackup() {
    const QStringList current = stageColumns("NRdz");
    sql::Transaction transaction;
    sql::Query query;
    return query.exec(QString("DELETE z FROM RLY_RDZ z JOIN ") + kCaseRelays +
                      " ON o.RNo=z.RNo LEFT JOIN RLY_RLYOBJ_TEM n ON n.RNo=z.RNo AND n.Cdz=z.Cdz"
                      " WHERE n.RNo IS NULL AND z.Cdz!='L'") &&
           query.exec("INSERT INTO RLY_RDZ (RNo,DzNo,Cdz," + current.join(',') + ") SELECT RNo,DzNo,Cdz," +
                      stageColumns("NDz").join(',') +
                      " FROM RLY_RLYOBJ_TEM ON DUPLICATE KEY UPDATE DzNo=VALUES(DzNo)," + values(current)) &&
           transaction.commit();
}
