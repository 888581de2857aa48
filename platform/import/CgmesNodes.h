#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/host/Text.h"
#include "platform/import/CimStore.h"
#include "platform/import/Names.h"
#include "platform/import/Tally.h"

namespace import {

/// Nodes and stations of an exchange. In a node-breaker model, in which most terminals name a connectivity node, those
/// are the nodes; else the model is bus-branch and its topological nodes are.
class CgmesNodes {
  public:
    /// Fills the model's nodes and stations.
    CgmesNodes(const CimStore& cim, const Options& options, Report& report, Tally& tally, host::NetworkModel& model);

    /// Terminals of a piece of equipment by their sequence number.
    [[nodiscard]] const std::vector<const CimObject*>& terminals(const CimObject& equipment) const;
    /// Name of the node that a terminal stands at. \throws ImportError when it stands at none
    [[nodiscard]] const std::string& nodeOf(const CimObject& terminal) const;
    [[nodiscard]] static bool connected(const CimObject& terminal) {
        return terminal.flag("ACDCTerminal.connected", terminal.flag("Terminal.connected", true));
    }
    [[nodiscard]] double baseKv(const std::string& node) const;
    /// Names of the nodes that a topological node joins.
    [[nodiscard]] std::vector<std::string> nodesOf(const CimObject& topologicalNode) const;
    /// A name for a star point, unique among the nodes.
    std::string starName(const std::string& transformer) {
        return nodeNames_.give(transformer + "中性点", QT_TRANSLATE_NOOP("Text", "中性点"));
    }

  private:
    void readTerminals();
    void readStations();
    void addNode(const CimObject& terminal);
    [[nodiscard]] std::string_view nodeId(const CimObject& terminal) const;
    [[nodiscard]] const CimObject* voltageLevel(const CimObject* container) const;
    [[nodiscard]] double baseKvOf(const CimObject* node, const CimObject* level, const CimObject& terminal) const;
    [[nodiscard]] double nominalKv(const CimObject* from, std::string_view attribute) const;
    void nameBuses();

    const CimStore& cim_;
    Tally& tally_;
    host::NetworkModel& model_;
    NameGiver nodeNames_, stationNames_;
    bool nodeBreaker_ = true;
    std::unordered_map<std::string_view, std::vector<const CimObject*>> terminals_;  ///< by equipment
    std::unordered_map<std::string_view, std::string_view> connectivityOf_;  ///< first one of a topological node
    std::unordered_map<std::string_view, const CimObject*> busbars_;         ///< by node
    std::unordered_map<std::string_view, std::size_t> places_;               ///< of nodes in the model
    std::unordered_map<std::string, std::size_t> byName_;
    std::unordered_map<std::string_view, std::string> stations_;
    std::vector<std::string_view> topological_;  ///< topological node of each node of the model
};

}  // namespace import
