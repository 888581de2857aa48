#include "engines/network/Dense.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace engines {
namespace {
using Complex = std::complex<double>;

double inverseOrOne(double largest) { return largest > 0 ? 1 / largest : 1; }

std::size_t at(int i) { return static_cast<std::size_t>(i); }
}  // namespace

DenseFactors::DenseFactors(Matrix a, double rankTolerance) : lu_(std::move(a)) {
    const int n = lu_.rows();
    rowOrder_.resize(at(n));
    columnOrder_.resize(at(n));
    std::iota(rowOrder_.begin(), rowOrder_.end(), 0);
    std::iota(columnOrder_.begin(), columnOrder_.end(), 0);
    equilibrate();
    while (rank_ < n && pivot(rank_, rankTolerance)) eliminate(rank_++);
    if (rank_ == n) pivotRatio_ = n == 0 ? 1 : std::abs(lu_(n - 1, n - 1)) / std::abs(lu_(0, 0));
}

void DenseFactors::equilibrate() {
    const int n = lu_.rows();
    rowScale_.assign(at(n), 0);
    columnScale_.assign(at(n), 0);
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) rowScale_[at(i)] = std::max(rowScale_[at(i)], std::abs(lu_(i, j)));
        rowScale_[at(i)] = inverseOrOne(rowScale_[at(i)]);
    }
    for (int j = 0; j < n; ++j) {
        double& scale = columnScale_[at(j)];
        for (int i = 0; i < n; ++i) scale = std::max(scale, std::abs(lu_(i, j)) * rowScale_[at(i)]);
        scale = inverseOrOne(scale);
        for (int i = 0; i < n; ++i) lu_(i, j) *= scale * rowScale_[at(i)];
    }
}

bool DenseFactors::pivot(int k, double tolerance) {
    const int n = lu_.rows();
    int row = k, column = k;
    double largest = -1;
    for (int i = k; i < n; ++i) {
        for (int j = k; j < n; ++j) {
            if (const double size = std::abs(lu_(i, j)); size > largest) largest = size, row = i, column = j;
        }
    }
    if (!(largest > tolerance)) return false;
    for (int j = 0; j < n; ++j) std::swap(lu_(k, j), lu_(row, j));
    for (int i = 0; i < n; ++i) std::swap(lu_(i, k), lu_(i, column));
    std::swap(rowOrder_[at(k)], rowOrder_[at(row)]);
    std::swap(columnOrder_[at(k)], columnOrder_[at(column)]);
    return true;
}

void DenseFactors::eliminate(int k) {
    const int n = lu_.rows();
    for (int i = k + 1; i < n; ++i) {
        if (lu_(i, k) == Complex{}) continue;
        lu_(i, k) /= lu_(k, k);
        for (int j = k + 1; j < n; ++j) lu_(i, j) -= lu_(i, k) * lu_(k, j);
    }
}

std::vector<Complex> DenseFactors::solve(const std::vector<Complex>& rhs) const {
    const int n = lu_.rows();
    std::vector<Complex> y(at(rank_)), x(at(n));
    for (int i = 0; i < rank_; ++i) {
        const int row = rowOrder_[at(i)];
        y[at(i)] = rhs[at(row)] * rowScale_[at(row)];
        for (int j = 0; j < i; ++j) y[at(i)] -= lu_(i, j) * y[at(j)];
    }
    for (int i = rank_ - 1; i >= 0; --i) {
        for (int j = i + 1; j < rank_; ++j) y[at(i)] -= lu_(i, j) * y[at(j)];
        y[at(i)] /= lu_(i, i);
        const int column = columnOrder_[at(i)];
        x[at(column)] = y[at(i)] * columnScale_[at(column)];
    }
    return x;
}

Matrix inverse(const Matrix& a) {
    const DenseFactors factors(a, 1e-14);
    if (factors.rank() < a.rows()) throw std::domain_error("singular matrix");
    Matrix result(a.rows(), a.rows());
    for (int j = 0; j < a.rows(); ++j) {
        std::vector<Complex> unit(at(a.rows()));
        unit[at(j)] = 1;
        const std::vector<Complex> column = factors.solve(unit);
        for (int i = 0; i < a.rows(); ++i) result(i, j) = column[at(i)];
    }
    return result;
}

}  // namespace engines
