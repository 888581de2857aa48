#include <algorithm>
#include <limits>
#include <unordered_map>

#include "platform/host/BaseTables.h"

namespace host {

namespace {

/// One row of a base table, taken column by column in the order of the layout.
class RowReader {
  public:
    explicit RowReader(sql::Query& query) : query_(query) {}
    std::string text() { return query_.text(column_++).toStdString(); }
    int whole() { return query_.number(column_++); }
    bool yes() { return whole() != 0; }
    double real() { return query_.real(column_++); }
    double known() {
        const bool missing = query_.isNull(column_);
        const double value = real();
        return missing ? std::numeric_limits<double>::quiet_NaN() : value;
    }
    void place(double& x, double& y, bool& hasPosition) {
        hasPosition = !query_.isNull(column_);
        x = real();
        y = real();
    }
    void pass(int columns) { column_ += columns; }

  private:
    sql::Query& query_;
    int column_ = 0;
};

/// Reads the tables; the first that cannot be read spoils the whole.
class NetworkReader {
  public:
    NetworkModel model;
    bool done = true;

    template <class Take>
    void each(const char* table, Take take) {
        QStringList columns;
        for (const QString& column : baseLayout(table).columnNames()) columns << sql::quotedName(column);
        rows("SELECT " + columns.join(',') + " FROM " + table, "Order_No", take);
    }
    template <class Take>
    void rows(const QString& select, const QString& order, Take take) {
        sql::Query query;
        done = done && query.exec(select + " ORDER BY " + order);
        while (done && query.next()) take(RowReader(query));
    }
};

void readNodes(NetworkReader& reader) {
    reader.each("CDB_STATIONBAK", [&](RowReader row) {
        Station& s = reader.model.stations.emplace_back();
        s.name = row.text();
        row.pass(1);
        row.place(s.x, s.y, s.hasPosition);
    });
    reader.each("CDB_NODEBAK", [&](RowReader row) {
        Node& n = reader.model.nodes.emplace_back();
        n.name = row.text();
        n.bus = row.text();
        n.station = row.text();
        row.pass(1);
        n.nodeType = row.whole();
        n.physicalBus = row.yes();
        n.baseKv = row.real();
        n.vMinKv = row.real();
        row.place(n.x, n.y, n.hasPosition);
    });
}

void readLines(NetworkReader& reader) {
    reader.each("CDB_ACLINEBAK", [&](RowReader row) {
        Line& l = reader.model.lines.emplace_back();
        l.name = row.text();
        l.i = row.text();
        l.j = row.text();
        row.pass(2);
        l.inService = row.yes();
        l.openAtI = !row.yes();
        l.openAtJ = !row.yes();
        for (double* value : {&l.r1, &l.x1, &l.b1, &l.r0, &l.x0, &l.b0}) *value = row.known();
        for (double* value : {&l.lengthKm, &l.ratedA, &l.maxLoadA, &l.endTemperature}) *value = row.real();
    });
    reader.each("CDB_MUTUALBAK", [&](RowReader row) {
        Mutual& u = reader.model.mutuals.emplace_back();
        u.first = row.text();
        u.second = row.text();
        row.pass(1);
        u.sense = row.whole();
        for (double* value : {&u.r0, &u.x0, &u.firstFrom, &u.firstTo, &u.secondFrom, &u.secondTo}) *value = row.real();
    });
}

Transformer2 transformer2(RowReader& row, bool phaseShifter) {
    Transformer2 t;
    t.name = row.text();
    t.i.node = row.text();
    t.j.node = row.text();
    row.pass(2);
    t.inService = row.yes();
    for (double* value : {&t.r1, &t.x1, &t.r0, &t.x0}) *value = row.known();
    for (Winding* w : {&t.i, &t.j}) {
        for (double* value : {&w->ratedKv, &w->ratedMva, &w->rn, &w->xn}) *value = row.real();
    }
    for (Winding* w : {&t.i, &t.j}) w->grounding = static_cast<Grounding>(row.whole());
    for (double* value : {&t.tapRatio, &t.phaseShift, &t.maxLoadA}) *value = row.real();
    t.tapChanger = row.yes();
    t.unit = row.yes();
    t.phaseShifter = phaseShifter;
    return t;
}

Transformer3 transformer3(RowReader& row) {
    Transformer3 t;
    t.name = row.text();
    t.star = row.text();
    for (Winding& w : t.winding) w.node = row.text();
    row.pass(2);
    t.inService = row.yes();
    t.tapChanger = row.yes();
    for (int k = 0; k < 3; ++k) {
        for (double* value : {&t.r1[k], &t.x1[k], &t.r0[k], &t.x0[k]}) *value = row.known();
    }
    for (Winding& w : t.winding) {
        for (double* value : {&w.ratedKv, &w.ratedMva, &w.rn, &w.xn}) *value = row.real();
    }
    for (Winding& w : t.winding) w.grounding = static_cast<Grounding>(row.whole());
    return t;
}

void readTransformers(NetworkReader& reader) {
    // Two tables hold what was delivered as one list.
    std::vector<std::pair<int, Transformer2>> found;
    for (const auto& [table, shifter] : {std::pair{"CDB_TRANS_2WBAK", false}, std::pair{"CDB_SHIFTBAK", true}}) {
        reader.each(table, [&, phaseShifter = shifter](RowReader row) {
            RowReader order = row;
            order.pass(3);
            found.emplace_back(order.whole(), transformer2(row, phaseShifter));
        });
    }
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (auto& [order, transformer] : found) reader.model.transformers2.push_back(std::move(transformer));
    reader.each("CDB_TRANS_3WBAK", [&](RowReader row) { reader.model.transformers3.push_back(transformer3(row)); });
}

void readOneEnded(NetworkReader& reader) {
    reader.each("CDB_GENERATBAK", [&](RowReader row) {
        Generator& g = reader.model.generators.emplace_back();
        g.name = row.text();
        g.node = row.text();
        row.pass(1);
        g.inService = row.yes();
        g.grounded = row.yes();
        for (double* value : {&g.r1, &g.x1, &g.r0, &g.x0}) *value = row.known();
        for (double* value : {&g.rn, &g.xn, &g.ratedMva, &g.ratedKv, &g.cosPhi, &g.pMw, &g.qMvar}) *value = row.real();
        g.kind = row.text();
        for (double* value : {&g.voltageRange, &g.ikMaxKa, &g.ikMinKa}) *value = row.real();
    });
    reader.each("CDB_PCAPREABAK", [&](RowReader row) {
        Shunt& s = reader.model.shunts.emplace_back();
        s.name = row.text();
        s.node = row.text();
        row.pass(2);
        s.inService = row.yes();
        s.grounded = row.yes();
        for (double* value : {&s.x1, &s.r0, &s.x0}) *value = row.known();
        for (double* value : {&s.ratedMvar, &s.ratedKv}) *value = row.real();
    });
    reader.each("CDB_LOADBAK", [&](RowReader row) {
        Load& l = reader.model.loads.emplace_back();
        l.name = row.text();
        l.node = row.text();
        row.pass(1);
        l.inService = row.yes();
        for (double* value : {&l.pMw, &l.qMvar}) *value = row.real();
    });
}

void readSwitches(NetworkReader& reader) {
    const QString select = "SELECT ID_Name,I_Name,J_Name,%1,Closed,Order_No FROM %2";
    reader.rows(select.arg("1", "CDB_BREAKERBAK") + " UNION ALL " + select.arg("0", "CDB_SWITCHBAK"), "Order_No",
                [&](RowReader row) {
                    Switch& s = reader.model.switches.emplace_back();
                    s.name = row.text();
                    s.i = row.text();
                    s.j = row.text();
                    s.breaker = row.yes();
                    s.closed = row.yes();
                });
}

void readSchemes(NetworkReader& reader) {
    std::unordered_map<std::string, std::size_t> place;
    reader.each("CDB_SCHEMEINFBAK", [&](RowReader row) {
        const std::string name = row.text();
        place[name] = reader.model.schemes.size();
        reader.model.schemes.push_back({name, {}});
    });
    reader.each("CDB_SCHEMECHGBAK", [&](RowReader row) {
        const auto scheme = place.find(row.text());
        if (scheme == place.end()) return;
        Scheme::Change& change = reader.model.schemes[scheme->second].changes.emplace_back();
        change.table = row.text();
        change.element = row.text();
        row.pass(1);
        change.inService = row.yes();
    });
}

void readLoadFlow(NetworkReader& reader) {
    std::unordered_map<int, std::size_t> place;
    auto& cases = reader.model.loadFlow;
    reader.rows("SELECT Case_No,Case_Name,SCHEME FROM LF_CASE WHERE Case_No<>0", "Case_No", [&](RowReader row) {
        LoadFlowCase& c = cases.emplace_back();
        c.number = row.whole();
        c.name = row.text();
        c.scheme = row.text();
        place[c.number] = cases.size() - 1;
    });
    reader.rows("SELECT Case_No,Node_Name,V_Mag,V_Angle FROM LF_NODE", "Case_No,Node_Name", [&](RowReader row) {
        auto& state = cases.at(place.at(row.whole())).nodes.emplace_back();
        state.node = row.text();
        state.vMag = row.real();
        state.vAngle = row.real();
    });
    reader.rows("SELECT Case_No,ID_Name,P_MW,Q_Mvar FROM LF_GENERAT", "Case_No,ID_Name", [&](RowReader row) {
        auto& injection = cases.at(place.at(row.whole())).generators.emplace_back();
        injection.element = row.text();
        injection.pMw = row.real();
        injection.qMvar = row.real();
    });
}

}  // namespace

std::optional<NetworkModel> loadNetwork() {
    NetworkReader reader;
    readNodes(reader);
    readLines(reader);
    readTransformers(reader);
    readOneEnded(reader);
    readSwitches(reader);
    readSchemes(reader);
    readLoadFlow(reader);
    if (!reader.done) return std::nullopt;
    return std::move(reader.model);
}

}  // namespace host
