#pragma once

#include <complex>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

/// Sparse complex symmetric systems: L D L' with a fill-reducing order.
namespace engines {

/// One contribution a[row, column] = a[column, row] += value; each off-diagonal pair is given once.
struct SymmetricEntry {
    int row = 0, column = 0;
    std::complex<double> value;
};

/// Order and structure of the factors; depends on the positions of the entries alone, not on their values.
class Ordering {
  public:
    /// \param entries  positions used, values ignored; all below n
    Ordering(int n, const std::vector<SymmetricEntry>& entries);
    ~Ordering();
    Ordering(const Ordering&) = delete;
    Ordering& operator=(const Ordering&) = delete;

    struct Structure;

  private:
    friend class Factors;
    std::unique_ptr<Structure> structure_;
};

/// Orderings by the positions of their entries: the operating modes of a network share them.
class OrderingCache {
  public:
    std::shared_ptr<const Ordering> of(int n, const std::vector<SymmetricEntry>& entries);

  private:
    std::mutex mutex_;
    std::map<std::uint64_t, std::shared_ptr<const Ordering>> kept_;
};

/// The numeric factors of one matrix.
/// Source: T. A. Davis, Direct Methods for Sparse Linear Systems, ch. 4 (up-looking factorisation along the
/// elimination tree). Without pivoting; a matrix whose diagonal breaks down on the way goes to an LU with pivoting.
class Factors {
  public:
    /// \param entries  the same positions in the same order as those of the ordering
    /// \throws std::domain_error when the matrix is singular
    Factors(std::shared_ptr<const Ordering> ordering, const std::vector<SymmetricEntry>& entries);
    ~Factors();
    Factors(const Factors&) = delete;
    Factors& operator=(const Factors&) = delete;

    [[nodiscard]] std::vector<std::complex<double>> solve(std::vector<std::complex<double>> rhs) const;
    /// The same for a right-hand side of a few values, given with their places.
    [[nodiscard]] std::vector<std::complex<double>> solve(
        const std::vector<std::pair<int, std::complex<double>>>& rhs) const;
    /// Whether the diagonal held and the symmetric factors are in use.
    [[nodiscard]] bool symmetric() const { return !lu_; }

  private:
    struct Lu;
    [[nodiscard]] bool factorise(const std::vector<std::complex<double>>& upper);
    [[nodiscard]] std::vector<std::complex<double>> backward(std::vector<std::complex<double>> x) const;

    std::shared_ptr<const Ordering> ordering_;
    std::vector<std::complex<double>> lower_, inverseDiagonal_;
    std::unique_ptr<Lu> lu_;
};

}  // namespace engines
