#pragma once

#include <QString>
#include <memory>

#include "programs/engine/RuleData.h"

/// Writes what the programs are told about a case as a whole, and lays out the rows that a run fills.
class CRelayInputCal {
  public:
    /// \param workDir  working directory, ending in a slash
    CRelayInputCal(int rTypeNo, const QString& workDir, int caseNo);

    /// Builds the setting rows and writes the mode, control and rule files.
    /// \param mode  1 manual setting calculation, 2 sensitivity parameters, 3 automatic setting calculation
    bool PrepareCalculation(int mode);

    bool WriteControlFile(int mode);              ///< RELAY.R0
    bool WriteRuleFile(int relayType, int mode);  ///< RRULE.DAT; 1 the rules of a type, 2 all sensitivity rules
    bool WriteModeFile(int mode);                 ///< RELAY.R3; 1 setting calculation, else sensitivity parameters
    bool WriteVirtualRelayFile();                 ///< RELAY.R4

    bool BuildSettingRows();      ///< RLY_RDZTEM: one row per output of each rule in force, in calculation order
    bool BuildSensitivityRows();  ///< RLY_RKLMTEM_TEM: one row per sensitivity check
    bool BuildKlmSettingRows();   ///< RLY_RDZTEM of a sensitivity run

    /// The real case of a sensitivity run, whose own case number is 0; -1 none.
    void setKlmCaseNo(int caseNo) { klmCaseNo_ = caseNo; }
    [[nodiscard]] int klmCaseNo() const { return klmCaseNo_; }
    /// Reads the rule database anew at the next need, or takes over what was read.
    void useRules(std::shared_ptr<const RuleData> rules) { rules_ = std::move(rules); }
    const RuleData& rules();

  private:
    [[nodiscard]] int modeCaseNo() const { return klmCaseNo_ != -1 ? klmCaseNo_ : caseNo_; }

    int rTypeNo_;
    QString workDir_;
    int caseNo_;
    int klmCaseNo_ = -1;
    std::shared_ptr<const RuleData> rules_;
};
