#pragma once

#include "bench/RelayedProject.h"
#include "programs/workflow/NetworkSource.h"

namespace bench {

inline constexpr int zeroSequence = 3;

/// Cases 1 and 2 on the scheme of the network, case 3 on another; all relays of the type with settings of their own.
struct Cases {
    Cases();
    bool load(int caseNo) { return store.select(caseNo) && store.LoadCaseRelays(); }

    CaseStore store;
    NetworkSource network{realTime};
    QVector<int> relays;
    bool made = false;
};

inline Cases::Cases() {
    for (const InstalledRelay& relay : RelayStore::list(zeroSequence)) relays << relay.RNo;
    made = sql::Query().exec("INSERT INTO CDB_SCHEMEINFBAK (SchName) VALUES('二')");
    for (const char* name : {"一号", "二号", "三号"}) made = made && makeCase(store, zeroSequence, name);
    made =
        made && sql::Query().exec("UPDATE RLY_CASERDZ SET Rdz11=100.5+RNo,Rdz12=Rdz11/240,Rdz21=50.25,Rdz22=Rdz21/240");
    made = made && sql::Query().exec("UPDATE RLY_CASE_RLY SET Scheme='二' WHERE Case_No=3") && store.UpdateCaseChain(1);
}

}  // namespace bench
