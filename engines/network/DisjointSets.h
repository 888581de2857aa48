#pragma once

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace engines {

/// Sets of the numbers below n, each named after its smallest.
/// Source: R. E. Tarjan, Efficiency of a good but not linear set union algorithm, 1975; ways are halved.
class DisjointSets {
  public:
    explicit DisjointSets(int n) : parent_(static_cast<std::size_t>(n)) {
        std::iota(parent_.begin(), parent_.end(), 0);
    }
    /// \return whether the two were apart
    bool join(int a, int b) {
        a = root(a);
        b = root(b);
        parent_[static_cast<std::size_t>(std::max(a, b))] = std::min(a, b);
        return a != b;
    }
    /// By number: the name of its set. Nothing is to be asked afterwards.
    std::vector<int> roots() {
        // What a number points to is smaller and done before.
        for (int& p : parent_) p = parent_[static_cast<std::size_t>(p)];
        return std::move(parent_);
    }

  private:
    int root(int i) {
        int* p = parent_.data();
        while (p[i] != i) i = p[i] = p[p[i]];
        return i;
    }
    std::vector<int> parent_;
};

}  // namespace engines
