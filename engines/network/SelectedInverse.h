#pragma once

#include "engines/network/Factors.h"

namespace engines {

/// The entries of the inverse of a symmetric matrix where its factors have entries: the whole diagonal, and the pairs
/// of the structure. Columns from the last to the first, each from those that its rows name, theory (6).
/// Source: K. Takahashi, J. Fagan, M. Chin, Formation of a sparse bus impedance matrix, 1973; A. M. Erisman,
/// W. F. Tinney, On computing certain elements of the inverse of a sparse matrix, 1975.
class SelectedInverse {
  public:
    explicit SelectedInverse(const Factors& factors);
    [[nodiscard]] Complex diagonal(int i) const { return diagonalAt(ordering_->place[static_cast<std::size_t>(i)]); }
    /// \param place  in elimination order
    [[nodiscard]] Complex diagonalAt(int place) const { return diagonal_[static_cast<std::size_t>(place)]; }
    [[nodiscard]] Complex slot(int slot) const { return lower_[static_cast<std::size_t>(slot)]; }
    /// Number of entries.
    [[nodiscard]] std::size_t size() const { return diagonal_.size() + lower_.size(); }
    /// \throws std::out_of_range outside of the structure
    [[nodiscard]] Complex entry(int i, int j) const;

  private:
    void recur(const Factors& factors);
    /// One solution per column, for factors with pivoting.
    void solve(const Factors& factors);

    const Ordering* ordering_;
    ComplexVector diagonal_, lower_;
};

}  // namespace engines
