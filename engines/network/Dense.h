#pragma once

#include <complex>
#include <vector>

/// Small dense complex systems: the primitive impedance of coupled lines, the ports of a fault.
namespace engines {

class Matrix {
  public:
    Matrix() = default;
    Matrix(int rows, int columns)
        : rows_(rows),
          columns_(columns),
          entries_(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns)) {}
    [[nodiscard]] int rows() const { return rows_; }
    [[nodiscard]] int columns() const { return columns_; }
    std::complex<double>& operator()(int i, int j) { return entries_[place(i, j)]; }
    const std::complex<double>& operator()(int i, int j) const { return entries_[place(i, j)]; }

  private:
    [[nodiscard]] std::size_t place(int i, int j) const {
        return static_cast<std::size_t>(i) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(j);
    }
    int rows_ = 0, columns_ = 0;
    std::vector<std::complex<double>> entries_;
};

/// LU factors of a square matrix with complete pivoting after equilibration. Unknowns that the equations leave open
/// (pivots below `rankTolerance` of the equilibrated matrix) are set to zero when solving.
class DenseFactors {
  public:
    explicit DenseFactors(Matrix a, double rankTolerance = 1e-11);
    [[nodiscard]] int rank() const { return rank_; }
    /// Smallest pivot over the largest, of the equilibrated matrix; 0 when the rank is not full.
    [[nodiscard]] double pivotRatio() const { return pivotRatio_; }
    [[nodiscard]] std::vector<std::complex<double>> solve(const std::vector<std::complex<double>>& rhs) const;

  private:
    void equilibrate();
    bool pivot(int k, double tolerance);
    void eliminate(int k);

    Matrix lu_;
    std::vector<double> rowScale_, columnScale_;
    std::vector<int> rowOrder_, columnOrder_;
    int rank_ = 0;
    double pivotRatio_ = 0;
};

/// \throws std::domain_error when the matrix is singular
Matrix inverse(const Matrix& a);

}  // namespace engines
