#pragma once

#include <QList>
#include <QString>
#include <QVector>

/// What the pickers list: elements of the base network with voltage level and station, sorted by station, level (the
/// highest first) and name. A table that is not there gives no rows and no message.
namespace host {

struct PickRow {
    QString name;
    QString i;        ///< node; of one-ended elements the only one
    QString j;        ///< of a three-winding transformer's row the winding's node, behind the star node
    QString level;    ///< kV: "220", of a transformer "220/110"
    QString station;  ///< of a branch between two stations "A - B"
};

/// Branches of base tables ("CDB_ACLINE", "CDB_ACLINEBAK") and of calculation tables ("L2_0", "L3_0"). A three-winding
/// transformer has a row for each winding.
/// \param kinds  of calculation tables: 6 lines, 10 two-winding, 12 three-winding transformers; empty: all branches
QVector<PickRow> branchRows(const QString& connection, const QList<QString>& tables, const QList<int>& kinds = {});
/// \param physicalOnly  leaves out nodes that are no bus bars
QVector<PickRow> busRows(const QString& connection, bool physicalOnly);
/// Generators ("CDB_GENERAT"), capacitors and reactors ("CDB_PCAPREA").
/// \param column  that has the name, "ID_Name"
QVector<PickRow> oneEndedRows(const QString& connection, const QString& table, const QString& column);

}  // namespace host
