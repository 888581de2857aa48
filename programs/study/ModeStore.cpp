#include "programs/study/ModeStore.h"

#include <QHash>
#include <cmath>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"

namespace {

constexpr char kCutOut[] = "9999999.999999";

bool refuse(const QString& text) {
    ReportError(text, 0);
    return false;
}

bool isNumber(const QString& text) {
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok && std::isfinite(value);
}

QString faultOf(const ModeRow& row) {
    if (!isNumber(row.R)) return Text::tr("行,R的输入类型有错误");
    if (!isNumber(row.X)) return Text::tr("行,X的输入类型有错误");
    if (row.ID_Name.trimmed().isEmpty()) return Text::tr("行,支路名不能为空");
    if (row.I_Name.trimmed().isEmpty()) return Text::tr("行,支路I侧节点名不能为空");
    if (row.J_Name.trimmed().isEmpty()) return Text::tr("行,支路J侧节点名不能为空");
    return {};
}

bool checkRows(const QVector<ModeRow>& rows) {
    for (int i = 0; i < rows.size(); ++i) {
        const QString fault = faultOf(rows[i]);
        if (!fault.isEmpty()) return refuse(Text::tr("第") + QString::number(i + 1) + fault);
    }
    return true;
}

bool check(const OperatingModeRecord& mode) {
    if (mode.rows.isEmpty()) return refuse(Text::tr("运行方式内容不能为空"));
    if (mode.SysName.trimmed().isEmpty()) return refuse(Text::tr("运行方式名不能为空"));
    if (mode.SysName == "*NEW_VALUE*") return refuse(Text::tr("运行方式名不能为*NEW_VALUE*"));
    QString why = sql::whyNotStorable(mode.SysName, 20);
    if (why.isEmpty()) why = sql::whyNotStorable(mode.Note, 100);
    if (!why.isEmpty()) return refuse(Text::tr("运行方式") + mode.SysName + ": " + why);
    if (sql::scalar({}, "SELECT COUNT(*) FROM RLY_RSYSMODEDLS WHERE SysName=? AND SysNo!=?", {mode.SysName, mode.SysNo})
            .toInt() > 0)
        return refuse(Text::tr("运行方式已经存在"));
    return checkRows(mode.rows);
}

int newNumber(const QString& name) {
    const auto highest = sql::scalar({}, "SELECT MAX(SysNo) FROM RLY_RSYSMODEDLS WHERE SysName!=?", {name});
    return std::max(highest.toInt() + 1, 1);
}

QVector<QVariantList> rowsOf(const OperatingModeRecord& mode) {
    QVector<QVariantList> rows;
    for (const ModeRow& row : mode.rows) {
        const QString r = row.Flg ? QString(kCutOut) : row.R;
        const QString x = row.Flg ? QString(kCutOut) : row.X;
        rows.append({mode.SysName, mode.SysNo, row.M10, row.ID_Name, row.I_Name, row.J_Name, row.Flg, row.UNIT,
                     r.toDouble(), x.toDouble()});
    }
    return rows;
}

/// The stored rows of the mode are replaced. A renamed mode leaves no head row under its old name.
bool write(const OperatingModeRecord& mode) {
    static const QStringList columns = {"SysName", "SysNo", "M10",  "ID_Name", "I_Name",
                                        "J_Name",  "Flg",   "UNIT", "R",       "X"};
    sql::Query query;
    return query.exec(
               "DELETE FROM RLY_RSYSMODE WHERE SysName=? OR SysName IN"
               " (SELECT SysName FROM RLY_RSYSMODEDLS WHERE SysNo=?)",
               {mode.SysName, mode.SysNo}) &&
           query.exec("DELETE FROM RLY_RSYSMODEDLS WHERE SysNo=?", {mode.SysNo}) &&
           query.exec("INSERT INTO RLY_RSYSMODE (SysName,Note) VALUES (?,?)", {mode.SysName, mode.Note}) &&
           sql::insertRows({}, "RLY_RSYSMODEDLS", columns, rowsOf(mode));
}

OperatingModeRecord recordOf(const host::OperatingMode& mode) {
    OperatingModeRecord record;
    record.SysName = QString::fromStdString(mode.name);
    record.Note = QString::fromStdString(mode.note);
    record.SysNo = ModeStore::numberOf(record.SysName);
    for (const auto& change : mode.changes)
        record.rows.append({change.m10, QString::fromStdString(change.element), QString::fromStdString(change.i),
                            QString::fromStdString(change.j), change.cut ? 1 : 0, change.ohm ? 1 : 0,
                            QString::number(change.r, 'g', 17), QString::number(change.x, 'g', 17)});
    return record;
}

bool saveWithin(OperatingModeRecord& mode) {
    if (!check(mode)) return false;
    if (mode.SysNo == 0) mode.SysNo = newNumber(mode.SysName);
    return write(mode);
}

}  // namespace

bool ModeStore::save(OperatingModeRecord& mode) {
    OperatingModeRecord saved = mode;
    sql::Transaction transaction;
    if (!saveWithin(saved) || !transaction.commit()) return false;
    mode = saved;
    return true;
}

bool ModeStore::saveImported(const std::vector<host::OperatingMode>& modes) {
    sql::Transaction transaction;
    for (const auto& mode : modes) {
        OperatingModeRecord record = recordOf(mode);
        if (!saveWithin(record)) return false;
    }
    return transaction.commit();
}

QVector<OperatingModeRecord> ModeStore::list() {
    QVector<OperatingModeRecord> modes;
    sql::Query query;
    query.exec(
        "SELECT d.SysNo,d.SysName,m.Note,d.M10,d.ID_Name,d.I_Name,d.J_Name,d.Flg,d.UNIT,d.R,d.X"
        " FROM RLY_RSYSMODEDLS d LEFT JOIN RLY_RSYSMODE m ON m.SysName=d.SysName"
        " ORDER BY d.SysNo,d.M10,d.ID_Name");
    while (query.next()) {
        if (modes.isEmpty() || modes.back().SysNo != query.number(0))
            modes.append({query.number(0), query.text(1), query.text(2), {}});
        modes.back().rows.append({query.number(3), query.text(4), query.text(5), query.text(6), query.number(7),
                                  query.number(8), query.raw(9), query.raw(10)});
    }
    return modes;
}

int ModeStore::numberOf(const QString& name) {
    return sql::scalar({}, "SELECT SysNo FROM RLY_RSYSMODEDLS WHERE SysName=? LIMIT 1", {name}, 0).toInt();
}

bool ModeStore::remove(int sysNo) {
    sql::Transaction transaction;
    sql::Query query;
    return query.exec("DELETE FROM RLY_RSYSMODE WHERE SysName IN (SELECT SysName FROM RLY_RSYSMODEDLS WHERE SysNo=?)",
                      {sysNo}) &&
           query.exec("DELETE FROM RLY_RSYSMODEDLS WHERE SysNo=?", {sysNo}) && transaction.commit();
}
