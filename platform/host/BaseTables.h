#pragma once

#include <QVector>
#include <optional>

#include "platform/host/NetworkModel.h"
#include "platform/sql/Sql.h"

/// The host's tables in the project database (default connection): base network CDB_*BAK, calculation tables
/// L*_<n>, S*_0, case headers LF_CASE and ST_CASE.
namespace host {

/// All base-network and case-header layouts; one list of columns per table.
const QVector<sql::Layout>& baseLayouts();
/// One of them by its table name.
const sql::Layout& baseLayout(const QString& table);
/// Layouts of the calculation tables of load-flow case n (0: of a scheme), names with the number.
QVector<sql::Layout> calculationLayouts(int n);

/// Creates what is missing, rows 0 of LF_CASE and ST_CASE included.
bool createBaseTables();
/// Creates those of the tables, and of their columns, that the database lacks.
/// \param connection  empty: the default connection
bool createTables(const QString& connection, const QVector<sql::Layout>& layouts);

/// Replaces the base network by the model, all or nothing, and fills the calculation tables of its load-flow cases
/// and, with the first scheme, L2_0, L3_0, L5_0, S3_0. Operating modes are not part of the base network.
bool storeNetwork(const NetworkModel& model);

/// The base network as it is stored, without operating modes; empty when a table cannot be read.
std::optional<NetworkModel> loadNetwork();

}  // namespace host
