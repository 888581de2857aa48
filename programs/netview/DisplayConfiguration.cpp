#include "programs/netview/DisplayConfiguration.h"

#include <algorithm>

#include "platform/sql/Sql.h"

namespace {

using DisplayConfiguration::Row;

QVector<Row> read(const QStringList& texts, const QVariantList& values = {}) {
    QVector<Row> rows;
    for (const QString& text : texts) {
        sql::Query query;
        query.exec(text, values);
        while (query.next()) rows.append({query.text(0), std::max(query.number(2), 0), query.text(1)});
    }
    return rows;
}

/// Numbers by key: `column` = CASE `key` WHEN .. THEN .. in one statement.
bool storeNumbers(const QString& column, const QString& key, const QVector<Row>& rows, const QString& condition,
                  const QVariantList& conditionValues) {
    if (rows.isEmpty()) return true;
    QString text = "UPDATE RLY_RLYDSP SET " + column + "=CASE " + key;
    QVariantList values;
    for (const Row& row : rows) {
        text += " WHEN ? THEN ?";
        values << row.key << row.number;
    }
    text += " ELSE " + column + " END" + condition;
    return sql::Query().exec(text, values + conditionValues);
}

}  // namespace

QVector<Row> DisplayConfiguration::types() {
    const QString text = "SELECT DISTINCT RTypeCode,RTypeNo,RlyDspNo FROM RLY_RLYDSP WHERE ";
    return read({text + "RlyDspNo>0 ORDER BY RlyDspNo ASC", text + "RlyDspNo<=0 ORDER BY RTypeNo ASC"});
}

QVector<Row> DisplayConfiguration::settings(int rTypeNo) {
    if (rTypeNo == 0) return {};
    const QString text = "SELECT DspDz,CDz,DzDspNo FROM RLY_RLYDSP WHERE RTypeNo=? AND ";
    return read({text + "DzDspNo>0 ORDER BY DzDspNo ASC ", text + "DzDspNo<=0 ORDER BY DzDspNo ASC "}, {rTypeNo});
}

DisplayConfiguration::Options DisplayConfiguration::options() {
    sql::Query query;
    if (!query.exec("SELECT AllDsp,RlyAss,RlyLoc FROM RLY_RLYDSP") || !query.next()) return {};
    return {query.number(0), query.number(1) == 1, query.number(2) == 1};
}

void DisplayConfiguration::toggle(QVector<Row>& rows, qsizetype row) {
    const int cleared = rows[row].number;
    int greatest = 0;
    for (Row& other : rows) {
        greatest = std::max(greatest, other.number);
        if (cleared > 0 && other.number > cleared) --other.number;
    }
    rows[row].number = cleared > 0 ? 0 : greatest + 1;
}

bool DisplayConfiguration::storeSettings(int rTypeNo, const QVector<Row>& settings) {
    return storeNumbers("DzDspNo", "CDz", settings, " WHERE RTypeNo=?", {rTypeNo});
}

bool DisplayConfiguration::store(int rTypeNo, const QVector<Row>& settings, const QVector<Row>& types,
                                 const Options& options) {
    sql::Transaction transaction;
    return storeSettings(rTypeNo, settings) && storeNumbers("RlyDspNo", "RTypeNo", types, {}, {}) &&
           sql::Query().exec("UPDATE RLY_RLYDSP SET AllDsp=? , RlyAss=? , RlyLoc=?",
                             {std::max(options.AllDsp, 0), int(options.RlyAss), int(options.RlyLoc)}) &&
           transaction.commit();
}
