#include "platform/host/CaseTables.h"

#include "platform/host/NetworkModel.h"
#include "platform/sql/Sql.h"

namespace host {

namespace {

static_assert(int(Grounding::Delta) == 0 && int(Grounding::Isolated) == 1 && int(Grounding::Grounded) == 2,
              "the base tables hold these numbers");

/// Joins the scheme's change of each element b as c.
QString changes(const QString& kind) {
    return " LEFT JOIN CDB_SCHEMECHGBAK c ON c.SchName=? AND c.Elem_Kind='" + kind + "' AND c.ID_Name=b.ID_Name";
}

/// Joins the node with a name as `alias`.
QString node(const QString& alias, const QString& name) {
    return " LEFT JOIN CDB_NODEBAK " + alias + " ON " + alias + ".Node_Name=" + name;
}

/// Three times a neutral impedance in ohm, per unit at the base voltage of node `alias`.
QString neutral(const QString& ohm, const QString& alias) {
    return "IFNULL(300*" + ohm + "/NULLIF(" + alias + ".Base_kV*" + alias + ".Base_kV,0),0)";
}

/// Fills one table by statements that each take the scheme's name as often as they join changes.
class TableFiller {
  public:
    TableFiller(QString connection, QString table, QString columns)
        : connection_(std::move(connection)), into_("INSERT INTO " + table + " (" + columns + ") ") {
        done_ = sql::Query(connection_).exec("DELETE FROM " + table);
    }
    TableFiller& from(const QString& select, const QVariantList& values = {}) {
        done_ = done_ && sql::Query(connection_).exec(into_ + select, values);
        return *this;
    }
    explicit operator bool() const { return done_; }

  private:
    QString connection_, into_;
    bool done_ = false;
};

struct Filling {
    QString connection, number, scheme;

