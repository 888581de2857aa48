#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/host/NetworkModel.h"

namespace diagram {

/// Nodes by name, and which of them are drawn as bars. Refers to the model, which must outlive it.
class NetworkIndex {
  public:
    explicit NetworkIndex(const host::NetworkModel& model);

    /// Position of a node; -1 when there is none of that name.
    [[nodiscard]] int node(const std::string& name) const;
    /// The node whose bar stands for this one; -1: it is drawn as a point.
    [[nodiscard]] int bar(int node) const { return bar_[node]; }
    /// The bar of this node stands for the several nodes of a diagram bus, between which there is no switch.
    [[nodiscard]] bool isGroup(int node) const { return group_[node]; }
    /// Positions of the switches at a node.
    [[nodiscard]] const std::vector<int>& switchesAt(int node) const { return switches_[node]; }
    /// The node at the other end of a switch; -1 when it is missing.
    [[nodiscard]] int beyond(int switchAt, int node) const;

  private:
    void findBars();
    void joinGroup(const std::vector<int>& members);

    const host::NetworkModel& model_;
    std::unordered_map<std::string_view, int> byName_;
    std::vector<int> bar_;
    std::vector<bool> group_;
    std::vector<std::vector<int>> switches_;
};

}  // namespace diagram
