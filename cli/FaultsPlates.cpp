#include <algorithm>

#include "cli/FaultsVerb.h"
#include "platform/host/NetworkModel.h"
#include "platform/sql/Sql.h"

namespace cli {

namespace {

using engines::Complex;

Complex neutralOf(const host::Winding& winding) {
    return winding.grounding == host::Grounding::Grounded ? Complex{winding.rn, winding.xn} : Complex{};
}

engines::WindingPlate plateOf(const host::Winding& winding) {
    return {winding.ratedKv, winding.ratedMva, neutralOf(winding)};
}

engines::SourceKind kindOf(const std::string& kind) {
    if (kind == "motor") return engines::SourceKind::Motor;
    return kind == "feeder" ? engines::SourceKind::Feeder : engines::SourceKind::Generator;
}

engines::SourcePlate plateOf(const host::Generator& g) {
    const std::string name = sql::toGbk(QString::fromStdString(g.name)).toStdString();
    return {name,           kindOf(g.kind), g.ratedMva, g.ratedKv,    g.cosPhi,
            g.voltageRange, g.ikMaxKa,      g.ikMinKa,  {g.r0, g.x0}, g.grounded ? Complex{g.rn, g.xn} : Complex{}};
}

engines::ThreeWindingPlate plateOf(const host::Transformer3& t, int idNo) {
    engines::ThreeWindingPlate plate{idNo, {}, {}, {}};
    for (int k = 0; k < 3; ++k) {
        plate.winding[k] = plateOf(t.winding[k]);
        plate.z1[k] = {t.r1[k], t.x1[k]};
        plate.z0[k] = {t.r0[k], t.x0[k]};
    }
    return plate;
}

}  // namespace

engines::NamePlates namePlates(const host::NetworkModel& model, const QHash<QString, int>& idNo) {
    const auto number = [&](const std::string& name, const char* suffix) {
        return idNo.value(QString::fromStdString(name) + suffix);
    };
    engines::NamePlates plates;
    for (const auto& line : model.lines)
        plates.lines.push_back({number(line.name, "_ac"), line.endTemperature, line.b0});
    const auto isRated = [](const host::Winding& winding) { return winding.ratedKv > 0 && winding.ratedMva > 0; };
    for (const auto& t : model.transformers2)
        if (isRated(t.i) && isRated(t.j))
            plates.transformers.push_back({number(t.name, t.phaseShifter ? "_sf" : "_2w"),
                                           plateOf(t.i),
                                           plateOf(t.j),
                                           {t.r1, t.x1},
                                           {t.r0, t.x0},
                                           t.tapChanger,
                                           t.unit});
    for (const auto& t : model.transformers3)
        if (std::ranges::all_of(t.winding, isRated)) plates.threeWinding.push_back(plateOf(t, number(t.name, "_3w1")));
    for (const auto& g : model.generators) plates.sources.push_back(plateOf(g));
    return plates;
}

}  // namespace cli
