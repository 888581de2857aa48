#include <QDate>
#include <QRegularExpression>
#include <QSet>
#include <cmath>

#include "platform/host/BaseTables.h"
#include "platform/host/CaseTables.h"
#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"

namespace host {

namespace {

using Rows = QVector<QVariantList>;

QString text(const std::string& value) { return QString::fromStdString(value); }
QVariant known(double value) { return std::isnan(value) ? QVariant() : QVariant(value); }
QVariant placed(bool hasPosition, double value) { return hasPosition ? QVariant(value) : QVariant(); }

template <class Element, class Row>
Rows rowsOf(const std::vector<Element>& elements, Row row) {
    Rows rows;
    rows.reserve(static_cast<qsizetype>(elements.size()));
    int order = 0;
    for (const Element& element : elements) rows.append(row(element, ++order));
    return rows;
}

/// Element numbers: lines, shunts, two-winding transformers, windings three each, so that no two branches share one.
struct ElementNumbers {
    int shunts, transformers2, transformers3;
    explicit ElementNumbers(const NetworkModel& m)
        : shunts(static_cast<int>(m.lines.size())),
          transformers2(shunts + static_cast<int>(m.shunts.size())),
          transformers3(transformers2 + static_cast<int>(m.transformers2.size())) {}
};

Rows stationRows(const NetworkModel& m) {
    return rowsOf(m.stations, [](const Station& s, int order) {
        return QVariantList{text(s.name), order, placed(s.hasPosition, s.x), placed(s.hasPosition, s.y)};
    });
}

Rows nodeRows(const NetworkModel& m) {
    return rowsOf(m.nodes, [](const Node& n, int order) {
        return QVariantList{text(n.name),
                            text(n.bus),
                            text(n.station),
                            order,
                            n.nodeType,
                            n.physicalBus ? QVariant(1) : QVariant(),
                            n.baseKv,
                            n.vMinKv,
                            placed(n.hasPosition, n.x),
                            placed(n.hasPosition, n.y)};
    });
}

Rows lineRows(const NetworkModel& m) {
    return rowsOf(m.lines, [](const Line& l, int order) {
        return QVariantList{text(l.name),    text(l.i),       text(l.j),   order,       order,       int(l.inService),
                            int(!l.openAtI), int(!l.openAtJ), known(l.r1), known(l.x1), known(l.b1), known(l.r0),
                            known(l.x0),     known(l.b0),     l.lengthKm,  l.ratedA,    l.maxLoadA,  l.endTemperature};
    });
}

Rows transformer2Rows(const NetworkModel& m, bool phaseShifters) {
    const int base = ElementNumbers(m).transformers2;
    Rows rows = rowsOf(m.transformers2, [base](const Transformer2& t, int order) {
        return QVariantList{text(t.name), text(t.i.node),   text(t.j.node),     order,
                            base + order, int(t.inService), known(t.r1),        known(t.x1),
                            known(t.r0),  known(t.x0),      t.i.ratedKv,        t.i.ratedMva,
                            t.i.rn,       t.i.xn,           t.j.ratedKv,        t.j.ratedMva,
                            t.j.rn,       t.j.xn,           int(t.i.grounding), int(t.j.grounding),
                            t.tapRatio,   t.phaseShift,     t.maxLoadA,         int(t.tapChanger),
                            int(t.unit)};
    });
    Rows kept;
    for (std::size_t k = 0; k < m.transformers2.size(); ++k) {
        if (m.transformers2[k].phaseShifter == phaseShifters) kept.append(rows[static_cast<qsizetype>(k)]);
    }
    return kept;
}

Rows transformer3Rows(const NetworkModel& m) {
    const int base = ElementNumbers(m).transformers3;
    return rowsOf(m.transformers3, [base](const Transformer3& t, int order) {
        QVariantList row{text(t.name), text(t.star)};
        for (const Winding& w : t.winding) row << text(w.node);
        row << order << base + 3 * order - 2 << int(t.inService) << int(t.tapChanger);
        for (int k = 0; k < 3; ++k) row << known(t.r1[k]) << known(t.x1[k]) << known(t.r0[k]) << known(t.x0[k]);
        for (const Winding& w : t.winding) row << w.ratedKv << w.ratedMva << w.rn << w.xn;
        for (const Winding& w : t.winding) row << int(w.grounding);
        return row;
    });
}

Rows generatorRows(const NetworkModel& m) {
    return rowsOf(m.generators, [](const Generator& g, int order) {
        return QVariantList{text(g.name), text(g.node), order,          int(g.inService), int(g.grounded),
                            known(g.r1),  known(g.x1),  known(g.r0),    known(g.x0),      g.rn,
                            g.xn,         g.ratedMva,   g.ratedKv,      g.cosPhi,         g.pMw,
                            g.qMvar,      text(g.kind), g.voltageRange, g.ikMaxKa,        g.ikMinKa};
    });
}

Rows shuntRows(const NetworkModel& m) {
    const int base = ElementNumbers(m).shunts;
    return rowsOf(m.shunts, [base](const Shunt& s, int order) {
        return QVariantList{text(s.name), text(s.node), order,       base + order, int(s.inService), int(s.grounded),
                            known(s.x1),  known(s.r0),  known(s.x0), s.ratedMvar,  s.ratedKv};
    });
}

Rows loadRows(const NetworkModel& m) {
    return rowsOf(m.loads, [](const Load& l, int order) {
        return QVariantList{text(l.name), text(l.node), order, int(l.inService), l.pMw, l.qMvar};
    });
}

Rows switchRows(const NetworkModel& m, bool breakers) {
    Rows rows;
    int order = 0;
    for (const Switch& s : m.switches) {
        ++order;
        if (s.breaker == breakers) rows.append({text(s.name), text(s.i), text(s.j), order, int(s.closed)});
    }
    return rows;
}

Rows mutualRows(const NetworkModel& m) {
    return rowsOf(m.mutuals, [](const Mutual& u, int order) {
        return QVariantList{text(u.first), text(u.second), order,     u.sense,      u.r0,
                            u.x0,          u.firstFrom,    u.firstTo, u.secondFrom, u.secondTo};
    });
}

Rows schemeRows(const NetworkModel& m) {
    return rowsOf(m.schemes, [](const Scheme& s, int order) { return QVariantList{text(s.name), order}; });
}

Rows changeRows(const NetworkModel& m) {
    Rows rows;
    for (const Scheme& scheme : m.schemes) {
        rows += rowsOf(scheme.changes, [&](const Scheme::Change& c, int order) {
            return QVariantList{text(scheme.name), text(c.table), text(c.element), order, int(c.inService)};
        });
    }
    return rows;
}

bool storeCaseHeader(const NetworkModel& m, const LoadFlowCase& c) {
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    const QVariantList row{c.number,
                           text(c.name),
                           text(c.scheme),
                           1.1,
                           0.9,
                           0.0001,
                           1,
                           today,
                           int(m.nodes.size()),
                           int(m.generators.size()),
                           int(m.loads.size()),
                           int(m.lines.size()),
                           int(m.transformers2.size() + m.transformers3.size())};
    return sql::insertRows({}, "LF_CASE",
                           {"Case_No", "Case_Name", "SCHEME", "Vmax", "Vmin", "Tolerance", "Calculate", "CAL_Date",
                            "Nbus", "Ngenerat", "Nload", "Nacline", "Ntrans"},
                           {row});
}

bool storeLoadFlow(const NetworkModel& m) {
    Rows nodes, generators;
    for (const LoadFlowCase& c : m.loadFlow) {
        if (!storeCaseHeader(m, c)) return false;
        for (const auto& n : c.nodes) nodes.append({c.number, text(n.node), n.vMag, n.vAngle});
        for (const auto& g : c.generators) generators.append({c.number, text(g.element), g.pMw, g.qMvar});
    }
    return sql::insertRows({}, "LF_NODE", baseLayout("LF_NODE").columnNames(), nodes) &&
           sql::insertRows({}, "LF_GENERAT", baseLayout("LF_GENERAT").columnNames(), generators);
}

bool storeBaseTables(const NetworkModel& m) {
    const std::pair<const char*, Rows> tables[] = {
        {"CDB_STATIONBAK", stationRows(m)},
        {"CDB_NODEBAK", nodeRows(m)},
        {"CDB_ACLINEBAK", lineRows(m)},
        {"CDB_TRANS_2WBAK", transformer2Rows(m, false)},
        {"CDB_SHIFTBAK", transformer2Rows(m, true)},
        {"CDB_TRANS_3WBAK", transformer3Rows(m)},
        {"CDB_GENERATBAK", generatorRows(m)},
        {"CDB_PCAPREABAK", shuntRows(m)},
        {"CDB_LOADBAK", loadRows(m)},
        {"CDB_BREAKERBAK", switchRows(m, true)},
        {"CDB_SWITCHBAK", switchRows(m, false)},
        {"CDB_MUTUALBAK", mutualRows(m)},
        {"CDB_SCHEMEINFBAK", schemeRows(m)},
        {"CDB_SCHEMECHGBAK", changeRows(m)},
    };
    for (const auto& [table, rows] : tables) {
        if (!sql::Query().exec(QString("DELETE FROM ") + table)) return false;
        if (!sql::insertRows({}, table, baseLayout(table).columnNames(), rows)) return false;
    }
    for (const char* table : {"LF_CASE", "LF_NODE", "LF_GENERAT"}) {
        if (!sql::Query().exec(QString("DELETE FROM ") + table + " WHERE Case_No<>0")) return false;
    }
    return storeLoadFlow(m);
}

/// What the columns would cut, change or refuse, found before anything is written.
class NameCheck {
  public:
    void name(const std::string& value, int length = 20) {
        if (!why_.isEmpty()) return;
        const QString reason = sql::whyNotStorable(text(value), length);
        if (!reason.isEmpty()) why_ = "“" + text(value) + "”：" + reason;
    }
    template <class List, class... Member>
    void names(const List& elements, Member... member) {
        for (const auto& element : elements) (name(element.*member), ...);
    }
    [[nodiscard]] const QString& why() const { return why_; }

