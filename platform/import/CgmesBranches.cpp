#include <algorithm>

#include "platform/import/CgmesElements.h"

#include "platform/host/Text.h"

namespace import::cgmes {

using enum Finding::Kind;

const CimObject& Context::terminal(const CimObject& equipment) const {
    const auto& list = nodes.terminals(equipment);
    if (list.empty()) cim.fail(equipment, Text::say("没有端子"));
    return *list.front();
}

const std::vector<const CimObject*>& Context::twoTerminals(const CimObject& equipment) const {
    const auto& list = nodes.terminals(equipment);
    if (list.size() != 2)
        cim.fail(equipment, Text::say("应有两个端子，有 ") + std::to_string(list.size()) + Text::say(" 个"));
    return list;
}

bool Context::inService(const CimObject& equipment) const {
    if (!equipment.flag("Equipment.inService", equipment.flag("Equipment.normallyInService", true))) return false;
    const auto& list = nodes.terminals(equipment);
    return list.size() != 1 || CgmesNodes::connected(*list.front());
}

namespace {

bool isPermanent(const CimStore& cim, const CimObject& limit) {
    const CimObject* const type = cim.follow(limit, "OperationalLimit.OperationalLimitType");
    if (!type) return false;
    return type->text("OperationalLimitType.limitType") == "LimitTypeKind.patl" ||
           type->text("OperationalLimitType.kind") == "LimitKind.patl" ||
           type->flag("OperationalLimitType.isInfiniteDuration", false);
}

}  // namespace

CurrentLimits::CurrentLimits(const CimStore& cim) {
    std::unordered_map<std::string_view, double> any;
    const auto keep = [](auto& map, std::string_view terminal, double value) {
        const auto [entry, isNew] = map.try_emplace(terminal, value);
        if (!isNew) entry->second = std::min(entry->second, value);
    };
    for (const CimObject* limit : cim.all("CurrentLimit")) {
        const CimObject* const set = cim.follow(*limit, "OperationalLimit.OperationalLimitSet");
        const double value =
            cim.number(*limit, "CurrentLimit.value", cim.number(*limit, "CurrentLimit.normalValue", 0));
        if (!set || value <= 0) continue;
        const std::string_view terminal = set->text("OperationalLimitSet.Terminal");
        keep(any, terminal, value);
        if (isPermanent(cim, *limit)) keep(byTerminal_, terminal, value);
    }
    byTerminal_.insert(any.begin(), any.end());
}

double CurrentLimits::at(const CimObject& terminal) const {
    const auto found = byTerminal_.find(terminal.id);
    return found == byTerminal_.end() ? 0 : found->second;
}

namespace {

constexpr const char* switchClasses[] = {"Breaker",       "DisconnectingCircuitBreaker",
                                         "Disconnector",  "LoadBreakSwitch",
                                         "Switch",        "ProtectedSwitch",
                                         "Fuse",          "Jumper",
                                         "Sectionaliser", "Recloser"};

bool isBreaker(std::string_view className) {
    return className == "Breaker" || className == "DisconnectingCircuitBreaker" || className == "Recloser";
}

}  // namespace

void readSwitches(Context& c) {
    NameGiver names(c.options, c.report);
    for (const char* className : switchClasses) {
        for (const CimObject* object : c.cim.all(className)) {
            const auto& ends = c.twoTerminals(*object);
            host::Switch s;
            s.i = c.nodes.nodeOf(*ends[0]), s.j = c.nodes.nodeOf(*ends[1]);
            if (s.i == s.j) {
                c.tally.note(Changed, Text::say("开关"), Text::say("两端是同一节点，不导入"), object->name());
                continue;
            }
            s.name = names.give(object->name(), QT_TRANSLATE_NOOP("Text", "开关"));
            s.breaker = isBreaker(object->className);
            s.closed = !object->flag("Switch.open", object->flag("Switch.normalOpen", false)) &&
                       CgmesNodes::connected(*ends[0]) && CgmesNodes::connected(*ends[1]) && c.inService(*object);
            c.model.switches.push_back(std::move(s));
        }
    }
}

namespace {

/// Ohm of a two-ended element; r0 and x0 both zero or absent mean that they are not known.
host::Line lineOf(const Context& c, const CimObject& object, const std::string& className) {
    const auto& ends = c.twoTerminals(object);
    host::Line line;
    line.i = c.nodes.nodeOf(*ends[0]), line.j = c.nodes.nodeOf(*ends[1]);
    const double ohm = c.ohmBase(line.i);
    line.r1 = c.cim.number(object, className + ".r", 0) / ohm,
    line.x1 = c.cim.number(object, className + ".x", 0) / ohm;
    line.r0 = c.cim.number(object, className + ".r0") / ohm, line.x0 = c.cim.number(object, className + ".x0") / ohm;
    if (line.r0 == 0 && line.x0 == 0) line.r0 = line.x0 = NAN;
    line.openAtI = !CgmesNodes::connected(*ends[0]), line.openAtJ = !CgmesNodes::connected(*ends[1]);
    line.inService = c.inService(object);
    return line;
}

void rate(const Context& c, const CurrentLimits& limits, const CimObject& object, host::Line& line) {
    const auto& ends = c.twoTerminals(object);
    const double a = limits.at(*ends[0]), b = limits.at(*ends[1]);
    line.ratedA = a > 0 && b > 0 ? std::min(a, b) : std::max(a, b);
    line.maxLoadA = line.ratedA;
    if (line.ratedA > 0)
        c.tally.note(Defaulted, Text::say("线路"), Text::say("最大负荷电流取允许电流"), line.name);
    else
        c.tally.note(Missing, Text::say("线路"), Text::say("没有允许电流"), line.name);
}

/// The coupled stretch of a line in percent from its I end, from the distances to the terminal that the coupling names.
std::pair<double, double> stretch(const Context& c, const CimObject& coupling, const CimObject& terminal,
                                  double lengthKm, const std::string& which) {
    const double from = c.cim.number(coupling, "MutualCoupling.distance" + which + "1", 0);
    const double to = c.cim.number(coupling, "MutualCoupling.distance" + which + "2", lengthKm);
    if (lengthKm <= 0 || to <= from) return {0, 100};
    const double a = std::clamp(from / lengthKm * 100, 0.0, 100.0), b = std::clamp(to / lengthKm * 100, 0.0, 100.0);
    if (c.cim.number(terminal, "ACDCTerminal.sequenceNumber", 1) == 1) return {a, b};
    return {100 - b, 100 - a};
}

const host::Line* lineAt(const Context& c, const CimObject* terminal) {
    const CimObject* const object = terminal ? c.cim.follow(*terminal, "Terminal.ConductingEquipment") : nullptr;
    const auto name = object ? c.names.find(object->id) : c.names.end();
    if (name == c.names.end()) return nullptr;
    const auto line = std::find_if(c.model.lines.begin(), c.model.lines.end(),
                                   [&](const host::Line& l) { return l.name == name->second; });
    return line == c.model.lines.end() ? nullptr : &*line;
}

void readCouplings(Context& c) {
    for (const CimObject* coupling : c.cim.all("MutualCoupling")) {
        const CimObject* const t1 = c.cim.follow(*coupling, "MutualCoupling.First_Terminal");
        const CimObject* const t2 = c.cim.follow(*coupling, "MutualCoupling.Second_Terminal");
        const host::Line *first = lineAt(c, t1), *second = lineAt(c, t2);
        if (!first || !second) c.cim.fail(*coupling, Text::say("没有它所耦合的两条线路"));
        host::Mutual m;
        m.first = first->name, m.second = second->name;
        m.r0 = c.cim.number(*coupling, "MutualCoupling.r0", 0) / c.ohmBase(first->i);
        m.x0 = c.cim.number(*coupling, "MutualCoupling.x0", 0) / c.ohmBase(first->i);
        const bool sameEnd =
            c.cim.number(*t1, "ACDCTerminal.sequenceNumber", 1) == c.cim.number(*t2, "ACDCTerminal.sequenceNumber", 1);
        m.sense = sameEnd ? 1 : -1;
        std::tie(m.firstFrom, m.firstTo) = stretch(c, *coupling, *t1, first->lengthKm, "1");
        std::tie(m.secondFrom, m.secondTo) = stretch(c, *coupling, *t2, second->lengthKm, "2");
        c.model.mutuals.push_back(std::move(m));
    }
}

}  // namespace

void readLines(Context& c) {
    NameGiver names(c.options, c.report);
    const CurrentLimits limits(c.cim);
    for (const std::string className : {"ACLineSegment", "SeriesCompensator"}) {
        for (const CimObject* object : c.cim.all(className)) {
            host::Line line = lineOf(c, *object, className);
            if (line.i == line.j) {
                c.tally.note(Changed, Text::say("线路"), Text::say("两端是同一节点，不导入"), object->name());
                continue;
            }
            line.name = names.give(object->name(), QT_TRANSLATE_NOOP("Text", "线路"));
            const double ohm = c.ohmBase(line.i);
            line.b1 = c.cim.number(*object, "ACLineSegment.bch", 0) * ohm;
            line.b0 = c.cim.number(*object, "ACLineSegment.b0ch", 0) * ohm;
            line.lengthKm = c.cim.number(*object, "Conductor.length", 0);
            line.endTemperature = c.cim.number(*object, "ACLineSegment.shortCircuitEndTemperature", 0);
            if (className == "SeriesCompensator")
                c.tally.note(Changed, Text::say("串联补偿"), Text::say("按线路导入"), line.name);
            else if (line.lengthKm <= 0)
                c.tally.note(Missing, Text::say("线路"), Text::say("没有长度"), line.name);
            rate(c, limits, *object, line);
            c.names[object->id] = line.name;
            c.model.lines.push_back(std::move(line));
        }
    }
    readCouplings(c);
}

}  // namespace import::cgmes
