#include "programs/workflow/ResultTable.h"

#include <QHash>
#include <cmath>
#include <map>
#include <tuple>

#include "platform/sql/Sql.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/StageColumns.h"

namespace {

using PartSetting = std::tuple<int, int, QString>;  // relay, part, setting

/// What a rule of a run gave for a setting.
struct Ruling {
    int RuleNo = 0;
    QString note;
    double value = 0;
    bool hasResult = false;  ///< the rule gave something; 0 is then a value like any other
};

/// Values were stored with six digits.
bool same(double stored, double computed) { return std::abs(stored - computed) <= 1e-5 * std::abs(computed) + 1e-6; }

/// A rule whose outputs are all 0 gave no result.
std::map<PartSetting, std::vector<Ruling>> rulings(int caseNo) {
    std::map<PartSetting, std::vector<Ruling>> found;
    sql::Query query;
    query.exec(
        "SELECT RNo,PNo,Cdz,RuleNo,Note,Rdz,MAX(Rdz!=0) OVER (PARTITION BY RNo,PNo,RuleNo) FROM RLY_RDZTEM"
        " WHERE Case_No=? ORDER BY ID",
        {caseNo});
    while (query.next())
        found[{query.number(0), query.number(1), query.text(2)}].push_back(
            {query.number(3), query.text(4), query.real(5), query.number(6) == 1});
    return found;
}

std::map<PartSetting, double> sensitivities() {
    std::map<PartSetting, double> found;
    sql::Query query;
    query.exec("SELECT RNo,PNo,Cdz,Valsense FROM RLY_RKLMTEM_TEM WHERE Valsense>0");
    while (query.next()) found[{query.number(0), query.number(1), query.text(2)}] = query.real(3);
    return found;
}

void decide(ResultRow& row, const std::vector<Ruling>& rules) {
    for (const Ruling& rule : rules) {
        row.ruled = true;
        if (row.RuleNo != 0 || !rule.hasResult || !same(row.primary, rule.value)) continue;
        row.RuleNo = rule.RuleNo;
        row.ruleNote = rule.note;
    }
}

/// The rows of one relay and setting, one per part.
struct WorkingRow {
    ResultRow head;
    double values[3][kStages];  ///< old primary, new primary, new secondary
};

QVector<WorkingRow> workingRows(const RelayTypeInfo& type) {
    const QStringList columns = stageColumns("ODz").mid(0, kStages) + stageColumns("NDz");
    QVector<WorkingRow> rows;
    sql::Query query;
    query.exec("SELECT RNo,Cdz,ID_Name,I_Name,J_Name,Side,VType," + columns.join(',') +
               " FROM RLY_RLYOBJ_TEM ORDER BY TurnNo,RNo,DzNo");
    while (query.next()) {
        WorkingRow row;
        row.head.RNo = query.number(0);
        row.head.RTypeCode = type.RTypeCode;
        row.head.Cdz = query.text(1);
        row.head.label = locationLabel(type.RType, query.text(2), query.text(3), query.text(4), query.number(5));
        row.head.VType = query.number(6);
        const SettingKind* setting = type.setting(row.head.Cdz);
        row.head.DspCdz = setting ? setting->DspCdz : row.head.Cdz;
        for (int i = 0; i < 3 * kStages; ++i) row.values[i / kStages][i % kStages] = query.real(7 + i);
        rows.append(row);
    }
    return rows;
}

}  // namespace

QVector<ResultRow> resultTable(int caseNo, int rTypeNo) {
    const RelayTypeInfo type = readRelayTypes().value(rTypeNo);
    const auto rules = rulings(caseNo);
    const auto senses = sensitivities();
    const QVector<WorkingRow> working = workingRows(type);
    QVector<ResultRow> results;
    for (qsizetype from = 0, to = 0; from < working.size(); from = to) {
        while (to < working.size() && working[to].head.RNo == working[from].head.RNo) ++to;
        for (int part = 1; part <= type.NPart; ++part)
            for (qsizetype at = from; at < to; ++at) {
                ResultRow row = working[at].head;
                row.PNo = part;
                row.oldPrimary = working[at].values[0][part - 1];
                row.primary = working[at].values[1][part - 1];
                row.secondary = working[at].values[2][part - 1];
                const PartSetting key{row.RNo, part, row.Cdz};
                if (const auto it = rules.find(key); it != rules.end()) decide(row, it->second);
                if (const auto it = senses.find(key); it != senses.end()) row.sensitivity = it->second;
                results.append(row);
            }
    }
    return results;
}

QString unitOf(int vType) {
    static const QString units[] = {"", "A", "ohm", "V", "s"};
    return vType >= 1 && vType <= 4 ? units[vType] : units[0];
}
