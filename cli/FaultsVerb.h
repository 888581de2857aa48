#pragma once

#include <QHash>
#include <QString>
#include <string>
#include <vector>

#include "cli/Context.h"
#include "engines/study/FaultReport.h"
#include "engines/study/NamePlates.h"

namespace host {
struct NetworkModel;
}

/// The verb "faults": a fault study of a project's network. FaultsNetwork brings the network, FaultsCases what is asked
/// of it, FaultsOutput the answer.
namespace cli {

/// What the words behind "faults" say.
struct FaultsWish {
    std::string project, scheme, loadFlow, mode;
    std::vector<std::string> outages, buses, branches, conditions, impedances, kinds;
    std::vector<double> percents;
    std::string zf = "0", method = "classical", c, currents, out = "table";
    bool charging = false, factors = false;
    [[nodiscard]] bool iec() const { return method == "iec60909"; }
};

/// The network of a study with the names of its elements.
struct FaultsNetwork {
    engines::Network network;
    std::vector<engines::ModeChange> changes;  ///< of the operating mode and the outages
    std::vector<double> charging;              ///< see engines::addZeroSequenceCharging
    engines::Iec60909Method method;
    std::vector<engines::AppliedFactor> factors;
    QHash<QString, int> buses, branches, sources;  ///< by name; a winding is "NAME:k"
    std::vector<QString> busNames, branchNames, sourceNames;

    /// Factor on currents and voltages of a fault at a bus.
    [[nodiscard]] double factorAt(engines::BusIndex bus) const;
    bool iec = false;
    double prefault = 1;  ///< of the classical method
};

/// One fault, or conditions that act together.
struct FaultsCase {
    QString place, kind;  ///< as they are shown; kind as it is asked for
    std::vector<engines::Condition> conditions;
};

/// Builds the network of the open project. \return false with the exit code set
bool loadFaultsNetwork(Context& context, const FaultsWish& wish, FaultsNetwork& result);
/// \param idNo  element numbers by name with the suffix of its kind: "_ac", "_2w", "_sf", "_3w1"
engines::NamePlates namePlates(const host::NetworkModel& model, const QHash<QString, int>& idNo);

/// What is asked for; empty when every bus is meant. \return false with the exit code set
bool findFaultsCases(Context& context, const FaultsWish& wish, const FaultsNetwork& network,
                     std::vector<FaultsCase>& cases);
/// Kinds of faults at every bus.
std::vector<engines::FaultKind> faultKinds(const FaultsWish& wish);
QString kindCode(engines::FaultKind kind);
/// "R+jX" in ohm. \return false when it is none
bool parseImpedance(const std::string& text, engines::Complex& ohm);
bool findBranchEnd(const FaultsNetwork& network, const QString& text, engines::BranchEnd& end);

void writeFaults(const FaultsWish& wish, const FaultsNetwork& network, const std::vector<FaultsCase>& cases,
                 const std::vector<engines::FaultReport>& reports);

}  // namespace cli
