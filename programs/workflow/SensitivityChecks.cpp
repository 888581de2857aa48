#include "programs/workflow/SensitivityChecks.h"

#include <algorithm>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/Sensitivity.h"

namespace SensitivityChecks {

namespace {

constexpr int kOther = 10;  // between the flags of the two parameters

QVector<Row> rowsOf(const Setting& setting) {
    QVector<Row> rows;
    sql::Query query;
    query.exec(
        "SELECT Valsense,Note1,Rfault1,Note2,Rfault2,ID,Flg FROM RLY_RKLMTEM_TEM WHERE RNo=? AND PNo=? AND CDz=?",
        {setting.RNo, setting.PNo, setting.Cdz});
    while (query.next())
        rows.append(
            {query.number(5), query.raw(0), query.text(1), query.raw(2), query.text(3), query.raw(4), query.number(6)});
    return rows;
}

/// Why there is no sensitivity, or none that counts.
QString whyNone(const Checks& checks) {
    const auto isOpen = [](const Row& row) { return row.isOpen(); };
    if (checks.sensitivity >= 0)
        return std::any_of(checks.rows.begin(), checks.rows.end(), isOpen)
                   ? Text::tr("参量未计算，请按“计算灵敏度参量”")
                   : QString();
    if (checks.rows.isEmpty()) return Text::tr("该定值没有灵敏度校验");
    if (checks.sensitivity == kSettingIsZero) return Text::tr("定值为0，没有灵敏度");
    const Row& row = checks.rows.front();
    if (sensitivityParameter(row.Rfault1.toDouble(), row.Rfault2.toDouble(), row.Flg) != 0)
        return Text::tr("没有规定灵敏度的算法");
    return Text::tr("参量值为0，没有灵敏度，请计算灵敏度参量或换用另一参量");
}

}  // namespace

bool Row::isOpen() const { return isSensitivityOpen(Rfault1.toDouble(), Rfault2.toDouble(), Flg); }

QString Row::shown() const { return isOpen() ? Text::tr("参量未计算") : Valsense; }

Checks look(int rTypeNo, const Setting& setting) {
    Checks checks;
    checks.sensitivity = quietSensitivity(rTypeNo, setting.RNo, setting.PNo, setting.Cdz, setting.value);
    checks.rows = rowsOf(setting);
    checks.reason = whyNone(checks);
    for (Row& row : checks.rows)
        if (checks.sensitivity >= 0) row.Valsense = QString::number(checks.sensitivity, 'g', 6);
    return checks;
}

Checks check(int rTypeNo, const Setting& setting, bool tells) {
    if (tells) CalSensitivity(rTypeNo, setting.RNo, setting.PNo, setting.Cdz, setting.value);
    Checks checks = look(rTypeNo, setting);
    if (checks.sensitivity >= 0 &&
        sql::Query().exec("UPDATE RLY_RKLMTEM_TEM SET Valsense=? WHERE RNo=? AND PNo=? AND CDz=?",
                          {QString::number(checks.sensitivity, 'g', 6), setting.RNo, setting.PNo, setting.Cdz}))
        checks.rows = rowsOf(setting);
    return checks;
}

int parameterInUse(int flg) { return firstParameterInUse(flg) ? 1 : 2; }

int otherParameter(int flg) { return parameterInUse(flg) == 1 ? flg + kOther : flg - kOther; }

Setting settingOf(int id) {
    sql::Query query;
    query.exec("SELECT RNo,PNo,CDz FROM RLY_RKLMTEM_TEM WHERE ID=?", {id});
    return query.next() ? Setting{query.number(0), query.number(1), query.text(2), 0} : Setting{};
}

bool storeFlag(int id, int flg) { return sql::Query().exec("UPDATE RLY_RKLMTEM_TEM SET Flg=? WHERE ID=?", {flg, id}); }

}  // namespace SensitivityChecks
