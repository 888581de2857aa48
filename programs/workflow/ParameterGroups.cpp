#include "programs/workflow/ParameterGroups.h"

#include <algorithm>
#include <cmath>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"
#include "programs/frame/TableNames.h"

namespace {

/// What a column double(13,6) holds without becoming another number.
bool isValue(const QString& text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && std::isfinite(value) && std::fabs(value) <= 9999999.999999 &&
           (value == 0 || std::fabs(value) >= 5e-7);
}

bool refuse(const QString& text) {
    ReportError(text, 0);
    return false;
}

}  // namespace

ParameterGroups ParameterGroups::read(int ruleNo, int chosen) {
    ParameterGroups all;
    sql::Query query(tables::ruleConnection);
    query.exec("SELECT DISTINCT Note,Formula FROM RULEINF WHERE RuleNo=?", {ruleNo});
    if (query.next()) {
        all.Note = query.text(0);
        all.Formula = query.text(1);
    }
    query.exec("SELECT C FROM PARAINF WHERE RuleNo=? ORDER BY KNo,ParNo", {ruleNo});
    while (query.next())
        if (!all.names.contains(query.text(0))) all.names.append(query.text(0));
    query.exec("SELECT ParNo,C,K FROM PARAINF WHERE RuleNo=? ORDER BY ParNo,KNo ASC", {ruleNo});
    while (query.next()) {
        const int number = query.number(0);
        if (all.groups.isEmpty() || all.groups.last().stored != number)
            all.groups.append({number, QString::number(number), QStringList(all.names.size()), number == chosen});
        all.groups.last().values[all.names.indexOf(query.text(1))] = query.raw(2);
    }
    return all;
}

// The engine takes the n-th group for the number n, so there may be no gap.
bool ParameterGroups::check() const {
    for (qsizetype row = 0; row < groups.size(); ++row)
        if (!std::all_of(groups[row].values.begin(), groups[row].values.end(), isValue))
            return refuse(Text::tr("第%1行参数中有数据错误，请检查").arg(row + 1));
    QVector<bool> seen(groups.size());
    for (qsizetype row = 0; row < groups.size(); ++row) {
        bool isNumber = false;
        const int number = groups[row].number.toInt(&isNumber);
        if (!isNumber || number < 1 || number > groups.size() || seen[number - 1])
            return refuse(Text::tr("第%1行参数中有参数组号错误，请检查").arg(row + 1));
        seen[number - 1] = true;
    }
    const auto ticked = std::count_if(groups.begin(), groups.end(), [](const auto& group) { return group.chosen; });
    if (ticked == 0) return refuse(Text::tr("请选择一组参数"));
    return ticked == 1 || refuse(Text::tr("只能选择一组参数"));
}

bool ParameterGroups::store(int ruleNo) const {
    QVector<QVariantList> rows;
    for (const ParameterGroup& group : groups)
        for (qsizetype at = 0; at < names.size(); ++at)
            rows.append({ruleNo, group.number.toInt(), names[at], group.values[at].toDouble(), int(at + 1)});
    sql::Transaction transaction(tables::ruleConnection);
    sql::Query query(tables::ruleConnection);
    return query.exec("DELETE FROM PARAINF WHERE RuleNo=?", {ruleNo}) &&
           sql::insertRows(tables::ruleConnection, "PARAINF", {"RuleNo", "ParNo", "C", "K", "KNo"}, rows) &&
           transaction.commit();
}

int ParameterGroups::chosen() const {
    for (const ParameterGroup& group : groups)
        if (group.chosen) return group.number.toInt();
    return 0;
}

ParameterGroups::Users ParameterGroups::usersFrom(int ruleNo, int parNo, int besidesCase, int besidesRelay) {
    sql::Query query;
    query.exec(
        "SELECT COUNT(DISTINCT Case_No,RNo),COUNT(DISTINCT Case_No) FROM RLY_CASEINF"
        " WHERE RuleNo=? AND ParNo>=? AND NOT (Case_No=? AND RNo=?)",
        {ruleNo, parNo, besidesCase, besidesRelay});
    if (!query.next()) return {};
    return {query.number(0), query.number(1)};
}

QHash<std::pair<int, int>, QString> parameterLines(const QList<int>& rules) {
    QHash<std::pair<int, int>, QString> lines;
    sql::Query query(tables::ruleConnection);
    query.exec("SELECT RuleNo,ParNo,C,K FROM PARAINF WHERE RuleNo IN (0" + QString(",?").repeated(rules.size()) +
                   ") ORDER BY RuleNo,ParNo,KNo",
               QVariantList(rules.begin(), rules.end()));
    while (query.next()) lines[{query.number(0), query.number(1)}] += query.text(2) + "=" + query.raw(3) + ",   ";
    return lines;
}
