#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/CRelayFaultCal.h"
#include "programs/engine/MainBranchRows.h"
#include "programs/engine/OutageRows.h"
#include "programs/engine/RelayPlace.h"
#include "programs/engine/RuleFaultRows.h"
#include "programs/engine/TemplateFaults.h"
#include "programs/frame/Messages.h"

namespace {

struct UserFault {
    int pno = 1, rMode = 0, mType = 0;
    QString idName, iName, jName;
    int kLoc = 0, fType = 1;
    QVariant r, x;
    int flg = 0;
};

const char kOfSensitivity[] =
    "SELECT 1,RMode,MType,FID_Name,FIName,FJName,K_Loc,FType,R,X,Flg FROM RLY_KLMPFAULT WHERE ID_Name=? AND I_Name=? "
    "AND J_Name=? AND Side=? AND RuleNo=? AND Valid=1";
const char kOfRelay[] =
    "SELECT PNo,RMode,MType,ID_Name,I_Name,J_Name,K_Loc,FType,R,X,Flg FROM RLY_RUDRM WHERE RNo=? AND RuleNo=? AND "
    "Valid=1";

QHash<int, QVector<UserFault>> userFaults(const SettingRow& row) {
    QHash<int, QVector<UserFault>> faults;
    sql::Query q;
    if (row.ruleNo < 100)
        q.exec(kOfSensitivity, {row.idName, row.iName, row.jName, row.side, row.ruleNo});
    else
        q.exec(kOfRelay, {row.rno, row.ruleNo});
    while (q.next())
        faults[q.number(1)].push_back({q.number(0), q.number(1), q.number(2), q.text(3), q.text(4), q.text(5),
                                       q.number(6), q.number(7), q.real(8), q.real(9), q.number(10)});
    return faults;
}

/// \return false when a fault's branch is not in the network
bool addUserFaults(const QVector<UserFault>& faults, RuleFaultRows& rows) {
    const auto branches = BranchTable::current();
    for (const UserFault& f : faults) {
        const BranchRow* branch = branches->find(f.idName, f.iName, f.jName);
        if (!branch) {
            ReportError("不能采用已定义的故障，支路" + f.idName + "不存在、无效或不在当前方案中", 0);
            return false;
        }
        rows.add({f.pno, f.rMode, f.mType, branch->idNo, branch->iNo, branch->jNo, f.kLoc, f.fType, f.r, f.x, 1});
    }
    return true;
}

void addOutages(int mode, const SettingRow& row, RuleFaultRows& rows) {
    const int highest = rows.highest(row.pno, mode, kFirstOutage, kLastOutage);
    int mType = highest == 0 ? kFirstOutage : highest + 1;
    if (highest != 0 && mType + kRowsOfOutage - 1 > kLastOutage) return ReportError(kTooManyOutages, 0);
    const auto branches = BranchTable::current();
    sql::Query q;
    q.exec("SELECT ID_Name,I_Name,J_Name FROM RLY_CELECHK WHERE RNo=?", {row.rno});
    while (q.next()) {
        const BranchRow* element = branches->find(q.text(0), q.text(1), q.text(2));
        if (!element) {
            ReportError("检修元件" + q.text(0) + "不存在、无效或不在基础方案中", 1);
            continue;
        }
        if (mType > kLastOutage) return ReportError(kTooManyOutages, 0);
        rows.addOutage(row.pno, mode, mType++, element->idNo, element->iNo, element->jNo, element->flg == 1);
    }
}

void expandTemplate(int mode, const std::vector<TemplateFault>& faults, const SettingRow& row, RuleFaultRows& rows) {
    const RelayPlace place = RelayPlace::of(row);
    for (const TemplateFault& fault : faults) {
        if (fault.lType < 1 || fault.lType > 3) {
            ReportError("模板中有错误的故障位置", 1);
            continue;
        }
        const BranchWalk steps = stepsOfTemplate(fault.lType, place);
        const bool onTransformers = fault.lType == 3 || (fault.lType == 1 && !steps.empty() &&
                                                         steps.front().kind != exchange::BranchKind::Line);
        insertTemplateFaults({row.pno, mode, fault.kLoc, fault.fType, fault.r, fault.x, onTransformers ? 2 : 1}, steps,
                             rows);
    }
    addOutages(mode, row, rows);
}

}  // namespace

void CRelayFaultCal::ExpandFaults(const RowCursor* cursor) {
    const SettingRow& row = cursor->row();
    const SettingRule* rule = rules().rule(row.ruleNo);
    if (!rule) return;
    RuleFaultRows rows(caseNo_, row.rno, row.ruleNo);
    const auto users = userFaults(row);
    for (const SettingRule::Template& t : rule->templates) {
        if (t.patNo <= 0) continue;
        const QVector<UserFault> ofMode = users.value(t.modeNo);
        if (!addUserFaults(ofMode, rows)) {
            rows.store();
            return;
        }
        if (ofMode.isEmpty() || ofMode.first().flg == 1)
            expandTemplate(t.modeNo, rules().faultTemplate(t.patNo), row, rows);
    }
    rows.store();
    if (rule->usesBranchCoefficients()) setUpMainBranches(row);
}

void CRelayFaultCal::ExpandRuleTemplate(int mode, int patNo, int, const RowCursor* cursor) {
    RuleFaultRows rows(caseNo_, cursor->row().rno, cursor->row().ruleNo);
    expandTemplate(mode, rules().faultTemplate(patNo), cursor->row(), rows);
    rows.store();
}

BranchStep* CRelayFaultCal::InsertTemplateFaults(int mode, int kLoc, int fType, double r, double x, BranchStep* list,
                                                 int rno, int pno, int ruleNo, int kind) {
    RuleFaultRows rows(caseNo_, rno, ruleNo);
    insertTemplateFaults({pno, mode, kLoc, fType, r, x, kind}, valuesOf(list), rows);
    rows.store();
    FreeBranchSteps(list);
    return nullptr;
}
