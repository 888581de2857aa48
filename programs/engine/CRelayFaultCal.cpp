#include "programs/engine/CRelayFaultCal.h"

#include "programs/engine/MainBranchRows.h"

CRelayFaultCal::CRelayFaultCal(int rTypeNo, const QString& typeCode, const QString& workDir, int caseNo)
    : rTypeNo_(rTypeNo), typeCode_(typeCode), workDir_(workDir), caseNo_(caseNo) {}

CRelayFaultCal::~CRelayFaultCal() = default;

const RuleData& CRelayFaultCal::rules() {
    if (!rules_) rules_ = RuleData::read();
    return *rules_;
}

MainBranchRows& CRelayFaultCal::mainBranches(int caseNo) {
    if (!mainBranches_ || mainBranches_->caseNo() != caseNo) mainBranches_ = std::make_unique<MainBranchRows>(caseNo);
    return *mainBranches_;
}

void CRelayFaultCal::forgetMainBranches() { mainBranches_.reset(); }
