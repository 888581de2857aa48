#include "engines/network/Factors.h"

#include <klu.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <stdexcept>

namespace engines {
namespace {

using Indices = std::vector<int>;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

// Cancellation of a pivot by more digits than this leaves no accuracy worth having.
constexpr double kPivotLoss = 1e-12;

}  // namespace

SymmetricMatrix::SymmetricMatrix(std::shared_ptr<const Ordering> order)
    : ordering(std::move(order)), diagonal(at(ordering->n)), lower(ordering->lowerRow.size()) {}

void SymmetricMatrix::add(int i, int j, Complex value) {
    if (i == j)
        diagonal[at(ordering->place[at(i)])] += value;
    else
        lower.at(at(ordering->slot(i, j))) += value;
}

struct Factors::Lu {
    klu_common common{};
    klu_symbolic* symbolic = nullptr;
    klu_numeric* numeric = nullptr;
    Indices start, row;
    ComplexVector value;
    std::mutex mutex;  // the numeric object has a workspace of its own

    explicit Lu(const SymmetricMatrix& matrix);
    ~Lu() {
        klu_z_free_numeric(&numeric, &common);
        klu_free_symbolic(&symbolic, &common);
    }
    Lu(const Lu&) = delete;
    Lu& operator=(const Lu&) = delete;
};

Factors::Lu::Lu(const SymmetricMatrix& matrix) {
    const Ordering& o = *matrix.ordering;
    std::vector<BusWeights> columns(at(o.n));
    for (int k = 0; k < o.n; ++k) {
        columns[at(k)].emplace_back(k, matrix.diagonal[at(k)]);
        for (int p = o.lowerStart[at(k)]; p < o.lowerStart[at(k) + 1]; ++p) {
            if (matrix.lower[at(p)] == Complex{}) continue;
            columns[at(k)].emplace_back(o.lowerRow[at(p)], matrix.lower[at(p)]);
            columns[at(o.lowerRow[at(p)])].emplace_back(k, matrix.lower[at(p)]);
        }
    }
    start.push_back(0);
    for (const auto& column : columns) {
        for (const auto& [i, a] : column) row.push_back(i), value.push_back(a);
        start.push_back(static_cast<int>(row.size()));
    }
    klu_defaults(&common);
    symbolic = klu_analyze(o.n, start.data(), row.data(), &common);
    if (symbolic) {
        numeric = klu_z_factor(start.data(), row.data(), reinterpret_cast<double*>(value.data()), symbolic, &common);
    }
    if (!numeric || common.status == KLU_SINGULAR) {
        klu_z_free_numeric(&numeric, &common);
        klu_free_symbolic(&symbolic, &common);
        throw std::domain_error("singular network matrix");
    }
}

Factors::Factors(const std::function<SymmetricMatrix()>& matrix) : Factors(matrix(), matrix) {}

Factors::Factors(SymmetricMatrix matrix, const std::function<SymmetricMatrix()>& again)
    : ordering_(std::move(matrix.ordering)),
      lower_(std::move(matrix.lower)),
      inverseDiagonal_(std::move(matrix.diagonal)) {
    if (!factorise()) lu_ = std::make_unique<Lu>(again());
}

Factors::~Factors() = default;

bool Factors::factorise() {
    const Ordering& o = *ordering_;
    std::vector<double> least(at(o.n));
    for (int k = 0; k < o.n; ++k) least[at(k)] = kPivotLoss * kPivotLoss * std::norm(inverseDiagonal_[at(k)]);
    const int* row = o.lowerRow.data();
    const int* update = o.updates.data();
    Complex *lower = lower_.data(), *diagonal = inverseDiagonal_.data();
    for (int k = 0; k < o.n; ++k) {
        if (!(std::norm(diagonal[k]) > least[at(k)])) return false;
        const Complex d = diagonal[k] = reciprocal(diagonal[k]);
        const int end = o.lowerStart[at(k) + 1];
        for (int p = o.lowerStart[at(k)]; p < end; ++p) {
            const Complex y = lower[p], l = lower[p] = product(y, d);
            diagonal[row[p]] -= product(l, y);
            for (int q = p + 1; q < end; ++q) lower[*update++] -= product(l, lower[q]);
        }
    }
    return true;
}

ComplexVector Factors::backward(ComplexVector x) const {
    const Ordering& o = *ordering_;
    const int* row = o.lowerRow.data();
    const Complex* lower = lower_.data();
    for (int k = o.n - 1; k >= 0; --k) {
        Complex sum = product(x[at(k)], inverseDiagonal_[at(k)]);
        const int end = o.lowerStart[at(k) + 1];
        for (int p = o.lowerStart[at(k)]; p < end; ++p) sum -= product(lower[p], x[at(row[p])]);
        x[at(k)] = sum;
    }
    ComplexVector result(at(o.n));
    for (int i = 0; i < o.n; ++i) result[at(i)] = x[at(o.place[at(i)])];
    return result;
}

ComplexVector Factors::solve(ComplexVector rhs) const {
    const Ordering& o = *ordering_;
    ComplexVector x(at(o.n));
    for (int i = 0; i < o.n; ++i) x[at(o.place[at(i)])] = rhs[at(i)];
    if (lu_) {
        const std::lock_guard lock(lu_->mutex);
        klu_z_solve(lu_->symbolic, lu_->numeric, o.n, 1, reinterpret_cast<double*>(x.data()), &lu_->common);
        for (int i = 0; i < o.n; ++i) rhs[at(i)] = x[at(o.place[at(i)])];
        return rhs;
    }
    for (int k = 0; k < o.n; ++k) {
        for (int p = o.lowerStart[at(k)]; p < o.lowerStart[at(k) + 1]; ++p) {
            x[at(o.lowerRow[at(p)])] -= product(lower_[at(p)], x[at(k)]);
        }
    }
    return backward(std::move(x));
}

ComplexVector Factors::solve(const BusWeights& rhs) const {
    const Ordering& o = *ordering_;
    ComplexVector x(at(o.n));
    if (lu_) {
        for (const auto& [i, value] : rhs) x[at(i)] += value;
        return solve(std::move(x));
    }
    Indices ways;
    for (const auto& [i, value] : rhs) {
        x[at(o.place[at(i)])] += value;
        for (int k = o.place[at(i)]; k >= 0; k = o.parent[at(k)]) ways.push_back(k);
    }
    if (rhs.size() > 1) {
        std::sort(ways.begin(), ways.end());
        ways.erase(std::unique(ways.begin(), ways.end()), ways.end());
    }
    for (const int k : ways) {
        for (int p = o.lowerStart[at(k)]; p < o.lowerStart[at(k) + 1]; ++p) {
            x[at(o.lowerRow[at(p)])] -= product(lower_[at(p)], x[at(k)]);
        }
    }
    return backward(std::move(x));
}

}  // namespace engines
