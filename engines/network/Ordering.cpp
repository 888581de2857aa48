#include "engines/network/Ordering.h"

#include <amd.h>

#include <algorithm>
#include <numeric>
#include <stdexcept>

#include "engines/network/DisjointSets.h"

namespace engines {
namespace {

using Indices = std::vector<int>;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// Rows by columns.
struct Columns {
    Indices start, row;
};

/// The entries above the diagonal in elimination order, by columns, each once.
Columns upperTriangle(const Ordering& o) {
    Columns byRow, result;
    const auto fill = [&](Columns& columns, auto each) {
        columns.start.assign(at(o.n) + 1, 0);
        each([&](int c, int) { ++columns.start[at(c) + 1]; });
        std::partial_sum(columns.start.begin(), columns.start.end(), columns.start.begin());
        columns.row.resize(at(columns.start.back()));
        Indices next(columns.start.begin(), columns.start.end() - 1);
        each([&](int c, int r) { columns.row[at(next[at(c)]++)] = r; });
    };
    fill(byRow, [&](auto take) {
        for (const auto& [i, j] : o.pairs) {
            const auto [low, high] = std::minmax(o.place[at(i)], o.place[at(j)]);
            if (low != high) take(low, high);
        }
    });
    Indices last(at(o.n), -1);
    fill(result, [&](auto take) {
        std::fill(last.begin(), last.end(), -1);
        for (int r = 0; r < o.n; ++r) {
            for (int p = byRow.start[at(r)]; p < byRow.start[at(r) + 1]; ++p) {
                if (std::exchange(last[at(byRow.row[at(p)])], r) != r) take(byRow.row[at(p)], r);
            }
        }
    });
    return result;
}

}  // namespace

Ordering::Ordering(int size, std::vector<IndexPair> entries) : n(size), pairs(std::move(entries)) {
    eliminate();
    analyse();
    listUpdates();
    decompose();
    findParts();
    pairSlot.reserve(pairs.size());
    pairPlace.reserve(pairs.size());
    for (const auto& [i, j] : pairs) {
        pairSlot.push_back(slot(i, j));
        pairPlace.emplace_back(place[at(i)], place[at(j)]);
    }
}

void Ordering::eliminate() {
    Indices begin(at(n) + 1, 0);
    for (const auto& [i, j] : pairs) {
        if (i != j) ++begin[at(i) + 1], ++begin[at(j) + 1];
    }
    std::partial_sum(begin.begin(), begin.end(), begin.begin());
    Indices neighbour(at(begin.back())), next(begin.begin(), begin.end() - 1), permutation(at(n));
    for (const auto& [i, j] : pairs) {
        if (i == j) continue;
        neighbour[at(next[at(i)]++)] = j;
        neighbour[at(next[at(j)]++)] = i;
    }
    if (n > 0 && amd_order(n, begin.data(), neighbour.data(), permutation.data(), nullptr, nullptr) < AMD_OK) {
        throw std::domain_error("no elimination order found");
    }
    place.resize(at(n));
    for (int k = 0; k < n; ++k) place[at(permutation[at(k)])] = k;
}

// Row k of L has an entry wherever the ways up the tree from the entries above the diagonal of column k pass.
void Ordering::analyse() {
    const Columns upper = upperTriangle(*this);
    parent.assign(at(n), -1);
    Indices mark(at(n), -1), count(at(n), 0);
    const auto walk = [&](auto visit) {
        std::fill(mark.begin(), mark.end(), -1);
        for (int k = 0; k < n; ++k) {
            mark[at(k)] = k;
            for (int p = upper.start[at(k)]; p < upper.start[at(k) + 1]; ++p) {
                for (int i = upper.row[at(p)]; mark[at(i)] != k; i = parent[at(i)]) {
                    if (parent[at(i)] < 0) parent[at(i)] = k;
                    mark[at(i)] = k;
                    visit(i, k);
                }
            }
        }
    };
    walk([&](int i, int) { ++count[at(i)]; });
    lowerStart.assign(at(n) + 1, 0);
    std::partial_sum(count.begin(), count.end(), lowerStart.begin() + 1);
    lowerRow.resize(at(lowerStart.back()));
    Indices next(lowerStart.begin(), lowerStart.end() - 1);
    walk([&](int i, int k) { lowerRow[at(next[at(i)]++)] = k; });
}

void Ordering::listUpdates() {
    Indices first(at(n) + 1, 0), rowStart(at(n) + 1, 0), where(at(n), -1);
    for (int k = 0; k < n; ++k) {
        const int rows = lowerStart[at(k) + 1] - lowerStart[at(k)];
        first[at(k) + 1] = first[at(k)] + rows * (rows - 1) / 2;
    }
    updates.resize(at(first.back()));
    for (const int r : lowerRow) ++rowStart[at(r) + 1];
    std::partial_sum(rowStart.begin(), rowStart.end(), rowStart.begin());
    Indices slotsOfRow(lowerRow.size()), columnOf(lowerRow.size()), next(rowStart.begin(), rowStart.end() - 1);
    for (int k = 0; k < n; ++k) {
        for (int p = lowerStart[at(k)]; p < lowerStart[at(k) + 1]; ++p) {
            slotsOfRow[at(next[at(lowerRow[at(p)])]++)] = p;
            columnOf[at(p)] = k;
        }
    }
    Indices filled(first.begin(), first.end() - 1);
    for (int a = 0; a < n; ++a) {
        for (int p = lowerStart[at(a)]; p < lowerStart[at(a) + 1]; ++p) where[at(lowerRow[at(p)])] = p;
        for (int s = rowStart[at(a)]; s < rowStart[at(a) + 1]; ++s) {
            const int k = columnOf[at(slotsOfRow[at(s)])];
            for (int p = slotsOfRow[at(s)] + 1; p < lowerStart[at(k) + 1]; ++p) {
                updates[at(filled[at(k)]++)] = where[at(lowerRow[at(p)])];
            }
        }
    }
}

// Heavy paths: of the children of a place the one with the most places below continues the path.
void Ordering::decompose() {
    Indices below(at(n), 1), heavy(at(n), -1);
    for (int k = 0; k < n; ++k) {
        const int up = parent[at(k)];
        if (up < 0) continue;
        below[at(up)] += below[at(k)];
        if (heavy[at(up)] < 0 || below[at(k)] > below[at(heavy[at(up)])]) heavy[at(up)] = k;
    }
    depth.assign(at(n), 0);
    head.resize(at(n));
    for (int k = n - 1; k >= 0; --k) {
        const int up = parent[at(k)];
        if (up >= 0) depth[at(k)] = depth[at(up)] + 1;
        head[at(k)] = up >= 0 && heavy[at(up)] == k ? head[at(up)] : k;
    }
}

void Ordering::findParts() {
    DisjointSets sets(n);
    for (std::size_t p = 0; p < pairs.size(); ++p) {
        if (sets.join(pairs[p].first, pairs[p].second)) forest.push_back(static_cast<int>(p));
    }
    part = sets.roots();
}

int Ordering::slot(int i, int j) const {
    const auto [low, high] = std::minmax(place[at(i)], place[at(j)]);
    const auto begin = lowerRow.begin() + lowerStart[at(low)], end = lowerRow.begin() + lowerStart[at(low) + 1];
    const auto found = std::lower_bound(begin, end, high);
    return found == end || *found != high ? -1 : static_cast<int>(found - lowerRow.begin());
}

int Ordering::commonDepth(int a, int b) const {
    while (head[at(a)] != head[at(b)]) {
        int& lower = depth[at(head[at(a)])] > depth[at(head[at(b)])] ? a : b;
        lower = parent[at(head[at(lower)])];
        if (lower < 0) return -1;
    }
    return std::min(depth[at(a)], depth[at(b)]);
}

std::size_t Ordering::bytes() const {
    return sizeof(int) * (place.size() + pairSlot.size() + lowerStart.size() + lowerRow.size() + updates.size() +
                          parent.size() + depth.size() + head.size() + forest.size() + part.size()) +
           sizeof(IndexPair) * (pairs.size() + pairPlace.size());
}

std::shared_ptr<const Ordering> OrderingCache::of(int n, std::vector<IndexPair> pairs) {
    const std::lock_guard lock(mutex_);
    for (const auto& kept : kept_) {
        if (kept->n == n && kept->pairs == pairs) return kept;
    }
    return kept_.emplace_back(std::make_shared<const Ordering>(n, std::move(pairs)));
}

}  // namespace engines
