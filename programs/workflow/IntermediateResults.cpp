#include "programs/workflow/IntermediateResults.h"

#include "platform/sql/Sql.h"

namespace IntermediateResults {

QVector<Result> ofPart(int caseNo, const RelayTypeInfo& type, int rNo, int pNo) {
    QVector<Result> results;
    sql::Query query;
    query.exec(
        "SELECT Note,CDz,RDz,RuleNo FROM RLY_RDZTEM WHERE RNo=? AND PNo=? AND Case_No=? AND RuleNo>999 "
        "ORDER BY RuleNo ASC,ID ASC",
        {rNo, pNo, caseNo});
    while (query.next()) {
        const QString cdz = query.text(1);
        const SettingKind* setting = type.setting(cdz);
        results.append({rNo, pNo, query.number(3), cdz, setting ? setting->DspCdz : cdz, query.text(0), query.raw(2)});
    }
    return results;
}

int parameterGroup(int caseNo, const Result& rule) {
    return sql::scalar({}, "SELECT ParNo FROM RLY_CASEINF WHERE Case_No=? AND RNo=? AND PNo=? AND RuleNo=?",
                       {caseNo, rule.RNo, rule.PNo, rule.RuleNo}, 0)
        .toInt();
}

QVector<Values> workingValues(const QSet<int>& relays) {
    QStringList numbers;
    for (const int relay : relays) numbers << QString::number(relay);
    QVector<Values> found;
    if (numbers.isEmpty()) return found;
    sql::Query query;
    query.exec("SELECT RNo,Cdz,NDz11,NDz21,NDz31,NDz41,NDz51 FROM RLY_RLYOBJ_TEM WHERE RNo IN (" + numbers.join(',') +
               ")");
    while (query.next()) {
        Values values{query.number(0), query.text(1), {}};
        for (int part = 0; part < kStages; ++part) values.primary[size_t(part)] = query.raw(2 + part);
        found.append(values);
    }
    return found;
}

}  // namespace IntermediateResults
