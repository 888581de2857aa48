#include <algorithm>

#include "platform/host/Text.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/CRelayFaultCal.h"
#include "programs/engine/OutageRows.h"
#include "programs/engine/RelayPlace.h"
#include "programs/engine/RuleFaultRows.h"
#include "programs/engine/RunInputs.h"
#include "programs/engine/TemplateFaults.h"
#include "programs/frame/Messages.h"

namespace {

/// \return false when a fault's branch is not in the network
bool addUserFaults(const QVector<UserFault>& faults, RuleFaultRows& rows) {
    const auto branches = BranchTable::current();
    for (const UserFault& f : faults) {
        const BranchRow* branch = branches->find(f.element.idName, f.element.iName, f.element.jName);
        if (!branch) {
            ReportError(
                Text::tr("不能采用已定义的故障，支路") + f.element.idName + Text::tr("不存在、无效或不在当前方案中"),
                0);
            return false;
        }
        rows.add({f.pno, f.rMode, f.mType, branch->idNo, branch->iNo, branch->jNo, f.kLoc, f.fType, f.r, f.x, 1});
    }
    return true;
}

void addOutages(int mode, const SettingRow& row, const QVector<ElementName>& outages, RuleFaultRows& rows) {
    numberOutages(
        outages, rows.highest(row.pno, mode, kFirstOutage, kLastOutage), Text::tr("不存在、无效或不在基础方案中"),
        [](const BranchRow&) { return false; },
        [&](int mType, const BranchRow& element) {
            rows.addOutage(row.pno, mode, mType, element.idNo, element.iNo, element.jNo, element.flg == 1);
        });
}

void expandTemplate(int mode, const std::vector<TemplateFault>& faults, const SettingRow& row, RuleFaultRows& rows) {
    const RelayPlace place = RelayPlace::of(row);
    for (const TemplateFault& fault : faults) {
        if (fault.lType < 1 || fault.lType > 3) {
            ReportError(Text::tr("模板中有错误的故障位置"), 1);
            continue;
        }
        const BranchWalk steps = stepsOfTemplate(fault.lType, place);
        const bool onTransformers = fault.lType == 3 || (fault.lType == 1 && !steps.empty() &&
                                                         steps.front().kind != exchange::BranchKind::Line);
        insertTemplateFaults({row.pno, mode, fault.kLoc, fault.fType, fault.r, fault.x, onTransformers ? 2 : 1}, steps,
                             rows);
    }
}

}  // namespace

void CRelayFaultCal::ExpandFaults(const RowCursor* cursor) {
    if (const SettingRule* rule = rules().rule(cursor->row().ruleNo)) expandRow(cursor->row(), *rule);
    storeFaults();
}

void CRelayFaultCal::expandRow(const SettingRow& row, const SettingRule& rule) {
    RuleFaultRows rows(ruleFaults(), row.rno, row.ruleNo);
    const auto users = inputs().userFaults(row);
    for (const SettingRule::Template& t : rule.templates) {
        if (t.patNo <= 0) continue;
        const QVector<UserFault> ofMode = users.value(t.modeNo);
        if (!addUserFaults(ofMode, rows)) return;
        if (!ofMode.isEmpty() && ofMode.first().flg != 1) continue;
        expandTemplate(t.modeNo, rules().faultTemplate(t.patNo), row, rows);
        addOutages(t.modeNo, row, inputs().outagesOfRelay(row.rno), rows);
    }
    if (rule.usesBranchCoefficients()) setUpMainBranches(row);
}

void CRelayFaultCal::ExpandRuleTemplate(int mode, int patNo, int, const RowCursor* cursor) {
    const SettingRow& row = cursor->row();
    RuleFaultRows rows(ruleFaults(), row.rno, row.ruleNo);
    expandTemplate(mode, rules().faultTemplate(patNo), row, rows);
    addOutages(mode, row, inputs().outagesOfRelay(row.rno), rows);
    storeFaults();
}

BranchStep* CRelayFaultCal::InsertTemplateFaults(int mode, int kLoc, int fType, double r, double x, BranchStep* list,
                                                 int rno, int pno, int ruleNo, int kind) {
    RuleFaultRows rows(ruleFaults(), rno, ruleNo);
    insertTemplateFaults({pno, mode, kLoc, fType, r, x, kind}, valuesOf(list), rows);
    storeFaults();
    FreeBranchSteps(list);
    return nullptr;
}
