#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "exchange/BranchGraph.h"

struct BranchRow {
    QString idName, iName, jName;
    int idNo = 0, iNo = 0, jNo = 0, flg = 0;
};

/// RLY_RRBRANCH_TEM in memory: read once per rebuild of the table, then every look-up by names, by numbers and by node
/// is local. Rows keep the order of the table (by ID); "first row" means first in it.
class BranchTable {
  public:
    /// The table as it stands; read from the database when it was rebuilt since the last call.
    static std::shared_ptr<const BranchTable> current();
    /// To be called by whatever changes RLY_RRBRANCH_TEM or RLY_DUMRLY.
    static void invalidate();

    explicit BranchTable(std::vector<BranchRow> rows, const std::vector<bool>& virtualAtI = {},
                         const std::vector<bool>& virtualAtJ = {});

    [[nodiscard]] const std::vector<BranchRow>& rows() const { return rows_; }
    /// First row with the three names; null when there is none.
    [[nodiscard]] const BranchRow* find(const QString& idName, const QString& iName, const QString& jName) const;
    [[nodiscard]] const BranchRow* find(int idNo, int iNo, int jNo) const;
    /// Number of a node by its name: of the first row with this I node, else with this J node.
    [[nodiscard]] std::optional<int> nodeNumber(const QString& nodeName) const;
    [[nodiscard]] const exchange::BranchGraph& graph() const { return graph_; }

  private:
    std::vector<BranchRow> rows_;
    QHash<QString, int> byName_;  ///< first row of each place
    QHash<QString, int> nodes_;
    exchange::BranchGraph graph_;
};