  private:
    QString why_;
};

QString whyNotStorable(const NetworkModel& m) {
    NameCheck check;
    check.names(m.stations, &Station::name);
    check.names(m.nodes, &Node::name, &Node::bus, &Node::station);
    check.names(m.lines, &Line::name);
    check.names(m.transformers2, &Transformer2::name);
    check.names(m.transformers3, &Transformer3::name, &Transformer3::star);
    check.names(m.generators, &Generator::name);
    check.names(m.shunts, &Shunt::name);
    check.names(m.loads, &Load::name);
    check.names(m.switches, &Switch::name);
    check.names(m.loadFlow, &LoadFlowCase::name);
    for (const Scheme& scheme : m.schemes) check.name(scheme.name, 10);
    if (m.schemes.empty() && check.why().isEmpty()) return Text::tr("网络没有方案");
    return check.why();
}

QVector<int> caseNumbers(const NetworkModel& m) {
    QVector<int> numbers{0};
    for (const LoadFlowCase& c : m.loadFlow) numbers.append(c.number);
    return numbers;
}

/// Calculation tables of load-flow cases that are no more.
void dropOldCases(const QVector<int>& numbers) {
    static const QRegularExpression form("^L[1-7]_([0-9]+)$");
    sql::Query query;
    QStringList old;
    query.exec("SELECT TABLE_NAME FROM information_schema.TABLES WHERE TABLE_SCHEMA=DATABASE()");
    while (query.next()) {
        const auto match = form.match(query.text(0));
        if (match.hasMatch() && !numbers.contains(match.captured(1).toInt())) old << sql::quotedName(query.text(0));
    }
    if (!old.isEmpty()) query.exec("DROP TABLE " + old.join(','));
}

bool storeCases(const NetworkModel& m) {
    const QString first = text(m.schemes.front().name);
    if (!fillCalculationTables({}, 0, first) || !fillSequenceTables({}, first)) return false;
    for (const LoadFlowCase& c : m.loadFlow) {
        if (!fillCalculationTables({}, c.number, text(c.scheme))) return false;
    }
    return true;
}

}  // namespace

bool storeNetwork(const NetworkModel& model) {
    const QString why = whyNotStorable(model);
    if (!why.isEmpty()) {
        WinDockFeedback::ShowMessage((Text::tr("网络不能存入数据库：") + why).toUtf8().constData(), "", "", "",
                                     WinDockFeedback::Error);
        return false;
    }
    const QVector<int> numbers = caseNumbers(model);
    if (!createBaseTables()) return false;
    for (int n : numbers) {
        if (!createTables({}, calculationLayouts(n))) return false;
    }
    sql::Transaction whole;
    if (!storeBaseTables(model) || !storeCases(model) || !whole.commit()) return false;
    dropOldCases(numbers);
    return true;
}

}  // namespace host
