#include "engines/rules/Sections.h"

#include <algorithm>
#include <set>
#include <utility>

namespace engines {

using exchange::BranchEdge;
using exchange::BranchKind;
using exchange::WalkStep;

namespace {

constexpr int kNoBranch = -1;

bool isNetworkBranch(const BranchEdge& edge) {
    return edge.kind == BranchKind::Line || edge.kind == BranchKind::Transformer || edge.kind == BranchKind::Winding;
}

/// Keeps the first of branches that are seen from the same end.
std::vector<AdjacentBranch> distinct(std::vector<AdjacentBranch> branches) {
    std::set<std::pair<int, int>> seen;
    std::erase_if(branches, [&](const AdjacentBranch& b) { return !seen.emplace(b.edge, b.startNode).second; });
    return branches;
}

}  // namespace

Sections::Sections(const Study& study) : study_(study), graph_(study.graph) {
    std::vector<std::pair<int, int>> nodes;
    for (std::size_t i = 0; i < study.relays.size(); ++i)
        nodes.emplace_back(study.relays[i].ownNode, static_cast<int>(i));
    relaysAt_ = exchange::NumberIndex(nodes);
}

std::vector<WalkStep> Sections::steps(int node, int idNo, int goOn) const {
    std::vector<WalkStep> list;
    graph_.walk(node, idNo, list, goOn, 1);
    std::ranges::reverse(list);
    return list;
}

std::vector<WalkStep> Sections::stepsOf(const StudyRelay& relay) const {
    if (relay.kind == RelayKind::Branch) return steps(relay.ownNode, relay.idNo, 1);
    WalkStep own;
    own.node = own.fromNode = relay.ownNode;
    own.idNo = kNoBranch;
    own.state = 1;
    return {own};
}

std::vector<int> Sections::networkBranchesAt(int node, int withoutId) const {
    std::vector<int> found;
    for (const int place : graph_.at(node))
        if (edge(place).idNo != withoutId && isNetworkBranch(edge(place))) found.push_back(place);
    return found;
}

void Sections::appendBehind(int place, int node, bool ownStar, std::vector<AdjacentBranch>& found) const {
    const BranchEdge& first = edge(place);
    const auto walk = steps(node, first.idNo, first.kind == BranchKind::Winding ? 1 : 0);
    const bool passed = !walk.empty() && walk.front().state == 2;
    for (const WalkStep& step : walk) {
        if (step.state == 2) continue;
        AdjacentBranch branch;
        branch.edge = graph_.find(step.idNo, step.fromNode);
        branch.startNode = step.fromNode;
        branch.entered = passed ? place : -1;
        branch.entryNode = passed ? node : step.fromNode;
        branch.ownStar = ownStar;
        branch.further = step.fromNode != (passed ? walk.front().node : node);
        found.push_back(branch);
    }
}

std::vector<AdjacentBranch> Sections::mainBranches(const StudyRelay& relay) const {
    std::vector<AdjacentBranch> found;
    for (const WalkStep& step : stepsOf(relay)) {
        if (step.state == 0) continue;
        for (const int place : networkBranchesAt(step.node, step.idNo))
            appendBehind(place, step.node, step.state == 2, found);
    }
    return distinct(std::move(found));
}

std::vector<AdjacentBranch> Sections::branchesBehind(const StudyRelay& relay) const {
    auto found = mainBranches(relay);
    std::erase_if(found, [](const AdjacentBranch& b) { return b.ownStar || b.further; });
    return found;
}

std::vector<AdjacentBranch> Sections::branchesHere(const StudyRelay& relay) const {
    std::vector<AdjacentBranch> found;
    if (relay.kind == RelayKind::Branch) {
        const int own = graph_.find(relay.idNo, relay.ownNode);
        if (own >= 0) found.push_back({own, relay.ownNode, -1, relay.ownNode, false, false});
        return found;
    }
    for (const int place : networkBranchesAt(relay.ownNode, kNoBranch))
        found.push_back({place, relay.ownNode, -1, relay.ownNode, false, false});
    return found;
}

std::vector<AdjacentRelay> Sections::relaysBehind(const StudyRelay& relay) const {
    std::vector<AdjacentRelay> found;
    std::set<int> seen;
    for (const WalkStep& step : stepsOf(relay))
        for (const int place : networkBranchesAt(step.node, step.idNo))
            for (const int row : relaysAt_.at(step.node)) {
                const StudyRelay& other = study_.relays[static_cast<std::size_t>(row)];
                const bool there = other.kind == RelayKind::Branch && other.idNo == edge(place).idNo;
                if (!there || !other.valid || !other.located || other.rno == relay.rno) continue;
                if (seen.insert(other.rno).second)
                    found.push_back({&other, {place, step.node, -1, step.node, false, false}});
            }
    return found;
}

std::vector<AdjacentBranch> Sections::otherWindings(const AdjacentBranch& winding) const {
    std::vector<AdjacentBranch> found;
    const BranchEdge& own = edge(winding.edge);
    const int star = own.iNo;
    if (own.kind != BranchKind::Winding || winding.startNode == star) return found;
    for (const int place : networkBranchesAt(star, own.idNo))
        found.push_back({place, star, winding.edge, winding.startNode, false, false});
    return found;
}

}  // namespace engines
