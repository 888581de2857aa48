#include <QSet>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"
#include "programs/frame/TableNames.h"
#include "programs/workflow/CaseSettings.h"
#include "programs/workflow/CaseStore.h"
#include "programs/workflow/SensitivityModes.h"

// The relays of a case: their rules, their outage elements, and the modes of their sensitivity parameters.

namespace {

struct PartRule {
    int part, rule, group;  ///< group of parameters, 0 for a rule without
};

QVector<PartRule> partRules(int rTypeNo) {
    QVector<PartRule> rules;
    sql::Query query(tables::ruleConnection);
    query.exec(
        "SELECT r.RPartNo,r.RuleNo,(SELECT COUNT(*) FROM PARAINF p WHERE p.RuleNo=r.RuleNo) FROM RTYPERULE r"
        " WHERE r.RTypeNo=? ORDER BY r.RPartNo,r.RuleNo",
        {rTypeNo});
    while (query.next()) rules.append({query.number(0), query.number(1), query.number(2) > 0 ? 1 : 0});
    return rules;
}

bool insertRules(int caseNo, int rTypeNo, const QVector<int>& relays) {
    static const QStringList columns = {"Case_No", "TurnNo", "RNo", "PNo", "PValid", "RuleNo", "RValid", "ParNo"};
    const auto rules = partRules(rTypeNo);
    int turn = sql::scalar({}, "SELECT MAX(TurnNo) FROM RLY_CASEINF WHERE Case_No=?", {caseNo}).toInt();
    QVector<QVariantList> rows;
    for (const int relay : relays) {
        ++turn;
        for (const PartRule& rule : rules) rows.append({caseNo, turn, relay, rule.part, 1, rule.rule, 1, rule.group});
    }
    sql::Transaction transaction;
    return sql::insertRows({}, "RLY_CASEINF", columns, rows) && transaction.commit();
}

bool refuse(const QString& text) {
    ReportError(text, 0);
    return false;
}

bool switchRules(int caseNo, const QVector<int>& numbers, int state) {
    return sql::Query().exec(
        "UPDATE RLY_CASEINF SET RValid=? WHERE Case_No=? AND RuleNo IN (" + sql::numberList(numbers) + ")",
        {state, caseNo});
}

/// The ends of an element that may be taken out of service.
bool elementEnds(const QString& element, QVariantList* ends) {
    sql::Query query;
    query.exec(
        "SELECT ID_Name,I_Name,J_Name FROM CDB_ACLINEBAK WHERE ID_Name=?"
        " UNION ALL SELECT ID_Name,I_Name,J_Name FROM CDB_TRANS_2WBAK WHERE ID_Name=?"
        " UNION ALL SELECT ID_Name,Name_N,Name_1 FROM CDB_TRANS_3WBAK WHERE ID_Name=?",
        {element, element, element});
    if (!query.next()) return refuse(Text::tr("检修元件") + element + Text::tr("不存在"));
    *ends = {query.text(0), query.text(1), query.text(2)};
    return true;
}

}  // namespace

bool CaseStore::addRelays(CaseForm& form, const QVector<int>& relays) {
    if (!current()) return false;
    QSet<int> shown;
    for (const CaseSettingRow& row : form.rows) shown.insert(row.RNo);
    QVector<int> fresh, back;  // a relay that was taken out since the last save still has its rules
    for (const int relay : relays)
        if (!shown.contains(relay) && !fresh.contains(relay) && !back.contains(relay))
            (deletedRelays_.contains(relay) ? back : fresh).append(relay);
    if (!fresh.isEmpty() && !insertRules(current()->Case_No, current()->RTypeNo, fresh)) return false;
    form.rows += CaseSettings::newRows(fresh + back, current()->RTypeNo, form.primary);
    for (const int relay : back) deletedRelays_.removeAll(relay);
    addedRelays_ += fresh;
    return true;
}

bool CaseStore::recoverAll() {
    sql::Transaction transaction;
    if (!addedRelays_.isEmpty() && !takeOut(addedRelays_)) return false;
    deletedRelays_.clear();
    addedRelays_.clear();
    return transaction.commit();
}

bool CaseStore::dropMissingRelays() {
    if (!current()) return true;
    sql::Transaction transaction;
    sql::Query query;
    for (const char* table : {"RLY_CASERDZ", "RLY_CELECHK", "RLY_CASEINF"})
        if (!query.exec(QString("DELETE c FROM ") + table +
                            " c LEFT JOIN RLY_RUD u ON u.RNo=c.RNo AND u.RTypeNo=? WHERE c.Case_No=? AND u.RNo IS NULL",
                        {current()->RTypeNo, current()->Case_No}))
            return false;
    missingRelay_ = false;
    return transaction.commit();
}

bool CaseStore::setSensitivityModes(const QList<int>& modes) {
    return current() && SensitivityModes::store(current()->Case_No, modes);
}

bool CaseStore::setOutages(const QVector<int>& relays, const QStringList& elements) {
    static const QStringList columns = {"Case_No", "RNo", "ID_Name", "I_Name", "J_Name"};
    if (!current()) return false;
    QVector<QVariantList> rows;
    for (const QString& element : elements) {
        QVariantList ends;
        if (!elementEnds(element, &ends)) return false;
        for (const int relay : relays) rows.append(QVariantList{current()->Case_No, relay} + ends);
    }
    sql::Transaction transaction;
    return sql::Query().exec("DELETE FROM RLY_CELECHK WHERE Case_No=? AND RNo IN (" + sql::numberList(relays) + ")",
                             {current()->Case_No}) &&
           sql::insertRows({}, "RLY_CELECHK", columns, rows) && transaction.commit();
}

QVector<CaseRule> CaseStore::rules() {
    QVector<CaseRule> found;
    if (!current()) return found;
    QHash<int, QString> notes;
    sql::Query texts(tables::ruleConnection);
    texts.exec("SELECT RuleNo,Note FROM RULEINF");
    while (texts.next()) notes.insert(texts.number(0), texts.text(1));
    sql::Query query;
    query.exec(
        "SELECT PNo,RuleNo,COUNT(DISTINCT RNo),COUNT(DISTINCT CASE WHEN RValid<=>1 THEN RNo END) FROM RLY_CASEINF"
        " WHERE Case_No=? GROUP BY PNo,RuleNo ORDER BY PNo,RuleNo",
        {current()->Case_No});
    while (query.next())
        found.append(
            {query.number(0), query.number(1), notes.value(query.number(1)), query.number(2), query.number(3)});
    return found;
}

bool CaseStore::setRules(const QVector<int>& on, const QVector<int>& off) {
    if (!current()) return false;
    QSet<int> known;
    for (const CaseRule& rule : rules()) known.insert(rule.rule);
    for (const int number : on + off)
        if (!known.contains(number)) return refuse(Text::tr("作业中没有整定原则") + QString::number(number));
    for (const int number : on)
        if (off.contains(number))
            return refuse(Text::tr("整定原则") + QString::number(number) + Text::tr("不能又采用又不用"));
    sql::Transaction transaction;
    return switchRules(current()->Case_No, on, 1) && switchRules(current()->Case_No, off, 0) && transaction.commit();
}
