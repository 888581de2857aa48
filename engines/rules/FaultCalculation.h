#pragma once

#include <deque>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "engines/faults/FaultStudy.h"
#include "engines/network/Threads.h"
#include "engines/rules/FaultCases.h"

namespace engines {

/// A fault quantity of a rule: what and where, as `VType` and `VPos` give them.
struct QuantityAsked {
    int vType = 0;
    int vPos = 0;
};

/// The quantities of one fault as a relay sees them, in kA, kV, kilo-ohm; NaN where a quantity does not exist.
struct QuantitiesSeen {
    std::vector<double> values;
    bool dead = false;  ///< the fault lies where no source feeds it
};

/// The electrical side of a rule run: what is computed on the sequence networks. `sysNo` 0 is the network as it stands.
/// Several threads may ask at once.
class FaultCalculation {
  public:
    virtual ~FaultCalculation() = default;
    /// Tells which operating modes will be asked for. \param threads  as in inParallel
    virtual void prepare(std::span<const int> /*sysNos*/, int /*threads*/) {}
    /// For each of the faults under one outage.
    virtual std::vector<QuantitiesSeen> quantities(int sysNo, const FaultCase& outage,
                                                   std::span<const FaultCase* const> faults, const RelayPlace& relay,
                                                   std::span<const QuantityAsked> asked) = 0;
    /// Of each relay's branch for one main branch, one fault and one outage; 0 where there is none.
    virtual std::vector<double> branchCoefficients(int sysNo, Sequence sequence, const FaultCase& outage,
                                                   const FaultCase& fault, std::span<const BranchEnd> relays,
                                                   BranchEnd main) = 0;
    /// Source impedance behind a relay's own end, per unit; infinite without a source.
    virtual Complex sourceImpedance(int sysNo, Sequence sequence, const RelayPlace& relay) = 0;
    /// The operating mode has the branch cut out in the positive sequence.
    virtual bool isCutOut(int sysNo, BranchIndex branch) const = 0;
};

/// On the factorised networks, one per operating mode, made when they are prepared or first asked for and kept;
/// solutions are kept for the rules and relays that ask again.
class ModeStudies : public FaultCalculation {
  public:
    /// Both must outlive this.
    ModeStudies(const Network& network, const std::map<int, std::vector<ModeChange>>& modes);
    ~ModeStudies() override;

    void prepare(std::span<const int> sysNos, int threads) override;
    std::vector<QuantitiesSeen> quantities(int sysNo, const FaultCase& outage, std::span<const FaultCase* const> faults,
                                           const RelayPlace& relay, std::span<const QuantityAsked> asked) override;
    std::vector<double> branchCoefficients(int sysNo, Sequence sequence, const FaultCase& outage,
                                           const FaultCase& fault, std::span<const BranchEnd> relays,
                                           BranchEnd main) override;
    Complex sourceImpedance(int sysNo, Sequence sequence, const RelayPlace& relay) override;
    [[nodiscard]] bool isCutOut(int sysNo, BranchIndex branch) const override;

  private:
    using Solutions = std::unordered_map<std::string, Solution>;  // by the text of a fault
    const ModeNetwork& mode(int sysNo);
    std::shared_ptr<Solutions> solutionsOf(int sysNo, const FaultCase& outage);
    Solution solution(int sysNo, const FaultCase& outage, const FaultCase& fault, const Solution* like,
                      Solutions& kept);
    [[nodiscard]] const std::vector<ModeChange>& changes(int sysNo) const;

    const Network& network_;
    const std::map<int, std::vector<ModeChange>>& modes_;
    BriefLock networksMutex_;
    std::map<int, std::unique_ptr<ModeNetwork>> networks_;
    BriefLock solutionsMutex_;
    std::unordered_map<std::string, std::shared_ptr<Solutions>> solutions_;  // by operating mode and outage
    std::deque<std::string> oldest_;
};

}  // namespace engines
