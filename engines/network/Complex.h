#pragma once

#include <complex>
#include <utility>
#include <vector>

namespace engines {

using Complex = std::complex<double>;
using ComplexVector = std::vector<Complex>;
/// Weights of a few buses.
using BusWeights = std::vector<std::pair<int, Complex>>;

/// The product written out: the library's looks for infinities, which no inner loop here needs.
inline Complex product(Complex a, Complex b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

/// One over z, likewise; of what is too large or too small for it by the library's way.
inline Complex reciprocal(Complex z) {
    const double size = std::norm(z);
    return size > 1e-280 && size < 1e280 ? std::conj(z) * (1 / size) : 1.0 / z;
}

}  // namespace engines
