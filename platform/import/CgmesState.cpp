#include "platform/import/CgmesState.h"

#include <algorithm>

#include "platform/host/Text.h"

namespace import::cgmes {

using enum Finding::Kind;

namespace {

struct Point {
    double x = 0, y = 0;
    int count = 0;
    void add(double px, double py) { x += px, y += py, ++count; }
};

using Points = std::unordered_map<std::string_view, std::vector<std::pair<double, double>>>;  ///< by object placed

/// Points in the order of their numbers, by the object that the holder places.
Points pointsOf(const CimStore& cim, const std::string& pointClass, const std::string& holderAttribute,
                const std::string& placedAttribute) {
    auto points = cim.all(pointClass);
    std::stable_sort(points.begin(), points.end(), [&](const CimObject* a, const CimObject* b) {
        return cim.number(*a, pointClass + ".sequenceNumber", 0) < cim.number(*b, pointClass + ".sequenceNumber", 0);
    });
    Points result;
    for (const CimObject* point : points) {
        const CimObject* const holder = cim.follow(*point, holderAttribute);
        const std::string_view placed = holder ? holder->text(placedAttribute) : std::string_view();
        if (!placed.empty())
            result[placed].emplace_back(cim.number(*point, pointClass + ".xPosition", 0),
                                        cim.number(*point, pointClass + ".yPosition", 0));
    }
    return result;
}

class Placer {
  public:
    explicit Placer(Context& context) : c_(context) {
        for (std::size_t n = 0; n < c_.model.nodes.size(); ++n) place_[c_.model.nodes[n].name] = n;
        found_.resize(c_.model.nodes.size());
    }

    void place() {
        const Points diagram = pointsOf(c_.cim, "DiagramObjectPoint", "DiagramObjectPoint.DiagramObject",
                                        "DiagramObject.IdentifiedObject");
        const Points map = pointsOf(c_.cim, "PositionPoint", "PositionPoint.Location", "Location.PowerSystemResources");
        fromObjects(diagram);
        settle();
        if (diagram.empty()) fromLineEnds(map), settle();
        stations(map);
    }

  private:
    /// A diagram places nodes best by bus bars, then by terminals, then by whatever stands at the node.
    void fromObjects(const Points& points) {
        for (const char* sort : {"BusbarSection", "Terminal", "Equipment"}) {
            for (const CimObject* terminal : c_.cim.all("Terminal")) {
                const CimObject* const equipment = c_.cim.follow(*terminal, "Terminal.ConductingEquipment");
                if (!equipment || (sort[0] == 'B' && equipment->className != "BusbarSection")) continue;
                const auto at = points.find(sort[0] == 'T' ? terminal->id : equipment->id);
                if (at != points.end()) put(*terminal, middle(at->second));
            }
            settle();
        }
        for (const char* attribute : {"Terminal.ConnectivityNode", "Terminal.TopologicalNode"})
            for (const CimObject* terminal : c_.cim.all("Terminal"))
                if (const auto at = points.find(terminal->text(attribute)); at != points.end())
                    put(*terminal, middle(at->second));
    }

    void fromLineEnds(const Points& points) {
        for (const CimObject* line : c_.cim.all("ACLineSegment")) {
            const auto at = points.find(line->id);
            if (at == points.end()) continue;
            const auto& ends = c_.twoTerminals(*line);
            put(*ends[0], at->second.front()), put(*ends[1], at->second.back());
        }
    }

    void stations(const Points& points) {
        std::unordered_map<std::string, Point> byName;
        std::size_t s = 0;
        for (const CimObject* station : c_.cim.all("Substation")) {
            host::Station& target = c_.model.stations[s++];
            const auto at = points.find(station->id);
            if (at != points.end()) byName[target.name].add(at->second[0].first, at->second[0].second);
        }
        const auto told = byName;
        for (const host::Node& node : c_.model.nodes)
            if (node.hasPosition && !told.contains(node.station)) byName[node.station].add(node.x, node.y);
        for (host::Station& station : c_.model.stations)
            station.hasPosition = set(byName, station.name, station.x, station.y);
        for (host::Node& node : c_.model.nodes)
            if (!node.hasPosition && !node.station.empty())
                node.hasPosition = set(byName, node.station, node.x, node.y);
    }

