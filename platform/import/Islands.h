#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/host/NetworkModel.h"

namespace import {

/// How a network hangs together in the base scheme: what closed switches and elements in service join, in the
/// positive and in the zero sequence. An island is told by the name of its first node.
class Islands {
  public:
    explicit Islands(const host::NetworkModel& model);

    /// Whether a machine or feeder in service is joined with the node.
    [[nodiscard]] bool hasSource(const std::string& node) const { return live_.contains(positive_.root(at(node))); }
    /// Whether the node has a zero-sequence path to ground.
    [[nodiscard]] bool hasGround(const std::string& node) const { return zero_.root(at(node)) == zero_.root(ground_); }

    /// Islands that hold a branch and no machine or feeder in service.
    [[nodiscard]] std::vector<std::string> withoutSource() const;
    /// Zero-sequence islands that hold a line, have a source, and no path to ground.
    [[nodiscard]] std::vector<std::string> withoutGround() const;

  private:
    /// Sets that are joined, over the nodes, the star points behind them and the ground.
    class Sets {
      public:
        explicit Sets(std::size_t size);
        std::size_t root(std::size_t a) const;
        void join(std::size_t a, std::size_t b);

      private:
        mutable std::vector<std::size_t> parent_;
    };

    std::size_t at(const std::string& node) const { return place_.at(node); }
    void joinSwitches();
    void joinLines();
    void joinTransformers();
    void joinSources();

    const host::NetworkModel& model_;
    std::unordered_map<std::string, std::size_t> place_;
    std::size_t ground_;
    Sets positive_, zero_;
    std::vector<std::size_t> branchEnds_, lineEnds_;
    std::unordered_set<std::size_t> live_;  ///< positive-sequence roots with a source
};

}  // namespace import
