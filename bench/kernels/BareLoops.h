#pragma once

#include <array>
#include <memory>
#include <vector>

#include "engines/network/Network.h"
#include "engines/network/Ordering.h"

/// The least that each study must do, as plain loops over arrays made beforehand: what the program's own calls are
/// measured against. No islands, coupled lines, turns ratios or checks; right for networks that need none.
namespace bare {

using engines::Complex;
using engines::ComplexVector;
using engines::Ordering;

struct Matrix {
    ComplexVector diagonal, lower;
};

/// A network as arrays, in elimination order; values by sequence: positive, zero.
struct Grid {
    explicit Grid(const engines::Network& network);

    std::shared_ptr<const Ordering> ordering;
    std::vector<int> from, to, slot;    // by branch
    std::array<ComplexVector, 2> z, y;  // by branch
    std::array<std::vector<std::pair<int, Complex>>, 2> shunts;
    std::vector<int> endStart, ends;  // by place: 2 x branch, + 1 at the J end
};

/// Results and workspace, kept from one call to the next: nothing is allocated while the time runs.
struct Work {
    explicit Work(const Grid& grid);

    std::array<Matrix, 2> factors, inverse;
    ComplexVector sums;
    std::array<ComplexVector, 2> columns;
    std::vector<std::array<Complex, 3>> voltages, currents;
};

/// Admittances, matrix and factors of one sequence.
void assemble(Grid& grid, int sequence, Matrix& matrix);
void factorise(const Ordering& o, Matrix& matrix);
void invert(const Ordering& o, const Matrix& factors, Matrix& inverse, ComplexVector& sums);
/// All buses x four kinds x the currents of the branch ends there, from the selected inverses.
/// \return a number that depends on every one of them
double allBuses(const Grid& grid, const Work& work);
/// A phase-to-ground fault: voltages of all buses and currents into all branch ends, in phases.
void fullFault(const Grid& grid, int place, Work& work);

/// Fault places at buses and relays at branches, under one outage after the other.
class LocalStudy {
  public:
    LocalStudy(const Grid& grid, const Work& work, const std::vector<int>& places, const std::vector<int>& relays);
    /// Driving-point impedances of the places, and the currents of the relays for a unit at each place, under an
    /// outage.
    void under(int branch);
    /// The sum of the sequence currents of all relays for a phase-to-ground fault at each place.
    [[nodiscard]] Complex earthFaults() const;

  private:
    struct Way {
        int leaf = -1;
        ComplexVector half, driven;
    };
    struct InSequence {
        std::vector<Way> places, relays;
        ComplexVector driving, share, drivingNow, shareNow;
    };
    [[nodiscard]] Way unit(int sequence, int place) const;
    [[nodiscard]] Way across(int sequence, int branch, Complex weight) const;
    [[nodiscard]] Complex dot(const Way& seen, const Way& driven) const;

    const Grid& grid_;
    const Work& work_;
    std::array<InSequence, 2> sequences_;
    ComplexVector seen_;
};

}  // namespace bare
