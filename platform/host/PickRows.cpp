#include "platform/host/PickRows.h"

#include <QStringList>

#include "platform/sql/Sql.h"

namespace host {

namespace {

QString baseTable(const QString& name) {
    return name.startsWith("CDB_") && !name.endsWith("BAK") ? name + "BAK" : name;
}

// The rows of a calculation table that are of the wanted kinds: lines in "L2_n", transformers in "L3_n".
QString kindCondition(const QString& table, const QList<int>& kinds) {
    const auto wanted = [&](int kind) { return kinds.isEmpty() || kinds.contains(kind); };
    QStringList types;
    if (table.startsWith("L2_") && wanted(6)) types << "1";
    if (table.startsWith("L3_") && wanted(10)) types << "1";
    if (table.startsWith("L3_") && wanted(12)) types << "31,32,33";
    return types.isEmpty() ? QStringLiteral("FALSE") : "NType IN (" + types.join(',') + ')';
}

QString selection(const QString& table, const QString& i, const QString& j, int winding, const QString& condition) {
    return "SELECT ID_Name AS Element," + i + " AS I_Node," + j + " AS J_Node," + QString::number(winding) +
           " AS Winding FROM " + sql::quotedName(table) + (condition.isEmpty() ? QString() : " WHERE " + condition);
}

QStringList selections(const QString& given, const QList<int>& kinds) {
    const QString table = baseTable(given);
    if (table == "CDB_TRANS_3WBAK")
        return {selection(table, "Name_N", "Name_1", 1, {}), selection(table, "Name_N", "Name_2", 2, {}),
                selection(table, "Name_N", "Name_3", 3, {})};
    const QString condition = table.startsWith("CDB_") ? QString() : kindCondition(table, kinds);
    return {selection(table, "I_Name", "J_Name", 0, condition)};
}

QStringList present(const QString& connection, const QList<QString>& tables) {
    QStringList found;
    sql::Query query(connection);
    query.quietly().exec("SHOW TABLES");
    QStringList all;
    while (query.next()) all << query.text(0);
    for (const QString& table : tables)
        if (all.contains(baseTable(table))) found << table;
    return found;
}

QString kilovolts(const sql::Query& query, int column) {
    return query.isNull(column) ? QString() : QString::number(query.real(column));
}

QString joined(const QString& first, const QString& second, const QString& between) {
    if (first.isEmpty() || second.isEmpty() || first == second) return first.isEmpty() ? second : first;
    return first + between + second;
}

QVector<PickRow> read(const QString& connection, const QString& text) {
    QVector<PickRow> rows;
    sql::Query query(connection);
    if (!query.quietly().exec(text)) return rows;
    rows.reserve(query.size());
    while (query.next())
        rows << PickRow{query.text(0), query.text(1), query.text(2),
                        joined(kilovolts(query, 3), kilovolts(query, 4), "/"),
                        joined(query.text(5), query.text(6), " - ")};
    return rows;
}

}  // namespace

QVector<PickRow> branchRows(const QString& connection, const QList<QString>& tables, const QList<int>& kinds) {
    QStringList parts;
    for (const QString& table : present(connection, tables)) parts << selections(table, kinds);
    if (parts.isEmpty()) return {};
    return read(connection,
                "SELECT b.Element,b.I_Node,b.J_Node,i.Base_kV,j.Base_kV,i.PS_Name,j.PS_Name FROM (" +
                    parts.join(" UNION ALL ") +
                    ") b LEFT JOIN CDB_NODEBAK i ON i.Node_Name=b.I_Node"
                    " LEFT JOIN CDB_NODEBAK j ON j.Node_Name=b.J_Node"
                    " ORDER BY IFNULL(i.PS_Name,j.PS_Name),IFNULL(i.Base_kV,j.Base_kV) DESC,b.Element,b.Winding");
}

QVector<PickRow> busRows(const QString& connection, bool physicalOnly) {
    return read(connection, QString("SELECT Node_Name,Node_Name,Node_Name,Base_kV,NULL,PS_Name,NULL FROM CDB_NODEBAK") +
                                (physicalOnly ? " WHERE ISPhyBus=1" : "") + " ORDER BY PS_Name,Base_kV DESC,Node_Name");
}

QVector<PickRow> oneEndedRows(const QString& connection, const QString& table, const QString& column) {
    if (present(connection, {table}).isEmpty()) return {};
    return read(connection, "SELECT e." + sql::quotedName(column) +
                                ",e.Node_Name,e.Node_Name,n.Base_kV,NULL,n.PS_Name,NULL FROM " +
                                sql::quotedName(baseTable(table)) +
                                " e LEFT JOIN CDB_NODEBAK n ON n.Node_Name=e.Node_Name"
                                " ORDER BY n.PS_Name,n.Base_kV DESC,1");
}

}  // namespace host
