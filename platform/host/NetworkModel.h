#pragma once

#include <string>
#include <vector>

/// A network as every importer delivers it and the base tables hold it. Text is UTF-8. Impedances are per unit on
/// 100 MVA and the base voltage of the (I) node, zero-sequence values without the neutral impedance; NaN: not given.
namespace host {

struct Station {
    std::string name;
    double x = 0, y = 0;
    bool hasPosition = false;
};

struct Node {
    std::string name;
    double baseKv = 0;
    int nodeType = 0;  ///< 1 a T node
    std::string bus;   ///< diagram bus that groups nodes
    bool physicalBus = false;
    std::string station;
    double x = 0, y = 0;  ///< diagram coordinates
    bool hasPosition = false;
    double vMinKv = 0;  ///< lowest working voltage, phase to phase; 0 unknown
};

struct Line {
    std::string name, i, j;
    double r1 = 0, x1 = 0, b1 = 0;
    double r0 = 0, x0 = 0, b0 = 0;
    double lengthKm = 0;
    double ratedA = 0, maxLoadA = 0;
    bool openAtI = false, openAtJ = false;
    bool inService = true;
    double endTemperature = 0;  ///< of the conductor at the end of a short circuit, degrees; 0 unknown
};

enum class Grounding { Delta, Isolated, Grounded };  ///< of a winding: delta, star not grounded, star grounded

struct Winding {
    std::string node;
    double ratedKv = 0;
    double ratedMva = 0;
    Grounding grounding = Grounding::Isolated;
    double rn = 0, xn = 0;  ///< neutral impedance, ohm
};

struct Transformer2 {
    std::string name;
    Winding i, j;
    double r1 = 0, x1 = 0, r0 = 0, x0 = 0;
    double tapRatio = 1;    ///< off-nominal ratio; kept, not used by the fault calculation
    double phaseShift = 0;  ///< degrees
    bool tapChanger = false;
    bool phaseShifter = false;
    double maxLoadA = 0;
    bool inService = true;
    bool unit = false;  ///< belongs to a power station unit, with the generator at one of its nodes
};

struct Transformer3 {
    std::string name;
    std::string star;  ///< name of the star point
    Winding winding[3];
    double r1[3] = {}, x1[3] = {}, r0[3] = {}, x0[3] = {};  ///< of each winding's branch from the star point
    bool tapChanger = false;
    bool inService = true;
};

struct Generator {
    std::string name, node;
    double ratedMva = 0, ratedKv = 0, cosPhi = 0;
    double r1 = 0, x1 = 0;  ///< R and Xd''
    double r0 = 0, x0 = 0;
    bool grounded = false;
    double rn = 0, xn = 0;  ///< neutral impedance, ohm
    double pMw = 0, qMvar = 0;
    std::string kind;  ///< "generator", "motor", "feeder"
    bool inService = true;
    double voltageRange = 0;          ///< of a generator's voltage regulation, as a share of ratedKv
    double ikMaxKa = 0, ikMinKa = 0;  ///< initial short-circuit currents of a feeder; 0 not given
};

struct Shunt {
    std::string name, node;
    double x1 = 0;  ///< negative: capacitor, positive: reactor
    double r0 = 0, x0 = 0;
    bool grounded = false;
    double ratedMvar = 0, ratedKv = 0;
    bool inService = true;
};

struct Load {
    std::string name, node;
    double pMw = 0, qMvar = 0;
    bool inService = true;
};

struct Switch {
    std::string name, i, j;
    bool breaker = true;  ///< else a disconnector
    bool closed = true;
};

struct Mutual {
    std::string first, second;  ///< line names
    double r0 = 0, x0 = 0;
    int sense = 1;
    double firstFrom = 0, firstTo = 100, secondFrom = 0, secondTo = 100;
};

/// A scheme: what differs from the base network.
struct Scheme {
    std::string name;
    struct Change {
        std::string table;  ///< "line", "transformer2", "transformer3", "generator", "shunt", "switch"
        std::string element;
        bool inService = true;  ///< for a switch: closed
    };
    std::vector<Change> changes;
};

struct LoadFlowCase {
    int number = 1;  ///< 1 and above
    std::string name;
    std::string scheme;
    struct NodeState {
        std::string node;
        double vMag = 1, vAngle = 0;
    };
    struct Injection {
        std::string element;
        double pMw = 0, qMvar = 0;
    };
    std::vector<NodeState> nodes;
    std::vector<Injection> generators;
};

/// An operating mode by name: branch changes, in per unit.
struct OperatingMode {
    std::string name, note;
    struct Change {
        int m10 = 1;
        std::string element, i, j;
        bool cut = false;
        bool ohm = false;
        double r = 0, x = 0;
    };
    std::vector<Change> changes;
    bool maximum = true;  ///< suggested use
};

struct NetworkModel {
    std::string name;
    std::vector<Station> stations;
    std::vector<Node> nodes;
    std::vector<Line> lines;
    std::vector<Transformer2> transformers2;
    std::vector<Transformer3> transformers3;
    std::vector<Generator> generators;
    std::vector<Shunt> shunts;
    std::vector<Load> loads;
    std::vector<Switch> switches;
    std::vector<Mutual> mutuals;
    std::vector<Scheme> schemes;  ///< the first one is the base scheme; at least one
    std::vector<LoadFlowCase> loadFlow;
    std::vector<OperatingMode> modes;
};

}  // namespace host
