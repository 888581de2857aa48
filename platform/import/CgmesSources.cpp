#include <algorithm>

#include "platform/import/CgmesElements.h"

#include "platform/host/Text.h"

namespace import::cgmes {

using enum Finding::Kind;

namespace {

/// Default machine data, per unit on the rating; without a rating 1.1 max(Pmax, 10) MVA.
constexpr double machineX1 = 0.20, machineX0 = 0.10, machineMargin = 1.1, smallestMachineMw = 10;
constexpr double feederVoltageFactor = 1.1;

double orZero(double value) { return std::isnan(value) ? 0 : value; }

class SourceReader {
  public:
    explicit SourceReader(Context& context) : c_(context), names_(context.options, context.report) {}

    void read() {
        for (const CimObject* object : c_.cim.all("SynchronousMachine")) addMachine(*object);
        for (const CimObject* object : c_.cim.all("AsynchronousMachine")) addMotor(*object);
        for (const CimObject* object : c_.cim.all("ExternalNetworkInjection")) addFeeder(*object);
        for (const CimObject* object : c_.cim.all("EquivalentInjection")) addEquivalent(*object);
    }

  private:
    host::Generator begin(const CimObject& object, const char* kind, const std::string& pAttribute,
                          const std::string& qAttribute) {
        host::Generator g;
        g.node = c_.nodes.nodeOf(c_.terminal(object)), g.kind = kind;
        g.pMw = -c_.cim.number(object, pAttribute, 0) + 0.0, g.qMvar = -c_.cim.number(object, qAttribute, 0) + 0.0;
        g.inService = c_.inService(object);
        g.ratedKv = c_.cim.number(object, "RotatingMachine.ratedU", 0);
        if (g.ratedKv <= 0) g.ratedKv = c_.nodes.baseKv(g.node);
        g.ratedMva = c_.cim.number(object, "RotatingMachine.ratedS", 0);
        g.cosPhi = c_.cim.number(object, "RotatingMachine.ratedPowerFactor", 0);
        return g;
    }
    void end(const CimObject& object, host::Generator g, const char* kind) {
        g.name = names_.give(object.name(), kind);
        c_.names[object.id] = g.name;
        c_.model.generators.push_back(std::move(g));
    }

    void addMachine(const CimObject& object) {
        host::Generator g = begin(object, "generator", "RotatingMachine.p", "RotatingMachine.q");
        const auto value = [&](const char* attribute) {
            return c_.cim.number(object, std::string("SynchronousMachine.") + attribute, 0);
        };
        if (g.ratedMva <= 0) g.ratedMva = defaultRating(object);
        const double scale =
            100 / g.ratedMva * (g.ratedKv * g.ratedKv) / (c_.nodes.baseKv(g.node) * c_.nodes.baseKv(g.node));
        // The positive-sequence resistance alone is in ohm, all others are per unit on the rating.
        g.r1 = value("r") / c_.ohmBase(g.node), g.x1 = value("satDirectSubtransX") * scale;
        g.r0 = value("r0") * scale, g.x0 = value("x0") * scale;
        g.grounded = object.flag("SynchronousMachine.earthing", false);
        g.voltageRange = orZero(value("voltageRegulationRange")) / 100;
        g.rn = value("earthingStarPointR"), g.xn = value("earthingStarPointX");
        if (g.x1 <= 0) {
            g.x1 = machineX1 * scale, g.r0 = 0, g.x0 = machineX0 * scale, g.grounded = true;
            c_.tally.note(Defaulted, Text::say("发电机"),
                          Text::say("没有短路数据，取 X\" = 0.20、X0 = 0.10，中性点接地"), object.name());
        } else if (g.grounded && g.x0 == 0) {
            g.r0 = g.x0 = NAN;
        }
        end(object, std::move(g), QT_TRANSLATE_NOOP("Text", "发电机"));
    }

