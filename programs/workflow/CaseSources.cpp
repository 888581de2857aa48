#include "programs/workflow/CaseSources.h"

#include <algorithm>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"

namespace {

QVector<CaseSources::LoadFlow> readLoadFlows(const QString& condition) {
    QVector<CaseSources::LoadFlow> found;
    sql::Query query;
    query.exec("SELECT DISTINCT Case_Name,Case_No FROM LF_CASE" + condition + " ORDER BY Case_No");
    while (query.next()) found.append({query.number(1), query.text(0)});
    if (found.isEmpty()) ReportError(Text::tr("没有定义潮流作业"), 1);
    return found;
}

}  // namespace

QVector<CaseSources::LoadFlow> CaseSources::loadFlows() { return readLoadFlows({}); }

QVector<CaseSources::LoadFlow> CaseSources::calculatedLoadFlows() { return readLoadFlows(" WHERE Calculate<=>1"); }

QStringList CaseSources::namesOf(const QVector<LoadFlow>& loadFlows) {
    QStringList names;
    for (const LoadFlow& flow : loadFlows)
        if (flow.number != 0) names.append(flow.name);
    return names;
}

int CaseSources::loadFlowNumber(const QString& name) {
    return sql::scalar({}, "SELECT Case_No FROM LF_CASE WHERE Case_Name=?", {name.trimmed()}, -1).toInt();
}

QStringList CaseSources::schemes() {
    QStringList names;
    sql::Query query;
    query.exec("SELECT DISTINCT SchName FROM CDB_SCHEMEINFBAK ORDER BY SchName");
    while (query.next()) names.append(query.text(0));
    if (names.isEmpty()) ReportError(Text::tr("没有定义方案"), 1);
    return names;
}

QVector<CaseSources::RelayType> CaseSources::relayTypes() {
    QVector<RelayType> types;
    for (const RelayTypeInfo& type : readRelayTypes())
        if (offeredForCases(type.RTypeNo)) types.append({type.RTypeNo, type.RTypeCode});
    std::sort(types.begin(), types.end(), [](const auto& a, const auto& b) { return a.number < b.number; });
    return types;
}
