#pragma once

#include "programs/engine/CStepCalFlow.h"

/// The automatic calculation: every relay part is stored into the working settings before the next one starts.
class CAutoCalFlow : public CStepCalFlow {
  public:
    CAutoCalFlow(int rTypeNo, const QString& typeCode, const QString& workDir, int caseNo, const QString& exeDir);

    /// Folds the results of a relay part back into RLY_RLYOBJ_TEM, primary and secondary: of several rules for one
    /// setting the smallest for "Udz", "Zdz", "Udz1", "Udz2", "Udz3", else the greatest. A rule without a result
    /// (0) never wins the smallest.
    bool StoreCurrentSettings(int rno, int pno);

  private:
    int rTypeNo_;
};
