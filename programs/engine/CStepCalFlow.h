#pragma once

#include "programs/engine/CCaseCalFlow.h"
#include "programs/engine/RowCursor.h"

/// A setting calculation, relay part by relay part: one engine run for one relay, one part and one relay type to
/// coordinate with.
class CStepCalFlow : public CCaseCalFlow {
  public:
    CStepCalFlow(int rTypeNo, const QString& typeCode, const QString& workDir, int caseNo, const QString& exeDir);

    /// Prepares the files for the rows from the cursor on that go into one engine run, moves the cursor behind them and
    /// starts HALDERN.EXE. \pre the cursor stands on a row
    /// \return false when the engine cannot be started; processExited() comes all the same
    bool Step();
    /// Forgets where an earlier run had got to, its branch coefficients included: their numbers are those of its main
    /// branches.
    void startOver();

    /// Engine run for the one rule on which the cursor stands, after a change of a parameter or of a coordinated
    /// setting. Forgets the rule's earlier results first. One at a time: the next only after processExited().
    bool RecalculateRule(const RowCursor* cursor);

    [[nodiscard]] int currentRNo() const { return rno_; }
    [[nodiscard]] int currentPNo() const { return pno_; }
    [[nodiscard]] int currentPRTypeNo() const { return prTypeNo_; }
    /// The cursor stands on a further row of the relay part in hand.
    [[nodiscard]] bool standsOnSamePart() const;
    /// The rules of the relay part that the engine was given last.
    [[nodiscard]] const QVector<int>& rulesInHand() const { return rulesInHand_; }

    RowCursor rowCursor;  ///< positioned by prepareRun()
    bool hasRow = true;   ///< what the last move of the cursor gave

  private:
    int prTypeOf(int ruleNo);
    void passRule();
    void carryCoefficients(bool wanted);

    QString exeDir_;
    int rno_ = 0;
    int pno_ = 0;
    int prTypeNo_ = -1;
    QVector<int> rulesInHand_;
};
