#include "engines/network/Islands.h"

#include <algorithm>
#include <span>

#include "engines/network/DisjointSets.h"

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// Whether current flows from bus to bus.
bool joins(const Link& link) { return link.conducts && link.from >= 0 && link.to >= 0; }

/// Whether each part of the whole graph still holds together by the branches that joined it first.
bool allJoin(const SequenceElements& elements, const std::vector<int>& removed) {
    const auto& links = elements.links();
    const auto& forest = elements.ordering()->forest;
    // A pair of coupled branches joins nothing.
    if (!forest.empty() && at(forest.back()) >= links.size()) return false;
    if (elements.allThrough() && removed.empty()) return true;
    const auto in = [&](int k) { return std::binary_search(forest.begin(), forest.end(), k); };
    return std::ranges::all_of(forest, [&](int k) { return joins(links[at(k)]); }) && std::ranges::none_of(removed, in);
}

}  // namespace

Islands::Islands(const SequenceElements& elements, const std::vector<int>& removed)
    : ordering_(elements.ordering()), live_(at(elements.buses()), 0) {
    if (!allJoin(elements, removed)) join(elements, removed);
    const auto& links = elements.links();
    const auto taken = [&](int k) { return std::binary_search(removed.begin(), removed.end(), k); };
    for (const NodeShunt& s : elements.shunts()) live_[at(of(s.bus))] = 1;
    for (std::size_t k = 0; k < links.size() && !elements.allThrough(); ++k) {
        const Link& link = links[k];
        if (link.conducts && (link.from < 0) != (link.to < 0) && !taken(link.branch))
            live_[at(of(std::max(link.from, link.to)))] = 1;
    }
    const auto& label = labels();
    for (std::size_t i = 0; i < live_.size(); ++i) floating_ += label[i] == static_cast<int>(i) && !live_[i];
}

void Islands::join(const SequenceElements& elements, const std::vector<int>& removed) {
    DisjointSets sets(elements.buses());
    for (const Link& link : elements.links()) {
        const bool taken = !removed.empty() && std::binary_search(removed.begin(), removed.end(), link.branch);
        if (joins(link) && !taken) sets.join(link.from, link.to);
    }
    label_ = sets.roots();
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
