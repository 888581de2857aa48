#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/CRelayFaultCal.h"
#include "programs/engine/MainBranchExpansion.h"
#include "programs/frame/Messages.h"

namespace {

using exchange::BranchEdge;
using exchange::BranchKind;
using exchange::WalkStep;

constexpr int kGeneral = 1;      // template of a main branch
constexpr int kBackToRelay = 2;  // template of one that leads back to the relay's own node
constexpr int kStandsForItself = 2;

bool canBeMainBranch(const BranchEdge& edge) {
    return edge.kind == BranchKind::Line || edge.kind == BranchKind::Transformer || edge.kind == BranchKind::Winding;
}

MainBranchRows::End endOf(const WalkStep& e) {
    return e.orient == 2 ? MainBranchRows::End{e.idNo, e.fromNode, e.node, 1}
                         : MainBranchRows::End{e.idNo, e.node, e.fromNode, 2};
}

/// Steps whose elements, seen from where each was entered, are main branches of a relay on `branch`.
BranchWalk mainBranchSteps(int ownNode, const BranchRow& branch) {
    const auto branches = BranchTable::current();
    const exchange::BranchGraph& graph = branches->graph();
    BranchWalk found;
    for (const WalkStep& s : walkFrom(ownNode, branch.idNo, 1, 1)) {
        if (s.state == 0) continue;
        for (int position : graph.at(s.node)) {
            const BranchEdge& edge = graph.edges()[position];
            if (edge.idNo == s.idNo || !canBeMainBranch(edge)) continue;
            for (const WalkStep& e : walkFrom(s.node, edge.idNo, edge.kind == BranchKind::Winding ? 1 : 0, s.state))
                if (e.state != 2) found.push_back(e);
        }
    }
    return found;
}

}  // namespace

void CRelayFaultCal::setUpMainBranches(const SettingRow& row) {
    const auto branches = BranchTable::current();
    const BranchRow* branch = branches->find(row.idName, row.iName, row.jName);
    if (!branch) return;
    const int ownNode = row.side == 1 ? branch->iNo : branch->jNo;
    for (const WalkStep& e : mainBranchSteps(ownNode, *branch)) {
        const MainBranchRows::Branch* known = mainBranches(caseNo_).find(endOf(e));
        if (known && known->flg == kStandsForItself) continue;
        expandMainBranch(endOf(e), e.node == ownNode ? kBackToRelay : kGeneral, caseNo_, known ? known->fzNo : 0);
    }
}

void CRelayFaultCal::expandMainBranch(const MainBranchRows::End& end, int patNo, int caseNo, int fzNo) {
    const std::vector<TemplateFault>& faults = rules().branchTemplate(patNo);
    if (faults.empty()) return ReportError(Text::tr("没有对应的模板，不能自动设置分支系数计算信息"), 0);
    MainBranchRows& rows = mainBranches(caseNo);
    MainBranchRows::Branch* known = fzNo == 0 ? nullptr : rows.find(fzNo);
    MainBranchRows::Branch& branch = known ? *known : rows.add(end, 0);
    if (!addTemplateFaults(branch, faults, patNo == kBackToRelay, known == nullptr, rows)) return;
    if (const BranchRow* row = BranchTable::current()->find(end.idNo, end.iNo, end.jNo))
        addMainBranchOutages(branch, inputs().outagesOfMainBranch({row->idName, row->iName, row->jName}, end.side),
                             rows);
}

void CRelayFaultCal::ExpandBranchCoefTemplate(int idNo, int iNo, int jNo, int side, int patNo, int caseNo, int exists,
                                              int fzNo) {
    expandMainBranch({idNo, iNo, jNo, side}, patNo, caseNo, exists ? fzNo : 0);
    storeFaults();
}

namespace {

struct UserBranch {
    int fzNo = 0;
    QString idName;
    int flg = 2;
};

QHash<int, UserBranch> addUserBranches(const BranchTable& branches, MainBranchRows& rows) {
    QHash<int, UserBranch> taken;
    sql::Query q;
    q.exec("SELECT FzNo,ID_Name,I_Name,J_Name,Side,Flg FROM RLY_FZXS WHERE Valid=1");
    while (q.next()) {
        const UserBranch user{q.number(0), q.text(1), q.number(5) == 1 ? 1 : kStandsForItself};
        const BranchRow* branch = branches.find(q.text(1), q.text(2), q.text(3));
        if (!branch) {
            ReportError(Text::tr("已定义的主干支路") + user.idName + Text::tr("不存在、无效或不在当前方案中"), 1);
            continue;
        }
        rows.add({branch->idNo, branch->iNo, branch->jNo, q.number(4)}, user.flg, user.fzNo);
        taken.insert(user.fzNo, user);
    }
    return taken;
}

}  // namespace

bool CRelayFaultCal::CopyUserMainBranches() {
    mainBranches_.reset();
    const auto branches = BranchTable::current();
    MainBranchRows& rows = mainBranches(caseNo_);
    const QHash<int, UserBranch> taken = addUserBranches(*branches, rows);
    sql::Query q;
    q.exec("SELECT FzNo,MType,ID_Name,FIName,FJName,K_Loc,FType,R,X FROM RLY_FZXSRM");
    while (q.next()) {
        const auto user = taken.constFind(q.number(0));
        if (user == taken.constEnd()) continue;
        if (const BranchRow* branch = branches->find(q.text(2), q.text(3), q.text(4)))
            rows.addFault(*rows.find(user->fzNo), {q.number(1), branch->idNo, branch->iNo, branch->jNo, q.number(5),
                                                   q.number(6), q.real(7), q.real(8), user->flg});
        else
            ReportError(Text::tr("已定义的主干支路") + user->idName + Text::tr("中涉及的支路") + q.text(2) +
                            Text::tr("不存在、无效或不在当前方案中"),
                        1);
    }
    return rows.store();
}
