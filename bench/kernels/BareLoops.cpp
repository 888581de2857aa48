#include "bench/kernels/BareLoops.h"

#include <algorithm>
#include <numbers>

namespace bare {
namespace {

using engines::product;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

Complex inverse(Complex z) { return std::conj(z) * (1 / std::norm(z)); }

std::array<Complex, 3> phases(Complex p, Complex n, Complex z) {
    const Complex half = z - 0.5 * (p + n), d = std::numbers::sqrt3 / 2 * (p - n), turned{-d.imag(), d.real()};
    return {z + p + n, half - turned, half + turned};
}

}  // namespace

Grid::Grid(const engines::Network& network) : ordering(engines::orderingOf(network)) {
    const auto& place = ordering->place;
    for (const auto& b : network.branches) {
        from.push_back(place[at(b.from.value)]);
        to.push_back(place[at(b.to.value)]);
        slot.push_back(ordering->pairSlot[z[0].size()]);
        z[0].push_back(b.z1);
        z[1].push_back(b.z0);
    }
    for (const auto& s : network.sources) {
        shunts[0].emplace_back(place[at(s.bus.value)], 1.0 / s.z1);
        shunts[1].emplace_back(place[at(s.bus.value)], 1.0 / s.z0);
    }
    y = z;
    std::vector<std::vector<int>> lists(place.size());
    for (std::size_t k = 0; k < from.size(); ++k) {
        lists[at(from[k])].push_back(static_cast<int>(2 * k));
        lists[at(to[k])].push_back(static_cast<int>(2 * k + 1));
    }
    endStart.push_back(0);
    for (const auto& list : lists) {
        ends.insert(ends.end(), list.begin(), list.end());
        endStart.push_back(static_cast<int>(ends.size()));
    }
}

Work::Work(const Grid& grid)
    : sums(at(grid.ordering->n)), voltages(at(grid.ordering->n)), currents(2 * grid.from.size()) {
    for (int s = 0; s < 2; ++s) {
        factors[at(s)] = inverse[at(s)] = {sums, ComplexVector(grid.ordering->lowerRow.size())};
        columns[at(s)] = sums;
    }
}

void assemble(Grid& grid, int sequence, Matrix& m) {
    std::fill(m.diagonal.begin(), m.diagonal.end(), Complex{});
    std::fill(m.lower.begin(), m.lower.end(), Complex{});
    const ComplexVector& z = grid.z[at(sequence)];
    ComplexVector& y = grid.y[at(sequence)];
    for (std::size_t k = 0; k < z.size(); ++k) {
        y[k] = inverse(z[k]);
        m.diagonal[at(grid.from[k])] += y[k];
        m.diagonal[at(grid.to[k])] += y[k];
        m.lower[at(grid.slot[k])] -= y[k];
    }
    for (const auto& [place, shunt] : grid.shunts[at(sequence)]) m.diagonal[at(place)] += shunt;
}

void factorise(const Ordering& o, Matrix& m) {
    const int *row = o.lowerRow.data(), *update = o.updates.data();
    Complex *lower = m.lower.data(), *diagonal = m.diagonal.data();
    for (int k = 0; k < o.n; ++k) {
        const Complex d = diagonal[k] = inverse(diagonal[k]);
        const int end = o.lowerStart[at(k) + 1];
        for (int p = o.lowerStart[at(k)]; p < end; ++p) {
            const Complex v = lower[p], l = lower[p] = product(v, d);
            diagonal[row[p]] -= product(l, v);
            for (int q = p + 1; q < end; ++q) lower[*update++] -= product(l, lower[q]);
        }
    }
}

void invert(const Ordering& o, const Matrix& factors, Matrix& inverse, ComplexVector& sums) {
    inverse = factors;
    const int *row = o.lowerRow.data(), *next = o.updates.data() + o.updates.size();
    Complex *z = inverse.lower.data(), *diagonal = inverse.diagonal.data(), *sum = sums.data();
    for (int k = o.n - 1; k >= 0; --k) {
        const int begin = o.lowerStart[at(k)], count = o.lowerStart[at(k) + 1] - begin;
        const int* update = next -= count * (count - 1) / 2;
        Complex* l = z + begin;
        for (int a = 0; a < count; ++a) sum[a] = product(l[a], diagonal[row[begin + a]]);
        for (int a = 0; a < count; ++a) {
            Complex own = sum[a];
            for (int b = a + 1; b < count; ++b) {
                const Complex entry = z[*update++];
                own += product(entry, l[b]);
                sum[b] += product(entry, l[a]);
            }
            sum[a] = own;
        }
        Complex driving = diagonal[k];
        for (int a = 0; a < count; ++a) driving += product(l[a], sum[a]), l[a] = -sum[a];
        diagonal[k] = driving;
    }
}

double allBuses(const Grid& grid, const Work& work) {
    const auto& [z1, z0] = work.inverse;
    Complex total;
    for (int i = 0; i < grid.ordering->n; ++i) {
        const Complex own1 = z1.diagonal[at(i)], own0 = z0.diagonal[at(i)];
        const Complex three = inverse(own1), earth = inverse(2.0 * own1 + own0), two = 0.5 * three;
        const Complex back = product(own1, inverse(own1 + own0));
        const Complex twoEarth = inverse(own1 + product(own1, 1.0 - back));
        const Complex faults[4][3] = {{three, 0, 0},
                                      {earth, earth, earth},
                                      {two, -two, 0},
                                      {twoEarth, product(-twoEarth, 1.0 - back), product(-twoEarth, back)}};
        for (int e = grid.endStart[at(i)]; e < grid.endStart[at(i) + 1]; ++e) {
            const std::size_t k = at(grid.ends[at(e)]) / 2, slot = at(grid.slot[k]);
            const Complex share1 = product(grid.y[0][k], z1.lower[slot] - own1);
            const Complex share0 = product(grid.y[1][k], z0.lower[slot] - own0);
            for (const auto& f : faults) total += product(share1, f[0]) + product(share1, f[1]) + product(share0, f[2]);
        }
    }
    return total.real();
}

namespace {

void solveUnit(const Ordering& o, const Matrix& m, int place, ComplexVector& x) {
    std::fill(x.begin(), x.end(), Complex{});
    x[at(place)] = 1;
    for (int k = place; k >= 0; k = o.parent[at(k)]) {
        for (int p = o.lowerStart[at(k)]; p < o.lowerStart[at(k) + 1]; ++p) {
            x[at(o.lowerRow[at(p)])] -= product(m.lower[at(p)], x[at(k)]);
        }
    }
    for (int k = o.n - 1; k >= 0; --k) {
        Complex sum = product(x[at(k)], m.diagonal[at(k)]);
        for (int p = o.lowerStart[at(k)]; p < o.lowerStart[at(k) + 1]; ++p) {
            sum -= product(m.lower[at(p)], x[at(o.lowerRow[at(p)])]);
        }
        x[at(k)] = sum;
    }
}

}  // namespace

void fullFault(const Grid& grid, int place, Work& work) {
    for (std::size_t s = 0; s < 2; ++s) {
        solveUnit(*grid.ordering, work.factors[s], place, work.columns[s]);
    }
    const auto& [x1, x0] = work.columns;
    const Complex i = inverse(2.0 * x1[at(place)] + x0[at(place)]);
    for (std::size_t k = 0; k < x1.size(); ++k) {
        const Complex v = product(-i, x1[k]);
        work.voltages[k] = phases(1.0 + v, v, product(-i, x0[k]));
    }
    for (std::size_t k = 0; k < grid.from.size(); ++k) {
        const std::size_t a = at(grid.from[k]), b = at(grid.to[k]);
        const Complex current = product(grid.y[0][k], product(i, x1[b] - x1[a]));
        const auto into = phases(current, current, product(grid.y[1][k], product(i, x0[b] - x0[a])));
        work.currents[2 * k] = into;
        work.currents[2 * k + 1] = {-into[0], -into[1], -into[2]};
    }
}

LocalStudy::LocalStudy(const Grid& grid, const Work& work, const std::vector<int>& places,
                       const std::vector<int>& relays)
    : grid_(grid), work_(work), seen_(relays.size()) {
    for (int s = 0; s < 2; ++s) {
        InSequence& in = sequences_[at(s)];
        for (const int p : places) in.places.push_back(unit(s, p));
        for (const int k : relays) in.relays.push_back(across(s, k, grid.y[at(s)][at(k)]));
        for (const Way& p : in.places) {
            in.driving.push_back(dot(p, p));
            for (const Way& r : in.relays) in.share.push_back(-dot(r, p));
        }
        in.drivingNow = in.driving, in.shareNow = in.share;
    }
}

LocalStudy::Way LocalStudy::unit(int sequence, int place) const {
    const Ordering& o = *grid_.ordering;
    const Matrix& m = work_.factors[at(sequence)];
    Way way{place, ComplexVector(at(o.depth[at(place)]) + 1), {}};
    way.half.back() = 1;
    way.driven = way.half;
    for (int k = place; k >= 0; k = o.parent[at(k)]) {
        const Complex x = way.half[at(o.depth[at(k)])];
        way.driven[at(o.depth[at(k)])] = product(x, m.diagonal[at(k)]);
        for (int p = o.lowerStart[at(k)]; p < o.lowerStart[at(k) + 1]; ++p) {
            way.half[at(o.depth[at(o.lowerRow[at(p)])])] -= product(m.lower[at(p)], x);
        }
    }
    return way;
}

LocalStudy::Way LocalStudy::across(int sequence, int branch, Complex weight) const {
    Way a = unit(sequence, grid_.from[at(branch)]), b = unit(sequence, grid_.to[at(branch)]);
    if (a.leaf > b.leaf) std::swap(a, b);
    const Complex sign = a.leaf == grid_.from[at(branch)] ? weight : -weight;
    for (std::size_t d = 0; d < a.half.size(); ++d) {
        const bool both = d < b.half.size();
        a.half[d] = product(sign, a.half[d] - (both ? b.half[d] : Complex{}));
        a.driven[d] = product(sign, a.driven[d] - (both ? b.driven[d] : Complex{}));
    }
    return a;
}

Complex LocalStudy::dot(const Way& seen, const Way& driven) const {
    const int common = grid_.ordering->commonDepth(seen.leaf, driven.leaf);
    double rr = 0, ii = 0, ri = 0, ir = 0;
    for (int d = 0; d <= common; ++d) {
        const Complex a = seen.half[at(d)], b = driven.driven[at(d)];
        rr += a.real() * b.real(), ii += a.imag() * b.imag(), ri += a.real() * b.imag(), ir += a.imag() * b.real();
    }
    return {rr - ii, ri + ir};
}

void LocalStudy::under(int branch) {
    for (int s = 0; s < 2; ++s) {
        InSequence& in = sequences_[at(s)];
        const Complex y = grid_.y[at(s)][at(branch)];
        const Way out = across(s, branch, 1);
        const Complex factor = inverse(inverse(y) - dot(out, out));
        for (std::size_t r = 0; r < in.relays.size(); ++r) seen_[r] = dot(in.relays[r], out);
        for (std::size_t p = 0; p < in.places.size(); ++p) {
            const Complex seen = dot(in.places[p], out), back = product(factor, seen);
            in.drivingNow[p] = in.driving[p] + product(seen, back);
            for (std::size_t r = 0; r < in.relays.size(); ++r) {
                const std::size_t i = p * in.relays.size() + r;
                in.shareNow[i] = in.share[i] - product(seen_[r], back);
            }
        }
    }
}

Complex LocalStudy::earthFaults() const {
    const auto& [positive, zero] = sequences_;
    Complex total;
    for (std::size_t p = 0; p < positive.places.size(); ++p) {
        const Complex i = inverse(2.0 * positive.drivingNow[p] + zero.drivingNow[p]);
        for (std::size_t r = 0; r < positive.relays.size(); ++r) {
            const std::size_t k = p * positive.relays.size() + r;
            total += product(i, 2.0 * positive.shareNow[k] + zero.shareNow[k]);
        }
    }
    return total;
}

}  // namespace bare
