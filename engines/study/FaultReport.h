#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "engines/faults/BusStudy.h"
#include "engines/faults/FaultStudy.h"

/// What a fault study tells of a fault, in kA, kV (phase to ground), MVA and ohm.
namespace engines {

enum class Currents { None, Touching, All };

struct BranchCurrent {
    BranchEnd end;
    Sequences ka;  ///< into the branch
};
struct SourceCurrent {
    int source = -1;
    Sequences ka;  ///< into the network
};
struct BusVoltage {
    BusIndex bus;
    Sequences kv;
};
/// Impedances that a distance relay at a branch end measures, primary ohm; not finite where a loop carries no current.
struct ApparentImpedance {
    BranchEnd end;
    std::array<Complex, 3> ground;  ///< A, B, C: U / (I + K0 3I0), K0 of the branch
    std::array<Complex, 3> phase;   ///< AB, BC, CA
};

struct FaultReport {
    BusIndex bus;       ///< of the fault, or the nearer end of its branch; -1 without a shunt fault
    Sequences ka;       ///< current into the fault
    Sequences kv;       ///< voltage at the fault
    double mva = 0;     ///< sqrt3 x base voltage x largest phase current
    bool dead = false;  ///< no path to a source: everything is zero
    std::vector<BranchCurrent> branches;
    std::vector<SourceCurrent> sources;
    std::vector<BusVoltage> voltages;
    std::vector<ApparentImpedance> impedances;
};

struct ReportScope {
    Currents currents = Currents::Touching;
    std::vector<BranchEnd> relays;  ///< whose apparent impedances are wanted
};

/// Makes the reports of one operating mode.
class FaultReporter {
  public:
    /// \param mode         outlives the reporter
    /// \param scope        what the reports hold
    /// \param chargingAtEnd  per branch the zero-sequence susceptance at each end, per unit; empty: none
    FaultReporter(const ModeNetwork& mode, ReportScope scope, std::vector<double> chargingAtEnd = {});

    /// Conditions that act together. \param factor  on all currents and voltages: the voltage factor of the method
    [[nodiscard]] FaultReport report(std::span<const Condition> conditions, double factor) const;
    /// A shunt fault at a bus by the study of all buses; without Currents::All and apparent impedances.
    [[nodiscard]] FaultReport report(const BusStudy& study, BusIndex bus, FaultKind kind, Complex z,
                                     double factor) const;

  private:
    [[nodiscard]] const Network& network() const { return mode_->network(); }
    [[nodiscard]] BusIndex busAt(BranchEnd end) const;
    [[nodiscard]] Sequences withCharging(BranchEnd end, Sequences current, Complex zeroVoltage) const;
    void addTouching(std::span<const Condition> conditions, const Solution& solution, double factor,
                     FaultReport& report) const;
    void addAll(const Solution& solution, double factor, FaultReport& report) const;
    void addBranch(BranchEnd end, const Solution& solution, double factor, FaultReport& report) const;
    [[nodiscard]] ApparentImpedance impedanceAt(BranchEnd end, const Solution& solution) const;

    const ModeNetwork* mode_;
    ReportScope scope_;
    std::vector<double> charging_;
};

}  // namespace engines
