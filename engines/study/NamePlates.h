#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engines/network/Network.h"

/// What stands on the name plates beside the impedances, and the network that IEC 60909 makes of both.
namespace engines {

struct WindingPlate {
    double ratedKv = 0, ratedMva = 0;
    Complex neutral;  ///< ohm; 0 unless the winding is a grounded star
};

/// Impedances per unit on 100 MVA and the base voltage of the I node (of winding 1), without neutral impedances.
struct TransformerPlate {
    int idNo = 0;
    WindingPlate i, j;
    Complex z1, z0;
    bool tapChanger = false;  ///< on load
    bool unit = false;        ///< of a power station unit
};
struct ThreeWindingPlate {
    int idNo = 0;  ///< of the branch of winding 1; the others follow
    WindingPlate winding[3];
    Complex z1[3], z0[3];
};

enum class SourceKind { Generator, Motor, Feeder };
struct SourcePlate {
    std::string name;  ///< as in Network::sources
    SourceKind kind = SourceKind::Generator;
    double ratedMva = 0, ratedKv = 0;
    double cosPhi = 0;                ///< rated power factor; 0 unknown
    double voltageRange = 0;          ///< p_G, as a share
    double ikMaxKa = 0, ikMinKa = 0;  ///< initial short-circuit current of a feeder; 0: its impedance as it stands
    Complex z0, neutral;              ///< z0 per unit without neutral impedance, the latter in ohm
};

struct LinePlate {
    int idNo = 0;
    double endTemperature = 0;  ///< degrees, at the end of the short circuit; 0 unknown
    double b0 = 0;              ///< zero-sequence charging susceptance, per unit
};

struct NamePlates {
    std::vector<TransformerPlate> transformers;
    std::vector<ThreeWindingPlate> threeWinding;
    std::vector<SourcePlate> sources;
    std::vector<LinePlate> lines;
};

/// A correction factor as it was applied; idNo of a branch, else a source.
struct AppliedFactor {
    std::string symbol;  ///< "K_T", "K_T12", "K_G", "K_S", "K_SO", "R"
    int idNo = 0;
    std::string source;
    double value = 1;
};

struct Iec60909Method {
    bool maximum = true;      ///< else the smallest currents: no motors, conductors hot, feeders at their weakest
    std::optional<double> c;  ///< voltage factor of all levels; without one that of each level
    /// Voltage factor at a bus.
    [[nodiscard]] double voltageFactor(double nominalKv) const;
};

/// Corrects a network for the initial currents of IEC 60909: rated turns ratios, for the largest currents factors K on
/// the sequence impedances (not on neutral impedances), flat start. Elements without a plate stay as they are; a unit
/// transformer without exactly one generator beside it counts as a network transformer.
/// \return the factors, in the order of the plates
std::vector<AppliedFactor> applyIec60909(Network& network, const NamePlates& plates, const Iec60909Method& method);

/// Zero-sequence charging of the lines: half of it at each end, as a shunt of the network.
/// \return  per branch the susceptance at one end, per unit, which its current there includes
std::vector<double> addZeroSequenceCharging(Network& network, const NamePlates& plates);

}  // namespace engines
