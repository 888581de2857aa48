#include <algorithm>

#include "exchange/FileNames.h"
#include "exchange/MainBranchFile.h"
#include "exchange/RuleFaultFile.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/CRelayFaultCal.h"
#include "programs/engine/RuleFaultRows.h"
#include "programs/engine/RunInputs.h"
#include "programs/engine/WorkFiles.h"

namespace {

/// An impedance as the text of its database column.
std::string textOf(const QVariant& value) { return value.toString().toStdString(); }

template <class Fault>
exchange::FaultRow fileRow(const Fault& f) {
    return {f.mType, f.idNo, f.iNo, f.jNo, f.kLoc, f.fType, textOf(f.r), textOf(f.x)};
}

std::vector<exchange::RuleFault> faultsOfPart(const QVector<RuleFaultRow>& rows, int pno) {
    std::vector<exchange::RuleFault> faults;
    for (const RuleFaultRow& row : rows)
        if (row.pno == pno) faults.push_back({row.rMode, fileRow(row)});
    // Rows of one fault number stay as they were made.
    std::stable_sort(faults.begin(), faults.end(), [](const auto& a, const auto& b) {
        return a.rMode != b.rMode ? a.rMode < b.rMode : a.row.mType < b.row.mType;
    });
    return faults;
}

exchange::RuleSection sectionOf(int ruleNo, const SettingRule* rule, int rno, int pno, RunInputs& inputs) {
    exchange::RuleSection section;
    section.ruleNo = ruleNo;
    if (ruleNo < 100) {
        section.parameterVector = rule && !rule->block.parameterVectors.empty() ? 1 : 0;
        section.modes = inputs.sensitivityModes();
        return section;
    }
    const int sFlg = rule ? rule->sFlg : 0;
    section.parameterVector = inputs.parameterVector(rno, pno, ruleNo);
    section.modes = inputs.modes(sFlg);
    section.withoutModes = sFlg == 0;
    return section;
}

/// From the rule on, those that go into one engine run.
std::vector<int> rulesOfRun(const std::vector<RunInputs::ListedRule>& listed, int ruleNo, int prType, bool single) {
    std::vector<int> numbers;
    auto it = std::find_if(listed.begin(), listed.end(), [&](const auto& r) { return r.ruleNo == ruleNo; });
    for (; it != listed.end() && it->prTypeNo == prType; ++it)
        if (!single || it->ruleNo == ruleNo) numbers.push_back(it->ruleNo);
    return numbers;
}

std::string sectionText(const MainBranchRows::Branch& branch, RunInputs& inputs) {
    const MainBranchRows::End& end = branch.end;
    exchange::MainBranch section{branch.fzNo, end.iNo, end.jNo, end.idNo, end.side, {}, {}};
    if (const BranchRow* row = BranchTable::current()->find(end.idNo, end.iNo, end.jNo))
        section.modes = inputs.modesOfMainBranch({row->idName, row->iName, row->jName}, end.side);
    for (const MainBranchFault& fault : branch.faults) section.faults.push_back(fileRow(fault));
    return exchange::format(section);
}

}  // namespace

bool CRelayFaultCal::WriteFaultFiles(int rno, int pno, int prType, int fileMode, int ruleNo) {
    if (fileMode == 2 && !writeMainBranches()) return false;
    exchange::RelayRules group{rno, pno, {}};
    for (int number : rulesOfRun(inputs().rulesOfPart(rno, pno), ruleNo, prType, singleRule_ != 0)) {
        group.sections.push_back(sectionOf(number, rules().rule(number), rno, pno, inputs()));
        group.sections.back().faults = faultsOfPart(ruleFaults().of(rno, number), pno);
    }
    const std::string text = exchange::format(group);
    return fileMode == 2 ? work::write(workDir_, exchange::file::kRuleFaults, text)
                         : work::append(workDir_, exchange::file::kRuleFaults, text);
}

bool CRelayFaultCal::writeMainBranches() {
    std::string text;
    for (MainBranchRows::Branch& branch : mainBranches(caseNo_).branches()) {
        if (branch.text.empty()) branch.text = sectionText(branch, inputs());
        text += branch.text;
    }
    return work::write(workDir_, exchange::file::kMainBranches, text);
}
