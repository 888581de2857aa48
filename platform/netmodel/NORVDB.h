#pragma once

#include <QByteArray>
#include <vector>

/// The network model of a topology pass.
namespace norvdb {

/// The nodes in the order of their numbers and everything that ends at them, read from the real-time tables.
class NORVDB {
  public:
    struct Node {
        qint64 oid = 0;
        QByteArray id;  ///< GBK
        int bus = 0;    ///< bus number; 0 when the node's bus carries no valid branch end and no source
    };
    struct Element {
        qint64 oid = 0;
        int first = 0, second = 0;                   ///< node numbers; the number of nodes for a name that no node has
        bool liveFirst = false, liveSecond = false;  ///< the end makes its bus take part
        bool joins = false;                          ///< a closed switch
    };
    /// One element table; one-ended elements use only the first end.
    struct Table {
        const char* name;
        bool twoEnds;
        std::vector<Element> elements;
    };

    std::vector<Node> nodes;
    std::vector<Table> tables;

    /// Number of the node with this name (GBK); the number of nodes when there is none.
    [[nodiscard]] int nodeNumber(const QByteArray& id) const;
    /// Bus number of a node by its number; 0 outside the nodes.
    [[nodiscard]] int bus(int node) const;
};

/// Other passes of the network model; none of them is used here.
class NMD;

}  // namespace norvdb
