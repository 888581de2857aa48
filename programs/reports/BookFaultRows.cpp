#include "programs/reports/BookFaultRows.h"

#include <algorithm>

#include "platform/sql/Sql.h"

bool BookFaultRows::read() {
    sql::Query query;
    if (!query.exec("SELECT RNo,PNo,RuleNo,RMNo,NSela,NSelb,NSelc,NSys FROM RLY_FAULTINF WHERE Case_No=?", {caseNo_}))
        return false;
    while (query.next())
        choices_[{{query.number(0), query.number(1), query.number(2)}, query.number(3)}].append(
            {query.number(4), query.number(5), query.number(6), query.number(7)});
    return readFaults();
}

bool BookFaultRows::readFaults() {
    sql::Query query;
    if (!query.exec("SELECT RNo,PNo,RuleNo,RMode,MType,FType,ID_No,I_No,J_No,K_Loc,R,X FROM RLY_CRUDRM WHERE Case_No=?",
                    {caseNo_}))
        return false;
    while (query.next()) {
        const ModeKey key{{query.number(0), query.number(1), query.number(2)}, query.number(3)};
        const auto chosen = choices_.constFind(key);
        const int type = query.number(4);
        if (chosen == choices_.constEnd() || std::none_of(chosen->begin(), chosen->end(), [&](const Choice& choice) {
                return choice.NSela == type || choice.NSelb == type;
            }))
            continue;
        faults_[key].append({type,
                             {query.number(5), network_.element(query.number(6), query.number(7), query.number(8)),
                              query.number(9), query.raw(10), query.raw(11)}});
    }
    return true;
}

BookDecision BookFaultRows::decision(const ModeKey& key, const Choice& choice) const {
    BookDecision decided;
    decided.SysNo = choice.NSys;
    decided.mode = network_.mode(choice.NSys);
    for (const FaultRow& row : faults_.value(key)) {
        if (row.MType == choice.NSela) decided.faults.append(row.fault);
        if (row.MType == choice.NSelb && choice.NSelb != 0 && !decided.outage) decided.outage = row.fault.element;
    }
    return decided;
}

void BookFaultRows::describe(BookVariable& variable, const BookRuleKey& rule) const {
    const ModeKey key{rule, variable.ModeNo};
    for (const Choice& choice : choices_.value(key)) {
        if (variable.ofFault()) variable.faults.append(decision(key, choice));
        if (variable.ofElement()) variable.elements.append(network_.element(choice.NSelc, choice.NSela, choice.NSelb));
        const Location* relay = variable.ofRelay() ? network_.relay(choice.NSela) : nullptr;
        if (relay) variable.relays.append(*relay);
    }
}
