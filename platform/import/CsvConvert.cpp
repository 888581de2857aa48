#include "platform/import/CsvConvert.h"

#include <algorithm>
#include <cmath>

namespace import::csv {

namespace {

double orZero(double value) { return std::isnan(value) ? 0 : value; }
double orElse(double value, double other) { return std::isnan(value) ? other : value; }

struct Impedance {
    double r = 0, x = 0;
};

/// Per unit on baseMva and baseKv from short-circuit voltage and losses on a rating.
Impedance fromShortCircuit(double ukPercent, double pkKw, double mva, double kv, double baseKv) {
    const double scale = baseMva / mva * (kv / baseKv) * (kv / baseKv);
    const double r = orZero(pkKw) / 1000 / mva;
    const double z = ukPercent / 100;
    return {r * scale, std::copysign(std::sqrt(std::max(0.0, z * z - r * r)), z) * scale};
}

struct ShortCircuit {
    double ukPercent = 0, pkKw = 0;
};

ShortCircuit toShortCircuit(Impedance z, double mva, double kv, double baseKv) {
    const double scale = baseMva / mva * (kv / baseKv) * (kv / baseKv);
    return {std::copysign(std::hypot(z.r, z.x) / scale * 100, z.x), z.r / scale * mva * 1000};
}

std::string textOf(host::Grounding grounding) {
    if (grounding == host::Grounding::Delta) return "D";
    return grounding == host::Grounding::Grounded ? "YN" : "Y";
}

host::Winding winding(const std::string& node, double kv, double mva, const std::string& grounding, double rn,
                      double xn) {
    host::Winding w{node, kv, mva, host::Grounding::Isolated, orZero(rn), orZero(xn)};
    groundingOf(grounding, w.grounding);
    return w;
}

/// A rating that impedances in percent can stand on when the model has none.
double ratingOf(double mva) { return mva > 0 ? mva : baseMva; }
double voltageOf(double kv, double baseKv) { return kv > 0 ? kv : baseKv; }

}  // namespace

bool groundingOf(const std::string& text, host::Grounding& grounding) {
    if (text == "D")
        grounding = host::Grounding::Delta;
    else if (text == "Y")
        grounding = host::Grounding::Isolated;
    else if (text == "YN")
        grounding = host::Grounding::Grounded;
    else
        return false;
    return true;
}

bool lossesFit(double ukPercent, double pkKw, double mva) {
    if (std::isnan(ukPercent) || std::isnan(pkKw)) return true;
    return std::abs(pkKw) / 1000 / mva <= std::abs(ukPercent) / 100 * (1 + 1e-12);
}

host::Line toModel(const LineRow& row, double baseKv) {
    const double ohm = baseOhm(baseKv);
    host::Line line;
    line.name = row.name, line.i = row.node_i, line.j = row.node_j;
    line.r1 = row.r1_ohm / ohm, line.x1 = row.x1_ohm / ohm, line.b1 = orZero(row.b1_us) * 1e-6 * ohm;
    line.r0 = row.r0_ohm / ohm, line.x0 = row.x0_ohm / ohm, line.b0 = orZero(row.b0_us) * 1e-6 * ohm;
    line.lengthKm = row.length_km, line.ratedA = orZero(row.rated_a), line.maxLoadA = orZero(row.max_load_a);
    line.endTemperature = orZero(row.end_temp_c);
    line.openAtI = row.open_i, line.openAtJ = row.open_j, line.inService = row.in_service;
    return line;
}

LineRow toRow(const host::Line& line, double baseKv) {
    const double ohm = baseOhm(baseKv);
    LineRow row{};
    row.name = line.name, row.node_i = line.i, row.node_j = line.j;
    row.r1_ohm = line.r1 * ohm, row.x1_ohm = line.x1 * ohm, row.b1_us = line.b1 / ohm * 1e6;
    row.r0_ohm = line.r0 * ohm, row.x0_ohm = line.x0 * ohm, row.b0_us = line.b0 / ohm * 1e6;
    row.length_km = line.lengthKm, row.rated_a = line.ratedA, row.max_load_a = line.maxLoadA;
    row.end_temp_c = line.endTemperature;
    row.open_i = line.openAtI, row.open_j = line.openAtJ, row.in_service = line.inService;
    return row;
}

host::Transformer2 toModel(const Transformer2Row& row, double baseKv) {
    host::Transformer2 t;
    t.name = row.name;
    t.i = winding(row.node_i, row.kv_i, row.mva, row.grounding_i, row.rn_i_ohm, row.xn_i_ohm);
    t.j = winding(row.node_j, row.kv_j, row.mva, row.grounding_j, row.rn_j_ohm, row.xn_j_ohm);
    const Impedance z1 = fromShortCircuit(row.uk_percent, row.pk_kw, row.mva, row.kv_i, baseKv);
    const Impedance z0 = fromShortCircuit(row.uk0_percent, row.pk0_kw, row.mva, row.kv_i, baseKv);
    t.r1 = z1.r, t.x1 = z1.x;
    t.r0 = std::isnan(row.uk0_percent) ? row.uk0_percent : z0.r, t.x0 = z0.x;
    t.tapRatio = orElse(row.tap_ratio, 1), t.phaseShift = orZero(row.phase_shift_deg);
    t.maxLoadA = orZero(row.max_load_a);
    t.tapChanger = row.tap_changer, t.phaseShifter = row.phase_shifter, t.unit = row.unit;
    t.inService = row.in_service;
    return t;
}

Transformer2Row toRow(const host::Transformer2& t, double baseKv) {
    Transformer2Row row{};
    row.name = t.name, row.node_i = t.i.node, row.node_j = t.j.node;
    row.mva = ratingOf(t.i.ratedMva), row.kv_i = voltageOf(t.i.ratedKv, baseKv), row.kv_j = t.j.ratedKv;
    row.grounding_i = textOf(t.i.grounding), row.rn_i_ohm = t.i.rn, row.xn_i_ohm = t.i.xn;
    row.grounding_j = textOf(t.j.grounding), row.rn_j_ohm = t.j.rn, row.xn_j_ohm = t.j.xn;
    const ShortCircuit k1 = toShortCircuit({t.r1, t.x1}, row.mva, row.kv_i, baseKv);
    const ShortCircuit k0 = toShortCircuit({t.r0, t.x0}, row.mva, row.kv_i, baseKv);
    row.uk_percent = k1.ukPercent, row.pk_kw = k1.pkKw;
    row.uk0_percent = k0.ukPercent, row.pk0_kw = k0.pkKw;
    row.tap_ratio = t.tapRatio, row.phase_shift_deg = t.phaseShift, row.max_load_a = t.maxLoadA;
    row.tap_changer = t.tapChanger, row.phase_shifter = t.phaseShifter, row.unit = t.unit;
    row.in_service = t.inService;
    return row;
}

namespace {

/// Pairs 12, 13, 23 of a three-winding transformer as the branches of its star, per unit.
void starOf(const double uk[3], const double pk[3], const double pairMva[3], double kv, double baseKv, double r[3],
            double x[3]) {
    Impedance pair[3];
    for (int p = 0; p < 3; ++p) pair[p] = fromShortCircuit(uk[p], pk[p], pairMva[p], kv, baseKv);
    constexpr int plus[3][2] = {{0, 1}, {0, 2}, {1, 2}};
    constexpr int minus[3] = {2, 1, 0};
    for (int w = 0; w < 3; ++w) {
        r[w] = (pair[plus[w][0]].r + pair[plus[w][1]].r - pair[minus[w]].r) / 2;
        x[w] = (pair[plus[w][0]].x + pair[plus[w][1]].x - pair[minus[w]].x) / 2;
    }
}

void pairsOf(const double r[3], const double x[3], const double pairMva[3], double kv, double baseKv, double* uk[3],
             double* pk[3]) {
    constexpr int ends[3][2] = {{0, 1}, {0, 2}, {1, 2}};
    for (int p = 0; p < 3; ++p) {
        const Impedance z{r[ends[p][0]] + r[ends[p][1]], x[ends[p][0]] + x[ends[p][1]]};
        const ShortCircuit k = toShortCircuit(z, pairMva[p], kv, baseKv);
        *uk[p] = k.ukPercent, *pk[p] = k.pkKw;
    }
}

}  // namespace

host::Transformer3 toModel(const Transformer3Row& row, double baseKv) {
    host::Transformer3 t;
    t.name = row.name, t.star = row.star_node;
    t.winding[0] = winding(row.node_1, row.kv_1, row.mva_1, row.grounding_1, row.rn_1_ohm, row.xn_1_ohm);
    t.winding[1] = winding(row.node_2, row.kv_2, row.mva_2, row.grounding_2, row.rn_2_ohm, row.xn_2_ohm);
    t.winding[2] = winding(row.node_3, row.kv_3, row.mva_3, row.grounding_3, row.rn_3_ohm, row.xn_3_ohm);
    const double mva[3] = {std::min(row.mva_1, row.mva_2), std::min(row.mva_1, row.mva_3),
                           std::min(row.mva_2, row.mva_3)};
    const double uk1[3] = {row.uk12_percent, row.uk13_percent, row.uk23_percent};
    const double pk1[3] = {row.pk12_kw, row.pk13_kw, row.pk23_kw};
    const double uk0[3] = {row.uk0_12_percent, row.uk0_13_percent, row.uk0_23_percent};
    const double pk0[3] = {row.pk0_12_kw, row.pk0_13_kw, row.pk0_23_kw};
    starOf(uk1, pk1, mva, row.kv_1, baseKv, t.r1, t.x1);
    starOf(uk0, pk0, mva, row.kv_1, baseKv, t.r0, t.x0);
    for (int w = 0; w < 3; ++w) t.r0[w] = std::isnan(t.x0[w]) ? t.x0[w] : t.r0[w];
    t.tapChanger = row.tap_changer, t.inService = row.in_service;
    return t;
}

Transformer3Row toRow(const host::Transformer3& t, double baseKv) {
    Transformer3Row row{};
    row.name = t.name, row.star_node = t.star;
    row.node_1 = t.winding[0].node, row.node_2 = t.winding[1].node, row.node_3 = t.winding[2].node;
    row.kv_1 = voltageOf(t.winding[0].ratedKv, baseKv), row.kv_2 = t.winding[1].ratedKv;
    row.kv_3 = t.winding[2].ratedKv;
    row.mva_1 = ratingOf(t.winding[0].ratedMva), row.mva_2 = ratingOf(t.winding[1].ratedMva);
    row.mva_3 = ratingOf(t.winding[2].ratedMva);
    row.grounding_1 = textOf(t.winding[0].grounding), row.grounding_2 = textOf(t.winding[1].grounding);
    row.grounding_3 = textOf(t.winding[2].grounding);
    row.rn_1_ohm = t.winding[0].rn, row.xn_1_ohm = t.winding[0].xn;
    row.rn_2_ohm = t.winding[1].rn, row.xn_2_ohm = t.winding[1].xn;
    row.rn_3_ohm = t.winding[2].rn, row.xn_3_ohm = t.winding[2].xn;
    const double mva[3] = {std::min(row.mva_1, row.mva_2), std::min(row.mva_1, row.mva_3),
                           std::min(row.mva_2, row.mva_3)};
    double* uk1[3] = {&row.uk12_percent, &row.uk13_percent, &row.uk23_percent};
    double* pk1[3] = {&row.pk12_kw, &row.pk13_kw, &row.pk23_kw};
    double* uk0[3] = {&row.uk0_12_percent, &row.uk0_13_percent, &row.uk0_23_percent};
    double* pk0[3] = {&row.pk0_12_kw, &row.pk0_13_kw, &row.pk0_23_kw};
    pairsOf(t.r1, t.x1, mva, row.kv_1, baseKv, uk1, pk1);
    pairsOf(t.r0, t.x0, mva, row.kv_1, baseKv, uk0, pk0);
    row.tap_changer = t.tapChanger, row.in_service = t.inService;
    return row;
}

host::Generator toModel(const GeneratorRow& row, double baseKv) {
    const double scale = baseMva / row.mva * (row.kv / baseKv) * (row.kv / baseKv) / 100;
    host::Generator g;
    g.name = row.name, g.node = row.node, g.kind = row.kind;
    g.ratedMva = row.mva, g.ratedKv = row.kv, g.cosPhi = orZero(row.cos_phi);
    g.r1 = orZero(row.r_percent) * scale, g.x1 = row.xd2_percent * scale;
    g.x0 = row.x0_percent * scale, g.r0 = std::isnan(g.x0) ? g.x0 : orZero(row.r0_percent) * scale;
    g.grounded = row.grounded, g.rn = orZero(row.rn_ohm), g.xn = orZero(row.xn_ohm);
    g.voltageRange = orZero(row.voltage_range_percent) / 100;
    g.ikMaxKa = orZero(row.ik_max_ka), g.ikMinKa = orZero(row.ik_min_ka);
    g.pMw = orZero(row.p_mw), g.qMvar = orZero(row.q_mvar), g.inService = row.in_service;
    return g;
}

GeneratorRow toRow(const host::Generator& g, double baseKv) {
    GeneratorRow row{};
    row.name = g.name, row.node = g.node, row.kind = g.kind;
    row.mva = ratingOf(g.ratedMva), row.kv = voltageOf(g.ratedKv, baseKv), row.cos_phi = g.cosPhi;
    const double scale = baseMva / row.mva * (row.kv / baseKv) * (row.kv / baseKv) / 100;
    row.r_percent = g.r1 / scale, row.xd2_percent = g.x1 / scale;
    row.r0_percent = g.r0 / scale, row.x0_percent = g.x0 / scale;
    row.grounded = g.grounded, row.rn_ohm = g.rn, row.xn_ohm = g.xn;
    row.voltage_range_percent = g.voltageRange * 100, row.ik_max_ka = g.ikMaxKa, row.ik_min_ka = g.ikMinKa;
    row.p_mw = g.pMw, row.q_mvar = g.qMvar, row.in_service = g.inService;
    return row;
}

host::Shunt toModel(const ShuntRow& row, double baseKv) {
    host::Shunt s;
    s.name = row.name, s.node = row.node;
    const double x = baseMva / row.mvar * (row.kv / baseKv) * (row.kv / baseKv);
    s.x1 = row.kind == "capacitor" ? -x : x;
    s.r0 = orZero(row.r0_ohm) / baseOhm(baseKv), s.x0 = orElse(row.x0_ohm / baseOhm(baseKv), s.x1);
    s.ratedMvar = row.mvar, s.ratedKv = row.kv, s.grounded = row.grounded, s.inService = row.in_service;
    return s;
}

ShuntRow toRow(const host::Shunt& s, double baseKv) {
    ShuntRow row{};
    row.name = s.name, row.node = s.node, row.kind = s.x1 < 0 ? "capacitor" : "reactor";
    row.kv = voltageOf(s.ratedKv, baseKv);
    row.mvar = baseMva / std::abs(s.x1) * (row.kv / baseKv) * (row.kv / baseKv);
    row.r0_ohm = s.r0 * baseOhm(baseKv), row.x0_ohm = s.x0 * baseOhm(baseKv);
    row.grounded = s.grounded, row.in_service = s.inService;
    return row;
}

host::Mutual toModel(const MutualRow& row, double baseKv) {
    host::Mutual m{
        row.line_1, row.line_2, orZero(row.r0_ohm) / baseOhm(baseKv), row.x0_ohm / baseOhm(baseKv), row.sense, 0, 100,
        0,          100};
    m.firstFrom = orZero(row.from_1_percent), m.firstTo = orElse(row.to_1_percent, 100);
    m.secondFrom = orZero(row.from_2_percent), m.secondTo = orElse(row.to_2_percent, 100);
    return m;
}

MutualRow toRow(const host::Mutual& m, double baseKv) {
    MutualRow row{};
    row.line_1 = m.first, row.line_2 = m.second, row.sense = m.sense;
    row.r0_ohm = m.r0 * baseOhm(baseKv), row.x0_ohm = m.x0 * baseOhm(baseKv);
    row.from_1_percent = m.firstFrom, row.to_1_percent = m.firstTo;
    row.from_2_percent = m.secondFrom, row.to_2_percent = m.secondTo;
    return row;
}

}  // namespace import::csv
