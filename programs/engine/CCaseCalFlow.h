#pragma once

#include <QString>
#include <memory>

#include "programs/engine/CCaseCal.h"
#include "programs/engine/CNetDataCal.h"
#include "programs/engine/CRelayFaultCal.h"
#include "programs/engine/CRelayInputCal.h"

/// What every flow of a calculation owns. Must live until the program that it started has ended.
class CCaseCalFlow {
  public:
    /// \param workDir  working directory, ending in a slash
    CCaseCalFlow(int rTypeNo, const QString& typeCode, const QString& workDir, int caseNo);
    virtual ~CCaseCalFlow();
    CCaseCalFlow(const CCaseCalFlow&) = delete;
    CCaseCalFlow& operator=(const CCaseCalFlow&) = delete;

    [[nodiscard]] CNetDataCal& netData() { return *netData_; }
    [[nodiscard]] CRelayInputCal& relayInput() { return *relayInput_; }
    [[nodiscard]] CRelayFaultCal& relayFault() { return *relayFault_; }
    [[nodiscard]] CCaseCal& caseCal() { return *caseCal_; }
    [[nodiscard]] int caseNo() const { return caseNo_; }
    [[nodiscard]] const QString& workDir() const { return workDir_; }

    /// Has the rule database read anew, once for all members: at the start of a run and after a change of parameters.
    void reloadRules();
    /// Reads the results of the engine run that has ended: 1 settings, faults and variables, 2 branch coefficients,
    /// any other value all four. To be called only when the process ended with Outcome::Done; else the files are those
    /// of an earlier run.
    /// \return false when 1 or all were asked for and the program left no settings
    bool ReadResults(int what);
    /// To be called after the tables have gone back to where they were before an engine run: what is kept of them is
    /// forgotten, and the branch coefficients are those of the run before.
    void forgetStep();

  private:
    std::unique_ptr<CNetDataCal> netData_;
    std::unique_ptr<CRelayInputCal> relayInput_;
    std::unique_ptr<CRelayFaultCal> relayFault_;
    std::unique_ptr<CCaseCal> caseCal_;
    QString workDir_;
    int caseNo_;
};
