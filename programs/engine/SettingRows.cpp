#include <algorithm>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/CRelayInputCal.h"
#include "programs/frame/Messages.h"

namespace {

constexpr std::size_t kMostRules = 20;

const QStringList kSettingColumns{"RNo", "ID_Name", "I_Name", "J_Name",   "Side",   "PNo",
                                  "Cdz", "RuleNo",  "Note",   "PRTypeNo", "Case_No"};

/// A relay of the case, where it stands.
struct Place {
    int rno = 0;
    QString idName, iName, jName;
    int side = 1;
};

QVector<Place> relaysOfCase() {
    QVector<Place> relays;
    sql::Query q;
    q.exec("SELECT DISTINCT RNo,ID_Name,I_Name,J_Name,Side FROM RLY_RLYOBJ_TEM");
    while (q.next()) relays.push_back({q.number(0), q.text(1), q.text(2), q.text(3), q.number(4)});
    return relays;
}

QVariantList settingRow(const Place& relay, int pno, const QString& cdz, const SettingRule& rule, int caseNo) {
    return {relay.rno, relay.idName,      relay.iName, relay.jName,   relay.side, pno,
            cdz,       rule.block.ruleNo, rule.note,   rule.prTypeNo, caseNo};
}

QHash<int, Place> byNumber(const QVector<Place>& relays) {
    QHash<int, Place> places;
    for (const Place& relay : relays) places.insert(relay.rno, relay);
    return places;
}

const SettingRule* ruleWithOutput(const RuleData& rules, int ruleNo) {
    const SettingRule* rule = rules.rule(ruleNo);
    if (rule && !rule->outputs.isEmpty()) return rule;
    ReportError(Text::tr("整定规则") + QString::number(ruleNo) + (rule ? Text::tr("没有输出量") : Text::tr("不存在")),
                1);
    return nullptr;
}

/// First rules of all checks, then the second ones that are not among them.
std::vector<int> sensitivityRulesOf(const std::vector<SensitivityCheck>& checks) {
    std::vector<int> numbers;
    const auto add = [&](int ruleNo) {
        if (numbers.size() < kMostRules && std::find(numbers.begin(), numbers.end(), ruleNo) == numbers.end())
            numbers.push_back(ruleNo);
    };
    for (const SensitivityCheck& check : checks) add(check.ruleNo);
    for (const SensitivityCheck& check : checks) add(check.dRuleNo);
    return numbers;
}

bool replaceSettingRows(int caseNo, const QVector<QVariantList>& rows, const QString& failure) {
    if (sql::Query().exec("DELETE FROM RLY_RDZTEM WHERE Case_No=?", {caseNo}) &&
        sql::insertRows({}, "RLY_RDZTEM", kSettingColumns, rows))
        return true;
    ReportError(failure, 0);
    return false;
}

}  // namespace

bool CRelayInputCal::BuildSettingRows() {
    const QHash<int, Place> relays = byNumber(relaysOfCase());
    QVector<QVariantList> rows;
    sql::Query q;
    q.exec(
        "SELECT DISTINCT TurnNo,RNo,PNo,RuleNo FROM RLY_CASEINF WHERE PValid<=>1 AND RValid<=>1 AND Case_No=? "
        "ORDER BY PNo,TurnNo,RuleNo",
        {caseNo_});
    while (q.next()) {
        const SettingRule* rule = ruleWithOutput(rules(), q.number(3));
        if (!rule) continue;
        const auto relay = relays.constFind(q.number(1));
        if (relay == relays.constEnd()) {
            ReportError(Text::tr("整定目标列表与保护作业信息表不对应"), 1);
            continue;
        }
        for (const QString& cdz : rule->outputs) rows.push_back(settingRow(*relay, q.number(2), cdz, *rule, caseNo_));
    }
    return replaceSettingRows(caseNo_, rows, Text::tr("生成定值中间结果表失败"));
}

bool CRelayInputCal::BuildKlmSettingRows() {
    const std::vector<int> numbers = sensitivityRulesOf(rules().sensitivityChecks(rTypeNo_));
    if (numbers.empty()) {
        sql::Query().exec("DELETE FROM RLY_RDZTEM WHERE Case_No=?", {caseNo_});
        ReportError(Text::tr("没有为当前保护类型指定灵敏度校验用参量的计算规则"), 1);
        return false;
    }
    std::vector<const SettingRule*> used;
    for (int number : numbers) {
        const SettingRule* rule = rules().rule(number);
        if (rule && !rule->outputs.isEmpty())
            used.push_back(rule);
        else
            ReportError(Text::tr("灵敏度参量计算规则") + QString::number(number) + Text::tr("不存在或者没有输出量"), 1);
    }
    QVector<QVariantList> rows;
    for (const Place& relay : relaysOfCase())
        for (const SettingRule* rule : used) rows.push_back(settingRow(relay, 1, rule->outputs[0], *rule, caseNo_));
    return replaceSettingRows(caseNo_, rows, Text::tr("生成定值中间结果表失败，不能计算灵敏度参量"));
}