    double defaultRating(const CimObject& object) const {
        const CimObject* const unit = c_.cim.follow(object, "RotatingMachine.GeneratingUnit");
        const double p = unit ? c_.cim.number(*unit, "GeneratingUnit.maxOperatingP", 0) : 0;
        c_.tally.note(Defaulted, Text::say("发电机"), Text::say("没有额定容量，取 1.1 max(Pmax, 10) MVA"),
                      object.name());
        return machineMargin * std::max(p, smallestMachineMw);
    }

    /// Locked rotor impedance Ur^2 / (Sr Ilr/Ir), split by R/X (IEC 60909-0, asynchronous motors).
    void addMotor(const CimObject& object) {
        host::Generator g = begin(object, "motor", "RotatingMachine.p", "RotatingMachine.q");
        const double start = c_.cim.number(object, "AsynchronousMachine.iaIrRatio", 0);
        const double power = c_.cim.number(object, "AsynchronousMachine.ratedMechanicalPower", 0);
        const double efficiency = c_.cim.number(object, "AsynchronousMachine.efficiency", 0) / 100;
        if (power > 0 && efficiency > 0 && g.cosPhi > 0) g.ratedMva = power / (efficiency * g.cosPhi);
        if (start <= 0 || g.ratedMva <= 0)
            return addAsLoad(object, QT_TRANSLATE_NOOP("Text", "异步电动机"), "RotatingMachine");
        const double rx = orZero(c_.cim.number(object, "AsynchronousMachine.rxLockedRotorRatio"));
        const double ratio = g.ratedKv / c_.nodes.baseKv(g.node);
        const double z = 100 / g.ratedMva / start * ratio * ratio;
        g.x1 = z / std::sqrt(1 + rx * rx), g.r1 = g.x1 * rx;
        end(object, std::move(g), QT_TRANSLATE_NOOP("Text", "异步电动机"));
    }

    /// Z = c Un / (sqrt(3) Ik"), split by the ratios told (IEC 60909-0, network feeders).
    void addFeeder(const CimObject& object) {
        const std::string n = "ExternalNetworkInjection.";
        host::Generator g = begin(object, "feeder", n + "p", n + "q");
        const double current = c_.cim.number(object, n + "maxInitialSymShCCurrent", 0) / 1000;
        if (current <= 0) return addAsLoad(object, QT_TRANSLATE_NOOP("Text", "外部电网"), "ExternalNetworkInjection");
        double factor = c_.cim.number(object, n + "voltageFactor", feederVoltageFactor);
        if (factor <= 0) factor = feederVoltageFactor;
        const double kv = c_.nodes.baseKv(g.node);
        const double z1 = factor * kv / (std::sqrt(3.0) * current) / c_.ohmBase(g.node);
        const double z0 = z1 * c_.cim.number(object, n + "maxZ0ToZ1Ratio", 0);
        const auto split = [](double z, double rx, double& r, double& x) {
            x = z / std::sqrt(1 + rx * rx), r = x * rx;
        };
        split(z1, c_.cim.number(object, n + "maxR1ToX1Ratio", 0.1), g.r1, g.x1);
        split(z0, c_.cim.number(object, n + "maxR0ToX0Ratio", 0.1), g.r0, g.x0);
        g.grounded = z0 > 0;
        g.ratedMva = std::sqrt(3.0) * kv * current, g.ratedKv = kv;
        g.ikMaxKa = current, g.ikMinKa = c_.cim.number(object, n + "minInitialSymShCCurrent", 0) / 1000;
        end(object, std::move(g), QT_TRANSLATE_NOOP("Text", "外部电网"));
    }

    void addEquivalent(const CimObject& object) {
        const std::string n = "EquivalentInjection.";
        host::Generator g = begin(object, "feeder", n + "p", n + "q");
        const auto ohm = [&](const char* a) { return c_.cim.number(object, n + a, 0) / c_.ohmBase(g.node); };
        g.r1 = ohm("r"), g.x1 = ohm("x"), g.r0 = ohm("r0"), g.x0 = ohm("x0");
        if (g.x1 == 0) return addAsLoad(object, QT_TRANSLATE_NOOP("Text", "等值注入"), "EquivalentInjection");
        g.grounded = g.x0 != 0;
        g.ratedMva = 100 / std::hypot(g.r1, g.x1);
        end(object, std::move(g), QT_TRANSLATE_NOOP("Text", "等值注入"));
    }

