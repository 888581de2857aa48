#include "programs/netview/DiagramPlaces.h"

#include "platform/host/Text.h"
#include "platform/rtdb/CaseRecords.h"
#include "platform/rtdb/dbCursor.h"
#include "platform/rtdb/dbDatabase.h"
#include "platform/sql/Sql.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/Messages.h"
#include "programs/netview/LabelSet.h"

namespace {

constexpr char kGenerators[] = "SELECT Node_Name,Node_Name FROM CDB_GENERATBAK WHERE ID_Name=?";
constexpr char kShunts[] = "SELECT Node_Name,Node_Name FROM CDB_PCAPREABAK WHERE ID_Name=?";
constexpr char kLines[] = "SELECT I_Name,J_Name FROM CDB_ACLINEBAK WHERE ID_Name=?";
constexpr char kTransformers[] = "SELECT I_Name,J_Name FROM CDB_TRANS_2WBAK WHERE ID_Name=?";
constexpr char kBreakers[] = "SELECT I_Name,J_Name FROM CDB_BREAKERBAK WHERE ID_Name=?";
constexpr const char* kWindings[] = {"SELECT Name_N,Name_1 FROM CDB_TRANS_3WBAK WHERE ID_Name=?",
                                     "SELECT Name_N,Name_2 FROM CDB_TRANS_3WBAK WHERE ID_Name=?",
                                     "SELECT Name_N,Name_3 FROM CDB_TRANS_3WBAK WHERE ID_Name=?"};

enum ElementCode { Bus = 0, Line = 6, ThreeWindings = 12 };

DiagramPlace busPlace(const QString& node) { return {{node, node, node, 1}, Bus}; }

std::nullopt_t refuse(const QString& text) {
    ReportError(text, 1);
    return std::nullopt;
}

std::optional<DiagramPlace> placeOfBus(const CHandleGraphInfo& bus) {
    if (bus.nodeKind == 1 || bus.nodeKind == 3) return busPlace(bus.name);
    if (bus.nodeKind != 0) return refuse(Text::tr("普通节点上不能装设保护"));
    sql::Query query;
    query.exec("SELECT Node_Name FROM CDB_NODEBAK WHERE Bus_Name=? AND ISPhyBus=1", {bus.name});
    if (query.size() == 1 && query.next()) return busPlace(query.text(0));
    return refuse(Text::tr("只有在仅有一条物理母线与该母线对应时，才能从单线图上为该母线装设保护"));
}

/// The query for an element's two nodes; null for a kind of element that carries no relays.
const char* nodesQuery(const CHandleGraphInfo& element) {
    switch (element.type) {
        case 1:
            return kGenerators;
        case 4:
        case 5:
            return kShunts;
        case Line:
            return kLines;
        case 10:
            return kTransformers;
        case ThreeWindings:
            return kWindings[element.winding < 2 ? 0 : element.winding == 2 ? 1 : 2];
        case 13:
            return kBreakers;
        default:
            return nullptr;
    }
}

int sideOf(const CHandleGraphInfo& element) {
    if (element.type == Line) return element.percent > 50 ? 2 : 1;
    return element.type == ThreeWindings ? 2 : 1;
}

QString partnerName(const sql::Query& row) {
    if (row.isNull(4)) return {};  // the partner has vanished
    return knownLocationLabel(row.number(4), row.text(5), row.text(6), row.text(7), row.number(8));
}

}  // namespace

DiagramPlace placeOfLabel(dbDatabase& realTime, int recid) {
    dbCursor<norvdb::addition_graph> cursor(realTime);
    cursor.select(dbQuery() << "recid=" << recid << " and module_num=" << LabelSet::module);
    if (!cursor.next()) return {};
    return {{cursor->id_name, cursor->i_name, cursor->j_name, cursor->percent_pos <= 50 ? 1 : 2}, cursor->ele_num};
}

std::optional<DiagramPlace> placeOfElement(const CHandleGraphInfo& element) {
    if (element.type == Bus) return placeOfBus(element);
    const char* text = nodesQuery(element);
    if (!text) return std::nullopt;
    sql::Query query;
    query.exec(text, {element.name});
    if (!query.next()) return refuse(Text::tr("元件数据有误，不能启动保护装设对话框"));
    return DiagramPlace{{element.name, query.text(0), query.text(1), sideOf(element)}, element.type};
}

QStringList coordinationLines(const DiagramPlace& place) {
    sql::Query query;
    query.exec(
        "SELECT a.RNo,a.RTypeCode,c.PartNo,c.CoRNo,p.RType,p.ID_Name,p.I_Name,p.J_Name,p.Side,p.RTypeCode,c.CoPartNo"
        " FROM RLY_RUD a JOIN (SELECT RTypeNo,MIN(RlyDspNo) AS DspNo FROM RLY_RLYDSP WHERE RlyDspNo>0 GROUP BY RTypeNo)"
        " b ON b.RTypeNo=a.RTypeNo JOIN RLY_RLYCOP c ON c.RNo=a.RNo LEFT JOIN RLY_RUD p ON p.RNo=c.CoRNo"
        " WHERE a.ID_Name=? AND a.I_Name=? AND a.J_Name=? AND a.Side=? AND a.RType=?"
        " ORDER BY b.DspNo,a.RNo,c.PartNo,c.CoRNo,c.CoPartNo",
        {place.at.ID_Name, place.at.I_Name, place.at.J_Name, place.at.Side, place.rType});
    QStringList lines;
    int relay = -1, part = -1;
    while (query.next()) {
        if (query.number(0) != relay) {
            relay = query.number(0);
            part = -1;
            lines << Text::tr("  %1的配合关系:").arg(query.text(1));
        }
        if (query.number(2) != part) {
            part = query.number(2);
            lines << Text::tr("    %1段与以下保护配合:  ").arg(part);
        }
        lines << Text::tr("      %1  %2  %3段  ").arg(partnerName(query), query.text(9), query.text(10));
    }
    return lines;
}
