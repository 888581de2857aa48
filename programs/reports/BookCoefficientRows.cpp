#include "platform/sql/Sql.h"
#include "programs/reports/BookFaultRows.h"

namespace {

/// Faults and outages of the main branches, by main branch and number.
using MainBranchFaults = QHash<QPair<int, int>, QVector<BookFault>>;

bool readMainBranchFaults(int caseNo, const BookNetwork& network, MainBranchFaults& faults) {
    sql::Query query;
    if (!query.exec("SELECT FzNo,MType,FType,ID_No,FINo,FJNo,K_Loc,R,X FROM RLY_CFZXSRM WHERE Case_No=?", {caseNo}))
        return false;
    while (query.next())
        faults[{query.number(0), query.number(1)}].append(
            {query.number(2), network.element(query.number(3), query.number(4), query.number(5)), query.number(6),
             query.raw(7), query.raw(8)});
    return true;
}

}  // namespace

bool readBookCoefficients(int caseNo, const BookNetwork& network, QHash<int, QVector<BookCoefficient>>& byRelay) {
    MainBranchFaults faults;
    sql::Query query;
    if (!readMainBranchFaults(caseNo, network, faults) ||
        !query.exec("SELECT NLRNo,FzNo,Fz1,Nsel1a,Nsel1b,Nsys1,Fz0,Nsel0a,Nsel0b,Nsys0 FROM RLY_KFINF WHERE Case_No=?",
                    {caseNo}))
        return false;
    const auto sequence = [&](int column) {
        BookCoefficient::Sequence made{query.real(column),
                                       {query.number(column + 3), network.mode(query.number(column + 3)), {}, {}}};
        const int mainBranch = query.number(1), outage = query.number(column + 2);
        made.decided.faults = faults.value({mainBranch, query.number(column + 1)});
        if (const auto out = faults.value({mainBranch, outage}); outage != 0 && !out.isEmpty())
            made.decided.outage = out[0].element;
        return made;
    };
    while (query.next()) byRelay[query.number(0)].append({sequence(2), sequence(6)});
    return true;
}
