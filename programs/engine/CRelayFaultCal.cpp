#include "programs/engine/CRelayFaultCal.h"

#include "platform/sql/Sql.h"
#include "programs/engine/MainBranchRows.h"
#include "programs/engine/RuleFaultRows.h"
#include "programs/engine/RunInputs.h"
#include "programs/frame/SettingConversion.h"

CRelayFaultCal::CRelayFaultCal(int rTypeNo, const QString& typeCode, const QString& workDir, int caseNo)
    : rTypeNo_(rTypeNo), typeCode_(typeCode), workDir_(workDir), caseNo_(caseNo) {}

CRelayFaultCal::~CRelayFaultCal() = default;

const RuleData& CRelayFaultCal::rules() {
    if (!rules_) rules_ = RuleData::read();
    return *rules_;
}

RunInputs& CRelayFaultCal::inputs() {
    if (!inputs_) inputs_ = std::make_unique<RunInputs>(caseNo_, modeCaseNo(), typeCode_);
    return *inputs_;
}

RunFaultRows& CRelayFaultCal::ruleFaults() {
    if (!ruleFaults_) ruleFaults_ = std::make_unique<RunFaultRows>(caseNo_);
    return *ruleFaults_;
}

MainBranchRows& CRelayFaultCal::mainBranches(int caseNo) {
    if (!mainBranches_ || mainBranches_->caseNo() != caseNo) mainBranches_ = std::make_unique<MainBranchRows>(caseNo);
    return *mainBranches_;
}

void CRelayFaultCal::forgetRun() {
    inputs_.reset();
    workingSettings_.reset();
    ruleFaults_.reset();
    mainBranches_.reset();
}

const SettingsByRelay& CRelayFaultCal::workingSettings() {
    if (!workingSettings_ || !keepsSettings_)
        workingSettings_ = std::make_unique<SettingsByRelay>(readWorkingSettings());
    return *workingSettings_;
}

void CRelayFaultCal::workingSettingsChanged(int rno) {
    if (workingSettings_) workingSettings_->insert(rno, readWorkingSettings(rno).value(rno));
}

double CRelayFaultCal::secondaryFactor(int rno, int vType) {
    const InstalledRelay* relay = inputs().relay(rno);
    return relay ? conversionFactor(vType, relay->ctPri, relay->ctSec, relay->ptPri, relay->ptSec) : 1.0;
}

void CRelayFaultCal::storeFaults() {
    const bool rules = ruleFaults_ && ruleFaults_->hasAdded();
    const bool branches = mainBranches_ && mainBranches_->hasAdded();
    if (!rules && !branches) return;
    sql::Transaction whole;
    const bool stored = (!rules || ruleFaults_->store()) && (!branches || mainBranches_->store()) && whole.commit();
    if (!stored) forgetRun();  // what the tables hold now is for them to tell
}
