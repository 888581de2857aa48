#include "platform/import/Islands.h"

#include <numeric>

namespace import {

using host::Grounding;

Islands::Sets::Sets(std::size_t size) : parent_(size) { std::iota(parent_.begin(), parent_.end(), std::size_t{0}); }

std::size_t Islands::Sets::root(std::size_t a) const {
    while (parent_[a] != a) a = parent_[a] = parent_[parent_[a]];
    return a;
}

/// The smaller root stays, so that a set is told by its first node.
void Islands::Sets::join(std::size_t a, std::size_t b) {
    a = root(a), b = root(b);
    parent_[std::max(a, b)] = std::min(a, b);
}

Islands::Islands(const host::NetworkModel& model)
    : model_(model),
      ground_(model.nodes.size() + model.transformers3.size()),
      positive_(ground_ + 1),
      zero_(ground_ + 1) {
    for (std::size_t n = 0; n < model.nodes.size(); ++n) place_[model.nodes[n].name] = n;
    joinSwitches();
    joinLines();
    joinTransformers();
    joinSources();
}

void Islands::joinSwitches() {
    for (const auto& s : model_.switches)
        if (s.closed) positive_.join(at(s.i), at(s.j)), zero_.join(at(s.i), at(s.j));
}

void Islands::joinLines() {
    for (const auto& line : model_.lines) {
        if (!line.inService || line.openAtI || line.openAtJ) continue;
        positive_.join(at(line.i), at(line.j)), zero_.join(at(line.i), at(line.j));
        branchEnds_.push_back(at(line.i)), lineEnds_.push_back(at(line.i));
    }
}

void Islands::joinTransformers() {
    for (const auto& t : model_.transformers2) {
        if (!t.inService) continue;
        positive_.join(at(t.i.node), at(t.j.node)), branchEnds_.push_back(at(t.i.node));
        const bool i = t.i.grounding == Grounding::Grounded, j = t.j.grounding == Grounding::Grounded;
        if (i && j) zero_.join(at(t.i.node), at(t.j.node));
        if (i && t.j.grounding == Grounding::Delta) zero_.join(at(t.i.node), ground_);
        if (j && t.i.grounding == Grounding::Delta) zero_.join(at(t.j.node), ground_);
    }
    std::size_t star = model_.nodes.size();
    for (const auto& t : model_.transformers3) {
        for (const auto& w : t.winding) {
            if (!t.inService) continue;
            positive_.join(at(w.node), star), branchEnds_.push_back(at(w.node));
            if (w.grounding == Grounding::Grounded) zero_.join(at(w.node), star);
            if (w.grounding == Grounding::Delta) zero_.join(star, ground_);
        }
        ++star;
    }
}

void Islands::joinSources() {
    for (const auto& g : model_.generators) {
        if (!g.inService) continue;
        live_.insert(positive_.root(at(g.node)));
        if (g.grounded) zero_.join(at(g.node), ground_);
    }
    for (const auto& s : model_.shunts)
        if (s.inService && s.grounded && s.x1 > 0) zero_.join(at(s.node), ground_);
}

std::vector<std::string> Islands::withoutSource() const {
    std::unordered_set<std::size_t> known = live_;
    std::vector<std::string> names;
    for (std::size_t end : branchEnds_)
        if (known.insert(positive_.root(end)).second) names.push_back(model_.nodes[positive_.root(end)].name);
    return names;
}

std::vector<std::string> Islands::withoutGround() const {
    std::unordered_set<std::size_t> known{zero_.root(ground_)};
    std::vector<std::string> names;
    for (std::size_t end : lineEnds_)
        if (live_.contains(positive_.root(end)) && known.insert(zero_.root(end)).second)
            names.push_back(model_.nodes[zero_.root(end)].name);
    return names;
}

}  // namespace import
