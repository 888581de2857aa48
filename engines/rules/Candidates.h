#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include "engines/rules/BranchCoefficients.h"
#include "engines/rules/FaultCalculation.h"
#include "engines/rules/Sections.h"
#include "engines/rules/Study.h"

namespace engines {

/// What the candidate of a mode is, as the result file records it.
struct Choice {
    int modeNo = 0;
    int nSela = 0;  ///< fault number; I node; relay number
    int nSelb = 0;  ///< outage number or 0; J node
    int nSelc = 0;  ///< element number
    int nSys = 0;   ///< operating mode, 0 the network as it stands
};

/// One candidate of a mode: the values of the mode's variables there, in their order; NaN where there is none.
struct Candidate {
    Choice choice;
    std::vector<double> values;
    std::string lack;     ///< why it is none after all; empty when every variable has a value
    bool unseen = false;  ///< a fault that no source feeds, or that brings the relay none of the currents asked for
};

/// One rule of one relay part with what its section of the input gives.
struct RuleInHand {
    const StudyRelay& relay;
    std::vector<int> operatingModes{0};  ///< never empty
    std::map<int, FaultCases> cases;     ///< by mode of the rule
};

/// Finds the candidates of a mode, in the order in which ties are decided.
class CandidateFinder {
  public:
    /// All must outlive this.
    CandidateFinder(const Study& study, const Sections& sections, FaultCalculation& calculation,
                    BranchCoefficients& coefficients);

    std::vector<Candidate> find(int modeNo, std::span<const exchange::RuleVariable> variables, const RuleInHand& rule);

  private:
    using Variables = std::span<const exchange::RuleVariable>;
    std::vector<Candidate> ownData(Variables variables, const RuleInHand& rule);
    std::vector<Candidate> faults(int modeNo, Variables variables, const RuleInHand& rule);
    void faultsUnder(int sysNo, const FaultCases& cases, Variables variables, const RuleInHand& rule,
                     std::vector<Candidate>& found);
    std::vector<Candidate> branches(const std::vector<AdjacentBranch>& found, Variables variables,
                                    const RuleInHand& rule);
    std::vector<Candidate> relays(Variables variables, const RuleInHand& rule);
    double ownValue(const exchange::RuleVariable& variable, int sysNo, const StudyRelay& relay);
    double branchValue(int vType, const AdjacentBranch& branch, const StudyRelay& relay);
    double coefficient(int vType, const AdjacentBranch& branch, const StudyRelay& relay);
    Candidate branchCandidate(const AdjacentBranch& branch, Variables variables, const RuleInHand& rule);

    const Study& study_;
    const Sections& sections_;
    FaultCalculation& calculation_;
    BranchCoefficients& coefficients_;
};

/// The setting that 401 to 420 ask for. NaN when the relay has no such part, or the part is not set yet: its first
/// setting, the one that operates, is 0. A time of 0 of a part that is set is a value.
double settingOf(const StudyRelay& relay, int vType);

}  // namespace engines
