#include <QHash>
#include <complex>
#include <stdexcept>

#include "platform/host/RealTimeRows.h"
#include "platform/netmodel/TP.h"
#include "platform/rtdb/Records.h"
#include "platform/rtdb/dbCursor.h"
#include "platform/sql/Sql.h"

namespace host {

namespace {

using Complex = std::complex<double>;
constexpr double kDegree = 0.017453292519943295;

/// Voltages of a load-flow case by node name, per unit.
using Voltages = QHash<QString, Complex>;

bool readVoltages(const QString& connection, int caseNo, Voltages& voltages) {
    sql::Query query(connection);
    if (!query.exec("SELECT Node_Name,V_Mag,V_Angle FROM LF_NODE WHERE Case_No=?", {caseNo})) return false;
    while (query.next()) voltages.insert(query.text(0), std::polar(query.real(1), query.real(2) * kDegree));
    return true;
}

/// Gives every node that closed switches join to one with a result the voltage of that one.
bool spread(dbDatabase& realTime, Voltages& voltages) {
    norvdb::NORVDB network;
    norvdb::TP topology(network);
    try {
        topology.tpReadFastdb(&realTime);
    } catch (const std::runtime_error&) {
        return false;
    }
    topology.tpAllnew();
    QHash<int, Complex> ofBus;
    for (const auto& node : network.nodes) {
        const auto known = voltages.constFind(sql::fromGbk(node.id));
        if (node.bus && known != voltages.constEnd() && !ofBus.contains(node.bus)) ofBus.insert(node.bus, *known);
    }
    for (const auto& node : network.nodes) {
        const QString name = sql::fromGbk(node.id);
        if (ofBus.contains(node.bus) && !voltages.contains(name)) voltages.insert(name, ofBus.value(node.bus));
    }
    return true;
}

/// Star points carry no load: the admittance-weighted mean of the voltages at their windings' nodes.
void addStarPoints(dbDatabase& realTime, Voltages& voltages) {
    struct Sum {
        Complex current, admittance;
    };
    QHash<QString, Sum> sums;
    dbCursor<norvdb::xf> windings(realTime);
    windings.select("valid=1 and kind>30");
    while (windings.next()) {
        const auto voltage = voltages.constFind(windings->jnode);
        const Complex z(windings->r1, windings->x1);
        if (voltage == voltages.constEnd() || !(std::abs(z) > 0)) continue;
        Sum& sum = sums[windings->inode];
        sum.current += *voltage / z;
        sum.admittance += 1.0 / z;
    }
    for (auto sum = sums.cbegin(); sum != sums.cend(); ++sum) {
        if (!voltages.contains(sum.key()) && std::abs(sum->admittance) > 0) {
            voltages.insert(sum.key(), sum->current / sum->admittance);
        }
    }
}

bool writeVoltages(dbDatabase& realTime, const Voltages& voltages) {
    dbCursor<norvdb::nd> nodes(realTime, dbCursorForUpdate);
    nodes.select();
    while (nodes.next()) {
        const auto voltage = voltages.constFind(nodes->id);
        if (voltage == voltages.constEnd()) continue;
        nodes->v_mag = std::abs(*voltage);
        nodes->v_angle = std::arg(*voltage) / kDegree;
        if (!nodes.update()) return false;
    }
    return true;
}

bool writeInjections(dbDatabase& realTime, const QString& connection, int caseNo) {
    QHash<QString, Complex> injections;
    sql::Query query(connection);
    if (!query.exec("SELECT ID_Name,P_MW,Q_Mvar FROM LF_GENERAT WHERE Case_No=?", {caseNo})) return false;
    while (query.next()) injections.insert(query.text(0), {query.real(1), query.real(2)});
    dbCursor<norvdb::un> units(realTime, dbCursorForUpdate);
    units.select();
    while (units.next()) {
        const auto power = injections.constFind(units->id);
        if (power == injections.constEnd()) continue;
        units->p_mw = power->real();
        units->q_mvar = power->imag();
        if (!units.update()) return false;
    }
    return true;
}

}  // namespace

bool writeLoadFlow(dbDatabase& realTime, const QString& connection, int caseNo) {
    Voltages voltages;
    if (!readVoltages(connection, caseNo, voltages) || !spread(realTime, voltages)) return false;
    addStarPoints(realTime, voltages);
    return writeVoltages(realTime, voltages) && writeInjections(realTime, connection, caseNo);
}

}  // namespace host
