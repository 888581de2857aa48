#include "programs/engine/CRelayInputCal.h"

#include "exchange/ControlFile.h"
#include "exchange/FileNames.h"
#include "exchange/RuleFile.h"
#include "exchange/VirtualRelayFile.h"
#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/WorkFiles.h"
#include "programs/frame/Messages.h"

CRelayInputCal::CRelayInputCal(int rTypeNo, const QString& workDir, int caseNo)
    : rTypeNo_(rTypeNo), workDir_(workDir), caseNo_(caseNo) {}

const RuleData& CRelayInputCal::rules() {
    if (!rules_) rules_ = RuleData::read();
    return *rules_;
}

bool CRelayInputCal::PrepareCalculation(int mode) {
    const bool sensitivity = mode == 2;
    const bool rows = sensitivity ? BuildKlmSettingRows() : BuildSettingRows();
    if (!sensitivity) BuildSensitivityRows();
    WriteModeFile(sensitivity ? 2 : 1);
    const bool ready = rows && WriteControlFile(mode) && WriteRuleFile(rTypeNo_, sensitivity ? 2 : 1);
    if (!ready) ReportError(Text::tr("计算无法启动"), 0);
    return ready;
}

bool CRelayInputCal::WriteControlFile(int mode) {
    if (!work::write(workDir_, exchange::file::kControl, {})) return false;
    if (mode < 1 || mode > 3) return true;
    const RelayTypeInfo* type = rules().type(rTypeNo_);
    if (!type) {
        ReportError(Text::tr("没有当前保护类型的信息，不能形成计算控制信息"), 0);
        return false;
    }
    sql::Query q;
    q.exec("SELECT Mlf,NPara,Lgup FROM RLY_CASE_RLY WHERE Case_No=?", {mode == 2 ? klmCaseNo_ : caseNo_});
    if (!q.next()) {
        ReportError(Text::tr("没有作业信息，不能形成计算控制信息"), 0);
        return false;
    }
    exchange::Control control;
    control.elementClass = type->RType == 6 || type->RType == 10 ? 1 : 2;
    control.mlf = q.number(0);
    control.nPara = mode == 2 ? 0 : q.number(1);
    control.lgup = mode == 2 ? 0 : q.number(2);
    return work::write(workDir_, exchange::file::kControl, exchange::format(control));
}

bool CRelayInputCal::WriteRuleFile(int relayType, int mode) {
    rules_ = RuleData::read();  // parameters may have been changed since the last write
    const std::vector<int> numbers = mode == 1 ? rules_->rulesOfType(relayType) : rules_->sensitivityRules();
    std::string text;
    for (int number : numbers)
        if (const SettingRule* rule = rules_->rule(number)) text += exchange::format(rule->block);
    if (!work::write(workDir_, exchange::file::kRules, text)) return false;
    if (!numbers.empty()) return true;
    ReportError(Text::tr("没有需要的规则，请检查规则库"), 1);
    return false;
}

bool CRelayInputCal::WriteVirtualRelayFile() {
    exchange::VirtualRelays relays;
    const auto branches = BranchTable::current();
    sql::Query q;
    q.exec("SELECT ID_Name,I_Name,J_Name,Side FROM RLY_DUMRLY WHERE Valid=1");
    while (q.next()) {
        ++relays.count;
        if (const BranchRow* branch = branches->find(q.text(0), q.text(1), q.text(2)))
            relays.relays.push_back({branch->iNo, branch->jNo, branch->idNo, q.number(3)});
    }
    return work::write(workDir_, exchange::file::kVirtualRelays, exchange::format(relays));
}
