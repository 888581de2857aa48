#include <QHash>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"
#include "programs/model/RelayStore.h"

namespace {

QString bothEnds(const QString& table) {
    return "SELECT ID_Name,I_Name,J_Name,1 AS Side FROM " + table + " UNION ALL SELECT ID_Name,I_Name,J_Name,2 FROM " +
           table + " ORDER BY ID_Name,I_Name,J_Name,Side";
}

QString singleEnd(const QString& table) {
    return "SELECT ID_Name,Node_Name,Node_Name,1 FROM " + table + " ORDER BY Node_Name,ID_Name";
}

const QString& placesText(int elementCode) {
    static const QHash<int, QString> texts = {
        {0, "SELECT DISTINCT Node_Name,Node_Name,Node_Name,1 FROM CDB_NODEBAK ORDER BY Node_Name"},
        {1, singleEnd("CDB_GENERATBAK")},
        {4, singleEnd("CDB_PCAPREABAK")},
        {5, singleEnd("CDB_PCAPREABAK")},
        {6, bothEnds("CDB_ACLINEBAK")},
        {10, bothEnds("CDB_TRANS_2WBAK")},
        {12,
         "SELECT ID_Name,Name_N,Name_1 AS J_Name,2,1 AS W FROM CDB_TRANS_3WBAK"
         " UNION ALL SELECT ID_Name,Name_N,Name_2,2,2 FROM CDB_TRANS_3WBAK"
         " UNION ALL SELECT ID_Name,Name_N,Name_3,2,3 FROM CDB_TRANS_3WBAK ORDER BY ID_Name,W"},
        {13, "SELECT ID_Name,I_Name,J_Name,1 FROM CDB_BREAKERBAK ORDER BY ID_Name"},
    };
    static const QString none;
    const auto it = texts.constFind(elementCode);
    return it == texts.constEnd() ? none : *it;
}

QVector<Location> read(const QString& text, const QVariantList& values = {}) {
    QVector<Location> places;
    sql::Query query;
    if (text.isEmpty() || !query.exec(text, values)) return places;
    while (query.next()) places.append({query.text(0), query.text(1), query.text(2), query.number(3)});
    return places;
}

struct VoltageBand {
    double level, lowest, highest;
};
constexpr VoltageBand kBands[] = {{0, 0, 8},       {10, 8, 25},       {35, 25, 50},    {110, 50, 150},
                                  {220, 150, 250}, {330, 250, 350},   {400, 350, 450}, {500, 450, 550},
                                  {750, 550, 850}, {1000, 850, 10000}};

}  // namespace

QVector<Location> RelayStore::locations(int elementCode) { return read(placesText(elementCode)); }

QVector<Location> RelayStore::lineEnds(double level) {
    double lowest = 0;
    double highest = 0;
    if (!voltageBand(level, &lowest, &highest)) return {};
    return read(
        "SELECT l.ID_Name,l.I_Name,l.J_Name,1 AS Side FROM CDB_ACLINEBAK l JOIN CDB_NODEBAK n ON n.Node_Name=l.I_Name"
        " WHERE n.Base_kV>=? AND n.Base_kV<=? AND n.NodeType!=1"
        " UNION ALL SELECT l.ID_Name,l.I_Name,l.J_Name,2 FROM CDB_ACLINEBAK l JOIN CDB_NODEBAK n"
        " ON n.Node_Name=l.J_Name WHERE n.Base_kV>=? AND n.Base_kV<=? AND n.NodeType!=1"
        " ORDER BY ID_Name,I_Name,J_Name,Side",
        {lowest, highest, lowest, highest});
}

QVector<Location> RelayStore::placesOf(const QString& element, int side, int rType) {
    QVector<Location> places = locations(rType);
    if (rType == 10) places += locations(12);
    places.removeIf([&](const Location& at) { return at.ID_Name != element || (side != 0 && at.Side != side); });
    return places;
}

bool RelayStore::voltageBand(double level, double* lowest, double* highest) {
    for (const VoltageBand& band : kBands) {
        if (band.level != level) continue;
        *lowest = band.lowest;
        *highest = band.highest;
        return true;
    }
    ReportError(Text::tr("电压等级数据有错不能选择保护"), 0);
    return false;
}