    /// A source without impedance cannot feed a fault; what it consumes is kept.
    void addAsLoad(const CimObject& object, const char* kind, const std::string& prefix) {
        host::Load load;
        load.name = names_.give(object.name(), kind), load.node = c_.nodes.nodeOf(c_.terminal(object));
        load.pMw = c_.cim.number(object, prefix + ".p", 0), load.qMvar = c_.cim.number(object, prefix + ".q", 0);
        load.inService = c_.inService(object);
        c_.tally.note(Missing, Text::say(kind), Text::say("没有短路阻抗，按负荷导入"), load.name);
        c_.model.loads.push_back(std::move(load));
    }

    Context& c_;
    NameGiver names_;
};

/// Susceptance in service, S; of all sections when none is.
double susceptance(const Context& c, const CimObject& shunt, const char* attribute) {
    const double sections =
        c.cim.number(shunt, "ShuntCompensator.sections", c.cim.number(shunt, "ShuntCompensator.normalSections", 1));
    const double all = c.cim.number(shunt, "ShuntCompensator.maximumSections", 1);
    return c.cim.number(shunt, attribute, 0) * (sections > 0 ? sections : all);
}

}  // namespace

void readSources(Context& c) { SourceReader(c).read(); }

void readShunts(Context& c) {
    NameGiver names(c.options, c.report);
    for (const CimObject* object : c.cim.all("LinearShuntCompensator")) {
        host::Shunt s;
        s.node = c.nodes.nodeOf(c.terminal(*object));
        const double ohm = c.ohmBase(s.node), b = susceptance(c, *object, "LinearShuntCompensator.bPerSection");
        const double b0 = susceptance(c, *object, "LinearShuntCompensator.b0PerSection");
        if (b == 0) {
            c.tally.note(Changed, Text::say("并联补偿"), Text::say("电纳为零，不导入"), object->name());
            continue;
        }
        s.name = names.give(object->name(), QT_TRANSLATE_NOOP("Text", "并联补偿"));
        s.x1 = -1 / (b * ohm), s.x0 = b0 != 0 ? -1 / (b0 * ohm) : s.x1;
        s.grounded = object->flag("ShuntCompensator.grounded", false) && b0 != 0;
        s.ratedKv = c.cim.number(*object, "ShuntCompensator.nomU", 0);
        if (s.ratedKv <= 0) s.ratedKv = c.nodes.baseKv(s.node);
        s.ratedMvar = std::abs(b) * s.ratedKv * s.ratedKv;
        s.inService = c.inService(*object) && c.cim.number(*object, "ShuntCompensator.sections", 1) > 0;
        c.model.shunts.push_back(std::move(s));
    }
}

void readLoads(Context& c) {
    NameGiver names(c.options, c.report);
    for (const char* className : {"EnergyConsumer", "ConformLoad", "NonConformLoad", "StationSupply"})
        for (const CimObject* object : c.cim.all(className))
            c.model.loads.push_back({names.give(object->name(), QT_TRANSLATE_NOOP("Text", "负荷")),
                                     c.nodes.nodeOf(c.terminal(*object)), c.cim.number(*object, "EnergyConsumer.p", 0),
                                     c.cim.number(*object, "EnergyConsumer.q", 0), c.inService(*object)});
}

void noteOthers(Context& c) {
    for (const char* className :
         {"NonlinearShuntCompensator", "StaticVarCompensator", "EquivalentBranch", "EquivalentShunt",
          "GroundDisconnector", "Ground", "GroundingImpedance", "PetersenCoil", "EnergySource",
          "PowerElectronicsConnection", "CsConverter", "VsConverter", "DCLineSegment"})
        for (const CimObject* object : c.cim.all(className))
            c.tally.note(Missing, className, Text::say("这类设备不导入"), object->name());
}

}  // namespace import::cgmes
