#include <QHash>
#include <algorithm>

#include "exchange/FileNames.h"
#include "exchange/MainBranchFile.h"
#include "exchange/RuleFaultFile.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/CRelayFaultCal.h"
#include "programs/engine/WorkFiles.h"
#include "programs/frame/LocationKey.h"

namespace {

std::vector<int> numbersOf(const QString& query, const QVariantList& values) {
    std::vector<int> numbers;
    sql::Query q;
    q.exec(query, values);
    while (q.next()) numbers.push_back(q.number(0));
    return numbers;
}

/// From column `from` on: MType, ID_No, I, J, K_Loc, FType, R, X.
exchange::FaultRow faultAt(const sql::Query& q, int from) {
    return {q.number(from),
            q.number(from + 1),
            q.number(from + 2),
            q.number(from + 3),
            q.number(from + 4),
            q.number(from + 5),
            q.raw(from + 6).toStdString(),
            q.raw(from + 7).toStdString()};
}

QHash<int, std::vector<exchange::RuleFault>> ruleFaults(int caseNo, int rno, int pno) {
    QHash<int, std::vector<exchange::RuleFault>> faults;
    sql::Query q;
    q.exec(
        "SELECT RuleNo,RMode,MType,ID_No,I_No,J_No,K_Loc,FType,R,X FROM RLY_CRUDRM WHERE RNo=? AND PNo=? AND "
        "Case_No=?",
        {rno, pno, caseNo});
    while (q.next()) faults[q.number(0)].push_back({q.number(1), faultAt(q, 2)});
    // Rows of one fault number stay as they were made, which an ORDER BY would not promise.
    for (auto& rows : faults)
        std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
            return a.rMode != b.rMode ? a.rMode < b.rMode : a.row.mType < b.row.mType;
        });
    return faults;
}

QHash<int, int> parameterVectors(int caseNo, int rno, int pno) {
    QHash<int, int> vectors;
    sql::Query q;
    q.exec("SELECT RuleNo,ParNo FROM RLY_CASEINF WHERE Case_No=? AND RNo=? AND PNo=?", {caseNo, rno, pno});
    while (q.next())
        if (!vectors.contains(q.number(0))) vectors.insert(q.number(0), q.number(1));
    return vectors;
}

/// The operating modes that a section can name.
struct CaseModes {
    std::vector<int> maximum, minimum, sensitivity;

    CaseModes(int caseNo, int sensitivityCaseNo)
        : maximum(numbersOf("SELECT SysNo FROM RLY_RUDSYS WHERE Case_No=? AND SFlg=1", {caseNo})),
          minimum(numbersOf("SELECT SysNo FROM RLY_RUDSYS WHERE Case_No=? AND SFlg=2", {caseNo})),
          sensitivity(numbersOf("SELECT SysNo FROM RLY_KLMFSYS WHERE Case_No=?", {sensitivityCaseNo})) {}

    [[nodiscard]] std::vector<int> of(int sFlg) const {
        std::vector<int> modes;
        if (sFlg == 1 || sFlg == 3) modes = maximum;
        if (sFlg == 2 || sFlg == 3) modes.insert(modes.end(), minimum.begin(), minimum.end());
        return modes;
    }
};

exchange::RuleSection sectionOf(int ruleNo, const SettingRule* rule, const CaseModes& modes,
                                const QHash<int, int>& vectors) {
    exchange::RuleSection section;
    section.ruleNo = ruleNo;
    if (ruleNo < 100) {
        section.parameterVector = rule && !rule->block.parameterVectors.empty() ? 1 : 0;
        section.modes = modes.sensitivity;
        return section;
    }
    const int sFlg = rule ? rule->sFlg : 0;
    section.parameterVector = vectors.value(ruleNo);
    section.modes = modes.of(sFlg);
    section.withoutModes = sFlg == 0;
    return section;
}

struct ListedRule {
    int ruleNo = 0, prTypeNo = 0;
};

