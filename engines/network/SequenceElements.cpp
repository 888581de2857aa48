#include <algorithm>
#include <cmath>
#include <numeric>

#include "engines/network/SequenceNetwork.h"

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

Link zeroLink(const Branch& branch) {
    switch (branch.zeroPath) {
        case ZeroPath::Through:
            return {branch.from.value, branch.to.value, branch.z0, true, 1 / branch.ratio};
        case ZeroPath::GroundAtI:
            return {branch.from.value, -1, branch.z0, true, 1 / branch.ratio};
        case ZeroPath::GroundAtJ:
            return {-1, branch.to.value, branch.z0, true};
        case ZeroPath::None:
            break;
    }
    return {-1, -1, branch.z0, false, 1 / branch.ratio};
}

Stretch clipped(Stretch part, double from, double to) {
    const double length = to - from;
    return {std::clamp((part.from - from) / length, 0.0, 1.0), std::clamp((part.to - from) / length, 0.0, 1.0)};
}

double overlap(Stretch a, Stretch b) { return std::max(0.0, std::min(a.to, b.to) - std::max(a.from, b.from)); }

/// Share of the coupled stretch that lies along both parts.
double coupledShare(const Mutual& mutual, Stretch onFirst, Stretch onSecond) {
    const Stretch first = clipped(onFirst, mutual.firstFrom / 100, mutual.firstTo / 100);
    const Stretch second = clipped(onSecond, mutual.secondFrom / 100, mutual.secondTo / 100);
    return overlap(first, mutual.opposite ? Stretch{1 - second.to, 1 - second.from} : second);
}

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

std::vector<int> counting(int n) {
    std::vector<int> result(at(n));
    std::iota(result.begin(), result.end(), 0);
    return result;
}

}  // namespace

SequenceElements::SequenceElements(const Network& network, Sequence sequence, std::span<const ModeChange> changes)
    : sequence_(sequence), buses_(static_cast<int>(network.buses.size())), orderings_(network.orderings) {
    const bool zero = sequence == Sequence::Zero;
    for (const Branch& b : network.branches) {
        links_.push_back(zero ? zeroLink(b) : Link{b.from.value, b.to.value, b.z1, true, 1 / b.ratio});
    }
    for (const Source& s : network.sources) {
        if (!zero || s.grounded) shunts_.push_back({s.bus.value, 1.0 / (zero ? s.z0 : s.z1)});
    }
    if (zero) {
        for (const ZeroShunt& s : network.zeroShunts) shunts_.push_back({s.bus.value, 1.0 / s.z0, true});
    }
    for (const ModeChange& change : changes) {
        if (change.sequence == sequence_) apply(change);
    }
    setOf_.assign(links_.size(), -1);
    self_ = counting(static_cast<int>(links_.size()));
    if (zero) couple(network);
}

void SequenceElements::apply(const ModeChange& change) {
    if (change.branch.value >= 0) {
        Link& link = links_[at(change.branch.value)];
        if (change.cut)
            link.conducts = false;
        else
            link.z = change.z;
        return;
    }
    if (sequence_ != Sequence::Zero) return;
    std::erase_if(shunts_, [&](const NodeShunt& s) { return s.reactor && s.bus == change.bus.value; });
    if (!change.cut) shunts_.push_back({change.bus.value, 1.0 / change.z, true});
}

void SequenceElements::couple(const Network& network) {
    std::vector<int> parent = counting(static_cast<int>(links_.size()));
    for (const Mutual& m : network.mutuals) {
        const int a = m.first.value, b = m.second.value;
        mutuals_[{std::min(a, b), std::max(a, b)}].push_back(m);
        join(parent, a, b);
    }
    std::map<int, std::vector<int>> members;
    for (const auto& [pair, list] : mutuals_) {
        for (const int k : {pair.first, pair.second}) members[root(parent, k)].push_back(k);
    }
    for (auto& [first, set] : members) {
        std::sort(set.begin(), set.end());
        set.erase(std::unique(set.begin(), set.end()), set.end());
        for (const int k : set) setOf_[at(k)] = static_cast<int>(sets_.size());
        sets_.push_back(std::move(set));
    }
}

std::span<const int> SequenceElements::coupledWith(int branch) const {
    const int set = setOf_[at(branch)];
    if (set >= 0) return sets_[at(set)];
    return std::span(self_).subspan(at(branch), 1);
}

Complex SequenceElements::impedance(int a, Stretch onA, int b, Stretch onB) const {
    if (a == b) return links_[at(a)].z * overlap(onA, onB);
    const auto it = mutuals_.find({std::min(a, b), std::max(a, b)});
    if (it == mutuals_.end()) return {};
    Complex sum;
    for (const Mutual& m : it->second) {
        const bool straight = m.first.value == a;
        sum += m.z0 * coupledShare(m, straight ? onA : onB, straight ? onB : onA);
    }
    return sum;
}

Islands::Islands(const SequenceElements& elements, const std::vector<int>& removed)
    : label_(counting(elements.buses())), live_(label_.size(), 0) {
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
