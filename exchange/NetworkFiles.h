#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The network as VASKEL.EXE hands it to the other two executables. All impedances per unit on 100 MVA and the base
/// voltage of the bus (for a branch: of its I bus), angles in degrees, lengths in km, currents in A, voltages in kV.
namespace exchange {

struct NetBus {
    int no = 0;  ///< bus number; 2 and above
    double baseKv = 0;
    double vMag = 1;    ///< load-flow voltage, per unit; 1 without a load flow
    double vAngle = 0;  ///< degrees
    double vMinKv = 0;  ///< lowest working voltage, phase to phase; 0 unknown
    std::string name;   ///< GBK; of the first node joined in the bus (NAME.INC)
};

struct NetLine {
    int idNo = 0;
    int iNo = 0, jNo = 0;
    double r1 = 0, x1 = 0, r0 = 0, x0 = 0;
    double lengthKm = 0;
    double ratedA = 0;    ///< 0 unknown
    double maxLoadA = 0;  ///< largest load current; 0 unknown
};

/// A two-winding transformer, or one winding of a three-winding one as a branch from its star point.
struct NetTransformer {
    int idNo = 0;
    int iNo = 0, jNo = 0;  ///< for a winding iNo is the star point
    int kind = 1;          ///< 1 two-winding; 31, 32, 33 a winding
    double r1 = 0, x1 = 0;
    double r0 = 0, x0 = 0;  ///< with three times the neutral impedances of the zero-sequence path included
    int zcType = 0;         ///< zero-sequence path: 1 shunt at I, 2 shunt at J, 3 through, other none
    double ratedMva = 0;
    double ratedKvI = 0, ratedKvJ = 0;
    double maxLoadA = 0;  ///< at the I side; 0 unknown
};

struct NetGenerator {
    std::string name;  ///< GBK (NAME.INC)
    int no = 0;        ///< bus number
    double r1 = 0, x1 = 0;
    double r0 = 0, x0 = 0;  ///< meaningful when grounded, three times the neutral impedance included
    bool grounded = false;
    double ratedMva = 0, ratedKv = 0;
    double pMw = 0, qMvar = 0;  ///< load-flow injection
};

/// A shunt: a capacitor (x1 < 0) or a reactor (x1 > 0). Only a grounded reactor takes part, in the zero sequence.
struct NetShunt {
    int idNo = 0;
    int no = 0;
    double x1 = 0, r0 = 0, x0 = 0;
    bool grounded = false;
    double ratedMvar = 0, ratedKv = 0;
};

struct NetMutual {
    int firstId = 0, secondId = 0;
    double r0 = 0, x0 = 0;
    int sense = 1;                        ///< +1 when both lines run the same way from I to J, -1 when opposite
    double firstFrom = 0, firstTo = 100;  ///< coupled stretch of the first line in percent from its I end
    double secondFrom = 0, secondTo = 100;
};

struct NetworkData {
    bool loadFlow = false;  ///< the voltages and injections are those of a load-flow case
    std::vector<NetBus> buses;
    std::vector<NetLine> lines;
    std::vector<NetTransformer> transformers;
    std::vector<NetGenerator> generators;
    std::vector<NetShunt> shunts;
    std::vector<NetMutual> mutuals;
};

/// Writes LF.L0 to LF.L6, LF.L13, ST.S1 to ST.S7 and NAME.INC below a directory, each written aside and renamed;
/// LF.L0 goes first and comes last, so that files of two networks are never read together.
/// \throws FormatError
void writeNetwork(const std::filesystem::path& directory, const NetworkData& network);
/// Reads them back; exact for every double. \throws FormatError, `FILE:LINE: what is wrong`
NetworkData readNetwork(const std::filesystem::path& directory);

}  // namespace exchange
