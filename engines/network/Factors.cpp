#include "engines/network/Factors.h"

#include <amd.h>
#include <klu.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace engines {
namespace {
using Complex = std::complex<double>;
using Indices = std::vector<int>;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

// The library's product looks for infinities; the inner loops here need none of that.
Complex product(Complex a, Complex b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// Cancellation of a pivot by more digits than this leaves no accuracy worth having.
constexpr double kPivotLoss = 1e-12;
}  // namespace

struct Ordering::Structure {
    int n = 0;
    Indices place;                 // place[i]: where unknown i stands in the elimination order
    Indices start, row;            // upper triangle by columns in elimination order, diagonal included
    Indices slot;                  // slot[e]: where entry e adds to the upper triangle
    Indices parent;                // elimination tree
    Indices lowerStart, lowerRow;  // L by columns, unit diagonal left out

    void order(const std::vector<SymmetricEntry>& entries);
    void compress(const std::vector<SymmetricEntry>& entries);
    void analyse();
    /// Rows of L with an entry in row k, in topological order, at the end of `stack`; returns where they begin.
    int reach(int k, Indices& mark, Indices& stack) const;
    /// The unknowns that a sparse right-hand side touches on the way to the roots of the elimination tree, ascending.
    Indices paths(const std::vector<std::pair<int, Complex>>& rhs) const;
};

void Ordering::Structure::order(const std::vector<SymmetricEntry>& entries) {
    Indices begin(at(n) + 1, 0);
    for (const auto& e : entries) {
        if (e.row != e.column) ++begin[at(e.row) + 1], ++begin[at(e.column) + 1];
    }
    std::partial_sum(begin.begin(), begin.end(), begin.begin());
    Indices neighbour(at(begin.back())), next(begin.begin(), begin.end() - 1), permutation(at(n));
    for (const auto& e : entries) {
        if (e.row == e.column) continue;
        neighbour[at(next[at(e.row)]++)] = e.column;
        neighbour[at(next[at(e.column)]++)] = e.row;
    }
    if (n > 0 && amd_order(n, begin.data(), neighbour.data(), permutation.data(), nullptr, nullptr) < AMD_OK) {
        throw std::domain_error("no elimination order found");
    }
    place.resize(at(n));
    for (int k = 0; k < n; ++k) place[at(permutation[at(k)])] = k;
}

/// An entry of the upper triangle in elimination order; entry -1 stands for the diagonal, which is always there.
struct Key {
    int column = 0, row = 0, entry = -1;
    [[nodiscard]] bool at(const Key& o) const { return column == o.column && row == o.row; }
};

/// Stable sort by one member below n, in linear time.
std::vector<Key> sorted(const std::vector<Key>& keys, int Key::*member, int n) {
    Indices next(at(n) + 1, 0);
    for (const Key& key : keys) ++next[at(key.*member) + 1];
    std::partial_sum(next.begin(), next.end(), next.begin());
    std::vector<Key> result(keys.size());
    for (const Key& key : keys) result[at(next[at(key.*member)]++)] = key;
    return result;
}

void Ordering::Structure::compress(const std::vector<SymmetricEntry>& entries) {
    std::vector<Key> keys;
    keys.reserve(entries.size() + at(n));
    for (int i = 0; i < n; ++i) keys.push_back({i, i, -1});
    for (std::size_t e = 0; e < entries.size(); ++e) {
        const int a = place[at(entries[e].row)], b = place[at(entries[e].column)];
        keys.push_back({std::max(a, b), std::min(a, b), static_cast<int>(e)});
    }
    keys = sorted(sorted(keys, &Key::row, n), &Key::column, n);
    start.assign(at(n) + 1, 0);
    slot.resize(entries.size());
    for (std::size_t k = 0; k < keys.size(); ++k) {
        if (k == 0 || !keys[k].at(keys[k - 1])) row.push_back(keys[k].row), ++start[at(keys[k].column) + 1];
        if (keys[k].entry >= 0) slot[at(keys[k].entry)] = static_cast<int>(row.size()) - 1;
    }
    std::partial_sum(start.begin(), start.end(), start.begin());
}

int Ordering::Structure::reach(int k, Indices& mark, Indices& stack) const {
    int top = n;
    mark[at(k)] = k;
    for (int p = start[at(k)]; p < start[at(k) + 1]; ++p) {
        int length = 0;
        for (int i = row[at(p)]; mark[at(i)] != k; i = parent[at(i)]) {
            stack[at(length++)] = i;
            mark[at(i)] = k;
        }
        while (length > 0) stack[at(--top)] = stack[at(--length)];
    }
    return top;
}

Indices Ordering::Structure::paths(const std::vector<std::pair<int, Complex>>& rhs) const {
    Indices result;
    for (const auto& [i, value] : rhs) {
        for (int k = place[at(i)]; k >= 0; k = parent[at(k)]) result.push_back(k);
    }
    if (rhs.size() > 1) {
        std::sort(result.begin(), result.end());
        result.erase(std::unique(result.begin(), result.end()), result.end());
    }
    return result;
}

void Ordering::Structure::analyse() {
    parent.assign(at(n), -1);
    Indices mark(at(n), -1), count(at(n), 0);
    for (int k = 0; k < n; ++k) {
        mark[at(k)] = k;
        for (int p = start[at(k)]; p < start[at(k) + 1]; ++p) {
            for (int i = row[at(p)]; mark[at(i)] != k; i = parent[at(i)]) {
                if (parent[at(i)] < 0) parent[at(i)] = k;
                ++count[at(i)];
                mark[at(i)] = k;
            }
        }
    }
    lowerStart.assign(at(n) + 1, 0);
    std::partial_sum(count.begin(), count.end(), lowerStart.begin() + 1);
    lowerRow.resize(at(lowerStart.back()));
    Indices next(lowerStart.begin(), lowerStart.end() - 1), stack(at(n));
    std::fill(mark.begin(), mark.end(), -1);
    for (int k = 0; k < n; ++k) {
        for (int t = reach(k, mark, stack); t < n; ++t) lowerRow[at(next[at(stack[at(t)])]++)] = k;
    }
}

Ordering::Ordering(int n, const std::vector<SymmetricEntry>& entries) : structure_(std::make_unique<Structure>()) {
    structure_->n = n;
    structure_->order(entries);
    structure_->compress(entries);
    structure_->analyse();
}

Ordering::~Ordering() = default;

namespace {
/// Of the positions of the entries; equal positions in equal order have the same one.
std::uint64_t fingerprint(int n, const std::vector<SymmetricEntry>& entries) {
    std::uint64_t hash = static_cast<std::uint64_t>(n);
    for (const auto& e : entries) {
        hash = (hash ^ static_cast<std::uint64_t>(e.row)) * 0x9E3779B97F4A7C15u;
        hash = (hash ^ (hash >> 29) ^ static_cast<std::uint64_t>(e.column)) * 0xBF58476D1CE4E5B9u;
    }
    return hash;
}
}  // namespace

std::shared_ptr<const Ordering> OrderingCache::of(int n, const std::vector<SymmetricEntry>& entries) {
    const std::lock_guard lock(mutex_);
    auto& kept = kept_[fingerprint(n, entries)];
    if (!kept) kept = std::make_shared<const Ordering>(n, entries);
    return kept;
}

struct Factors::Lu {
    klu_common common{};
    klu_symbolic* symbolic = nullptr;
    klu_numeric* numeric = nullptr;
    Indices start, row;
    std::vector<Complex> value;
    std::mutex mutex;  // the numeric object has a workspace of its own

