#include "platform/netmodel/TP.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

#include "platform/rtdb/dbStatement.h"

namespace norvdb {

namespace {

/// How a table's rows take part: SQL conditions for a live first and second end and for a closed switch.
struct Source {
    const char* table;
    bool twoEnds;
    const char* liveFirst;
    const char* liveSecond;
    const char* joins;
};
constexpr Source kSources[] = {
    {"bus", false, "0", "0", "0"},
    {"un", false, "valid=1", "0", "0"},
    {"cp", false, "0", "0", "0"},
    {"ld", false, "0", "0", "0"},
    {"ln", true, "valid=1 AND i_break<>0", "valid=1 AND j_break<>0", "0"},
    {"xf", true, "valid=1", "valid=1", "0"},
    {"dln", true, "valid=1", "valid=1", "0"},
    {"cb", true, "0", "0", "closed<>0"},
};

void require(bool done, const char* table) {
    if (!done) throw std::runtime_error(std::string("real-time table ") + table);
}

std::vector<NORVDB::Node> readNodes(dbDatabase& database) {
    std::vector<NORVDB::Node> nodes;
    dbStatement statement(database, "SELECT oid,id FROM nd ORDER BY id");
    while (statement.step()) nodes.push_back({statement.whole(0), statement.bytes(1), 0});
    require(statement.ok(), "nd");
    return nodes;
}

NORVDB::Table readElements(dbDatabase& database, const NORVDB& network, const Source& source) {
    const QByteArray nodes = source.twoEnds ? "inode,jnode" : "node,node";
    dbStatement statement(database, "SELECT oid," + nodes + ",(" + source.liveFirst + "),(" + source.liveSecond +
                                        "),(" + source.joins + ") FROM " + source.table + " ORDER BY oid");
    NORVDB::Table table{source.table, source.twoEnds, {}};
    while (statement.step()) {
        table.elements.push_back({statement.whole(0), network.nodeNumber(statement.bytes(1)),
                                  network.nodeNumber(statement.bytes(2)), statement.whole(3) != 0,
                                  statement.whole(4) != 0, statement.whole(5) != 0});
    }
    require(statement.ok(), source.table);
    return table;
}

/// Sets of nodes that are one bus; the set's name is its lowest node number.
class Joined {
  public:
    explicit Joined(int nodes) : parent_(static_cast<std::size_t>(nodes)) {
        std::iota(parent_.begin(), parent_.end(), 0);
    }
    int of(int node) {
        while (at(node) != node) node = at(node) = at(at(node));
        return node;
    }
    void join(int a, int b) {
        const auto [low, high] = std::minmax({of(a), of(b)});
        at(high) = low;
    }

  private:
    int& at(int node) { return parent_[static_cast<std::size_t>(node)]; }
    std::vector<int> parent_;
};

template <class Visit>
void eachElement(const NORVDB& network, Visit visit) {
    for (const auto& table : network.tables) {
        for (const auto& element : table.elements) visit(element);
    }
}

}  // namespace

int NORVDB::nodeNumber(const QByteArray& id) const {
    const auto place = std::lower_bound(nodes.begin(), nodes.end(), id,
                                        [](const Node& node, const QByteArray& name) { return node.id < name; });
    return place != nodes.end() && place->id == id ? static_cast<int>(place - nodes.begin())
                                                   : static_cast<int>(nodes.size());
}

int NORVDB::bus(int node) const {
    return node < static_cast<int>(nodes.size()) ? nodes[static_cast<std::size_t>(node)].bus : 0;
}

void TP::tpReadFastdb(dbDatabase* database) {
    require(database && database->isOpen(), "nd");
    network_.nodes = readNodes(*database);
    network_.tables.clear();
    for (const Source& source : kSources) network_.tables.push_back(readElements(*database, network_, source));
}

int TP::tpAllnew() {
    const int count = static_cast<int>(network_.nodes.size());
    if (!count) return 0;
    Joined joined(count);
    eachElement(network_, [&](const NORVDB::Element& e) {
        if (e.joins && e.first < count && e.second < count) joined.join(e.first, e.second);
    });
    std::vector<bool> live(network_.nodes.size());
    const auto wake = [&](int node) { live[static_cast<std::size_t>(joined.of(node))] = true; };
    eachElement(network_, [&](const NORVDB::Element& e) {
        if (e.liveFirst && e.first < count) wake(e.first);
        if (e.liveSecond && e.second < count) wake(e.second);
    });
    int next = 2;
    for (int node = 0; node < count; ++node) {
        const auto place = static_cast<std::size_t>(node);
        const int first = joined.of(node);
        network_.nodes[place].bus = first != node ? network_.bus(first) : live[place] ? next++ : 0;
    }
    return 1;
}

void TP::tpWriteFastdb(dbDatabase* database) {
    require(database && database->begin(), "nd");
    dbStatement nodes(*database, "UPDATE nd SET no=?,ibs=? WHERE oid=?");
    int number = 0;
    for (const auto& node : network_.nodes) {
        require(nodes.bind(number++).bind(node.bus).bind(node.oid).run(), "nd");
    }
    for (const auto& table : network_.tables) {
        dbStatement elements(*database, QByteArray("UPDATE ") + table.name +
                                            (table.twoEnds ? " SET ibs=?,inno=?,zbs=?,jnno=?" : " SET ibs=?,nno=?") +
                                            " WHERE oid=?");
        for (const auto& e : table.elements) {
            elements.bind(network_.bus(e.first)).bind(e.first);
            if (table.twoEnds) elements.bind(network_.bus(e.second)).bind(e.second);
            require(elements.bind(e.oid).run(), table.name);
        }
    }
}

}  // namespace norvdb
