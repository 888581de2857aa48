#pragma once

#include <QString>
#include <memory>

#include "programs/engine/BranchStep.h"
#include "programs/engine/CoefficientLines.h"
#include "programs/engine/MainBranchRows.h"
#include "programs/engine/RowCursor.h"
#include "programs/engine/RuleData.h"
#include "programs/engine/RunInputs.h"

class RunFaultRows;

/// Writes what the programs are told for one engine run (relays, faults) and reads back what they leave.
class CRelayFaultCal {
  public:
    /// \param typeCode  name of the case's relay type
    /// \param workDir   working directory, ending in a slash
    CRelayFaultCal(int rTypeNo, const QString& typeCode, const QString& workDir, int caseNo);
    ~CRelayFaultCal();

    /// RELAY.R1: the relay under calculation, then the relays of a type.
    bool WriteRelayFile(int relayType, int rno);
    /// RELAY.R2 and RELAY.R6. \param fileMode  2 rewrites both, 1 appends to RELAY.R6
    /// \param ruleNo  rule at which the list of sections starts
    bool WriteFaultFiles(int rno, int pno, int prType, int fileMode, int ruleNo);

    /// Turns the fault templates and user faults of the row under the cursor into RLY_CRUDRM, RLY_CFZXS, RLY_CFZXSRM.
    void ExpandFaults(const RowCursor* cursor);
    void ExpandRuleTemplate(int mode, int patNo, int relayType, const RowCursor* cursor);
    /// Takes over the list and frees it. \param kind  1 faults on lines, 2 on transformers \return the empty list
    BranchStep* InsertTemplateFaults(int mode, int kLoc, int fType, double r, double x, BranchStep* list, int rno,
                                     int pno, int ruleNo, int kind);
    void ExpandBranchCoefTemplate(int idNo, int iNo, int jNo, int side, int patNo, int caseNo, int exists, int fzNo);
    /// The user's main branches into RLY_CFZXS and RLY_CFZXSRM, at the setting-up of a run.
    bool CopyUserMainBranches();

    bool ReadTurnOrder();          ///< RELAY.R8 into `TurnNo`
    bool ReadSettingResults();     ///< RELAY.RP1 into RLY_RDZTEM
    bool ReadFaultResults();       ///< RELAY.RP2 into RLY_FAULTINF
    bool ReadBranchCoefResults();  ///< RELAY.RP3 and the lines kept into RLY_KFINF
    bool ReadPhaseResults();       ///< RELAY.RP4 into RLY_RRNPH
    bool ReadVariableResults();    ///< RELAY.RP5 into RLY_RRVIN

    /// Keeps the lines of RELAY.RP3 of an engine run until those of the whole run are stored. Without the file nothing
    /// is kept.
    void keepBranchCoefs();
    /// The lines kept into RLY_KFINF.
    bool storeBranchCoefs();
    void forgetBranchCoefs() { coefficients_.clear(); }
    /// RELAY.RP3 into RLY_KFINF, in the place of the rows of the same main branches and relays.
    bool replaceBranchCoefs();

    /// 1: the relays of the case stand in the next RELAY.R1 with their stored settings; the write sets it to 0.
    void setFirstWrite(int value) { firstWrite_ = value; }
    [[nodiscard]] int firstWrite() const { return firstWrite_; }
    /// 1: WriteFaultFiles writes the one rule only.
    void setSingleRule(int value) { singleRule_ = value; }
    /// The real case of a sensitivity run, whose own case number is 0; -1 none.
    void setKlmCaseNo(int caseNo) { klmCaseNo_ = caseNo; }
    /// Reads the rule database anew at the next need, or takes over what was read.
    void useRules(std::shared_ptr<const RuleData> rules) { rules_ = std::move(rules); }
    /// Forgets what is kept from step to step (definitions, faults and main branches of the run): to be called before a
    /// run, and whenever others have changed the tables.
    void forgetRun();
    /// From now on the working settings are read once and kept; whoever changes those of a relay tells it.
    void keepWorkingSettings() { keepsSettings_ = true; }
    void workingSettingsChanged(int rno);
    /// Factor from the primary to the secondary values of a relay, see conversionFactor().
    double secondaryFactor(int rno, int vType);

  private:
    const RuleData& rules();
    RunInputs& inputs();
    RunFaultRows& ruleFaults();
    const SettingsByRelay& workingSettings();
    MainBranchRows& mainBranches(int caseNo);
    void expandRow(const SettingRow& row, const SettingRule& rule);
    void setUpMainBranches(const SettingRow& row);
    void expandMainBranch(const MainBranchRows::End& end, int patNo, int caseNo, int fzNo);
    void storeFaults();
    bool writeMainBranches();
    [[nodiscard]] int modeCaseNo() const { return klmCaseNo_ != -1 ? klmCaseNo_ : caseNo_; }

    int rTypeNo_;
    QString typeCode_;
    QString workDir_;
    int caseNo_;
    int firstWrite_ = 1;
    int singleRule_ = 0;
    int klmCaseNo_ = -1;
    std::shared_ptr<const RuleData> rules_;
    bool keepsSettings_ = false;
    std::unique_ptr<RunInputs> inputs_;
    std::unique_ptr<SettingsByRelay> workingSettings_;
    std::unique_ptr<RunFaultRows> ruleFaults_;
    std::unique_ptr<MainBranchRows> mainBranches_;
    CoefficientLines coefficients_;
};
