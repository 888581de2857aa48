#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/CRelayInputCal.h"
#include "programs/frame/LocationKey.h"
#include "programs/frame/Messages.h"

namespace {

const QStringList kColumns{"RNo",     "ID_Name", "I_Name", "J_Name",  "Side",  "PNo",     "Cdz",
                           "RFault1", "Note1",   "RuleNo", "RFault2", "Note2", "DRuleNo", "Flg"};

using Parameters = QHash<int, double>;  // by rule

QHash<QString, Parameters> storedParameters() {
    QHash<QString, Parameters> stored;
    sql::Query q;
    q.exec("SELECT ID_Name,I_Name,J_Name,Side,RuleNo,RFault FROM RLY_FKLM");
    while (q.next()) stored[locationKey(q.text(0), q.text(1), q.text(2), q.number(3))].insert(q.number(4), q.real(5));
    return stored;
}

QString noteOf(const RuleData& rules, int ruleNo) {
    if (const SettingRule* rule = rules.rule(ruleNo)) return rule->note;
    ReportError(Text::tr("缺少计算灵敏度参量的规则"), 1);
    return {};
}

/// Parameter one stands first in use; the second digit tells the kind of the check.
int flagOf(int ruleNo) { return ruleNo >= 41 && ruleNo <= 70 ? 12 : 11; }

void tellMissing(const sql::Query& relay) {
    const QString node = relay.text(relay.number(4) == 1 ? 2 : 3);
    ReportError(
        relay.text(1) + " " + node + Text::tr("侧的灵敏度参量没有计算，不能形成灵敏度参量表，请先进行灵敏度参量计算"),
        1);
}

}  // namespace

bool CRelayInputCal::BuildSensitivityRows() {
    sql::Transaction whole;
    if (!sql::Query().exec("DELETE FROM RLY_RKLMTEM_TEM")) return false;
    const auto stored = storedParameters();
    const auto& checks = rules().sensitivityChecks(rTypeNo_);
    QVector<QVariantList> rows;
    sql::Query relay;
    relay.exec("SELECT DISTINCT RNo,ID_Name,I_Name,J_Name,Side FROM RLY_RLYOBJ_TEM");
    while (relay.next()) {
        if (checks.empty()) {
            ReportError(Text::tr("没有与该保护类型对应的灵敏度参量信息"), 1);
            whole.commit();
            return false;
        }
        const auto found = stored.constFind(locationKey(relay.text(1), relay.text(2), relay.text(3), relay.number(4)));
        if (found == stored.constEnd()) tellMissing(relay);
        const Parameters parameters = found == stored.constEnd() ? Parameters() : *found;
        for (const SensitivityCheck& check : checks)
            rows.push_back({relay.number(0), relay.text(1), relay.text(2), relay.text(3), relay.number(4), check.pno,
                            check.cdz, parameters.value(check.ruleNo), noteOf(rules(), check.ruleNo), check.ruleNo,
                            parameters.value(check.dRuleNo), noteOf(rules(), check.dRuleNo), check.dRuleNo,
                            flagOf(check.ruleNo)});
    }
    if (sql::insertRows({}, "RLY_RKLMTEM_TEM", kColumns, rows) && whole.commit()) return true;
    ReportError(Text::tr("生成灵敏度中间结果表失败"), 0);
    return false;
}
