#include "engines/order/StrongComponents.h"

#include <algorithm>

namespace engines {

namespace {

class Search {
  public:
    explicit Search(const Digraph& graph) : graph_(graph), index_(graph.size(), kUnseen), low_(graph.size()) {}

    std::vector<std::vector<int>> run() {
        for (std::size_t v = 0; v < graph_.size(); ++v)
            if (index_[v] == kUnseen) from(v);
        return std::move(components_);
    }

  private:
    struct Frame {
        std::size_t vertex;
        std::size_t next;
    };
    static constexpr int kUnseen = -1;
    static constexpr int kDone = -2;

    const Digraph& graph_;
    std::vector<int> index_, low_;
    std::vector<Frame> frames_;
    std::vector<std::size_t> open_;
    std::vector<std::vector<int>> components_;
    int count_ = 0;

    void push(std::size_t v) {
        index_[v] = low_[v] = count_++;
        open_.push_back(v);
        frames_.push_back({v, 0});
    }

    void from(std::size_t start) {
        push(start);
        while (!frames_.empty()) {
            auto& frame = frames_.back();
            if (frame.next == graph_[frame.vertex].size()) {
                leave();
                continue;
            }
            const auto v = frame.vertex;
            const auto w = static_cast<std::size_t>(graph_[v][frame.next++]);
            if (index_[w] == kUnseen)
                push(w);
            else if (index_[w] != kDone)
                low_[v] = std::min(low_[v], index_[w]);
        }
    }

    void leave() {
        const auto v = frames_.back().vertex;
        frames_.pop_back();
        if (!frames_.empty()) low_[frames_.back().vertex] = std::min(low_[frames_.back().vertex], low_[v]);
        if (low_[v] == index_[v]) close(v);
    }

    void close(std::size_t root) {
        auto& component = components_.emplace_back();
        std::size_t v = 0;
        do {
            v = open_.back();
            open_.pop_back();
            index_[v] = kDone;
            component.push_back(static_cast<int>(v));
        } while (v != root);
        std::sort(component.begin(), component.end());
    }
};

}  // namespace

std::vector<std::vector<int>> strongComponents(const Digraph& graph) { return Search(graph).run(); }

}  // namespace engines
