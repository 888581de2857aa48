#include <optional>
#include <random>

#include "engines/network/SelectedInverse.h"
#include "tests/engines/num_grid.h"

using namespace num;
using engines::ComplexVector;
using engines::Factors;
using engines::IndexPair;
using engines::Ordering;
using engines::SymmetricMatrix;

namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// A random sparse symmetric matrix of two parts that nothing joins.
class RandomMatrix {
  public:
    static constexpr int n = 150;
    RandomMatrix(unsigned seed, double diagonal) : dice_(seed) {
        for (int i = 1; i < n; ++i) {
            const int first = i < kSplit ? 0 : kSplit;
            if (i > first) pairs_.emplace_back(i, first + upTo(i - first));
        }
        for (int i = 0; i + 37 < kSplit; i += 2) pairs_.emplace_back(i, i + 37);
        for (int i = kSplit; i + 9 < n; i += 3) pairs_.emplace_back(i, i + 9);
        matrix.emplace(std::make_shared<Ordering>(n, pairs_));
        for (int i = 0; i < n; ++i) matrix->add(i, i, i % 10 == 0 ? diagonal : diagonal * value() + diagonal + value());
        for (const auto& [i, j] : pairs_) matrix->add(i, j, value());
    }
    [[nodiscard]] ComplexVector times(const ComplexVector& x) const {
        const Ordering& o = *matrix->ordering;
        ComplexVector y(n), byPlace(n), result(n);
        for (int i = 0; i < n; ++i) byPlace[at(o.place[at(i)])] = x[at(i)];
        for (int k = 0; k < n; ++k) {
            y[at(k)] += matrix->diagonal[at(k)] * byPlace[at(k)];
            for (int p = o.lowerStart[at(k)]; p < o.lowerStart[at(k) + 1]; ++p) {
                y[at(o.lowerRow[at(p)])] += matrix->lower[at(p)] * byPlace[at(k)];
                y[at(k)] += matrix->lower[at(p)] * byPlace[at(o.lowerRow[at(p)])];
            }
        }
        for (int i = 0; i < n; ++i) result[at(i)] = y[at(o.place[at(i)])];
        return result;
    }
    Complex value() { return {dice_() / 4294967296.0 - .5, dice_() / 4294967296.0 - .5}; }
    int upTo(int m) { return static_cast<int>(dice_() % static_cast<unsigned>(m)); }
    [[nodiscard]] const std::vector<IndexPair>& pairs() const { return pairs_; }
    std::optional<SymmetricMatrix> matrix;

  private:
    static constexpr int kSplit = 120;
    std::mt19937 dice_;
    std::vector<IndexPair> pairs_;
};

double distance(const ComplexVector& a, const ComplexVector& b) {
    double worst = 0;
    for (std::size_t i = 0; i < a.size(); ++i) worst = std::max(worst, std::abs(a[i] - b[i]));
    return worst;
}

}  // namespace

// With a strong diagonal by L D L', with none by the LU that steps in.
TEST(Factors, SolveWhatTheyWereMadeOf) {
    for (const double diagonal : {6.0, 0.0}) {
        RandomMatrix random(3, diagonal);
        ComplexVector known(RandomMatrix::n), few(RandomMatrix::n);
        for (Complex& x : known) x = random.value();
        const Factors factors([&] { return *random.matrix; });
        EXPECT_EQ(factors.symmetric(), diagonal > 0);
        EXPECT_LT(distance(factors.solve(random.times(known)), known), 1e-9);
        few[5] = known[5], few[80] = known[80];
        EXPECT_LT(distance(factors.solve(engines::BusWeights{{5, few[5]}, {80, few[80]}}), factors.solve(few)), 1e-12);
    }
}

TEST(Factors, SingleEntriesOfTheInverseAreThoseOfWholeColumns) {
    for (const double diagonal : {6.0, 0.0}) {
        RandomMatrix random(5, diagonal);
        const Factors factors([&] { return *random.matrix; });
        const engines::SelectedInverse inverse(factors);
        std::vector<ComplexVector> columns;
        for (int j = 0; j < RandomMatrix::n; ++j) columns.push_back(factors.solve(engines::BusWeights{{j, 1.0}}));
        for (const auto& [i, j] : random.pairs()) {
            EXPECT_LT(std::abs(inverse.entry(i, j) - columns[at(j)][at(i)]), 1e-11);
        }
        for (int i = 0; i < RandomMatrix::n; ++i) {
            EXPECT_LT(std::abs(inverse.diagonal(i) - columns[at(i)][at(i)]), 1e-11);
            const auto driven = factors.driven(factors.half(i));
            for (int j = 0; j < RandomMatrix::n; ++j) {
                EXPECT_LT(std::abs(factors.dot(factors.half(j), driven) - columns[at(i)][at(j)]), 1e-11);
            }
        }
    }
}

TEST(Factors, HalfColumnsAddUpAlongAWayAndNowhereElse) {
    RandomMatrix random(7, 6);
    const Factors factors([&] { return *random.matrix; });
    const auto& [i, j] = random.pairs()[40];
    const auto one = factors.half(i), two = factors.half(j), elsewhere = factors.half(130);
    const Complex weight{.3, -2};
    const std::pair<const engines::HalfColumn*, Complex> both[] = {{&one, 1.0}, {&two, weight}};
    const auto sum = combined(factors.ordering(), both);
    const auto column = factors.solve(engines::BusWeights{{i, 1.0}, {j, weight}});
    for (int k = 0; k < RandomMatrix::n; ++k) {
        EXPECT_LT(std::abs(factors.dot(factors.half(k), factors.driven(sum)) - column[at(k)]), 1e-12);
    }
    EXPECT_EQ(factors.dot(elsewhere, factors.driven(sum)), Complex{});
    const std::pair<const engines::HalfColumn*, Complex> apart[] = {{&one, 1.0}, {&elsewhere, 1.0}};
    EXPECT_THROW((void)combined(factors.ordering(), apart), std::logic_error);
}

TEST(Factors, AMatrixWithAnEmptyDiagonalIsSolvedWithPivoting) {
    SymmetricMatrix matrix(std::make_shared<Ordering>(3, std::vector<IndexPair>{{0, 1}, {1, 2}, {1, 1}}));
    matrix.add(0, 1, j(2)), matrix.add(1, 2, {1, 1}), matrix.add(2, 2, {3, 0});
    const Factors factors([&] { return matrix; });
    const auto x = factors.solve({j(2), {3, 1}, {4, 1}});
    EXPECT_FALSE(factors.symmetric());
    EXPECT_LT(std::abs(x[1] - 1.0) + std::abs(x[2] - 1.0) + std::abs(x[0] - 1.0 / j(1)), 1e-12);
    EXPECT_LT(std::abs(factors.dot(factors.half(1), factors.driven(factors.half(0))) - 1.0 / j(2)), 1e-12);
    EXPECT_THROW(matrix.add(0, 2, 1), std::out_of_range);
    SymmetricMatrix singular(std::make_shared<Ordering>(2, std::vector<IndexPair>{{0, 1}}));
    singular.add(0, 0, 1), singular.add(0, 1, -1), singular.add(1, 1, 1);
    EXPECT_THROW(Factors([&] { return singular; }), std::domain_error);
}
