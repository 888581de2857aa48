#include "programs/engine/CStepCalFlow.h"

#include "exchange/FileNames.h"
#include "exchange/ResultFiles.h"
#include "exchange/TextFile.h"
#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/WorkFiles.h"
#include "programs/frame/Messages.h"

CStepCalFlow::CStepCalFlow(int rTypeNo, const QString& typeCode, const QString& workDir, int caseNo,
                           const QString& exeDir)
    : CCaseCalFlow(rTypeNo, typeCode, workDir, caseNo), exeDir_(exeDir) {}

int CStepCalFlow::prTypeOf(int ruleNo) {
    const SettingRule* rule = relayInput().rules().rule(ruleNo);
    return rule ? rule->prTypeNo : 0;
}

bool CStepCalFlow::standsOnSamePart() const {
    return rowCursor.isValid() && rowCursor.row().rno == rno_ && rowCursor.row().pno == pno_;
}

void CStepCalFlow::startOver() {
    rno_ = pno_ = 0;
    prTypeNo_ = -1;
    rulesInHand_.clear();
    work::remove(workDir(), exchange::file::kCoefficients);
    relayFault().forgetBranchCoefs();
}

bool CStepCalFlow::Step() {
    if (!rowCursor.isValid()) return false;
    const SettingRow row = rowCursor.row();
    const int prTypeNo = prTypeOf(row.ruleNo);
    const bool sameType = prTypeNo == prTypeNo_;
    rno_ = row.rno;
    pno_ = row.pno;
    prTypeNo_ = prTypeNo;
    rulesInHand_.clear();
    relayFault().WriteRelayFile(prTypeNo_, rno_);
    do {
        rulesInHand_.append(rowCursor.row().ruleNo);
        relayFault().ExpandFaults(&rowCursor);
        passRule();
    } while (hasRow && standsOnSamePart() && prTypeOf(rowCursor.row().ruleNo) == prTypeNo_);
    relayFault().WriteFaultFiles(rno_, pno_, prTypeNo_, 2, row.ruleNo);
    carryCoefficients(sameType);
    return caseCal().RunEngine(exeDir_, workDir());
}

void CStepCalFlow::passRule() {
    const SettingRow passed = rowCursor.row();
    do {
        hasRow = rowCursor.next();
    } while (hasRow && rowCursor.row().ruleNo == passed.ruleNo && rowCursor.row().rno == passed.rno &&
             rowCursor.row().pno == passed.pno);
}

bool CStepCalFlow::RecalculateRule(const RowCursor* cursor) {
    if (!cursor->isValid()) return false;
    const SettingRow row = cursor->row();
    for (const char* table : {"RLY_FAULTINF", "RLY_RRVIN", "RLY_CRUDRM"})
        sql::Query().exec(QString("DELETE FROM ") + table + " WHERE RNo=? AND PNo=? AND RuleNo=? AND Case_No=?",
                          {row.rno, row.pno, row.ruleNo, caseNo()});
    // A rule that has no result now must not show the one it had.
    sql::Query().exec("UPDATE RLY_RDZTEM SET Rdz=0 WHERE RNo=? AND PNo=? AND RuleNo=? AND Case_No=?",
                      {row.rno, row.pno, row.ruleNo, caseNo()});
    reloadRules();
    relayFault().forgetRun();
    relayFault().setFirstWrite(0);  // the change that led here stands in the working settings
    rulesInHand_ = {row.ruleNo};
    prTypeNo_ = prTypeOf(row.ruleNo);
    relayFault().WriteRelayFile(prTypeNo_, row.rno);
    relayFault().ExpandFaults(cursor);
    relayFault().setSingleRule(1);
    relayFault().WriteFaultFiles(row.rno, row.pno, prTypeNo_, 2, row.ruleNo);
    relayFault().setSingleRule(0);
    carryCoefficients(true);
    return caseCal().RunEngine(exeDir_, workDir());
}

void CStepCalFlow::carryCoefficients(bool wanted) {
    work::remove(workDir(), exchange::file::kEarlierCoefficients);
    if (!wanted || !work::exists(workDir(), exchange::file::kCoefficients)) return;
    const auto found = work::read(workDir(), exchange::file::kCoefficients);
    if (!found || !work::write(workDir(), exchange::file::kEarlierCoefficients, exchange::keptCoefficientLines(*found)))
        ReportError(Text::tr("不能转换分支系数计算结果"), 1);
}
