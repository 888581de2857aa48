#include "engines/network/HalfColumn.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "engines/network/Factors.h"

namespace engines {
namespace {

using Term = std::pair<const HalfColumn*, Complex>;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

constexpr double kCancelled = 1e-12;

Complex dot(const Complex* a, const Complex* b, std::size_t n) {
    double rr = 0, ii = 0, ri = 0, ir = 0;
    for (std::size_t k = 0; k < n; ++k) {
        rr += a[k].real() * b[k].real();
        ii += a[k].imag() * b[k].imag();
        ri += a[k].real() * b[k].imag();
        ir += a[k].imag() * b[k].real();
    }
    return {rr - ii, ri + ir};
}

int leafOf(const Ordering& ordering, std::span<const Term> terms) {
    if (terms.empty()) return -1;
    int leaf = terms.front().first->leaf;
    for (const auto& [half, weight] : terms) leaf = std::min(leaf, half->leaf);
    for (const auto& [half, weight] : terms) {
        if (leaf >= 0 && ordering.commonDepth(leaf, half->leaf) != ordering.depth[at(half->leaf)])
            throw std::logic_error("half columns of different ways cannot be added");
    }
    return leaf;
}

}  // namespace

HalfColumn combined(const Ordering& ordering, std::span<const Term> terms) {
    HalfColumn sum;
    sum.leaf = leafOf(ordering, terms);
    std::vector<double> largest;
    for (const auto& [half, weight] : terms) {
        for (const auto& [i, w] : half->weights) sum.weights.emplace_back(i, product(w, weight));
        sum.values.resize(std::max(sum.values.size(), half->values.size()));
        largest.resize(sum.values.size());
        for (std::size_t d = 0; d < half->values.size(); ++d) {
            const Complex term = product(weight, half->values[d]);
            sum.values[d] += term;
            largest[d] = std::max(largest[d], std::norm(term));
        }
    }
    for (std::size_t d = 0; d < sum.values.size(); ++d) {
        if (!(std::norm(sum.values[d]) > kCancelled * kCancelled * largest[d])) sum.values[d] = 0;
    }
    return sum;
}

HalfColumn Factors::half(int unknown) const {
    HalfColumn result{-1, {}, {{unknown, 1.0}}};
    if (lu_) return result;
    const Ordering& o = *ordering_;
    result.leaf = o.place[at(unknown)];
    result.values.resize(at(o.depth[at(result.leaf)]) + 1);
    Complex* x = result.values.data();
    x[result.values.size() - 1] = 1;
    for (int k = result.leaf; k >= 0; k = o.parent[at(k)]) {
        const Complex xk = x[o.depth[at(k)]];
        const int end = o.lowerStart[at(k) + 1];
        for (int p = o.lowerStart[at(k)]; p < end; ++p) {
            x[o.depth[at(o.lowerRow[at(p)])]] -= product(lower_[at(p)], xk);
        }
    }
    return result;
}

DrivenColumn Factors::driven(const HalfColumn& half) const {
    if (lu_) return {-1, solve(half.weights)};
    DrivenColumn result{half.leaf, half.values};
    for (int k = half.leaf; k >= 0; k = ordering_->parent[at(k)]) {
        Complex& value = result.values[at(ordering_->depth[at(k)])];
        value = product(value, inverseDiagonal_[at(k)]);
    }
    return result;
}

Complex Factors::dot(const HalfColumn& seen, const DrivenColumn& driven) const {
    if (!lu_) {
        if (seen.leaf < 0 || driven.leaf < 0) return {};
        const int common = ordering_->commonDepth(seen.leaf, driven.leaf);
        return engines::dot(seen.values.data(), driven.values.data(), at(common + 1));
    }
    Complex sum;
    for (const auto& [i, weight] : seen.weights) sum += product(weight, driven.values[at(i)]);
    return sum;
}

}  // namespace engines
