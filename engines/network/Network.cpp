#include "engines/network/Network.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

#include "engines/network/Ordering.h"
#include "exchange/TextFile.h"

namespace engines {
namespace {

using exchange::BranchKind;

/// Where an element stands in the network files, for messages.
struct Row {
    const char* file;
    int line;
};

[[noreturn]] void fail(Row row, const std::string& what) { throw exchange::FormatError(row.file, row.line, what); }

/// An element in a message, put together only when there is one.
struct Owner {
    const char* kind;
    int number = 0;
    const std::string* name = nullptr;  // instead of a number
    const char* addition = "";
    [[nodiscard]] std::string text() const {
        return std::string(kind) + " " + (name ? *name : std::to_string(number)) + addition;
    }
    [[nodiscard]] Owner with(const char* words) const { return {kind, number, name, words}; }
};

constexpr char kZeroSequence[] = " (zero sequence)";

// Beyond these nothing real lies, and products of values within them neither overflow nor vanish.
constexpr double kSmallestImpedance = 1e-12, kLargestImpedance = 1e12;  // per unit
constexpr double kSmallestKv = 1e-3, kLargestKv = 1e4;
constexpr double kSmallestVoltage = 1e-3, kLargestVoltage = 1e3;  // per unit
constexpr double kLargestPower = 1e9;                             // MW, Mvar

bool within(double low, double value, double high) { return low <= value && value <= high; }

Complex impedance(Row row, double r, double x, const Owner& owner) {
    const Complex z{r, x};
    if (!std::isfinite(r) || !std::isfinite(x)) fail(row, "impedance of " + owner.text() + " is not finite");
    if (z == Complex{}) fail(row, "impedance of " + owner.text() + " is zero");
    if (!within(kSmallestImpedance, std::abs(z), kLargestImpedance))
        fail(row, "impedance of " + owner.text() + " is out of range");
    return z;
}

ZeroPath zeroPath(int zcType) {
    switch (zcType) {
        case 1:
            return ZeroPath::GroundAtI;
        case 2:
            return ZeroPath::GroundAtJ;
        case 3:
            return ZeroPath::Through;
        default:
            return ZeroPath::None;
    }
}

/// Fills a network element by element; the look-ups are complete as soon as an element is in.
class Builder {
  public:
    explicit Builder(const exchange::NetworkData& data) {
        network_.loadFlow = data.loadFlow;
        network_.orderings = std::make_shared<OrderingCache>();
        network_.buses.reserve(data.buses.size());
        network_.busByNo.reserve(data.buses.size());
        network_.branches.reserve(data.lines.size() + data.transformers.size());
        network_.branchById.reserve(data.lines.size() + data.transformers.size());
    }

    void add(Row row, const exchange::NetBus& bus);
    void add(Row row, const exchange::NetLine& line);
    void add(Row row, const exchange::NetTransformer& transformer);
    void add(Row row, const exchange::NetGenerator& generator);
    void add(Row row, const exchange::NetShunt& shunt);
    void add(Row row, const exchange::NetMutual& mutual);
    Network take() { return std::move(network_); }

  private:
    BusIndex busOf(Row row, int no, const Owner& owner) const;
    BranchIndex lineOf(Row row, int idNo) const;
    void addBranch(Row row, Branch branch, int iNo, int jNo);

