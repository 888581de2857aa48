#include "engines/network/SectionGraph.h"

#include <unordered_set>
#include <utility>

namespace engines {

using exchange::BranchEdge;
using exchange::BranchKind;

namespace {

class EdgeList {
  public:
    EdgeList(const exchange::VirtualRelays& virtualRelays, std::size_t count) {
        edges_.reserve(count);
        for (const exchange::VirtualRelay& relay : virtualRelays.relays) virtual_.insert(relay.node());
    }
    void add(int idNo, int iNo, int jNo, BranchKind kind) {
        edges_.push_back({idNo, iNo, jNo, kind, virtual_.contains(iNo), virtual_.contains(jNo)});
    }
    std::vector<BranchEdge> take() { return std::move(edges_); }

  private:
    std::unordered_set<int> virtual_;
    std::vector<BranchEdge> edges_;
};

void addTransformers(const exchange::NetworkData& network, bool windings, EdgeList& edges) {
    for (const exchange::NetTransformer& t : network.transformers)
        if ((t.kind != 1) == windings)
            edges.add(t.idNo, t.iNo, t.jNo, windings ? BranchKind::Winding : BranchKind::Transformer);
}

void addShunts(const exchange::NetworkData& network, bool reactors, EdgeList& edges) {
    for (const exchange::NetShunt& s : network.shunts)
        if ((s.x1 > 0) == reactors)
            edges.add(s.idNo, s.no, s.no, reactors ? BranchKind::Reactor : BranchKind::Capacitor);
}

}  // namespace

exchange::BranchGraph sectionGraph(const exchange::NetworkData& network, const exchange::VirtualRelays& virtualRelays) {
    EdgeList edges(virtualRelays, network.lines.size() + network.transformers.size() + network.shunts.size() +
                                      network.generators.size());
    for (const exchange::NetLine& l : network.lines) edges.add(l.idNo, l.iNo, l.jNo, BranchKind::Line);
    addTransformers(network, false, edges);
    addTransformers(network, true, edges);
    addShunts(network, false, edges);
    addShunts(network, true, edges);
    for (const exchange::NetGenerator& g : network.generators) edges.add(0, g.no, g.no, BranchKind::Generator);
    return exchange::BranchGraph(edges.take());
}

}  // namespace engines
