#include "programs/engine/BulkUpdate.h"

#include <cmath>

#include "platform/sql/Sql.h"

namespace {

constexpr qsizetype kRowsPerStatement = 500;
constexpr double kLargest = 9999999.999999;

QString overwriting(const QStringList& columns) {
    QStringList parts;
    for (qsizetype k = 1; k < columns.size(); ++k) parts.append(columns[k] + "=VALUES(" + columns[k] + ")");
    return " ON DUPLICATE KEY UPDATE " + parts.join(",");
}

}  // namespace

bool updateByKey(const QString& table, const QStringList& columns, const QVector<QVariantList>& rows) {
    const QString group = "(" + QStringList(columns.size(), "?").join(",") + ")";
    for (qsizetype from = 0; from < rows.size(); from += kRowsPerStatement) {
        const qsizetype count = std::min(kRowsPerStatement, rows.size() - from);
        QVariantList values;
        for (qsizetype k = from; k < from + count; ++k) values += rows[k];
        const QString text = "INSERT INTO " + table + " (" + columns.join(",") + ") VALUES " +
                             QStringList(count, group).join(",") + overwriting(columns);
        if (!sql::Query().exec(text, values)) return false;
    }
    return true;
}

double storable(double value, bool& refused) {
    if (std::isfinite(value) && std::fabs(value) <= kLargest) return value;
    refused = true;
    return 0.0;
}
