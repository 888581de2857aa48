#include "platform/host/RealTimeRows.h"

#include <QHash>
#include <QSet>
#include <limits>

#include "platform/rtdb/Records.h"
#include "platform/rtdb/dbCursor.h"
#include "platform/sql/Sql.h"

namespace host {

namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
constexpr int kUnitAtNode = 0x02, kShuntAtNode = 0x04, kLoadAtNode = 0x08, kBusNode = 0x10;
constexpr int kBreaker = 0x01, kSwitch = 0x04;

double known(const sql::Query& query, int column) { return query.isNull(column) ? kUnknown : query.real(column); }

QString suffix(int kind, bool shifter) {
    if (kind > 30) return "_3w" + QString::number(kind - 30);
    return shifter ? "_sf" : "_2w";
}

norvdb::un unitOf(sql::Query& q) {
    norvdb::un u;
    u.id = q.text(0);
    u.node = q.text(1);
    u.valid = q.number(2);
    u.r1 = known(q, 3);
    u.x1 = known(q, 4);
    u.r0 = u.x0 = kUnknown;
    u.rated_mva = q.real(5);
    u.rated_kv = q.real(6);
    u.p_mw = q.real(7);
    u.q_mvar = q.real(8);
    return u;
}

norvdb::ld loadOf(sql::Query& q) {
    norvdb::ld l;
    l.id = q.text(0);
    l.node = q.text(1);
    l.valid = q.number(2);
    l.p_mw = q.real(3);
    l.q_mvar = q.real(4);
    return l;
}

norvdb::cp shuntOf(sql::Query& q) {
    norvdb::cp s;
    s.id = q.text(0);
    s.node = q.text(1);
    s.id_no = q.number(2);
    s.valid = q.number(3);
    s.x1 = known(q, 4);
    s.r0 = s.x0 = kUnknown;
    s.rated_mvar = q.real(5);
    s.rated_kv = q.real(6);
    return s;
}

norvdb::ln lineOf(sql::Query& q) {
    norvdb::ln l;
    l.id = q.text(0) + "_ac";
    l.inode = q.text(1);
    l.jnode = q.text(2);
    l.id_no = q.number(3);
    l.valid = q.number(4);
    l.i_break = q.number(5);
    l.j_break = q.number(6);
    l.r1 = known(q, 7);
    l.x1 = known(q, 8);
    l.r0 = l.x0 = kUnknown;
    l.length_km = q.real(9);
    l.rated_a = q.real(10);
    l.max_load_a = q.real(11);
    return l;
}

norvdb::xf transformerOf(sql::Query& q) {
    norvdb::xf t;
    t.kind = q.number(5);
    t.id = q.text(0) + suffix(t.kind, q.number(6));
    t.inode = q.text(1);
    t.jnode = q.text(2);
    t.id_no = q.number(3);
    t.valid = q.number(4);
    t.r1 = known(q, 7);
    t.x1 = known(q, 8);
    t.r0 = t.x0 = kUnknown;
    t.rated_mva = q.real(9);
    t.rated_kv_i = q.real(10);
    t.rated_kv_j = q.real(11);
    t.max_load_a = q.real(12);
    return t;
}

norvdb::cb switchOf(sql::Query& q) {
    norvdb::cb s;
    const bool breaker = q.number(3);
    s.id = q.text(0) + (breaker ? "_brk" : "_sw");
    s.inode = q.text(1);
    s.jnode = q.text(2);
    s.flags = breaker ? kBreaker : kSwitch;
    s.closed = q.number(4);
    return s;
}

norvdb::nd nodeOf(sql::Query& q) {
    norvdb::nd n;
    n.id = q.text(0);
    n.node_type = q.number(1);
    n.star = q.number(2);
    n.flags = q.number(3) == 1 ? kBusNode : 0;
    n.base_kv = q.real(4);
    n.v_min_kv = q.real(5);
    return n;
}

norvdb::bus barOf(sql::Query& q) {
    norvdb::bus bar;
    bar.id = bar.node = q.text(0);
    return bar;
}

/// Fills the tables of one case.
class CaseWriter {
  public:
    CaseWriter(dbDatabase& realTime, const QString& connection, int n)
        : realTime_(realTime), connection_(connection), number_(QString::number(n)) {}

    bool write() { return oneEnded() && branches() && nodes(); }

  private:
    /// Makes a record of each row and inserts it. \return false when the table cannot be read or written
    template <class Make>
    bool each(const QString& select, const QString& table, Make make, const QString& rest = {}) {
        sql::Query query(connection_);
        if (!query.exec("SELECT " + select + " FROM " + table + number_ + rest)) return false;
        dbCursor<decltype(make(query))> cursor(realTime_, dbCursorForUpdate);
        while (query.next()) {
            if (!cursor.insert(make(query))) return false;
        }
        return true;
    }

    /// The same for an element that its node must know of.
    template <class Make>
    auto at(int flag, Make make) {
        return [this, flag, make](sql::Query& query) {
            auto record = make(query);
            connected_[record.node] |= flag;
            return record;
        };
    }

    bool oneEnded() {
        return each("ID_Name,Node_Name,Valid,R1,X1,MVA,kV,P_MW,Q_Mvar", "L5_", at(kUnitAtNode, unitOf)) &&
               each("ID_Name,Node_Name,Valid,P_MW,Q_Mvar", "L6_", at(kLoadAtNode, loadOf)) &&
               each("ID_Name,I_Name,ID_No,Valid,X1,Mvar,kV", "L2_", at(kShuntAtNode, shuntOf),
                    " WHERE NType=3 ORDER BY ID_No");
    }

