#include "engines/network/Islands.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

int root(std::vector<int>& parent, int i) {
    while (parent[at(i)] != i) i = parent[at(i)] = parent[at(parent[at(i)])];
    return i;
}

// The smaller number becomes the root, so that an island is named after its first bus.
void join(std::vector<int>& parent, int a, int b) {
    a = root(parent, a);
    b = root(parent, b);
    parent[at(std::max(a, b))] = std::min(a, b);
}

}  // namespace

Islands::Islands(const SequenceElements& elements, const std::vector<int>& removed)
    : label_(at(elements.buses())), live_(label_.size(), 0) {
    std::iota(label_.begin(), label_.end(), 0);
    const auto& links = elements.links();
    const auto taken = [&](int k) { return std::binary_search(removed.begin(), removed.end(), k); };
    for (int k = 0; k < static_cast<int>(links.size()); ++k) {
        const Link& link = links[at(k)];
        if (link.conducts && link.from >= 0 && link.to >= 0 && !taken(k)) join(label_, link.from, link.to);
    }
    for (int i = 0; i < elements.buses(); ++i) label_[at(i)] = root(label_, i);
    for (const NodeShunt& s : elements.shunts()) live_[at(of(s.bus))] = 1;
    for (int k = 0; k < static_cast<int>(links.size()); ++k) {
        const Link& link = links[at(k)];
        if (link.conducts && (link.from < 0) != (link.to < 0) && !taken(k))
            live_[at(of(std::max(link.from, link.to)))] = 1;
    }
    for (std::size_t i = 0; i < label_.size(); ++i) floating_ += label_[i] == static_cast<int>(i) && !live_[i];
}

Islands::Islands(std::shared_ptr<const Islands> whole, std::vector<int> cutOff)
    : whole_(std::move(whole)), cutOff_(std::move(cutOff)), floating_(whole_->floating() + 1) {}

bool Islands::isCutOff(int bus) const { return std::binary_search(cutOff_.begin(), cutOff_.end(), bus); }

namespace {

/// Adjacency of a graph whose last node is ground; edges are numbered, branches first.
class GroundedGraph {
  public:
    struct Arc {
        int to = 0, edge = 0;
    };

    explicit GroundedGraph(const SequenceElements& elements) : ground_(elements.buses()), start_(at(ground_) + 2, 0) {
        const auto eachEdge = [&](auto use) {
            int edge = 0;
            for (const Link& link : elements.links()) {
                if (link.conducts) use(node(link.from), node(link.to), edge);
                ++edge;
            }
            for (const NodeShunt& s : elements.shunts()) use(s.bus, ground_, edge++);
        };
        eachEdge([&](int a, int b, int) { ++start_[at(a) + 1], ++start_[at(b) + 1]; });
        for (std::size_t n = 1; n < start_.size(); ++n) start_[n] += start_[n - 1];
        arcs_.resize(at(start_.back()));
        std::vector<int> next(start_.begin(), start_.end() - 1);
        eachEdge([&](int a, int b, int edge) {
            arcs_[at(next[at(a)]++)] = {b, edge};
            arcs_[at(next[at(b)]++)] = {a, edge};
        });
    }
    [[nodiscard]] int nodes() const { return ground_ + 1; }
    [[nodiscard]] std::span<const Arc> arcs(int node) const {
        const auto first = static_cast<std::size_t>(start_[static_cast<std::size_t>(node)]);
        return std::span(arcs_).subspan(first,
                                        static_cast<std::size_t>(start_[static_cast<std::size_t>(node) + 1]) - first);
    }

  private:
    [[nodiscard]] int node(int bus) const { return bus < 0 ? ground_ : bus; }

    int ground_;
    std::vector<int> start_;
    std::vector<Arc> arcs_;
};

/// Depth-first search with an explicit stack: a way of ten thousand buses must not exhaust the program's own.
class BridgeSearch {
  public:
    /// \param order  takes the nodes as they are met; \param beyond  per branch, takes the part of it behind a bridge
    BridgeSearch(const GroundedGraph& graph, std::vector<int>& order, std::vector<std::pair<int, int>>& beyond)
        : graph_(graph), order_(order), beyond_(beyond), seen_(at(graph.nodes()), 0), low_(seen_) {}

    void from(int root) {
        if (seen_[at(root)]) return;
        enter(root, -1);
        while (!stack_.empty()) step();
    }

  private:
    struct Visit {
        int node, edge;
        std::size_t next = 0;
    };
    void enter(int node, int edge) {
        order_.push_back(node);
        seen_[at(node)] = low_[at(node)] = static_cast<int>(order_.size());
        stack_.push_back({node, edge});
    }
    void step() {
        Visit& top = stack_.back();
        const auto arcs = graph_.arcs(top.node);
        if (top.next == arcs.size()) return leave();
        const auto& arc = arcs[top.next++];
        if (arc.edge == top.edge) return;
        if (seen_[at(arc.to)])
            low_[at(top.node)] = std::min(low_[at(top.node)], seen_[at(arc.to)]);
        else
            enter(arc.to, arc.edge);
    }
    void leave() {
        const Visit done = stack_.back();
        stack_.pop_back();
        if (stack_.empty()) return;
        int& above = low_[at(stack_.back().node)];
        above = std::min(above, low_[at(done.node)]);
        const bool bridge = low_[at(done.node)] > seen_[at(stack_.back().node)];
        if (bridge && at(done.edge) < beyond_.size())
            beyond_[at(done.edge)] = {seen_[at(done.node)] - 1, static_cast<int>(order_.size())};
    }

    const GroundedGraph& graph_;
    std::vector<int>& order_;
    std::vector<std::pair<int, int>>& beyond_;
    std::vector<int> seen_, low_;
    std::vector<Visit> stack_;
};

}  // namespace

Bridges::Bridges(const SequenceElements& elements) : beyond_(elements.links().size(), {0, 0}) {
    const GroundedGraph graph(elements);
    BridgeSearch search(graph, order_, beyond_);
    for (int i = elements.buses(); i >= 0; --i) search.from(i);
}

bool Bridges::has(int branch) const { return beyond_[at(branch)].second > 0; }

std::vector<int> Bridges::cutOff(int branch) const {
    const auto [first, behind] = beyond_[at(branch)];
    std::vector<int> buses(order_.begin() + first, order_.begin() + behind);
    std::sort(buses.begin(), buses.end());
    return buses;
}

}  // namespace engines