    Network network_;
};

void Builder::add(Row row, const exchange::NetBus& bus) {
    if (!within(kSmallestKv, bus.baseKv, kLargestKv))
        fail(row, "bus " + std::to_string(bus.no) + " has no base voltage");
    if (bus.vMag != 0 && !within(kSmallestVoltage, bus.vMag, kLargestVoltage))
        fail(row, "voltage of bus " + std::to_string(bus.no) + " is out of range");
    if (!network_.busByNo.emplace(bus.no, static_cast<int>(network_.buses.size())).second) {
        fail(row, "bus " + std::to_string(bus.no) + " appears twice");
    }
    const Complex voltage = std::polar(bus.vMag, bus.vAngle * std::numbers::pi / 180);
    network_.buses.push_back({{bus.no}, bus.baseKv, voltage, bus.vMinKv, false, bus.name});
}

BusIndex Builder::busOf(Row row, int no, const Owner& owner) const {
    const BusIndex index = network_.bus({no});
    if (index.value < 0) fail(row, owner.text() + " stands at bus " + std::to_string(no) + ", which does not exist");
    return index;
}

void Builder::addBranch(Row row, Branch branch, int iNo, int jNo) {
    const Owner name{"branch", branch.idNo};
    branch.from = busOf(row, iNo, name);
    branch.to = busOf(row, jNo, name);
    if (branch.from == branch.to) fail(row, name.text() + " has both ends at bus " + std::to_string(iNo));
    network_.branchById.emplace(branch.idNo, static_cast<int>(network_.branches.size()));
    network_.branches.push_back(branch);
}

void Builder::add(Row row, const exchange::NetLine& line) {
    Branch branch;
    branch.idNo = line.idNo;
    const Owner name{"branch", line.idNo};
    branch.z1 = impedance(row, line.r1, line.x1, name);
    branch.z0 = impedance(row, line.r0, line.x0, name.with(kZeroSequence));
    branch.lengthKm = line.lengthKm;
    branch.ratedA = line.ratedA;
    branch.maxLoadA = line.maxLoadA;
    addBranch(row, branch, line.iNo, line.jNo);
}

void Builder::add(Row row, const exchange::NetTransformer& transformer) {
    Branch branch;
    const Owner name{"branch", transformer.idNo};
    const bool winding = transformer.kind > 30;
    branch.idNo = transformer.idNo;
    branch.kind = winding ? BranchKind::Winding : BranchKind::Transformer;
    branch.windingKind = winding ? transformer.kind : 0;
    branch.z1 = impedance(row, transformer.r1, transformer.x1, name);
    branch.zeroPath = zeroPath(transformer.zcType);
    branch.z0 = branch.zeroPath == ZeroPath::None
                    ? Complex{transformer.r0, transformer.x0}
                    : impedance(row, transformer.r0, transformer.x0, name.with(kZeroSequence));
    branch.ratedMva = transformer.ratedMva;
    branch.ratedKvI = transformer.ratedKvI;
    branch.ratedKvJ = transformer.ratedKvJ;
    branch.maxLoadA = transformer.maxLoadA;
    addBranch(row, branch, transformer.iNo, transformer.jNo);
    if (winding) network_.buses[static_cast<std::size_t>(network_.branches.back().from.value)].star = true;
}

void Builder::add(Row row, const exchange::NetGenerator& generator) {
    const Owner name{"generator", 0, &generator.name};
    Source source;
    source.name = generator.name;
    source.bus = busOf(row, generator.no, name);
    source.z1 = impedance(row, generator.r1, generator.x1, name);
    source.grounded = generator.grounded;
    if (generator.grounded) source.z0 = impedance(row, generator.r0, generator.x0, name.with(kZeroSequence));
    source.ratedMva = generator.ratedMva;
    source.ratedKv = generator.ratedKv;
    if (!(std::hypot(generator.pMw, generator.qMvar) <= kLargestPower))
        fail(row, "power of " + name.text() + " is out of range");
    source.power = Complex{generator.pMw, generator.qMvar} / 100.0;
    network_.sources.push_back(source);
}

void Builder::add(Row row, const exchange::NetShunt& shunt) {
    const Owner name{"shunt", shunt.idNo};
    const BusIndex bus = busOf(row, shunt.no, name);
    network_.shunts.push_back(shunt);
    if (!shunt.grounded || !(shunt.x1 > 0)) return;
    network_.zeroShunts.push_back({bus, impedance(row, shunt.r0, shunt.x0, name.with(kZeroSequence)), shunt.idNo});
}

BranchIndex Builder::lineOf(Row row, int idNo) const {
    const auto [first, last] = network_.branchById.equal_range(idNo);
    for (auto it = first; it != last; ++it) {
        if (network_.branches[static_cast<std::size_t>(it->second)].kind == BranchKind::Line) return {it->second};
    }
    fail(row, "a mutual impedance names line " + std::to_string(idNo) + ", which does not exist");
}

void Builder::add(Row row, const exchange::NetMutual& mutual) {
    Mutual result;
    result.first = lineOf(row, mutual.firstId);
    result.second = lineOf(row, mutual.secondId);
    const std::string both = std::to_string(mutual.firstId) + " and " + std::to_string(mutual.secondId);
    const Owner name{"lines", 0, &both};
    if (result.first == result.second) fail(row, "mutual impedance of a line with itself: " + name.text());
    result.opposite = mutual.sense < 0;
    result.z0 = impedance(row, mutual.r0, mutual.x0, name.with(" (mutual)")) * (result.opposite ? -1.0 : 1.0);
    result.firstFrom = mutual.firstFrom;
    result.firstTo = mutual.firstTo;
    result.secondFrom = mutual.secondFrom;
    result.secondTo = mutual.secondTo;
    const auto stretch = [&](double from, double to) {
        if (!(from < to)) fail(row, "coupled stretch without length: " + name.text());
        if (!within(0, from, 100) || !within(0, to, 100)) fail(row, "coupled stretch beyond the line: " + name.text());
    };
    stretch(result.firstFrom, result.firstTo);
    stretch(result.secondFrom, result.secondTo);
    const auto self = [&](BranchIndex k) { return std::abs(network_.branches[static_cast<std::size_t>(k.value)].z0); };
    if (std::norm(result.z0) >= self(result.first) * self(result.second)) {
        fail(row, "mutual impedance above that of the lines themselves: " + name.text());
    }
    network_.mutuals.push_back(result);
}

}  // namespace

BusIndex Network::bus(BusNo no) const {
    const auto it = busByNo.find(no.value);
    return it == busByNo.end() ? BusIndex{} : BusIndex{it->second};
}

BranchIndex Network::branch(int idNo, BusNo i, BusNo j) const {
    const BusIndex first = bus(i), second = bus(j);
    const auto [begin, end] = branchById.equal_range(idNo);
    for (auto it = begin; it != end; ++it) {
        const Branch& b = branches[static_cast<std::size_t>(it->second)];
        if ((b.from == first && b.to == second) || (b.from == second && b.to == first)) return {it->second};
    }
    return {};
}

int Network::source(const std::string& name) const {
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (sources[i].name == name) return static_cast<int>(i);
    }
    return -1;
}

