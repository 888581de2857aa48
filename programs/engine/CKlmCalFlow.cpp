#include "programs/engine/CKlmCalFlow.h"

#include "exchange/FileNames.h"
#include "platform/sql/Sql.h"
#include "programs/engine/WorkFiles.h"

CKlmCalFlow::CKlmCalFlow(int rTypeNo, const QString& typeCode, const QString& workDir, const QString& exeDir)
    : CCaseCalFlow(rTypeNo, typeCode, workDir, 0), exeDir_(exeDir), rTypeNo_(rTypeNo) {}

bool CKlmCalFlow::Run() {
    if (!rowCursor.first()) return false;
    work::remove(workDir(), exchange::file::kEarlierCoefficients);
    relayFault().WriteRelayFile(rTypeNo_, rowCursor.row().rno);
    expandRules();
    writeRelays();
    return caseCal().RunEngine(exeDir_, workDir());
}

void CKlmCalFlow::expandRules() {
    sql::Transaction faults;
    int rno = -1, ruleNo = -1;
    for (bool more = rowCursor.first(); more; more = rowCursor.next()) {
        const SettingRow& row = rowCursor.row();
        if (row.rno == rno && row.ruleNo == ruleNo) continue;
        relayFault().ExpandFaults(&rowCursor);
        rno = row.rno;
        ruleNo = row.ruleNo;
    }
    faults.commit();
}

void CKlmCalFlow::writeRelays() {
    int rno = -1;
    for (bool more = rowCursor.first(); more; more = rowCursor.next()) {
        const SettingRow& row = rowCursor.row();
        if (row.rno == rno) continue;
        relayFault().WriteFaultFiles(row.rno, row.pno, 0, rno == -1 ? 2 : 1, row.ruleNo);
        rno = row.rno;
    }
    rowCursor.first();
}
