#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

#include "engines/rules/ElementData.h"
#include "engines/rules/FaultCalculation.h"
#include "engines/rules/Sections.h"
#include "engines/rules/Study.h"

namespace engines {

/// The largest branch coefficient in one sequence network and what decided it.
struct Coefficient {
    double value = 0;
    int fault = 0;   ///< fault number
    int outage = 0;  ///< 0 none
    int sysNo = 0;
};

struct CoefficientPair {
    Coefficient positive, zero;
    [[nodiscard]] bool none() const { return positive.value == 0 && zero.value == 0; }
};

/// Branch coefficients |I_B| / |I_M| of the relays of a study for its main branches; each is computed once, and those
/// that an earlier run found are taken over. Values are rounded to the digits of the result file, so that a
/// coefficient taken over equals one computed.
class BranchCoefficients {
  public:
    /// All must outlive this.
    BranchCoefficients(const Study& study, const Sections& sections, FaultCalculation& calculation);

    /// Nothing when the study has no main branch there, or the relay stands at no branch. A three-winding transformer
    /// entered from a bus takes the faults of the main branches behind its star point.
    std::optional<CoefficientPair> of(const AdjacentBranch& branch, const StudyRelay& relay);

    /// Computes every pair of a main branch and a relay whose branch leads to it, on several threads. What is asked
    /// for later is then known, but for the view of a three-winding transformer from a bus.
    /// \param threads  as in inParallel
    void computeAll(int threads);

    /// Lines of the result file: those of the earlier run, then every further pair of a main branch and a relay whose
    /// branch leads to it, by main branch and relay number. A pair without a coefficient in either sequence is left
    /// out.
    std::vector<exchange::CoefficientResult> lines();

  private:
    using Sighting = std::pair<int, int>;        // element number and start node
    using RelayEnd = std::pair<int, End>;        // branch and end
    using Key = std::tuple<int, int, RelayEnd>;  // main branch, its branch seen, relay's end
    std::vector<int> mainBranchesOf(const AdjacentBranch& branch) const;
    void compute(int mainBranch, const BranchView& m, const StudyRelay& relay);
    const CoefficientPair& computed(int mainBranch, const BranchView& m, const StudyRelay& relay);
    std::vector<BranchEnd> wantedWith(int mainBranch, const BranchView& m, const StudyRelay& relay);
    std::vector<CoefficientPair> largest(const StudyMainBranch& main, std::span<const BranchEnd> relays, BranchEnd m);
    void consider(const StudyMainBranch& main, int sysNo, std::span<const BranchEnd> relays, BranchEnd m,
                  std::vector<CoefficientPair>& best);
    const std::vector<std::vector<const StudyRelay*>>& relaysBefore();
    [[nodiscard]] BranchView viewOfMain(const StudyMainBranch& main) const;
    const CoefficientPair* earlier(int mainBranch, const StudyRelay& relay) const;
    exchange::CoefficientResult line(const StudyMainBranch& main, const StudyRelay& relay,
                                     const CoefficientPair& pair) const;

    const Study& study_;
    const Sections& sections_;
    FaultCalculation& calculation_;
    std::map<Sighting, int> mainBranchAt_;
    std::map<std::pair<int, int>, CoefficientPair> earlier_;  // by main branch number and relay number
    std::mutex mutex_;                                        // of what is kept
    std::map<Key, CoefficientPair> kept_;
    std::vector<std::vector<const StudyRelay*>> relaysBefore_;  // by main branch: those whose far end leads to it
};

}  // namespace engines
