#include "platform/import/CgmesNodes.h"

#include <algorithm>
#include <cmath>

#include "platform/host/Text.h"

namespace import {

using enum Finding::Kind;

CgmesNodes::CgmesNodes(const CimStore& cim, const Options& options, Report& report, Tally& tally,
                       host::NetworkModel& model)
    : cim_(cim), tally_(tally), model_(model), nodeNames_(options, report), stationNames_(options, report) {
    readTerminals();
    readStations();
    for (const CimObject* bar : cim_.all("BusbarSection"))
        for (const CimObject* terminal : terminals(*bar)) busbars_.try_emplace(nodeId(*terminal), bar);
    for (const CimObject* terminal : cim_.all("Terminal"))
        if (terminal->has("Terminal.ConductingEquipment")) addNode(*terminal);
    nameBuses();
}

void CgmesNodes::readTerminals() {
    std::size_t count = 0, connectivity = 0;
    for (const CimObject* terminal : cim_.all("Terminal")) {
        const std::string_view equipment = terminal->text("Terminal.ConductingEquipment");
        if (equipment.empty()) continue;
        terminals_[equipment].push_back(terminal);
        ++count, connectivity += terminal->has("Terminal.ConnectivityNode");
    }
    nodeBreaker_ = connectivity * 2 > count;
    for (const CimObject* node : cim_.all("ConnectivityNode"))
        connectivityOf_.try_emplace(node->text("ConnectivityNode.TopologicalNode"), node->id);
    for (auto& [equipment, list] : terminals_)
        std::stable_sort(list.begin(), list.end(), [this](const CimObject* a, const CimObject* b) {
            return cim_.number(*a, "ACDCTerminal.sequenceNumber", 1) <
                   cim_.number(*b, "ACDCTerminal.sequenceNumber", 1);
        });
}

void CgmesNodes::readStations() {
    for (const CimObject* station : cim_.all("Substation")) {
        const std::string name = stationNames_.give(station->name(), QT_TRANSLATE_NOOP("Text", "厂站"));
        stations_[station->id] = name;
        model_.stations.push_back({name});
    }
}

std::string_view CgmesNodes::nodeId(const CimObject& terminal) const {
    const std::string_view topological = terminal.text("Terminal.TopologicalNode");
    if (!nodeBreaker_) return topological;
    if (terminal.has("Terminal.ConnectivityNode")) return terminal.text("Terminal.ConnectivityNode");
    const auto joined = connectivityOf_.find(topological);
    return joined == connectivityOf_.end() || topological.empty() ? topological : joined->second;
}

const CimObject* CgmesNodes::voltageLevel(const CimObject* container) const {
    if (container && container->className == "Bay") return cim_.follow(*container, "Bay.VoltageLevel");
    return container && container->className == "VoltageLevel" ? container : nullptr;
}

double CgmesNodes::nominalKv(const CimObject* from, std::string_view attribute) const {
    const CimObject* const base = from ? cim_.follow(*from, attribute) : nullptr;
    return base ? cim_.number(*base, "BaseVoltage.nominalVoltage", 0) : 0;
}

double CgmesNodes::baseKvOf(const CimObject* node, const CimObject* level, const CimObject& terminal) const {
    if (const double kv = nominalKv(level, "VoltageLevel.BaseVoltage"); kv > 0) return kv;
    const bool connectivity = node && node->className == "ConnectivityNode";
    const CimObject* const topological = connectivity ? cim_.follow(*node, "ConnectivityNode.TopologicalNode") : node;
    if (const double kv = nominalKv(topological, "TopologicalNode.BaseVoltage"); kv > 0) return kv;
    const CimObject* const equipment = cim_.follow(terminal, "Terminal.ConductingEquipment");
    return nominalKv(equipment, "ConductingEquipment.BaseVoltage");
}

void CgmesNodes::addNode(const CimObject& terminal) {
    const std::string_view id = nodeId(terminal);
    if (id.empty() || places_.contains(id)) return;
    const CimObject* const object = cim_.find(id);
    const std::string attribute = object ? std::string(object->className) + ".ConnectivityNodeContainer" : "";
    const CimObject* const container = object ? cim_.follow(*object, attribute) : nullptr;
    const CimObject* const level = voltageLevel(container);
    const auto bar = busbars_.find(id);
    host::Node node;
    const std::string wanted = bar != busbars_.end() ? bar->second->name() : object ? object->name() : "";
    node.name = nodeNames_.give(wanted.empty() ? std::string(id) : wanted, QT_TRANSLATE_NOOP("Text", "节点"));
    node.baseKv = baseKvOf(object, level, terminal);
    if (node.baseKv <= 0) cim_.fail(terminal, Text::say("节点“") + node.name + Text::say("”没有基准电压"));
    node.physicalBus = !nodeBreaker_ || bar != busbars_.end();
    if (level) node.vMinKv = cim_.number(*level, "VoltageLevel.lowVoltageLimit", 0);
    const CimObject* const station = level ? cim_.follow(*level, "VoltageLevel.Substation") : nullptr;
    if (station) node.station = stations_[station->id];
    if (!object) tally_.note(Missing, Text::say("边界模型"), Text::say("节点没有定义"), node.name);
    places_[id] = model_.nodes.size(), byName_[node.name] = model_.nodes.size();
    topological_.push_back(
        object && object->className == "ConnectivityNode" ? object->text("ConnectivityNode.TopologicalNode") : id);
    model_.nodes.push_back(std::move(node));
}

/// The diagram bus of a node is the first bus bar that is joined with it.
void CgmesNodes::nameBuses() {
    std::unordered_map<std::string_view, std::string> barOf;
    for (std::size_t n = 0; n < model_.nodes.size(); ++n)
        if (model_.nodes[n].physicalBus && !topological_[n].empty())
            barOf.try_emplace(topological_[n], model_.nodes[n].name);
    for (std::size_t n = 0; n < model_.nodes.size(); ++n) {
        const auto bar = barOf.find(topological_[n]);
        const bool joined = bar != barOf.end() && !model_.nodes[n].physicalBus;
        model_.nodes[n].bus = joined ? bar->second : model_.nodes[n].name;
    }
}

const std::vector<const CimObject*>& CgmesNodes::terminals(const CimObject& equipment) const {
    static const std::vector<const CimObject*> none;
    const auto found = terminals_.find(equipment.id);
    return found == terminals_.end() ? none : found->second;
}

const std::string& CgmesNodes::nodeOf(const CimObject& terminal) const {
    const auto found = places_.find(nodeId(terminal));
    if (found == places_.end()) cim_.fail(terminal, Text::say("端子没有节点，可能缺少拓扑文件"));
    return model_.nodes[found->second].name;
}

double CgmesNodes::baseKv(const std::string& node) const { return model_.nodes[byName_.at(node)].baseKv; }

std::vector<std::string> CgmesNodes::nodesOf(const CimObject& topologicalNode) const {
    std::vector<std::string> names;
    for (std::size_t n = 0; n < topological_.size(); ++n)
        if (topological_[n] == topologicalNode.id) names.push_back(model_.nodes[n].name);
    return names;
}

}  // namespace import
