#include "programs/engine/CCaseCalFlow.h"

#include "exchange/FileNames.h"
#include "programs/engine/WorkFiles.h"

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

bool CCaseCalFlow::ReadResults(int what) {
    bool settings = true;
    if (what != 2) {
        settings = relayFault_->ReadSettingResults();
        relayFault_->ReadFaultResults();
        relayFault_->ReadVariableResults();
    }
    if (what != 1) relayFault_->ReadBranchCoefResults();
    return settings;
}

void CCaseCalFlow::forgetStep() {
    relayFault_->forgetRun();
    work::remove(workDir_, exchange::file::kCoefficients);
    if (!work::exists(workDir_, exchange::file::kEarlierCoefficients)) return;
    if (const auto earlier = work::read(workDir_, exchange::file::kEarlierCoefficients))
        work::write(workDir_, exchange::file::kCoefficients, *earlier);
}
