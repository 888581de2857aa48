#include "programs/engine/BranchTable.h"

#include <QSet>
#include <QSqlDatabase>

#include "platform/sql/Sql.h"
#include "programs/frame/LocationKey.h"

namespace {

struct Kept {
    QString database;
    std::shared_ptr<const BranchTable> table;
};
Kept kept;  // one network is worked on at a time

QString currentDatabase() { return QSqlDatabase::database(QSqlDatabase::defaultConnection, false).databaseName(); }

std::vector<BranchRow> readRows() {
    std::vector<BranchRow> rows;
    sql::Query q;
    q.exec("SELECT ID_Name,I_Name,J_Name,ID_No,I_No,J_No,Flg FROM RLY_RRBRANCH_TEM ORDER BY ID");
    while (q.next())
        rows.push_back({q.text(0), q.text(1), q.text(2), q.number(3), q.number(4), q.number(5), q.number(6)});
    return rows;
}

QSet<QString> nodesWithVirtualRelay() {
    QSet<QString> nodes;
    sql::Query q;
    q.exec("SELECT I_Name,J_Name,Side FROM RLY_DUMRLY WHERE Valid=1");
    while (q.next()) {
        const int side = q.number(2);
        if (side == 1 || side == 2) nodes.insert(q.text(side == 1 ? 0 : 1));
    }
    return nodes;
}

std::shared_ptr<const BranchTable> read() {
    std::vector<BranchRow> rows = readRows();
    const QSet<QString> nodes = nodesWithVirtualRelay();
    std::vector<bool> atI, atJ;
    for (const BranchRow& row : rows) {
        atI.push_back(nodes.contains(row.iName));
        atJ.push_back(nodes.contains(row.jName));
    }
    return std::make_shared<const BranchTable>(std::move(rows), atI, atJ);
}

exchange::BranchGraph graphOf(const std::vector<BranchRow>& rows, const std::vector<bool>& atI,
                              const std::vector<bool>& atJ) {
    std::vector<exchange::BranchEdge> edges;
    edges.reserve(rows.size());
    for (std::size_t k = 0; k < rows.size(); ++k) {
        const BranchRow& row = rows[k];
        edges.push_back({row.idNo, row.iNo, row.jNo, static_cast<exchange::BranchKind>(row.flg),
                         k < atI.size() && atI[k], k < atJ.size() && atJ[k]});
    }
    return exchange::BranchGraph(std::move(edges));
}

}  // namespace

std::shared_ptr<const BranchTable> BranchTable::current() {
    const QString database = currentDatabase();
    if (!kept.table || kept.database != database) kept = {database, read()};
    return kept.table;
}

void BranchTable::invalidate() { kept = {}; }

BranchTable::BranchTable(std::vector<BranchRow> rows, const std::vector<bool>& virtualAtI,
                         const std::vector<bool>& virtualAtJ)
    : rows_(std::move(rows)), graph_(graphOf(rows_, virtualAtI, virtualAtJ)) {
    for (int k = 0; k < static_cast<int>(rows_.size()); ++k) {
        const QString key = locationKey(rows_[k].idName, rows_[k].iName, rows_[k].jName);
        if (!byName_.contains(key)) byName_.insert(key, k);
    }
    for (const BranchRow& row : rows_)
        if (!nodes_.contains(row.iName)) nodes_.insert(row.iName, row.iNo);
    for (const BranchRow& row : rows_)
        if (!nodes_.contains(row.jName)) nodes_.insert(row.jName, row.jNo);
}

const BranchRow* BranchTable::find(const QString& idName, const QString& iName, const QString& jName) const {
    const auto it = byName_.constFind(locationKey(idName, iName, jName));
    return it == byName_.constEnd() ? nullptr : &rows_[*it];
}

const BranchRow* BranchTable::find(int idNo, int iNo, int jNo) const {
    for (int k : graph_.at(iNo)) {
        const BranchRow& row = rows_[k];
        if (row.idNo == idNo && row.iNo == iNo && row.jNo == jNo) return &row;
    }
    return nullptr;
}

std::optional<int> BranchTable::nodeNumber(const QString& nodeName) const {
    const auto it = nodes_.constFind(nodeName);
    return it == nodes_.constEnd() ? std::nullopt : std::optional<int>(*it);
}