    static bool set(const std::unordered_map<std::string, Point>& points, const std::string& name, double& x,
                    double& y) {
        const auto at = points.find(name);
        if (at == points.end()) return false;
        x = at->second.x / at->second.count, y = at->second.y / at->second.count;
        return true;
    }

    static std::pair<double, double> middle(const std::vector<std::pair<double, double>>& points) {
        Point sum;
        for (const auto& [x, y] : points) sum.add(x, y);
        return {sum.x / sum.count, sum.y / sum.count};
    }

    void put(const CimObject& terminal, std::pair<double, double> point) {
        found_[place_.at(c_.nodes.nodeOf(terminal))].add(point.first, point.second);
    }

    /// Gives what was found to the nodes that have no position yet, and forgets it.
    void settle() {
        for (std::size_t n = 0; n < found_.size(); ++n) {
            host::Node& node = c_.model.nodes[n];
            if (!node.hasPosition && found_[n].count > 0) {
                node.hasPosition = true;
                node.x = found_[n].x / found_[n].count, node.y = found_[n].y / found_[n].count;
            }
            found_[n] = {};
        }
    }

    Context& c_;
    std::unordered_map<std::string, std::size_t> place_;
    std::vector<Point> found_;
};

void readInjections(Context& c, host::LoadFlowCase& flow) {
    std::unordered_map<std::string_view, const CimObject*> flows;
    for (const CimObject* f : c.cim.all("SvPowerFlow")) flows[f->text("SvPowerFlow.Terminal")] = f;
    std::unordered_map<std::string, const host::Generator*> machines;
    for (const auto& g : c.model.generators) machines[g.name] = &g;
    for (const auto& [id, name] : c.names) {
        const auto machine = machines.find(name);
        const CimObject* const object = c.cim.find(id);
        if (machine == machines.end() || !object || object->className == "ACLineSegment") continue;
        const auto found = flows.find(c.terminal(*object).id);
        const bool solved = found != flows.end();
        const double p = solved ? -c.cim.number(*found->second, "SvPowerFlow.p", 0) : machine->second->pMw;
        const double q = solved ? -c.cim.number(*found->second, "SvPowerFlow.q", 0) : machine->second->qMvar;
        flow.generators.push_back({name, p, q});
    }
    std::sort(flow.generators.begin(), flow.generators.end(),
              [](const auto& a, const auto& b) { return a.element < b.element; });
}

}  // namespace

void readLoadFlow(Context& c) {
    host::LoadFlowCase flow{1, "潮流1", c.model.schemes.front().name, {}, {}};
    for (const CimObject* voltage : c.cim.all("SvVoltage")) {
        const CimObject* const node = c.cim.follow(*voltage, "SvVoltage.TopologicalNode");
        const double kv = c.cim.number(*voltage, "SvVoltage.v", 0),
                     angle = c.cim.number(*voltage, "SvVoltage.angle", 0);
        if (!node || kv <= 0) continue;
        for (const std::string& name : c.nodes.nodesOf(*node))
            flow.nodes.push_back({name, kv / c.nodes.baseKv(name), angle});
    }
    if (flow.nodes.empty())
        return c.tally.note(Missing, Text::say("潮流"), Text::say("没有状态变量文件，不建潮流作业"), "SV");
    readInjections(c, flow);
    c.model.loadFlow.push_back(std::move(flow));
}

void readPositions(Context& c) {
    Placer(c).place();
    for (const auto& node : c.model.nodes)
        if (!node.hasPosition) c.tally.note(Missing, Text::say("节点"), Text::say("没有坐标"), node.name);
}

}  // namespace import::cgmes