    [[nodiscard]] TableFiller table(const QString& kind, const QString& columns) const {
        return {connection, kind + "_" + number, columns};
    }
};

bool nodes(const Filling& f) {
    return bool(f.table("L1", "Node_Name,NodeType,Star,ISPhyBus,Base_kV,Vmin_kV")
                    .from("SELECT Node_Name,NodeType,0,IFNULL(ISPhyBus,0),Base_kV,Vmin_kV FROM CDB_NODEBAK")
                    .from("SELECT b.Name_N,0,1,0,IFNULL(n.Base_kV,0),0 FROM CDB_TRANS_3WBAK b" + node("n", "b.Name_1") +
                          " ON DUPLICATE KEY UPDATE Star=1"));
}

bool linesAndShunts(const Filling& f) {
    return bool(f.table("L2",
                        "ID_Name,I_Name,J_Name,ID_No,Valid,NType,I_Break,J_Break,R1,X1,Length_km,Rated_A,Load_A,"
                        "Mvar,kV")
                    .from("SELECT b.ID_Name,b.I_Name,b.J_Name,b.ID_No,IFNULL(c.In_Service,b.Valid),1,b.I_Break,"
                          "b.J_Break,b.R1,b.X1,b.Length_km,b.Rated_A,b.Load_A,0,0 FROM CDB_ACLINEBAK b" +
                              changes("line"),
                          {f.scheme})
                    .from("SELECT b.ID_Name,b.Node_Name,b.Node_Name,b.ID_No,IFNULL(c.In_Service,b.Valid),3,1,1,0,b.X1,"
                          "0,0,0,b.Mvar,b.kV FROM CDB_PCAPREABAK b" +
                              changes("shunt"),
                          {f.scheme}));
}

QString twoWinding(const QString& table, int shifter) {
    return QString(
               "SELECT b.ID_Name,b.I_Name,b.J_Name,b.ID_No,IFNULL(c.In_Service,b.Valid),1,%1,b.R1,b.X1,"
               "GREATEST(b.I_MVA,b.J_MVA),b.I_kV,b.J_kV,b.Load_A FROM %2 b")
               .arg(shifter)
               .arg(table) +
           changes("transformer2");
}

QString winding(int k) {
    return QString(
               "SELECT b.ID_Name,b.Name_N,b.Name_%1,b.ID_No+%2,IFNULL(c.In_Service,b.Valid),3%1,0,b.R1_%1,b.X1_%1,"
               "b.MVA_%1,b.kV_1,b.kV_%1,0 FROM CDB_TRANS_3WBAK b")
               .arg(k)
               .arg(k - 1) +
           changes("transformer3");
}

bool transformers(const Filling& f) {
    TableFiller table = f.table("L3", "ID_Name,I_Name,J_Name,ID_No,Valid,NType,Shifter,R1,X1,MVA,I_kV,J_kV,Load_A");
    table.from(twoWinding("CDB_TRANS_2WBAK", 0), {f.scheme}).from(twoWinding("CDB_SHIFTBAK", 1), {f.scheme});
    for (int k = 1; k <= 3; ++k) table.from(winding(k), {f.scheme});
    return bool(table);
}

bool generatorsAndLoads(const Filling& f) {
    return bool(f.table("L5", "ID_Name,Node_Name,Valid,R1,X1,MVA,kV,P_MW,Q_Mvar")
                    .from("SELECT b.ID_Name,b.Node_Name,IFNULL(c.In_Service,b.Valid),b.R1,b.X1,b.MVA,b.kV,b.P_MW,"
                          "b.Q_Mvar FROM CDB_GENERATBAK b" +
                              changes("generator"),
                          {f.scheme})) &&
           bool(f.table("L6", "ID_Name,Node_Name,Valid,P_MW,Q_Mvar")
                    .from("SELECT ID_Name,Node_Name,Valid,P_MW,Q_Mvar FROM CDB_LOADBAK"));
}

bool switches(const Filling& f) {
    const QString select = "SELECT b.ID_Name,b.I_Name,b.J_Name,%1,IFNULL(c.In_Service,b.Closed) FROM %2 b";
    return bool(f.table("L7", "ID_Name,I_Name,J_Name,Breaker,Closed")
                    .from(select.arg("1", "CDB_BREAKERBAK") + changes("switch"), {f.scheme})
                    .from(select.arg("0", "CDB_SWITCHBAK") + changes("switch"), {f.scheme}));
}

bool zeroLinesAndShunts(const Filling& f) {
    return bool(f.table("S2", "ID_Name,ID_No,NType,Grounded,R0,X0")
                    .from("SELECT ID_Name,ID_No,1,0,R0,X0 FROM CDB_ACLINEBAK")
                    .from("SELECT ID_Name,ID_No,3,Grounded,R0,X0 FROM CDB_PCAPREABAK"));
}

/// A grounded star against a delta is a shunt to ground at the star's side, two grounded stars are a path through, and
/// everything else blocks the zero sequence. Only a grounded star's neutral impedance carries current.
QString zeroTwoWinding(const QString& table) {
    const auto ofSide = [](const QString& part) {
        return "b." + part + "0+IF(b.I_Ground=2," + neutral("b.I_" + part + "n", "ni") + ",0)+IF(b.J_Ground=2," +
               neutral("b.J_" + part + "n", "nj") + ",0)";
    };
    return "SELECT b.ID_Name,b.I_Name,b.J_Name,b.ID_No,CASE WHEN b.I_Ground=2 AND b.J_Ground=2 THEN 3"
           " WHEN b.I_Ground=2 AND b.J_Ground=0 THEN 1 WHEN b.I_Ground=0 AND b.J_Ground=2 THEN 2 ELSE 0 END," +
           ofSide("R") + "," + ofSide("X") + " FROM " + table + " b" + node("ni", "b.I_Name") + node("nj", "b.J_Name");
}

/// The star point is at I: a grounded winding leads through, a delta closes the path to ground there.
QString zeroWinding(int k) {
    const QString number = QString::number(k);
    const auto ofWinding = [&](const QString& part) {
        return "b." + part + "0_" + number + "+IF(b.Ground_" + number + "=2," +
               neutral("b." + part + "n_" + number, "n") + ",0)";
    };
    return "SELECT b.ID_Name,b.Name_N,b.Name_" + number + ",b.ID_No+" + QString::number(k - 1) + ",CASE b.Ground_" +
           number + " WHEN 2 THEN 3 WHEN 0 THEN 1 ELSE 0 END," + ofWinding("R") + "," + ofWinding("X") +
           " FROM CDB_TRANS_3WBAK b" + node("n", "b.Name_" + number);
}

bool zeroTransformers(const Filling& f) {
    TableFiller table = f.table("S3", "ID_Name,I_Name,J_Name,ID_No,ZCtype,R0,X0");
    table.from(zeroTwoWinding("CDB_TRANS_2WBAK")).from(zeroTwoWinding("CDB_SHIFTBAK"));
    for (int k = 1; k <= 3; ++k) table.from(zeroWinding(k));
    return bool(table);
}

bool mutualsAndSources(const Filling& f) {
    return bool(f.table("S4",
                        "First_Name,Second_Name,Row_No,First_No,Second_No,Sense,R0,X0,First_From,First_To,"
                        "Second_From,Second_To")
                    .from("SELECT b.First_Name,b.Second_Name,b.Order_No,i.ID_No,j.ID_No,b.Sense,b.R0,b.X0,"
                          "b.First_From,b.First_To,b.Second_From,b.Second_To FROM CDB_MUTUALBAK b"
                          " JOIN CDB_ACLINEBAK i ON i.ID_Name=b.First_Name"
                          " JOIN CDB_ACLINEBAK j ON j.ID_Name=b.Second_Name")) &&
           bool(f.table("S5", "ID_Name,Grounded,R0,X0")
                    .from("SELECT b.ID_Name,b.Grounded,b.R0+" + neutral("b.Rn", "n") + ",b.X0+" + neutral("b.Xn", "n") +
                          " FROM CDB_GENERATBAK b" + node("n", "b.Node_Name")));
}

}  // namespace

bool fillCalculationTables(const QString& connection, int n, const QString& scheme) {
    const Filling filling{connection, QString::number(n), scheme};
    return nodes(filling) && linesAndShunts(filling) && transformers(filling) && generatorsAndLoads(filling) &&
           switches(filling);
}

bool fillSequenceTables(const QString& connection, const QString& scheme) {
    const Filling filling{connection, "0", scheme};
    return zeroLinesAndShunts(filling) && zeroTransformers(filling) && mutualsAndSources(filling);
}

}  // namespace host