std::vector<std::vector<int>> coupledSets(const Network& network) {
    std::map<int, std::vector<int>> sets;  // by their first branch
    std::map<int, int> setOf;
    for (const Mutual& m : network.mutuals) {
        int a = setOf.try_emplace(m.first.value, m.first.value).first->second;
        int b = setOf.try_emplace(m.second.value, m.second.value).first->second;
        for (const int k : {a, b}) {
            if (sets[k].empty()) sets[k].push_back(k);
        }
        if (a == b) continue;
        if (a > b) std::swap(a, b);
        for (const int k : sets[b]) setOf[k] = a, sets[a].push_back(k);
        sets.erase(b);
    }
    std::vector<std::vector<int>> result;
    for (auto& [first, members] : sets) {
        std::sort(members.begin(), members.end());
        result.push_back(std::move(members));
    }
    return result;
}

std::shared_ptr<const Ordering> orderingOf(const Network& network) {
    std::vector<IndexPair> pairs;
    pairs.reserve(network.branches.size());
    for (const Branch& b : network.branches) pairs.emplace_back(b.from.value, b.to.value);
    for (const std::vector<int>& set : coupledSets(network)) {
        for (std::size_t a = 0; a < set.size(); ++a) {
            for (std::size_t b = a + 1; b < set.size(); ++b) {
                const IndexPair p = pairs[static_cast<std::size_t>(set[a])],
                                q = pairs[static_cast<std::size_t>(set[b])];
                pairs.insert(pairs.end(),
                             {{p.first, q.first}, {p.first, q.second}, {p.second, q.first}, {p.second, q.second}});
            }
        }
    }
    const int n = static_cast<int>(network.buses.size());
    return network.orderings ? network.orderings->of(n, std::move(pairs))
                             : std::make_shared<const Ordering>(n, std::move(pairs));
}

Network buildNetwork(const exchange::NetworkData& data) {
    Builder builder(data);
    const auto addAll = [&](const char* file, const auto& elements) {
        int line = 1;  // that of the head of the table
        for (const auto& element : elements) builder.add({file, ++line}, element);
    };
    addAll("LF.L1", data.buses);
    addAll("LF.L2", data.lines);
    addAll("LF.L3", data.transformers);
    addAll("ST.S1", data.generators);
    addAll("LF.L4", data.shunts);
    addAll("ST.S6", data.mutuals);
    return builder.take();
}

}  // namespace engines
