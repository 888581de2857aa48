#pragma once

#include <vector>

#include "engines/network/SequenceElements.h"

namespace engines {

/// Buses joined by branches, and whether they have a path to a shunt element.
class Islands {
  public:
    Islands(const SequenceElements& elements, const std::vector<int>& removed);
    [[nodiscard]] int of(int bus) const { return label_[static_cast<std::size_t>(bus)]; }
    [[nodiscard]] bool live(int bus) const { return live_[static_cast<std::size_t>(of(bus))]; }
    /// Number of islands without a path to a shunt element.
    [[nodiscard]] int floating() const;

  private:
    std::vector<int> label_;  // the smallest bus of the island
    std::vector<char> live_;  // by label
};

/// Per branch: whether taking out this one alone leaves buses without a path to a shunt element.
/// Source: R. E. Tarjan, A note on finding the bridges of a graph, 1974; ground is one more node here.
std::vector<char> bridges(const SequenceElements& elements);

}  // namespace engines
