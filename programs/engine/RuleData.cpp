#include "programs/engine/RuleData.h"

#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/frame/TableNames.h"

namespace {

std::string ascii(const QString& text) { return text.toStdString(); }

template <class Rows>
const Rows& rowsOf(const QHash<int, Rows>& all, int key) {
    static const Rows none;
    const auto it = all.constFind(key);
    return it == all.constEnd() ? none : *it;
}

QHash<int, std::vector<TemplateFault>> readTemplate(const QString& table) {
    QHash<int, std::vector<TemplateFault>> templates;
    sql::Query q(tables::ruleConnection);
    q.exec("SELECT PatNo,LType,K_Loc,FType,R,X FROM " + table);
    while (q.next()) templates[q.number(0)].push_back({q.number(1), q.number(2), q.number(3), q.real(4), q.real(5)});
    return templates;
}

}  // namespace

bool SettingRule::usesBranchCoefficients() const {
    return std::any_of(block.variables.begin(), block.variables.end(),
                       [](const exchange::RuleVariable& v) { return v.vType > 450 && v.vType < 460; });
}

std::shared_ptr<const RuleData> RuleData::read() {
    auto data = std::make_shared<RuleData>();
    data->readRules();
    data->readModes();
    data->readFormulas();
    data->readParameters();
    data->readTypes();
    data->readTemplates();
    return data;
}

void RuleData::readRules() {
    sql::Query q(tables::ruleConnection);
    q.exec("SELECT RuleNo,NumMode,NVarin,NPar,NRule,NOutPut,Note,SFlg,PRTypeNo FROM RULEINF ORDER BY RuleNo");
    while (q.next()) {
        SettingRule rule;
        rule.block.ruleNo = q.number(0);
        rule.block.numMode = q.number(1);
        rule.block.nVarin = q.number(2);
        rule.block.nPar = q.number(3);
        rule.block.nRule = q.number(4);
        rule.block.nOutPut = q.number(5);
        rule.note = q.text(6);
        rule.sFlg = q.number(7);
        rule.prTypeNo = q.number(8);
        rules_.insert(rule.block.ruleNo, rule);
    }
    sql::Query out(tables::ruleConnection);
    out.exec("SELECT RuleNo,CDz FROM VAROUT ORDER BY RuleNo,DzNo ASC");
    while (out.next())
        if (auto it = rules_.find(out.number(0)); it != rules_.end()) it->outputs.append(out.text(1));
}

void RuleData::readModes() {
    sql::Query q(tables::ruleConnection);
    q.exec("SELECT RuleNo,ModeNo,SelVar1,SelVar2,A,B,Nop,Y,Consel FROM MODEINF ORDER BY RuleNo,ModeNo,ItemNo");
    while (q.next()) {
        const auto it = rules_.find(q.number(0));
        if (it == rules_.end()) continue;
        it->block.modeLines.push_back({q.number(1), exchange::modeOperandCode(ascii(q.text(2))),
                                       exchange::modeOperandCode(ascii(q.text(3))), q.real(4), q.real(5), q.number(6),
                                       q.number(7), q.number(8)});
    }
    sql::Query t(tables::ruleConnection);
    t.exec("SELECT RuleNo,ModeNo,PatNo FROM RMU ORDER BY RuleNo,ModeNo");
    while (t.next())
        if (auto it = rules_.find(t.number(0)); it != rules_.end()) it->templates.push_back({t.number(1), t.number(2)});
}

void RuleData::readFormulas() {
    sql::Query v(tables::ruleConnection);
    v.exec("SELECT RuleNo,VarNo,ModeNo,VType,VPos FROM VARIN ORDER BY RuleNo,ModeNo,VarNo");
    while (v.next())
        if (auto it = rules_.find(v.number(0)); it != rules_.end())
            it->block.variables.push_back({v.number(1), v.number(2), v.number(3), v.number(4)});
    sql::Query q(tables::ruleConnection);
    q.exec("SELECT RuleNo,X1,X2,A,B,Nop,Y FROM RULE ORDER BY RuleNo,Line_No");
    while (q.next())
        if (auto it = rules_.find(q.number(0)); it != rules_.end())
            it->block.lines.push_back({exchange::ruleOperandCode(ascii(q.text(1))),
                                       exchange::ruleOperandCode(ascii(q.text(2))), q.real(3), q.real(4), q.number(5),
                                       exchange::ruleOperandCode(ascii(q.text(6)))});
}

void RuleData::readParameters() {
    sql::Query q(tables::ruleConnection);
    q.exec("SELECT RuleNo,ParNo,K FROM PARAINF ORDER BY RuleNo,ParNo ASC,KNo ASC");
    int lastRule = -1, lastVector = -1;
    while (q.next()) {
        const auto it = rules_.find(q.number(0));
        if (it == rules_.end()) continue;
        auto& vectors = it->block.parameterVectors;
        if (q.number(0) != lastRule || q.number(1) != lastVector) vectors.emplace_back();
        vectors.back().push_back(q.real(2));
        lastRule = q.number(0);
        lastVector = q.number(1);
    }
}

void RuleData::readTypes() {
    types_ = readRelayTypes();
    sql::Query r(tables::ruleConnection);
    r.exec("SELECT DISTINCT RTypeNo,RPartNo,RuleNo FROM RTYPERULE ORDER BY RTypeNo,RPartNo,RuleNo");
    while (r.next()) {
        std::vector<int>& rules = rulesOfType_[r.number(0)];
        if (std::find(rules.begin(), rules.end(), r.number(2)) == rules.end()) rules.push_back(r.number(2));
    }
    sql::Query k(tables::ruleConnection);
    k.exec("SELECT RTypeNo,PNo,Cdz,RuleNo,DRuleNo,KlmFlg FROM USEFKLM ORDER BY RTypeNo,PNo,Cdz");
    while (k.next()) checks_[k.number(0)].push_back({k.number(1), k.text(2), k.number(3), k.number(4), k.number(5)});
}

void RuleData::readTemplates() {
    faultTemplates_ = readTemplate("RPRM");
    branchTemplates_ = readTemplate("FZPRM");
}

const SettingRule* RuleData::rule(int ruleNo) const {
    const auto it = rules_.constFind(ruleNo);
    return it == rules_.constEnd() ? nullptr : &*it;
}

const RelayTypeInfo* RuleData::type(int rTypeNo) const {
    const auto it = types_.constFind(rTypeNo);
    return it == types_.constEnd() ? nullptr : &*it;
}

std::vector<int> RuleData::rulesOfType(int rTypeNo) const { return rowsOf(rulesOfType_, rTypeNo); }

std::vector<int> RuleData::sensitivityRules() const {
    std::vector<int> numbers;
    for (auto it = rules_.constBegin(); it != rules_.constEnd() && it.key() < 100; ++it) numbers.push_back(it.key());
    return numbers;
}

const std::vector<TemplateFault>& RuleData::faultTemplate(int patNo) const { return rowsOf(faultTemplates_, patNo); }

const std::vector<TemplateFault>& RuleData::branchTemplate(int patNo) const { return rowsOf(branchTemplates_, patNo); }

const std::vector<SensitivityCheck>& RuleData::sensitivityChecks(int rTypeNo) const { return rowsOf(checks_, rTypeNo); }
