#include "programs/workflow/PictureFaults.h"

#include <QHash>
#include <QSet>
#include <algorithm>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/Sensitivity.h"
#include "programs/frame/TableNames.h"
#include "programs/workflow/PictureNetwork.h"

namespace {

constexpr int kSensitivityCase = 0;
constexpr double kKilo = 1000;  // fault modes count in kA, kV and kilo-ohm

QString faultKind(int fType) {
    static const char* const names[] = {
        QT_TRANSLATE_NOOP("Text", "三相短路接地"), QT_TRANSLATE_NOOP("Text", "单相接地短路"),
        QT_TRANSLATE_NOOP("Text", "两相短路"),     QT_TRANSLATE_NOOP("Text", "两相接地短路"),
        QT_TRANSLATE_NOOP("Text", "三相断线"),     QT_TRANSLATE_NOOP("Text", "单相断线"),
        QT_TRANSLATE_NOOP("Text", "两相断线")};
    return fType >= 1 && fType <= 7 ? Text::tr(names[fType - 1]) : QString::number(fType);
}

/// Rules and variables that give what the picture shows, with the description of the rule.
struct Variables {
    QSet<QPair<int, int>> shown;  // rule, variable
    QHash<int, QString> notes;

    explicit Variables(bool impedances) {
        sql::Query query(tables::ruleConnection);
        query.exec(
            "SELECT v.RuleNo,v.VarNo,i.Note FROM VARIN v JOIN RULEINF i ON i.RuleNo=v.RuleNo"
            " WHERE v.ModeNo BETWEEN 1 AND 20 AND v.VType BETWEEN ? AND ?",
            {impedances ? 21 : 1, impedances ? 22 : 9});
        while (query.next()) {
            shown.insert({query.number(0), query.number(1)});
            notes[query.number(0)] = query.text(2);
        }
    }
};

/// The fault that a rule chose.
struct Chosen {
    QString fault, mode;
    int fType = 0;
};
using Key = QPair<int, int>;  // part, rule; the part is 0 for sensitivity checks

QHash<Key, Chosen> chosenFaults(int caseNo, int rNo, const PictureNetwork& network) {
    QHash<Key, Chosen> found;
    sql::Query query;
    query.exec(
        "SELECT f.PNo,f.RuleNo,c.FType,c.ID_No,c.K_Loc,f.NSys,s.SysName,f.Case_No FROM RLY_FAULTINF f"
        " JOIN RLY_CRUDRM c ON c.Case_No=f.Case_No AND c.RNo=f.RNo AND c.RuleNo=f.RuleNo AND c.RMode=f.RMNo"
        " AND c.MType=f.NSela LEFT JOIN (SELECT DISTINCT SysNo,SysName FROM RLY_RSYSMODEDLS) s ON s.SysNo=f.NSys"
        " WHERE f.RNo=? AND f.RMNo<21 AND f.Case_No IN (?,?)",
        {rNo, caseNo, kSensitivityCase});
    while (query.next()) {
        const QString place = network.branchName(query.number(3));
        const QString mode = query.number(5) == 0 ? Text::tr("基础网络") : query.text(6);
        found[{query.number(7) == kSensitivityCase ? 0 : query.number(0), query.number(1)}] = {
            QString("%1 %2 %3%").arg(faultKind(query.number(2)), place, query.text(4)), mode, query.number(2)};
    }
    return found;
}

class Faults {
  public:
    Faults(int caseNo, int rNo, bool impedances, const PictureNetwork& network)
        : variables_(impedances), chosen_(chosenFaults(caseNo, rNo, network)) {}

    void add(int pNo, int ruleNo, double value) {
        const Chosen chosen = chosen_.value({pNo, ruleNo});
        found.append({pNo, ruleNo, value, variables_.notes.value(ruleNo), chosen.fault, chosen.mode,
                      chosen.fType >= 1 && chosen.fType <= 4});
    }
    void addRules(int caseNo, int rNo) {
        sql::Query query;
        query.exec("SELECT PNo,RuleNo,VarNo,V FROM RLY_RRVIN WHERE RNo=? AND Case_No=? AND V>0 ORDER BY NCal",
                   {rNo, caseNo});
        while (query.next())
            if (variables_.shown.contains({query.number(1), query.number(2)}))
                add(query.number(0), query.number(1), query.real(3) * kKilo);
    }
    void addChecks(int rNo) {
        sql::Query query;
        query.exec(
            "SELECT RuleNo,MAX(RFault1) FROM RLY_RKLMTEM_TEM WHERE RNo=? GROUP BY RuleNo"
            " UNION SELECT DRuleNo,MAX(RFault2) FROM RLY_RKLMTEM_TEM WHERE RNo=? GROUP BY DRuleNo",
            {rNo, rNo});
        while (query.next())
            if (query.real(1) > 0 && query.real(1) != kParameterNotComputed &&
                variables_.notes.contains(query.number(0)))
                add(0, query.number(0), query.real(1));
    }

    QVector<PictureFault> found;

  private:
    Variables variables_;
    QHash<Key, Chosen> chosen_;
};

}  // namespace

QVector<PictureFault> pictureFaults(int caseNo, int rNo, bool impedances, const PictureNetwork& network) {
    Faults faults(caseNo, rNo, impedances, network);
    faults.addRules(caseNo, rNo);
    faults.addChecks(rNo);
    std::stable_sort(faults.found.begin(), faults.found.end(),
                     [](const PictureFault& a, const PictureFault& b) { return a.value > b.value; });
    return faults.found;
}
