#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "engines/network/Ordering.h"
#include "engines/network/SequenceElements.h"

namespace engines {

/// Buses joined by branches, and whether they have a path to a shunt element.
class Islands {
  public:
    Islands(const SequenceElements& elements, const std::vector<int>& removed);
    /// The same without some buses of one live island, which the loss of a bridge cuts off; ascending.
    Islands(std::shared_ptr<const Islands> whole, std::vector<int> cutOff);
    /// The smallest bus of an island that floats; of one that is live any bus that was its smallest.
    [[nodiscard]] int of(int bus) const {
        if (whole_) return isCutOff(bus) ? cutOff_.front() : whole_->of(bus);
        return labels()[static_cast<std::size_t>(bus)];
    }
    [[nodiscard]] bool live(int bus) const {
        if (whole_) return !isCutOff(bus) && whole_->live(bus);
        return live_[static_cast<std::size_t>(of(bus))];
    }
    /// Number of islands without a path to a shunt element.
    [[nodiscard]] int floating() const { return floating_; }

  private:
    [[nodiscard]] bool isCutOff(int bus) const;

    [[nodiscard]] const std::vector<int>& labels() const { return label_.empty() ? ordering_->part : label_; }
    void join(const SequenceElements& elements, const std::vector<int>& removed);

    std::shared_ptr<const Ordering> ordering_;
    std::vector<int> label_;  // the smallest bus of the island; empty where the islands are the parts of the ordering
    std::vector<char> live_;  // by label
    std::shared_ptr<const Islands> whole_;
    std::vector<int> cutOff_;
    int floating_ = 0;
};

/// The branches of which the loss of one alone leaves buses without a path to a shunt element.
/// Source: R. E. Tarjan, A note on finding the bridges of a graph, 1974; ground is one more node here.
class Bridges {
  public:
    explicit Bridges(const SequenceElements& elements);
    [[nodiscard]] bool has(int branch) const;
    /// The buses that the loss of a bridge cuts off from ground, or from the rest of a floating island; ascending.
    [[nodiscard]] std::vector<int> cutOff(int branch) const;

  private:
    std::vector<int> order_;                   // buses as the search meets them
    std::vector<std::pair<int, int>> beyond_;  // per branch: the part of the order that lies beyond it
};

}  // namespace engines
