#include "engines/order/FeedbackSet.h"

#include <algorithm>
#include <queue>

#include "engines/order/OrderSearch.h"

namespace engines {

namespace {

Digraph reversed(const Digraph& graph) {
    Digraph back(graph.size());
    for (std::size_t v = 0; v < graph.size(); ++v)
        for (const int w : graph[v]) back[static_cast<std::size_t>(w)].push_back(static_cast<int>(v));
    return back;
}

/// Takes vertices away until nothing is left: those that can be on no cycle for nothing, else the one with the greatest
/// product of degrees (the first of equals) into the set.
class Greedy {
  public:
    Greedy(const Digraph& out, const Digraph& in) : out_(out), in_(in), gone_(out.size()) {
        for (std::size_t v = 0; v < out.size(); ++v) {
            outLeft_.push_back(static_cast<long>(out[v].size()));
            inLeft_.push_back(static_cast<long>(in[v].size()));
        }
    }

    std::vector<int> run() {
        for (std::size_t v = 0; v < out_.size(); ++v) enqueue(v);
        while (!queue_.empty()) {
            const Entry entry = queue_.top();
            queue_.pop();
            if (!gone_[entry.vertex] && entry.score == score(entry.vertex)) choose(entry.vertex);
        }
        return std::move(chosen_);
    }

  private:
    struct Entry {
        long score;
        std::size_t vertex;
        bool operator<(const Entry& other) const {
            return score != other.score ? score < other.score : vertex > other.vertex;
        }
    };

    const Digraph& out_;
    const Digraph& in_;
    std::vector<bool> gone_;
    std::vector<long> outLeft_, inLeft_;
    std::priority_queue<Entry> queue_;
    std::vector<int> chosen_;

    [[nodiscard]] long score(std::size_t v) const { return inLeft_[v] * outLeft_[v]; }
    void enqueue(std::size_t v) {
        if (!gone_[v]) queue_.push({score(v), v});
    }

    void choose(std::size_t v) {
        if (score(v) > 0) chosen_.push_back(static_cast<int>(v));
        remove(v);
    }

    void remove(std::size_t first) {
        std::vector<std::size_t> pending{first};
        gone_[first] = true;
        while (!pending.empty()) {
            const auto v = pending.back();
            pending.pop_back();
            for (const int w : out_[v]) shrink(static_cast<std::size_t>(w), inLeft_, pending);
            for (const int w : in_[v]) shrink(static_cast<std::size_t>(w), outLeft_, pending);
        }
    }

    void shrink(std::size_t v, std::vector<long>& degree, std::vector<std::size_t>& pending) {
        if (gone_[v]) return;
        --degree[v];
        if (score(v) > 0) {
            enqueue(v);
        } else {
            gone_[v] = true;
            pending.push_back(v);
        }
    }
};

/// Whether a cycle leads through v that meets no other vertex of the set.
bool needed(const Digraph& out, const std::vector<bool>& inSet, int v, std::vector<int>& seenFor) {
    std::vector<int> pending{v};
    while (!pending.empty()) {
        const auto u = static_cast<std::size_t>(pending.back());
        pending.pop_back();
        for (const int w : out[u]) {
            if (w == v) return true;
            if (inSet[static_cast<std::size_t>(w)] || seenFor[static_cast<std::size_t>(w)] == v) continue;
            seenFor[static_cast<std::size_t>(w)] = v;
            pending.push_back(w);
        }
    }
    return false;
}

std::vector<int> withoutUnneeded(const Digraph& out, const std::vector<int>& set) {
    std::vector<bool> inSet(out.size());
    for (const int v : set) inSet[static_cast<std::size_t>(v)] = true;
    std::vector<int> seenFor(out.size(), -1), kept;
    for (const int v : set) {
        if (needed(out, inSet, v, seenFor))
            kept.push_back(v);
        else
            inSet[static_cast<std::size_t>(v)] = false;
    }
    return kept;
}

}  // namespace

std::vector<int> feedbackSet(const Digraph& graph, std::size_t moves) {
    const Digraph in = reversed(graph);
    auto set = withoutUnneeded(graph, Greedy(graph, in).run());
    if (!set.empty()) set = OrderSearch(graph, in, set).run(moves);
    std::sort(set.begin(), set.end());
    return withoutUnneeded(graph, set);
}

}  // namespace engines
