#pragma once

#include "programs/engine/CCaseCalFlow.h"
#include "programs/engine/RowCursor.h"

/// The calculation of sensitivity parameters: one engine run for all relays of the case, under case number 0.
class CKlmCalFlow : public CCaseCalFlow {
  public:
    CKlmCalFlow(int rTypeNo, const QString& typeCode, const QString& workDir, const QString& exeDir);

    /// \pre the cursor holds at least one row \return false when the engine cannot be started
    bool Run();

    RowCursor rowCursor;  ///< positioned by prepareRun()

  private:
    void expandRules();
    void writeRelays();

    QString exeDir_;
    int rTypeNo_;
};
