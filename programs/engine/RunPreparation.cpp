#include "programs/engine/RunPreparation.h"

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"
#include "programs/frame/StageColumns.h"

namespace {

constexpr const char* kWorkingTables[] = {"RLY_CRUDRM", "RLY_CFZXS", "RLY_CFZXSRM", "RLY_FAULTINF",
                                          "RLY_KFINF",  "RLY_RRVIN", "RLY_RRNPH"};

bool hasRelays() {
    if (sql::scalar({}, "SELECT COUNT(*) FROM RLY_RLYOBJ_TEM", {}, 0).toInt() > 0) return true;
    ReportError(Text::tr("作业中没有选择保护，不能进行计算"), 0);
    return false;
}

bool clearWorkingRows(int caseNo) {
    sql::Transaction whole;
    for (const char* table : kWorkingTables)
        if (!sql::Query().exec(QString("DELETE FROM ") + table + " WHERE Case_No=?", {caseNo})) return false;
    return whole.commit();
}

/// Takes the new values of the settings that the run calculates out of the working table: a relay must not meet at a
/// neighbour what an earlier run left there.
bool clearCalculatedSettings(int caseNo) {
    sql::Transaction whole;
    for (int part = 1; part <= kStages; ++part) {
        const QString column = "o.NDz" + QString::number(part);
        if (!sql::Query().exec("UPDATE RLY_RLYOBJ_TEM o JOIN (SELECT DISTINCT RNo,Cdz FROM RLY_RDZTEM WHERE Case_No=?"
                               " AND PNo=?) t ON t.RNo=o.RNo AND t.Cdz=o.Cdz SET " +
                                   column + "1=0," + column + "2=0",
                               {caseNo, part}))
            return false;
    }
    return whole.commit();
}

bool prepare(CCaseCalFlow& flow, RowCursor& cursor, int mode) {
    if (!hasRelays() || !clearWorkingRows(flow.caseNo())) return false;
    flow.reloadRules();
    flow.relayFault().forgetRun();
    flow.relayFault().CopyUserMainBranches();
    if (!flow.relayInput().PrepareCalculation(mode)) return false;
    cursor = RowCursor::ofCase(flow.caseNo());
    if (cursor.first()) return true;
    ReportError(Text::tr("没有需要计算的定值，请检查整定的段和整定规则"), 0);
    return false;
}

}  // namespace

bool prepareRun(int run, CStepCalFlow& flow) {
    flow.startOver();
    flow.relayFault().setFirstWrite(1);
    flow.hasRow = prepare(flow, flow.rowCursor, run == 2 ? 3 : 1);
    if (run != 2 || !flow.hasRow) return flow.hasRow;
    flow.relayFault().setFirstWrite(0);  // the stored settings of relays of the case are those of earlier runs
    return flow.hasRow = clearCalculatedSettings(flow.caseNo());
}

bool prepareSensitivityRun(int realCaseNo, CKlmCalFlow& flow) {
    flow.relayInput().setKlmCaseNo(realCaseNo);
    flow.relayFault().setKlmCaseNo(realCaseNo);
    return prepare(flow, flow.rowCursor, 2);
}
