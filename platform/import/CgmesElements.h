#pragma once

#include <cmath>

#include "platform/import/CgmesNodes.h"

/// The equipment of an exchange as elements of a model, one function per sort. Impedances become per unit on 100 MVA.
namespace import::cgmes {

/// What every sort of equipment is read with.
struct Context {
    const CimStore& cim;
    const Options& options;
    Report& report;
    Tally& tally;
    CgmesNodes& nodes;
    host::NetworkModel& model;
    std::unordered_map<std::string_view, std::string> names;  ///< element names by identifier

    [[nodiscard]] double ohmBase(const std::string& node) const {
        return nodes.baseKv(node) * nodes.baseKv(node) / 100;
    }
    /// The only terminal of a one-ended piece of equipment. \throws ImportError when it has none
    [[nodiscard]] const CimObject& terminal(const CimObject& equipment) const;
    /// The two terminals of a two-ended piece. \throws ImportError when it has not two
    [[nodiscard]] const std::vector<const CimObject*>& twoTerminals(const CimObject& equipment) const;
    /// In service and, for a one-ended piece, connected.
    [[nodiscard]] bool inService(const CimObject& equipment) const;
};

void readSwitches(Context& context);
/// Line segments and series compensators, with their ratings and the couplings between them.
void readLines(Context& context);
void readTransformers(Context& context);
/// Machines, network feeders and equivalent injections.
void readSources(Context& context);
void readShunts(Context& context);
void readLoads(Context& context);
/// Notes equipment that none of the others takes.
void noteOthers(Context& context);

/// Permanent current limit at a terminal, A; the smallest when several are told, 0 when none is.
class CurrentLimits {
  public:
    explicit CurrentLimits(const CimStore& cim);
    [[nodiscard]] double at(const CimObject& terminal) const;

  private:
    std::unordered_map<std::string_view, double> byTerminal_;
};

}  // namespace import::cgmes
