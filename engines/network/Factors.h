#pragma once

#include <functional>
#include <memory>

#include "engines/network/HalfColumn.h"

/// Sparse complex symmetric systems: L D L' with a fill-reducing order, theory (4).
namespace engines {

/// A matrix in the structure of its factors.
struct SymmetricMatrix {
    explicit SymmetricMatrix(std::shared_ptr<const Ordering> ordering);
    /// a[i, j] = a[j, i] += value, within the structure; the pair is given once.
    void add(int i, int j, Complex value);

    std::shared_ptr<const Ordering> ordering;
    ComplexVector diagonal;  ///< in elimination order
    ComplexVector lower;     ///< by slot
};

/// The numeric factors of one matrix.
/// Source: T. A. Davis, Direct Methods for Sparse Linear Systems, ch. 4; the slots that an eliminated column changes
/// are listed in advance. Without pivoting; a matrix whose diagonal breaks down on the way goes to an LU with pivoting.
class Factors {
  public:
    /// \param matrix  makes the matrix; asked once more when the diagonal breaks down
    /// \throws std::domain_error when the matrix is singular
    explicit Factors(const std::function<SymmetricMatrix()>& matrix);
    ~Factors();
    Factors(const Factors&) = delete;
    Factors& operator=(const Factors&) = delete;

    [[nodiscard]] ComplexVector solve(ComplexVector rhs) const;
    /// The same for a right-hand side of a few values, given with their places.
    [[nodiscard]] ComplexVector solve(const BusWeights& rhs) const;
    /// The half column of one unknown.
    [[nodiscard]] HalfColumn half(int unknown) const;
    [[nodiscard]] DrivenColumn driven(const HalfColumn& half) const;
    [[nodiscard]] Complex dot(const HalfColumn& seen, const DrivenColumn& driven) const;
    /// Whether the diagonal held and the symmetric factors are in use.
    [[nodiscard]] bool symmetric() const { return !lu_; }

    [[nodiscard]] const Ordering& ordering() const { return *ordering_; }
    [[nodiscard]] const ComplexVector& lower() const { return lower_; }
    [[nodiscard]] const ComplexVector& inverseDiagonal() const { return inverseDiagonal_; }

  private:
    struct Lu;
    Factors(SymmetricMatrix matrix, const std::function<SymmetricMatrix()>& again);
    [[nodiscard]] bool factorise();
    [[nodiscard]] ComplexVector backward(ComplexVector x) const;

    std::shared_ptr<const Ordering> ordering_;
    ComplexVector lower_, inverseDiagonal_;
    std::unique_ptr<Lu> lu_;
};

}  // namespace engines
