#include "programs/engine/CCaseCalFlow.h"

CCaseCalFlow::CCaseCalFlow(int rTypeNo, const QString& typeCode, const QString& workDir, int caseNo)
    : netData_(std::make_unique<CNetDataCal>()),
      relayInput_(std::make_unique<CRelayInputCal>(rTypeNo, workDir, caseNo)),
      relayFault_(std::make_unique<CRelayFaultCal>(rTypeNo, typeCode, workDir, caseNo)),
      caseCal_(std::make_unique<CCaseCal>()),
      workDir_(workDir),
      caseNo_(caseNo) {}

CCaseCalFlow::~CCaseCalFlow() = default;

void CCaseCalFlow::reloadRules() {
    const std::shared_ptr<const RuleData> rules = RuleData::read();
    relayInput_->useRules(rules);
    relayFault_->useRules(rules);
}

void CCaseCalFlow::ReadResults(int what) {
    if (what != 2) {
        relayFault_->ReadSettingResults();
        relayFault_->ReadFaultResults();
        relayFault_->ReadVariableResults();
    }
    if (what != 1) relayFault_->ReadBranchCoefResults();
}
