#include "programs/workflow/PictureNetwork.h"

#include <algorithm>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchStep.h"

namespace {

constexpr double kBaseMva = 100;

QString numberOfTables(int caseNo) {
    const int lfCase =
        sql::scalar({}, "SELECT IF(Mlf=1,Case_lf,0) FROM RLY_CASE_RLY WHERE Case_No=?", {caseNo}, 0).toInt();
    return QString::number(std::max(lfCase, 0));
}

bool isSeries(const BranchRow& row) {
    return row.flg >= int(exchange::BranchKind::Line) && row.flg <= int(exchange::BranchKind::Winding);
}

bool isLine(const BranchRow& row) { return row.flg == int(exchange::BranchKind::Line); }

double magnitude(const std::optional<Impedance>& z) { return z ? std::abs(*z) : 0; }

}  // namespace

PictureNetwork::PictureNetwork(int caseNo) {
    const QString n = numberOfTables(caseNo);
    sql::Query query;
    query.exec("SELECT Node_Name,Base_kV FROM L1_" + n);
    while (query.next()) kv_[query.text(0)] = query.real(1);
    query.exec("SELECT ID_No,ID_Name,R1,X1 FROM L2_" + n + " UNION ALL SELECT ID_No,ID_Name,R1,X1 FROM L3_" + n);
    while (query.next()) {
        names_[query.number(0)] = query.text(1);
        if (!query.isNull(2) && !query.isNull(3)) perUnit_[query.number(0)] = {query.real(2), query.real(3)};
    }
}

std::optional<Impedance> PictureNetwork::ohm(const BranchRow& row, double kv) const {
    const auto found = perUnit_.constFind(row.idNo);
    if (found == perUnit_.constEnd() || kv <= 0) return std::nullopt;
    return *found * (kv * kv / kBaseMva);
}

/// A winding leads through the star point to the nearer of the other two.
std::optional<Impedance> PictureNetwork::through(const BranchRow& row, double kv) const {
    const auto first = ohm(row, kv);
    if (!first || row.flg != int(exchange::BranchKind::Winding)) return first;
    std::optional<Impedance> nearest;
    for (const int position : table_->graph().at(row.iNo)) {
        const auto other = ohm(table_->rows()[size_t(position)], kv);
        if (table_->rows()[size_t(position)].idNo == row.idNo || !other) continue;
        if (!nearest || std::abs(*first + *other) < std::abs(*nearest)) nearest = *first + *other;
    }
    return nearest ? nearest : first;
}

PictureBranch PictureNetwork::branch(const BranchRow& row, int node, Impedance start, double kv) const {
    return {{row.idName, row.iName, row.jName, row.iNo == node ? 1 : 2}, row.idNo, !isLine(row), start, ohm(row, kv)};
}

void PictureNetwork::addBehind(int node, int cameBy, Impedance start, PictureLines& lines) const {
    bool onlyTransformers = true;
    double nearest = 0;
    for (const int position : table_->graph().at(node)) {
        const BranchRow& row = table_->rows()[size_t(position)];
        if (row.idNo == cameBy || !isSeries(row)) continue;
        lines.behind.append(branch(row, node, start, lines.kv));
        PictureBranch& added = lines.behind.last();
        if (added.transformer && row.jNo == node) added.z = through(row, lines.kv);
        onlyTransformers = onlyTransformers && added.transformer && added.z;
        const double far = added.z ? std::abs(start + *added.z) : 0;
        if (added.transformer && far > 0 && (nearest == 0 || far < nearest)) nearest = far;
    }
    const double end = onlyTransformers && nearest > 0 ? nearest : std::abs(start);
    if (!lines.end || end < *lines.end) lines.end = end;
}

std::optional<PictureLines> PictureNetwork::around(const Location& place, QString* error) const {
    const BranchRow* own = table_->find(place.ID_Name, place.I_Name, place.J_Name);
    if (!own || !isSeries(*own)) {
        *error = own ? Text::tr("保护不在线路或变压器上，没有阻抗平面") : Text::tr("保护所在的支路不在当前网络中");
        return std::nullopt;
    }
    PictureLines lines;
    lines.kv = kv_.value(place.node());
    if (!ohm(*own, lines.kv)) {
        *error = Text::tr("网络中没有支路“%1”的阻抗或基准电压").arg(place.ID_Name);
        return std::nullopt;
    }
    const BranchWalk newestFirst = walkFrom(place.Side == 1 ? own->iNo : own->jNo, own->idNo, 1, 1);
    QHash<int, Impedance> reached;
    for (auto step = newestFirst.rbegin(); step != newestFirst.rend(); ++step) {
        const int position = table_->graph().find(step->idNo, step->fromNode);
        if (position < 0) continue;
        const BranchRow& row = table_->rows()[size_t(position)];
        const PictureBranch passed = branch(row, step->fromNode, reached.value(step->fromNode), lines.kv);
        lines.own.append(passed);
        reached[step->node] = passed.start + passed.z.value_or(0);
        if (step->state == 1 && magnitude(passed.z) > 0) addBehind(step->node, step->idNo, reached[step->node], lines);
    }
    return lines;
}