std::vector<ListedRule> rulesOfPart(int caseNo, int rno, int pno) {
    std::vector<ListedRule> listed;
    sql::Query q;
    q.exec("SELECT DISTINCT RuleNo,PRTypeNo FROM RLY_RDZTEM WHERE RNo=? AND PNo=? AND Case_No=? ORDER BY ID ASC",
           {rno, pno, caseNo});
    while (q.next()) listed.push_back({q.number(0), q.number(1)});
    return listed;
}

/// From the rule on, those that go into one engine run.
std::vector<int> rulesOfRun(const std::vector<ListedRule>& listed, int ruleNo, int prType, bool single) {
    std::vector<int> numbers;
    auto it = std::find_if(listed.begin(), listed.end(), [&](const ListedRule& r) { return r.ruleNo == ruleNo; });
    for (; it != listed.end() && it->prTypeNo == prType; ++it)
        if (!single || it->ruleNo == ruleNo) numbers.push_back(it->ruleNo);
    return numbers;
}

QHash<QString, std::vector<int>> modesOfMainBranches(int caseNo) {
    QHash<QString, std::vector<int>> modes;
    sql::Query q;
    q.exec("SELECT ZID_Name,ZI_Name,ZJ_Name,Side,SysNo FROM RLY_FZXSSYS WHERE Case_No=?", {caseNo});
    while (q.next()) modes[locationKey(q.text(0), q.text(1), q.text(2), q.number(3))].push_back(q.number(4));
    return modes;
}

QHash<int, std::vector<exchange::FaultRow>> faultsOfMainBranches(int caseNo) {
    QHash<int, std::vector<exchange::FaultRow>> faults;
    sql::Query q;
    q.exec("SELECT FzNo,MType,ID_No,FINo,FJNo,K_Loc,FType,R,X FROM RLY_CFZXSRM WHERE Case_No=?", {caseNo});
    while (q.next()) faults[q.number(0)].push_back(faultAt(q, 1));
    return faults;
}

}  // namespace

bool CRelayFaultCal::WriteFaultFiles(int rno, int pno, int prType, int fileMode, int ruleNo) {
    if (fileMode == 2 && !writeMainBranches()) return false;
    const CaseModes modes(caseNo_, modeCaseNo());
    const auto vectors = parameterVectors(caseNo_, rno, pno);
    const auto faults = ruleFaults(caseNo_, rno, pno);
    exchange::RelayRules group{rno, pno, {}};
    for (int number : rulesOfRun(rulesOfPart(caseNo_, rno, pno), ruleNo, prType, singleRule_ != 0)) {
        group.sections.push_back(sectionOf(number, rules().rule(number), modes, vectors));
        group.sections.back().faults = faults.value(number);
    }
    const std::string text = exchange::format(group);
    return fileMode == 2 ? work::write(workDir_, exchange::file::kRuleFaults, text)
                         : work::append(workDir_, exchange::file::kRuleFaults, text);
}

bool CRelayFaultCal::writeMainBranches() {
    const auto branches = BranchTable::current();
    const auto modes = modesOfMainBranches(modeCaseNo());
    const auto faults = faultsOfMainBranches(caseNo_);
    std::string text;
    sql::Query q;
    q.exec("SELECT FzNo,I_No,J_No,ID_No,Side FROM RLY_CFZXS WHERE Case_No=?", {caseNo_});
    while (q.next()) {
        exchange::MainBranch branch{q.number(0), q.number(1), q.number(2), q.number(3), q.number(4), {}, {}};
        if (const BranchRow* row = branches->find(branch.idNo, branch.iNo, branch.jNo))
            branch.modes = modes.value(locationKey(row->idName, row->iName, row->jName, branch.side));
        branch.faults = faults.value(branch.fzNo);
        text += exchange::format(branch);
    }
    return work::write(workDir_, exchange::file::kMainBranches, text);
}