    bool branches() {
        return each("ID_Name,I_Name,J_Name,ID_No,Valid,I_Break,J_Break,R1,X1,Length_km,Rated_A,Load_A", "L2_", lineOf,
                    " WHERE NType=1 ORDER BY ID_No") &&
               each("ID_Name,I_Name,J_Name,ID_No,Valid,NType,Shifter,R1,X1,MVA,I_kV,J_kV,Load_A", "L3_", transformerOf,
                    " ORDER BY ID_No") &&
               each("ID_Name,I_Name,J_Name,Breaker,Closed", "L7_", switchOf);
    }

    /// Last, since a node tells what is connected to it.
    bool nodes() {
        const auto connectedNode = [this](sql::Query& query) {
            norvdb::nd node = nodeOf(query);
            node.flags |= connected_.value(node.id);
            return node;
        };
        return each("Node_Name,NodeType,Star,ISPhyBus,Base_kV,Vmin_kV", "L1_", connectedNode) &&
               each("Node_Name", "L1_", barOf, " WHERE ISPhyBus=1");
    }

    dbDatabase& realTime_;
    QString connection_, number_;
    QHash<QString, int> connected_;
};

struct ZeroSequence {
    int kind = 0;  ///< zero-sequence path of a transformer; else 1 for grounded
    double r0 = kUnknown, x0 = kUnknown;
};

/// Zero-sequence data by element number or name.
template <class Key, class KeyOf>
bool readZeroSequence(const QString& connection, const QString& text, QHash<Key, ZeroSequence>& found, KeyOf keyOf) {
    sql::Query query(connection);
    if (!query.exec(text)) return false;
    while (query.next()) found.insert(keyOf(query), {query.number(1), known(query, 2), known(query, 3)});
    return true;
}

/// Writes into every record what stands under its key.
template <class Record, class Key, class KeyOf, class Set>
bool addZeroSequence(dbDatabase& realTime, const QHash<Key, ZeroSequence>& found, KeyOf keyOf, Set set) {
    dbCursor<Record> cursor(realTime, dbCursorForUpdate);
    cursor.select();
    while (cursor.next()) {
        const auto data = found.constFind(keyOf(*cursor.get()));
        if (data == found.constEnd()) continue;
        cursor->r0 = data->r0;
        cursor->x0 = data->x0;
        set(*cursor.get(), data->kind);
        if (!cursor.update()) return false;
    }
    return true;
}

bool writeMutuals(dbDatabase& realTime, const QString& connection, const QString& number) {
    QSet<int> inService;
    dbCursor<norvdb::ln> lines(realTime);
    lines.select("valid=1 and i_break=1 and j_break=1");
    while (lines.next()) inService.insert(lines->id_no);

    sql::Query q(connection);
    if (!q.exec("SELECT First_No,Second_No,Sense,R0,X0,First_From,First_To,Second_From,Second_To FROM S4_" + number +
                " ORDER BY Row_No")) {
        return false;
    }
    dbCursor<norvdb::mu> cursor(realTime, dbCursorForUpdate);
    bool done = cursor.removeAll();
    while (done && q.next()) {
        if (!inService.contains(q.number(0)) || !inService.contains(q.number(1))) continue;
        norvdb::mu m;
        m.first_no = q.number(0);
        m.second_no = q.number(1);
        m.sense = q.number(2);
        double* const values[] = {&m.r0, &m.x0, &m.first_from, &m.first_to, &m.second_from, &m.second_to};
        for (int k = 0; k < 6; ++k) *values[k] = q.real(3 + k);
        done = cursor.insert(m);
    }
    return done;
}

}  // namespace

bool emptyNetwork(dbDatabase& realTime) {
    for (const char* table : {"nd", "bus", "un", "cp", "ld", "ln", "xf", "dln", "cb", "mu"}) {
        if (!realTime.begin() || !realTime.execute(QByteArray("DELETE FROM ") + table)) return false;
    }
    return true;
}

bool writeNetwork(dbDatabase& realTime, const QString& connection, int n) {
    return CaseWriter(realTime, connection, n).write();
}

bool writeSequenceData(dbDatabase& realTime, const QString& connection, int n) {
    const QString number = QString::number(n);
    const auto byNumber = [](sql::Query& q) { return q.number(0); };
    const auto byName = [](sql::Query& q) { return q.text(0); };
    const auto numberOf = [](const auto& record) { return record.id_no; };
    QHash<int, ZeroSequence> branches, transformers;
    QHash<QString, ZeroSequence> units;
    return readZeroSequence(connection, "SELECT ID_No,Grounded,R0,X0 FROM S2_" + number, branches, byNumber) &&
           readZeroSequence(connection, "SELECT ID_No,ZCtype,R0,X0 FROM S3_" + number, transformers, byNumber) &&
           readZeroSequence(connection, "SELECT ID_Name,Grounded,R0,X0 FROM S5_" + number, units, byName) &&
           addZeroSequence<norvdb::ln>(realTime, branches, numberOf, [](norvdb::ln&, int) {}) &&
           addZeroSequence<norvdb::cp>(realTime, branches, numberOf, [](auto& s, int kind) { s.grounded = kind; }) &&
           addZeroSequence<norvdb::xf>(realTime, transformers, numberOf, [](auto& t, int kind) { t.zc_type = kind; }) &&
           addZeroSequence<norvdb::un>(
               realTime, units, [](const norvdb::un& u) { return u.id; },
               [](auto& u, int kind) { u.grounded = kind; }) &&
           writeMutuals(realTime, connection, number);
}

}  // namespace host
