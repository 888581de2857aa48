#include "platform/host/BaseTables.h"

#include <QHash>
#include <QSet>

namespace host {

namespace {

sql::Column nameColumn(const QString& column, int length = 20) {
    return {column, QString("char(%1) BINARY").arg(length), {}};
}
sql::Column textColumn(const QString& column, int length) { return {column, QString("char(%1)").arg(length), {}}; }

/// Columns of one type from their names in one text.
QVector<sql::Column> columns(const QString& type, const QString& names, bool nullable = false) {
    QVector<sql::Column> list;
    for (const QString& name : names.split(' ')) list.append({name, type, {}, nullable});
    return list;
}
QVector<sql::Column> whole(const QString& names) { return columns("int", names); }
QVector<sql::Column> real(const QString& names) { return columns("double", names); }
/// Quantities that may be unknown.
QVector<sql::Column> optional(const QString& names) { return columns("double", names, true); }

/// Order_No keeps the order in which the network was delivered; ID_No is the element number of the calculation tables.
sql::Layout element(const QString& table, const QString& names, const QVector<sql::Column>& data,
                    const QStringList& keys = {}) {
    QVector<sql::Column> all;
    for (const QString& name : names.split(' ')) all << nameColumn(name);
    const QString key = names.section(' ', 0, 0);
    return {table, all + data, QStringList{"PRIMARY KEY(" + key + ")", "INDEX(Order_No)"} + keys};
}

QVector<sql::Layout> branchLayouts() {
    const QVector<sql::Column> two = whole("Order_No ID_No Valid") + optional("R1 X1 R0 X0") +
                                     real("I_kV I_MVA I_Rn I_Xn J_kV J_MVA J_Rn J_Xn") + whole("I_Ground J_Ground") +
                                     real("Tap_Ratio Phase_Shift Load_A") + whole("Tap_Changer Unit");
    const QVector<sql::Column> three = whole("Order_No ID_No Valid Tap_Changer") +
                                       optional("R1_1 X1_1 R0_1 X0_1 R1_2 X1_2 R0_2 X0_2 R1_3 X1_3 R0_3 X0_3") +
                                       real("kV_1 MVA_1 Rn_1 Xn_1 kV_2 MVA_2 Rn_2 Xn_2 kV_3 MVA_3 Rn_3 Xn_3") +
                                       whole("Ground_1 Ground_2 Ground_3");
    const QStringList ends{"INDEX(I_Name)", "INDEX(J_Name)"};
    return {
        element("CDB_ACLINEBAK", "ID_Name I_Name J_Name",
                whole("Order_No ID_No Valid I_Break J_Break") + optional("R1 X1 B1 R0 X0 B0") +
                    real("Length_km Rated_A Load_A End_Temp"),
                ends),
        element("CDB_TRANS_2WBAK", "ID_Name I_Name J_Name", two, ends),
        element("CDB_SHIFTBAK", "ID_Name I_Name J_Name", two, ends),
        element("CDB_TRANS_3WBAK", "ID_Name Name_N Name_1 Name_2 Name_3", three, {"INDEX(Name_N)"}),
    };
}

QVector<sql::Layout> nodeAndSourceLayouts() {
    const QVector<sql::Column> switchData = whole("Order_No Closed");
    return {
        {"CDB_STATIONBAK",
         QVector<sql::Column>{nameColumn("PS_Name")} + whole("Order_No") + optional("X Y"),
         {"PRIMARY KEY(PS_Name)"}},
        {"CDB_NODEBAK",
         QVector<sql::Column>{nameColumn("Node_Name"), nameColumn("Bus_Name"), nameColumn("PS_Name")} +
             whole("Order_No NodeType") + columns("int", "ISPhyBus", true) + real("Base_kV Vmin_kV") + optional("X Y"),
         {"PRIMARY KEY(Node_Name)", "INDEX(PS_Name)", "INDEX(Bus_Name)"}},
        element("CDB_GENERATBAK", "ID_Name Node_Name",
                whole("Order_No Valid Grounded") + optional("R1 X1 R0 X0") + real("Rn Xn MVA kV Cos_Phi P_MW Q_Mvar") +
                    QVector<sql::Column>{textColumn("Kind", 12)} + real("V_Range Ik_Max Ik_Min")),
        element("CDB_PCAPREABAK", "ID_Name Node_Name",
                whole("Order_No ID_No Valid Grounded") + optional("X1 R0 X0") + real("Mvar kV")),
        element("CDB_LOADBAK", "ID_Name Node_Name", whole("Order_No Valid") + real("P_MW Q_Mvar")),
        element("CDB_BREAKERBAK", "ID_Name I_Name J_Name", switchData),
        element("CDB_SWITCHBAK", "ID_Name I_Name J_Name", switchData),
        {"CDB_MUTUALBAK",
         QVector<sql::Column>{nameColumn("First_Name"), nameColumn("Second_Name")} + whole("Order_No Sense") +
             real("R0 X0 First_From First_To Second_From Second_To"),
         {"PRIMARY KEY(Order_No)"}},
    };
}

QVector<sql::Layout> caseLayouts() {
    return {
        {"CDB_SCHEMEINFBAK",
         QVector<sql::Column>{nameColumn("SchName", 10)} + whole("Order_No"),
         {"PRIMARY KEY(SchName)"}},
        {"CDB_SCHEMECHGBAK",
         QVector<sql::Column>{nameColumn("SchName", 10), textColumn("Elem_Kind", 12), nameColumn("ID_Name")} +
             whole("Order_No In_Service"),
         {"PRIMARY KEY(SchName,Elem_Kind,ID_Name)"}},
        {"LF_CASE",
         QVector<sql::Column>(whole("Case_No")) +
             QVector<sql::Column>{nameColumn("Case_Name"), nameColumn("SCHEME", 10)} + real("Vmax Vmin Tolerance") +
             whole("Method Iteration Ctrl_Area Ctrl_ud Ctrl_sub Ctrl_Fact EQ_Method UP_CALL Calculate L23chged UDOUT") +
             columns("char(20)", "CAL_Date CAL_Time UD_Time") +
             whole("NUP Nbus Ngenerat Nload Nacline Ndcline Ntrans") + columns("char(20)", "ChgDT") +
             columns("char(100)", "Note"),
         {"PRIMARY KEY(Case_No)", "UNIQUE(Case_Name)"}},
        {"LF_NODE",
         QVector<sql::Column>(whole("Case_No")) + QVector<sql::Column>{nameColumn("Node_Name")} + real("V_Mag V_Angle"),
         {"PRIMARY KEY(Case_No,Node_Name)"}},
        {"LF_GENERAT",
         QVector<sql::Column>(whole("Case_No")) + QVector<sql::Column>{nameColumn("ID_Name")} + real("P_MW Q_Mvar"),
         {"PRIMARY KEY(Case_No,ID_Name)"}},
        {"ST_CASE",
         QVector<sql::Column>(whole("Case_No CASE_LF")) + QVector<sql::Column>{nameColumn("ST_SC", 10)} +
             real("T_Total DT_Step") +
             whole("F60 EQ_Method EQ_Continu Ctrl_Fault CTRL_UD CTRL_DIST UP_CAL Calculate UDOUT") +
             columns("char(20)", "CAL_DATE CAL_TIME UD_TIME") +
             whole("Nup Nbus Ngenerat Nload Nacline Ndcline Ntrans Nsvc Nfault Ndist Istable") + real("Tstable") +
             columns("char(100)", "Note"),
         {"PRIMARY KEY(Case_No)"}},
    };
}

sql::Layout numbered(const QString& table, int n, const QString& names, const QVector<sql::Column>& data,
                     const QString& key) {
    QVector<sql::Column> all;
    for (const QString& name : names.split(' ')) all << nameColumn(name);
    return {table + QString::number(n), all + data, {"PRIMARY KEY(" + key + ")"}};
}

}  // namespace

const QVector<sql::Layout>& baseLayouts() {
    static const QVector<sql::Layout> layouts = nodeAndSourceLayouts() + branchLayouts() + caseLayouts();
    return layouts;
}

const sql::Layout& baseLayout(const QString& table) {
    for (const sql::Layout& layout : baseLayouts()) {
        if (layout.name == table) return layout;
    }
    qFatal("no base table %s", qPrintable(table));
}

QVector<sql::Layout> calculationLayouts(int n) {
    QVector<sql::Layout> layouts{
        numbered("L1_", n, "Node_Name", whole("NodeType Star ISPhyBus") + real("Base_kV Vmin_kV"), "Node_Name"),
        numbered(
            "L2_", n, "ID_Name I_Name J_Name",
            whole("ID_No Valid NType I_Break J_Break") + optional("R1 X1") + real("Length_km Rated_A Load_A Mvar kV"),
            "ID_No"),
        numbered("L3_", n, "ID_Name I_Name J_Name",
                 whole("ID_No Valid NType Shifter") + optional("R1 X1") + real("MVA I_kV J_kV Load_A"), "ID_No"),
        numbered("L5_", n, "ID_Name Node_Name", whole("Valid") + optional("R1 X1") + real("MVA kV P_MW Q_Mvar"),
                 "ID_Name"),
        numbered("L6_", n, "ID_Name Node_Name", whole("Valid") + real("P_MW Q_Mvar"), "ID_Name"),
        numbered("L7_", n, "ID_Name I_Name J_Name", whole("Breaker Closed"), "Breaker,ID_Name"),
    };
    if (n == 0) {
        layouts << numbered("S2_", n, "ID_Name", whole("ID_No NType Grounded") + optional("R0 X0"), "ID_No")
                << numbered("S3_", n, "ID_Name I_Name J_Name", whole("ID_No ZCtype") + optional("R0 X0"), "ID_No")
                << numbered("S4_", n, "First_Name Second_Name",
                            whole("Row_No First_No Second_No Sense") +
                                real("R0 X0 First_From First_To Second_From Second_To"),
                            "Row_No")
                << numbered("S5_", n, "ID_Name", whole("Grounded") + optional("R0 X0"), "ID_Name");
    }
    return layouts;
}

namespace {

/// Adds what a table of an earlier version lacks, with its default in every row.
bool addColumns(sql::Query& query, const sql::Layout& layout, const QSet<QString>& present) {
    QStringList missing;
    for (const sql::Column& column : layout.columns)
        if (!present.contains(column.name)) missing << "ADD COLUMN IF NOT EXISTS " + column.definition();
    return missing.isEmpty() || query.exec("ALTER TABLE " + sql::quotedName(layout.name) + " " + missing.join(','));
}

}  // namespace

bool createTables(const QString& connection, const QVector<sql::Layout>& layouts) {
    // Creating and altering a table end a transaction, so tables that are there and complete are not touched.
    sql::Query query(connection);
    if (!query.exec("SELECT TABLE_NAME,COLUMN_NAME FROM information_schema.COLUMNS WHERE TABLE_SCHEMA=DATABASE()"))
        return false;
    QHash<QString, QSet<QString>> present;
    while (query.next()) present[query.text(0)].insert(query.text(1));
    for (const sql::Layout& layout : layouts) {
        if (present.contains(layout.name)) {
            if (!addColumns(query, layout, present[layout.name])) return false;
            continue;
        }
        if (!query.exec("CREATE TABLE " + sql::quotedName(layout.name) + " " + layout.columnsText())) return false;
    }
    return true;
}

bool createBaseTables() {
    return createTables({}, baseLayouts() + calculationLayouts(0)) &&
           sql::Query().exec("INSERT IGNORE INTO LF_CASE (Case_No,Vmax,Vmin,Tolerance) VALUES(0,?,?,?)",
                             {1.1, 0.9, 0.0001}) &&
           sql::Query().exec("INSERT IGNORE INTO ST_CASE (Case_No,T_Total,DT_Step) VALUES(0,?,?)", {5.0, 0.01});
}

}  // namespace host
