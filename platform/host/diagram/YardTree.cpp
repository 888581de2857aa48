#include "platform/host/diagram/YardTree.h"

#include <algorithm>

namespace diagram {

namespace {

constexpr double besideYard = 40;

/// Widest in the middle, so that the rest stands evenly to both sides.
void widestInTheMiddle(std::vector<int>& yards, const std::vector<Yard>& all) {
    std::stable_sort(yards.begin(), yards.end(), [&](int a, int b) { return all[a].width > all[b].width; });
    std::vector<int> left, right;
    for (std::size_t k = 0; k < yards.size(); ++k) (k % 2 ? left : right).push_back(yards[k]);
    std::reverse(left.begin(), left.end());
    left.insert(left.end(), right.begin(), right.end());
    yards = left;
}

}  // namespace

YardTree::YardTree(const host::NetworkModel& model, const NetworkIndex& index, const Load& load,
                   const std::vector<int>& nodes, Plan& plan)
    : index_(index), load_(load), plan_(plan), yards_(yardsOf(model, index, nodes)) {
    connect(model);
    grow();
}

/// Only transformers of the block itself matter; each is looked up by its nodes.
void YardTree::connect(const host::NetworkModel& model) {
    joined_.resize(yards_.size());
    std::unordered_map<int, int> yardOf;
    for (std::size_t k = 0; k < yards_.size(); ++k)
        for (int n : yards_[k].nodes) yardOf[n] = static_cast<int>(k);
    const auto yardAt = [&](const std::string& name) {
        int n = index_.node(name);
        if (n >= 0 && index_.bar(n) >= 0) n = index_.bar(n);
        const auto found = yardOf.find(n);
        return found == yardOf.end() ? -1 : found->second;
    };
    const auto join = [&](int a, int b) {
        if (a >= 0 && b >= 0 && a != b) joined_[a].push_back(b), joined_[b].push_back(a);
    };
    for (int t : load_.transformersAt(yards_)) {
        if (t >= 0) {
            join(yardAt(model.transformers2[t].i.node), yardAt(model.transformers2[t].j.node));
        } else {
            const auto& winding = model.transformers3[-t - 1].winding;
            join(yardAt(winding[0].node), yardAt(winding[1].node));
            join(yardAt(winding[0].node), yardAt(winding[2].node));
        }
    }
}

void YardTree::grow() {
    branches_.resize(yards_.size());
    const auto growFrom = [this](std::vector<int> line) {
        for (std::size_t k = 0; k < line.size(); ++k)
            for (int other : joined_[line[k]]) {
                if (branches_[other].row >= 0) continue;
                branches_[other].row = branches_[line[k]].row + 1;
                branches_[line[k]].below.push_back(other);
                line.push_back(other);
            }
    };
    const auto plant = [this](int yard) {
        branches_[yard].row = 0;
        roots_.push_back(yard);
    };
    // Yards come highest voltage first: all of the highest stand in the top row.
    for (std::size_t k = 0; k < yards_.size() && yards_[k].kv == yards_[0].kv; ++k) plant(static_cast<int>(k));
    growFrom(roots_);
    for (std::size_t k = 0; k < yards_.size(); ++k)
        if (branches_[k].row < 0) plant(static_cast<int>(k)), growFrom({static_cast<int>(k)});
}

double YardTree::measure(int yard) {
    Branch& branch = branches_[yard];
    double below = branch.below.empty() ? 0 : -besideYard;
    for (int other : branch.below) below += measure(other) + besideYard;
    return branch.width = std::max(yards_[yard].width, below);
}

void YardTree::place(int yard, double left) {
    Branch& branch = branches_[yard];
    branch.middle = left + branch.width / 2;
    double below = branch.below.empty() ? 0 : -besideYard;
    for (int other : branch.below) below += branches_[other].width + besideYard;
    double x = branch.middle - below / 2;
    for (int other : branch.below) {
        place(other, x);
        x += branches_[other].width + besideYard;
    }
}

QSizeF YardTree::arrange() {
    for (std::size_t k = 0; k < yards_.size(); ++k) {
        const auto row = static_cast<std::size_t>(branches_[k].row);
        arrangeYard(index_, load_, row == 0, yards_[k], plan_);
        if (rows_.size() <= row) rows_.resize(row + 1);
        rows_[row].above = std::max(rows_[row].above, yards_[k].above);
        rows_[row].below = std::max(rows_[row].below, yards_[k].below);
    }
    for (Branch& branch : branches_) widestInTheMiddle(branch.below, yards_);
    double height = 0, width = -besideYard;
    for (Row& row : rows_) row.y = height + row.above, height += row.above + row.below;
    for (int root : roots_) width += measure(root) + besideYard;
    double x = -width / 2;
    for (int root : roots_) {
        place(root, x);
        x += branches_[root].width + besideYard;
    }
    for (std::size_t k = 0; k < yards_.size(); ++k) move(static_cast<int>(k));
    return {width, height};
}

/// Moves a yard to its place; its bars reach over what hangs below.
void YardTree::move(int yard) {
    const Branch& branch = branches_[yard];
    double left = branch.middle, right = branch.middle;
    for (int other : branch.below) {
        left = std::min(left, branches_[other].middle - pitch / 2);
        right = std::max(right, branches_[other].middle + pitch / 2);
    }
    for (int n : yards_[yard].nodes) {
        plan_.at[n] += QPointF(branch.middle, rows_[branch.row].y);
        BarSpan& span = plan_.spans[n];
        span.left += branch.middle, span.right += branch.middle;
        if (index_.bar(n) == n) span.left = std::min(span.left, left), span.right = std::max(span.right, right);
    }
}

}  // namespace diagram
