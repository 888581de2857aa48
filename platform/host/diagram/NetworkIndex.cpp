#include "platform/host/diagram/NetworkIndex.h"

#include <algorithm>
#include <map>

namespace diagram {

NetworkIndex::NetworkIndex(const host::NetworkModel& model)
    : model_(model), bar_(model.nodes.size(), -1), group_(model.nodes.size()), switches_(model.nodes.size()) {
    for (std::size_t n = 0; n < model.nodes.size(); ++n) byName_.emplace(model.nodes[n].name, static_cast<int>(n));
    for (std::size_t s = 0; s < model.switches.size(); ++s) {
        const int i = node(model.switches[s].i), j = node(model.switches[s].j);
        if (i < 0 || j < 0 || i == j) continue;
        switches_[i].push_back(static_cast<int>(s));
        switches_[j].push_back(static_cast<int>(s));
    }
    findBars();
}

int NetworkIndex::node(const std::string& name) const {
    const auto at = byName_.find(name);
    return at == byName_.end() ? -1 : at->second;
}

int NetworkIndex::beyond(int switchAt, int from) const {
    const int i = node(model_.switches[switchAt].i);
    return i == from ? node(model_.switches[switchAt].j) : i;
}

void NetworkIndex::findBars() {
    std::map<std::string_view, std::vector<int>> groups;
    for (std::size_t n = 0; n < model_.nodes.size(); ++n) {
        const host::Node& at = model_.nodes[n];
        const bool tie = at.nodeType == 1 && !at.physicalBus;
        if (at.physicalBus || (!tie && switches_[n].empty())) bar_[n] = static_cast<int>(n);
        if (!at.bus.empty() && !tie) groups[at.bus].push_back(static_cast<int>(n));
    }
    for (const auto& [name, members] : groups)
        if (members.size() > 1) joinGroup(members);
}

void NetworkIndex::joinGroup(const std::vector<int>& members) {
    const auto free = [&](int n) {
        return switches_[n].empty() && model_.nodes[n].baseKv == model_.nodes[members[0]].baseKv;
    };
    if (!std::all_of(members.begin(), members.end(), free)) return;
    const auto physical =
        std::find_if(members.begin(), members.end(), [&](int n) { return model_.nodes[n].physicalBus; });
    const int chosen = physical == members.end() ? members[0] : *physical;
    for (int n : members) bar_[n] = chosen;
    group_[chosen] = true;
}

}  // namespace diagram
