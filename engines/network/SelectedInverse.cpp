#include "engines/network/SelectedInverse.h"

namespace engines {
namespace {
std::size_t at(int i) { return static_cast<std::size_t>(i); }
}  // namespace

SelectedInverse::SelectedInverse(const Factors& factors) : ordering_(&factors.ordering()) {
    if (factors.symmetric()) {
        recur(factors);
    } else {
        diagonal_.resize(at(ordering_->n));
        lower_.resize(ordering_->lowerRow.size());
        solve(factors);
    }
}

void SelectedInverse::recur(const Factors& factors) {
    const Ordering& o = *ordering_;
    diagonal_ = factors.inverseDiagonal();
    lower_ = factors.lower();
    ComplexVector sums(at(o.n));
    const int* row = o.lowerRow.data();
    const int* next = o.updates.data() + o.updates.size();
    Complex *z = lower_.data(), *sum = sums.data();
    for (int k = o.n - 1; k >= 0; --k) {
        const int begin = o.lowerStart[at(k)], count = o.lowerStart[at(k) + 1] - begin;
        Complex* l = z + begin;
        const int* update = next -= count * (count - 1) / 2;
        for (int a = 0; a < count; ++a) sum[a] = product(l[a], diagonal_[at(row[begin + a])]);
        for (int a = 0; a < count; ++a) {
            Complex own = sum[a];
            for (int b = a + 1; b < count; ++b) {
                const Complex zab = z[*update++];
                own += product(zab, l[b]);
                sum[b] += product(zab, l[a]);
            }
            sum[a] = own;
        }
        Complex driving = diagonal_[at(k)];
        for (int a = 0; a < count; ++a) {
            driving += product(l[a], sum[a]);
            l[a] = -sum[a];
        }
        diagonal_[at(k)] = driving;
    }
}

void SelectedInverse::solve(const Factors& factors) {
    const Ordering& o = *ordering_;
    std::vector<int> unknown(at(o.n));
    for (int i = 0; i < o.n; ++i) unknown[at(o.place[at(i)])] = i;
    for (int k = 0; k < o.n; ++k) {
        const ComplexVector column = factors.solve(BusWeights{{unknown[at(k)], 1.0}});
        diagonal_[at(k)] = column[at(unknown[at(k)])];
        for (int p = o.lowerStart[at(k)]; p < o.lowerStart[at(k) + 1]; ++p) {
            lower_[at(p)] = column[at(unknown[at(o.lowerRow[at(p)])])];
        }
    }
}

Complex SelectedInverse::entry(int i, int j) const {
    return i == j ? diagonal(i) : lower_.at(at(ordering_->slot(i, j)));
}

}  // namespace engines
