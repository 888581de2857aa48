#include "programs/engine/RowCursor.h"

#include <algorithm>

#include "platform/sql/Sql.h"

namespace {

const char kRows[] = "SELECT RNo,ID_Name,I_Name,J_Name,Side,PNo,Cdz,RuleNo,ID FROM RLY_RDZTEM WHERE ";

RowCursor fetched(const QString& where, const QVariantList& values) {
    QVector<SettingRow> rows;
    sql::Query q;
    q.exec(kRows + where + " ORDER BY ID ASC", values);
    while (q.next())
        rows.push_back({q.number(0), q.text(1), q.text(2), q.text(3), q.number(4), q.number(5), q.text(6), q.number(7),
                        q.number(8)});
    return RowCursor(std::move(rows));
}

}  // namespace

RowCursor RowCursor::ofCase(int caseNo) { return fetched("Case_No=?", {caseNo}); }

RowCursor RowCursor::ofRule(int caseNo, int rno, int pno, int ruleNo) {
    RowCursor cursor = fetched("RNo=? AND PNo=? AND RuleNo=? AND Case_No=?", {rno, pno, ruleNo, caseNo});
    cursor.first();
    return cursor;
}

bool RowCursor::seek(int at) {
    at_ = std::clamp(at, -1, size());
    return isValid();
}

QVariant RowCursor::value(int column) const {
    if (!isValid()) return {};
    const SettingRow& r = row();
    const QVariant values[] = {r.rno, r.idName, r.iName, r.jName, r.side, r.pno, r.cdz, r.ruleNo, r.id};
    return column >= 0 && column < static_cast<int>(std::size(values)) ? values[column] : QVariant();
}
