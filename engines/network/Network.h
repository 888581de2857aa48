#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "engines/network/Complex.h"
#include "exchange/BranchGraph.h"
#include "exchange/NetworkFiles.h"

/// The network as the executables compute on it: positions instead of bus numbers, complex impedances per unit.
namespace engines {

/// A bus number as it stands in the files.
struct BusNo {
    int value = 0;
    friend bool operator==(BusNo, BusNo) = default;
};
/// The place of a bus in Network::buses; -1 none.
struct BusIndex {
    int value = -1;
    friend bool operator==(BusIndex, BusIndex) = default;
};
/// The place of a branch in Network::branches; -1 none.
struct BranchIndex {
    int value = -1;
    friend bool operator==(BranchIndex, BranchIndex) = default;
};

enum class End { I, J };
enum class Sequence { Positive, Zero };

/// How a branch stands in the zero sequence.
enum class ZeroPath { Through, GroundAtI, GroundAtJ, None };

struct Branch {
    int idNo = 0;
    BusIndex from, to;  ///< I and J end
    exchange::BranchKind kind = exchange::BranchKind::Line;
    int windingKind = 0;  ///< 31, 32, 33 for the windings of a three-winding transformer
    Complex z1, z0;       ///< per unit on 100 MVA and the base voltage of the buses
    /// Transformers: turns ratio I : J in per unit of the two base voltages. An ideal transformer at the I end; z1 and
    /// z0 lie behind it and are referred to the J side.
    double ratio = 1;
    ZeroPath zeroPath = ZeroPath::Through;
    double lengthKm = 0;
    double ratedA = 0;    ///< lines: rated current, 0 unknown
    double maxLoadA = 0;  ///< largest load current, referred to the I side; 0 unknown
    double ratedMva = 0;  ///< transformers
    double ratedKvI = 0, ratedKvJ = 0;
};

struct Source {
    std::string name;  ///< GBK
    BusIndex bus;
    Complex z1, z0;
    bool grounded = false;
    double ratedMva = 0, ratedKv = 0;
    Complex power;  ///< load-flow injection, per unit
};

/// A zero-sequence shunt at a bus: a grounded reactor.
struct ZeroShunt {
    BusIndex bus;
    Complex z0;
    int idNo = 0;
};

struct Mutual {
    BranchIndex first, second;
    Complex z0;  ///< of the whole coupled stretch, with the sign of its sense
    double firstFrom = 0, firstTo = 100, secondFrom = 0, secondTo = 100;  ///< percent from the I end of each
    bool opposite = false;                                                ///< the lines run opposite ways from I to J
};

struct Bus {
    BusNo no;
    double baseKv = 0;
    Complex voltage{1, 0};  ///< pre-fault voltage, per unit
    double vMinKv = 0;
    bool star = false;  ///< star point of a three-winding transformer
    std::string name;   ///< GBK
};

struct Ordering;
class OrderingCache;

struct Network {
    bool loadFlow = false;
    std::vector<Bus> buses;
    std::vector<Branch> branches;
    std::vector<Source> sources;
    std::vector<ZeroShunt> zeroShunts;
    std::vector<exchange::NetShunt> shunts;  ///< all shunts, for their own data
    std::vector<Mutual> mutuals;

    [[nodiscard]] BusIndex bus(BusNo no) const;
    /// The branch with this number that joins the two buses, in either order; -1 when there is none.
    [[nodiscard]] BranchIndex branch(int idNo, BusNo i, BusNo j) const;
    [[nodiscard]] int source(const std::string& name) const;  ///< place in sources, -1 none

    std::unordered_map<int, int> busByNo;
    std::unordered_multimap<int, int> branchById;
    std::shared_ptr<OrderingCache> orderings;  ///< elimination orders, found once for all operating modes; may be empty
};

/// The branches coupled with one another, ascending, for each set of them.
std::vector<std::vector<int>> coupledSets(const Network& network);
/// The order of elimination for both sequences: pairs are the ends of each branch, in their order, then those of the
/// branches of each coupled set.
std::shared_ptr<const Ordering> orderingOf(const Network& network);

/// \throws exchange::FormatError when an element names a bus that does not exist, or an impedance, a voltage, a power
/// or a coupled stretch is none or beyond every measure
Network buildNetwork(const exchange::NetworkData& data);

/// One element of an operating mode in positions.
struct ModeChange {
    BranchIndex branch;    ///< -1: a shunt of the zero sequence at `bus`
    BusIndex bus, second;  ///< the two nodes of the line; equal for a shunt
    Sequence sequence = Sequence::Positive;
    Complex z;
    bool cut = false;  ///< cut out in that sequence
};

}  // namespace engines
