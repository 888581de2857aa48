#include "engines/network/Islands.h"

#include <algorithm>
#include <numeric>

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
}

int Islands::floating() const {
    int count = 0;
    for (std::size_t i = 0; i < label_.size(); ++i) count += label_[i] == static_cast<int>(i) && !live_[i];
    return count;
}

namespace {

/// Adjacency of a graph whose last node is ground; edges are numbered, branches first.
struct GroundedGraph {
    struct Arc {
        int to, edge;
    };
    std::vector<std::vector<Arc>> arcs;

    explicit GroundedGraph(const SequenceElements& elements) : arcs(at(elements.buses()) + 1) {
        int edge = 0;
        for (const Link& link : elements.links()) {
            if (link.conducts) add(link.from, link.to, edge);
            ++edge;
        }
        for (const NodeShunt& s : elements.shunts()) add(s.bus, -1, edge++);
    }
    void add(int a, int b, int edge) {
        const int ground = static_cast<int>(arcs.size()) - 1;
        if (a < 0) a = ground;
        if (b < 0) b = ground;
        arcs[at(a)].push_back({b, edge});
        arcs[at(b)].push_back({a, edge});
    }
};

/// Depth-first search with an explicit stack: a way of ten thousand buses must not exhaust the program's own.
class BridgeSearch {
  public:
    BridgeSearch(const GroundedGraph& graph, std::vector<char>& found)
        : graph_(graph), found_(found), seen_(graph.arcs.size(), 0), low_(graph.arcs.size(), 0) {}

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
        seen_[at(node)] = low_[at(node)] = ++time_;
        stack_.push_back({node, edge});
    }
    void step() {
        Visit& top = stack_.back();
        const auto& arcs = graph_.arcs[at(top.node)];
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
        if (bridge && at(done.edge) < found_.size()) found_[at(done.edge)] = 1;
    }

    const GroundedGraph& graph_;
    std::vector<char>& found_;
    std::vector<int> seen_, low_;
    std::vector<Visit> stack_;
    int time_ = 0;
};

}  // namespace

std::vector<char> bridges(const SequenceElements& elements) {
    std::vector<char> found(elements.links().size(), 0);
    const GroundedGraph graph(elements);
    BridgeSearch search(graph, found);
    for (int i = elements.buses(); i >= 0; --i) search.from(i);
    return found;
}

}  // namespace engines
