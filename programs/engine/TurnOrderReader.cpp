#include <QHash>

#include "exchange/FileNames.h"
#include "exchange/ResultFiles.h"
#include "exchange/TextFile.h"
#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/CRelayFaultCal.h"
#include "programs/engine/WorkFiles.h"
#include "programs/frame/Messages.h"

namespace {

constexpr qsizetype kRelaysPerStatement = 200;

struct Turn {
    int rno = 0, turnNo = 0;
};

/// A relay in the list gets its rank; one that is not gets a number beyond those in use.
QVector<Turn> turnsOf(const std::vector<int>& relays, const std::vector<int>& order) {
    QHash<int, int> rank;
    for (int place = static_cast<int>(order.size()); place > 0; --place) rank.insert(order[place - 1], place);
    QVector<Turn> turns;
    int beyond = 1;
    for (int rno : relays) {
        const auto found = rank.constFind(rno);
        beyond += found == rank.constEnd() ? static_cast<int>(order.size()) : *found - 1;
        turns.push_back({rno, found == rank.constEnd() ? beyond : *found});
    }
    return turns;
}

bool setTurns(const QString& table, const QString& condition, const QVariantList& conditionValues,
              const QVector<Turn>& turns) {
    for (qsizetype from = 0; from < turns.size(); from += kRelaysPerStatement) {
        const QVector<Turn> some = turns.mid(from, kRelaysPerStatement);
        QVariantList values, numbers;
        for (const Turn& turn : some) {
            values << turn.rno << turn.turnNo;
            numbers << turn.rno;
        }
        const QString text = "UPDATE " + table + " SET TurnNo=CASE RNo" +
                             QString(" WHEN ? THEN ?").repeated(some.size()) + " END WHERE RNo IN (" +
                             QStringList(some.size(), "?").join(",") + ")" + condition;
        if (!sql::Query().exec(text, values + numbers + conditionValues)) return false;
    }
    return true;
}

}  // namespace

bool CRelayFaultCal::ReadTurnOrder() {
    const auto text = work::read(workDir_, exchange::file::kTurnOrder);
    if (!text) return false;
    std::vector<int> relays;
    sql::Query q;
    q.exec("SELECT DISTINCT RNo FROM RLY_CASEINF WHERE Case_No=? AND PValid=1", {caseNo_});
    while (q.next()) relays.push_back(q.number(0));
    try {
        const exchange::TurnOrder order = exchange::parseTurnOrder(*text, exchange::file::kTurnOrder);
        const QVector<Turn> turns = turnsOf(relays, order.order);
        sql::Transaction whole;
        return setTurns("RLY_CASEINF", " AND Case_No=?", {caseNo_}, turns) &&
               setTurns("RLY_RLYOBJ_TEM", {}, {}, turns) && whole.commit();
    } catch (const exchange::FormatError& error) {
        ReportError(Text::tr("读") + exchange::file::kTurnOrder + Text::tr("失败（") + error.what() + "）", 1);
        return false;
    }
}
