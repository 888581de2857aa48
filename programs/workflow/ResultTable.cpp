#include "programs/workflow/ResultTable.h"

#include <QHash>
#include <algorithm>
#include <cmath>
#include <map>
#include <span>
#include <tuple>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/Sensitivity.h"
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
    bool hasResult = false;  ///< the rule gave something; a time or factor of 0 is then a value like any other
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

/// A sensitivity as it stands; nothing where its parameter still has the value of a new relay.
std::map<PartSetting, std::optional<double>> sensitivities() {
    std::map<PartSetting, std::optional<double>> found;
    sql::Query query;
    query.exec("SELECT RNo,PNo,Cdz,Valsense,RFault1,RFault2,Flg FROM RLY_RKLMTEM_TEM");
    while (query.next()) {
        const PartSetting key{query.number(0), query.number(1), query.text(2)};
        if (isSensitivityOpen(query.real(4), query.real(5), query.number(6)))
            found[key] = std::nullopt;
        else if (query.real(3) > 0)
            found[key] = query.real(3);
    }
    return found;
}

/// A current, impedance or voltage of 0 is no setting; a time or a factor may be 0.
bool mustNotBeZero(int vType) { return vType >= kCurrent && vType <= kVoltage; }

void decide(ResultRow& row, const std::vector<Ruling>& rules) {
    for (const Ruling& rule : rules) {
        if (row.RuleNo != 0 || !rule.hasResult || !same(row.primary, rule.value)) continue;
        if (rule.value == 0 && mustNotBeZero(row.VType)) continue;
        row.RuleNo = rule.RuleNo;
        row.ruleNote = rule.note;
    }
}

using Reasons = QHash<QPair<int, int>, QStringList>;  // by relay and part

Reasons reasonsOf(const QVector<RuleWithoutResult>& rules) {
    Reasons reasons;
    for (const RuleWithoutResult& rule : rules) {
        QStringList& texts = reasons[{rule.RNo, rule.PNo}];
        const QString text = RulesWithoutResult::reasonText(rule.reason);
        if (!texts.contains(text)) texts.append(text);
    }
    return reasons;
}

/// Says why settings of a part have no value, and which of them must have one. \param part  the rows of one part
void explain(std::span<ResultRow> part, const QStringList& reasons) {
    const bool anyRule = std::any_of(part.begin(), part.end(), [](const auto& row) { return row.RuleNo != 0; });
    const bool acts = std::any_of(part.begin(), part.end(),
                                  [](const auto& row) { return mustNotBeZero(row.VType) && row.primary != 0; });
    const bool timed =
        std::any_of(part.begin(), part.end(), [](const auto& row) { return row.VType == kTime && row.hasValue(); });
    for (ResultRow& row : part) {
        row.lacksTime = row.VType == kTime && acts && !timed;
        if (row.hasValue()) continue;
        if (row.lacksTime)
            row.reason = Text::tr("动作时间没有结果");
        else if (anyRule)
            row.reason = Text::tr("没有结果");
        else
            row.reason =
                reasons.isEmpty() ? Text::tr("没有适用的整定原则") : Text::tr("没有结果: ") + reasons.join("；");
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

struct CaseResults {
    std::map<PartSetting, std::vector<Ruling>> rules;
    std::map<PartSetting, std::optional<double>> senses;
    Reasons reasons;

    [[nodiscard]] ResultRow row(const WorkingRow& working, int part) const {
        ResultRow row = working.head;
        row.PNo = part;
        row.oldPrimary = working.values[0][part - 1];
        row.primary = working.values[1][part - 1];
        row.secondary = working.values[2][part - 1];
        const PartSetting key{row.RNo, part, row.Cdz};
        if (const auto it = rules.find(key); it != rules.end()) decide(row, it->second);
        if (const auto it = senses.find(key); it != senses.end()) {
            row.sensitivity = it->second;
            row.sensitivityOpen = !it->second;
        }
        return row;
    }
};

}  // namespace

QVector<ResultRow> resultTable(int caseNo, int rTypeNo, const QVector<RuleWithoutResult>& withoutResult) {
    const RelayTypeInfo type = readRelayTypes().value(rTypeNo);
    const CaseResults results = {rulings(caseNo), sensitivities(), reasonsOf(withoutResult)};
    const QVector<WorkingRow> working = workingRows(type);
    QVector<ResultRow> rows;
    for (qsizetype from = 0, to = 0; from < working.size(); from = to) {
        while (to < working.size() && working[to].head.RNo == working[from].head.RNo) ++to;
        for (int part = 1; part <= type.NPart; ++part) {
            const qsizetype first = rows.size();
            for (qsizetype at = from; at < to; ++at) rows.append(results.row(working[at], part));
            explain(std::span(rows).subspan(size_t(first)), results.reasons.value({working[from].head.RNo, part}));
        }
    }
    return rows;
}

QString unitOf(int vType) {
    static const QString units[] = {"", "A", "ohm", "V", "s"};
    return vType >= 1 && vType <= 4 ? units[vType] : units[0];
}