    Lu(const Ordering::Structure& s, const std::vector<Complex>& upper);
    ~Lu() {
        klu_z_free_numeric(&numeric, &common);
        klu_free_symbolic(&symbolic, &common);
    }
    Lu(const Lu&) = delete;
    Lu& operator=(const Lu&) = delete;
};

Factors::Lu::Lu(const Ordering::Structure& s, const std::vector<Complex>& upper) {
    std::vector<std::vector<std::pair<int, Complex>>> columns(at(s.n));
    for (int k = 0; k < s.n; ++k) {
        for (int p = s.start[at(k)]; p < s.start[at(k) + 1]; ++p) {
            const int i = s.row[at(p)];
            columns[at(k)].emplace_back(i, upper[at(p)]);
            if (i != k) columns[at(i)].emplace_back(k, upper[at(p)]);
        }
    }
    start.push_back(0);
    for (const auto& column : columns) {
        for (const auto& [i, a] : column) row.push_back(i), value.push_back(a);
        start.push_back(static_cast<int>(row.size()));
    }
    klu_defaults(&common);
    symbolic = klu_analyze(s.n, start.data(), row.data(), &common);
    if (symbolic) {
        numeric = klu_z_factor(start.data(), row.data(), reinterpret_cast<double*>(value.data()), symbolic, &common);
    }
    if (!numeric || common.status == KLU_SINGULAR) {
        klu_z_free_numeric(&numeric, &common);
        klu_free_symbolic(&symbolic, &common);
        throw std::domain_error("singular network matrix");
    }
}

Factors::Factors(std::shared_ptr<const Ordering> ordering, const std::vector<SymmetricEntry>& entries)
    : ordering_(std::move(ordering)) {
    const auto& s = *ordering_->structure_;
    std::vector<Complex> upper(s.row.size());
    for (std::size_t e = 0; e < entries.size(); ++e) upper[at(s.slot[e])] += entries[e].value;
    if (!factorise(upper)) lu_ = std::make_unique<Lu>(s, upper);
}

Factors::~Factors() = default;

bool Factors::factorise(const std::vector<Complex>& upper) {
    const auto& s = *ordering_->structure_;
    lower_.resize(s.lowerRow.size());
    inverseDiagonal_.resize(at(s.n));
    std::vector<Complex> y(at(s.n));
    Indices mark(at(s.n), -1), stack(at(s.n)), next(s.lowerStart.begin(), s.lowerStart.end() - 1);
    for (int k = 0; k < s.n; ++k) {
        for (int p = s.start[at(k)]; p < s.start[at(k) + 1]; ++p) y[at(s.row[at(p)])] = upper[at(p)];
        Complex pivot = std::exchange(y[at(k)], Complex{});
        const double before = std::abs(pivot);
        for (int t = s.reach(k, mark, stack); t < s.n; ++t) {
            const int i = stack[at(t)];
            const Complex yi = std::exchange(y[at(i)], Complex{});
            const int end = next[at(i)]++;
            for (int p = s.lowerStart[at(i)]; p < end; ++p) {
                y[at(s.lowerRow[at(p)])] -= product(lower_[at(p)], yi);
            }
            lower_[at(end)] = product(yi, inverseDiagonal_[at(i)]);
            pivot -= product(lower_[at(end)], yi);
        }
        if (!(std::abs(pivot) > kPivotLoss * before)) return false;
        inverseDiagonal_[at(k)] = 1.0 / pivot;
    }
    return true;
}

std::vector<Complex> Factors::backward(std::vector<Complex> x) const {
    const auto& s = *ordering_->structure_;
    for (int k = s.n - 1; k >= 0; --k) {
        Complex sum = product(x[at(k)], inverseDiagonal_[at(k)]);
        for (int p = s.lowerStart[at(k)]; p < s.lowerStart[at(k) + 1]; ++p) {
            sum -= product(lower_[at(p)], x[at(s.lowerRow[at(p)])]);
        }
        x[at(k)] = sum;
    }
    std::vector<Complex> result(at(s.n));
    for (int i = 0; i < s.n; ++i) result[at(i)] = x[at(s.place[at(i)])];
    return result;
}

std::vector<Complex> Factors::solve(std::vector<Complex> rhs) const {
    const auto& s = *ordering_->structure_;
    std::vector<Complex> x(at(s.n));
    for (int i = 0; i < s.n; ++i) x[at(s.place[at(i)])] = rhs[at(i)];
    if (lu_) {
        const std::lock_guard lock(lu_->mutex);
        klu_z_solve(lu_->symbolic, lu_->numeric, s.n, 1, reinterpret_cast<double*>(x.data()), &lu_->common);
        for (int i = 0; i < s.n; ++i) rhs[at(i)] = x[at(s.place[at(i)])];
        return rhs;
    }
    for (int k = 0; k < s.n; ++k) {
        for (int p = s.lowerStart[at(k)]; p < s.lowerStart[at(k) + 1]; ++p) {
            x[at(s.lowerRow[at(p)])] -= product(lower_[at(p)], x[at(k)]);
        }
    }
    return backward(std::move(x));
}

std::vector<Complex> Factors::solve(const std::vector<std::pair<int, Complex>>& rhs) const {
    const auto& s = *ordering_->structure_;
    std::vector<Complex> x(at(s.n));
    if (lu_) {
        for (const auto& [i, value] : rhs) x[at(i)] += value;
        return solve(std::move(x));
    }
    for (const auto& [i, value] : rhs) x[at(s.place[at(i)])] += value;
    for (const int k : s.paths(rhs)) {
        for (int p = s.lowerStart[at(k)]; p < s.lowerStart[at(k) + 1]; ++p) {
            x[at(s.lowerRow[at(p)])] -= product(lower_[at(p)], x[at(k)]);
        }
    }
    return backward(std::move(x));
}

}  // namespace engines
