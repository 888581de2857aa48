#include "programs/workflow/RuleSelection.h"

#include <QHash>
#include <QMap>
#include <QStringList>
#include <QVariantList>
#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/frame/TableNames.h"
#include "programs/workflow/ParameterGroups.h"

namespace {

int partsOf(int rTypeNo) {
    const QVariant parts = sql::scalar(tables::ruleConnection, "SELECT NPart FROM RTYPE WHERE RTypeNo=?", {rTypeNo}, 0);
    return std::clamp(parts.toInt(), 0, kStages);
}

struct RuleText {
    QString Note, Formula;
};

QHash<int, RuleText> textsOf(const QList<int>& rules) {
    QHash<int, RuleText> texts;
    sql::Query query(tables::ruleConnection);
    query.exec("SELECT DISTINCT RuleNo,Note,Formula FROM RULEINF WHERE RuleNo IN (0" +
                   QString(",?").repeated(rules.size()) + ")",
               QVariantList(rules.begin(), rules.end()));
    while (query.next()) texts.insert(query.number(0), {query.text(1), query.text(2)});
    return texts;
}

void addTexts(QVector<PartChoice>& parts) {
    QList<int> numbers;
    for (const PartChoice& part : parts)
        for (const RuleChoice& rule : part.rules) numbers.append(rule.RuleNo);
    const auto texts = textsOf(numbers);
    const auto lines = parameterLines(numbers);
    for (PartChoice& part : parts)
        for (RuleChoice& rule : part.rules) {
            rule.Note = texts.value(rule.RuleNo).Note;
            rule.Formula = texts.value(rule.RuleNo).Formula;
            rule.parameters = lines.value({rule.RuleNo, rule.ParNo});
        }
}

/// What the rules get in a column, as "column=CASE RuleNo WHEN ? THEN ? .. END" with its values.
struct Assignment {
    Assignment(const QString& column, const QMap<int, int>& byRule)
        : text(column + "=CASE RuleNo" + QString(" WHEN ? THEN ?").repeated(byRule.size()) + " END") {
        for (auto at = byRule.begin(); at != byRule.end(); ++at) values << at.key() << *at;
    }
    QString text;
    QVariantList values;
};

bool update(const QVector<Assignment>& assignments, const QList<int>& rules, const QString& relays, int caseNo,
            int rNo) {
    QStringList texts;
    QVariantList values;
    for (const Assignment& assignment : assignments) {
        texts << assignment.text;
        values << assignment.values;
    }
    values << caseNo << rNo << QVariantList(rules.begin(), rules.end());
    return sql::Query().exec("UPDATE RLY_CASEINF SET " + texts.join(',') + " WHERE Case_No=? AND " + relays +
                                 " AND RuleNo IN (0" + QString(",?").repeated(rules.size()) + ")",
                             values);
}

}  // namespace

bool RuleSelection::leaveOutParts(int caseNo, int rTypeNo, const std::array<int, kStages>& partFlags) {
    QVariantList values = {caseNo};
    for (int part = 1; part <= partsOf(rTypeNo); ++part)
        if (partFlags[size_t(part - 1)] == 0) values << part;
    return sql::Query().exec("UPDATE RLY_CASEINF SET PValid=0 WHERE Case_No=? AND PNo IN (0" +
                                 QString(",?").repeated(values.size() - 1) + ")",
                             values);
}

QVector<PartChoice> RuleSelection::read(int caseNo, int rNo, int rTypeNo, const std::array<int, kStages>& partFlags) {
    QVector<PartChoice> parts;
    for (int part = 1; part <= partsOf(rTypeNo); ++part)
        if (partFlags[size_t(part - 1)] != 0) parts.append({part, false, {}});
    sql::Query query;
    query.exec(
        "SELECT PNo,RuleNo,ParNo,PValid,RValid FROM RLY_CASEINF WHERE Case_No=? AND RNo=? ORDER BY PNo,RuleNo ASC",
        {caseNo, rNo});
    while (query.next()) {
        const auto part = std::find_if(parts.begin(), parts.end(),
                                       [&](const PartChoice& one) { return one.part == query.number(0); });
        if (part == parts.end()) continue;
        if (part->rules.isEmpty()) part->PValid = query.number(3) == 1;
        part->rules.append({query.number(1), query.number(2), query.number(4) == 1, {}, {}, {}});
    }
    addTexts(parts);
    return parts;
}

bool RuleSelection::store(int caseNo, int rNo, const QVector<PartChoice>& parts, bool forAllRelays) {
    QMap<int, int> partValid, ruleValid, groups;
    for (const PartChoice& part : parts)
        for (const RuleChoice& rule : part.rules) {
            partValid[rule.RuleNo] = part.PValid;
            ruleValid[rule.RuleNo] = rule.RValid;
            groups[rule.RuleNo] = rule.ParNo;
        }
    if (groups.isEmpty()) return true;
    const QVector<Assignment> choice = {{"RValid", ruleValid}, {"ParNo", groups}};
    sql::Transaction transaction;
    return update(choice + QVector<Assignment>{{"PValid", partValid}}, groups.keys(), "RNo=?", caseNo, rNo) &&
           (!forAllRelays || update(choice, groups.keys(), "RNo!=?", caseNo, rNo)) && transaction.commit();
}
