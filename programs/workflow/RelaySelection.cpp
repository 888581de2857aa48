#include "programs/workflow/RelaySelection.h"

#include "platform/sql/Sql.h"
#include "programs/model/RelayStore.h"

namespace {

QVector<SelectedRly> read(int rTypeNo, const QString& condition, const QString& order,
                          const QVariantList& values = {}) {
    QVector<SelectedRly> relays;
    sql::Query query;
    query.exec("SELECT ID_Name,I_Name,J_Name,Side,RNo FROM RLY_RUD WHERE RTypeNo=?" + condition + " ORDER BY " + order,
               QVariantList{rTypeNo} + values);
    while (query.next())
        relays.append({query.text(0), query.text(1), query.text(2), query.number(3), query.number(4), rTypeNo});
    return relays;
}

const QString kByNumber = QStringLiteral("RNo,Side");

}  // namespace

QVector<SelectedRly> RelaySelection::inService(int rTypeNo) { return read(rTypeNo, " AND Valid<=>1", "ID_Name,Side"); }

QVector<SelectedRly> RelaySelection::ofNetwork(int rTypeNo) { return read(rTypeNo, {}, kByNumber); }

bool RelaySelection::ofLevel(int rTypeNo, double level, QVector<SelectedRly>* relays) {
    double lowest = 0;
    double highest = 0;
    if (!RelayStore::voltageBand(level, &lowest, &highest)) return false;
    const QString nodes = "(SELECT Node_Name FROM CDB_NODEBAK WHERE Base_kV>=? AND Base_kV<=?)";
    *relays = read(rTypeNo, " AND (I_Name IN " + nodes + " OR J_Name IN " + nodes + ")", kByNumber,
                   {lowest, highest, lowest, highest});
    return true;
}

QStringList RelaySelection::voltageLevels() {
    QStringList levels;
    sql::Query query;
    query.exec("SELECT DISTINCT Base_kV FROM CDB_NODEBAK ORDER BY Base_kV ASC");
    while (query.next()) levels.append(query.raw(0));
    return levels;
}
