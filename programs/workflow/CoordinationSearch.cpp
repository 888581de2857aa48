#include "programs/workflow/CoordinationSearch.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <array>
#include <set>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/frame/Messages.h"
#include "programs/frame/TableNames.h"

namespace {

constexpr int kLine = 6;
constexpr int kTransformer = 10;

/// A rule that reads a setting of another relay.
struct CoordinatingRule {
    int PRTypeNo = 0;  ///< type of that relay
    int part = 0;      ///< its part
};

/// The first variable that reads another relay's setting decides for the rule.
QHash<int, CoordinatingRule> coordinatingRules() {
    QHash<int, CoordinatingRule> rules;
    sql::Query query(tables::ruleConnection);
    query.exec(
        "SELECT v.RuleNo,v.VType,i.PRTypeNo FROM VARIN v JOIN RULEINF i ON i.RuleNo=v.RuleNo"
        " WHERE v.VType>400 AND v.VType<=420 ORDER BY v.RuleNo,v.VarNo");
    while (query.next()) {
        if (rules.contains(query.number(0))) continue;
        rules[query.number(0)] = {query.number(2), CoordinationSearch::coordinatedPart(query.number(1))};
    }
    return rules;
}

/// A relay of the case with one of its rules.
struct CaseRule {
    int RNo, RuleNo, PNo;
    Location at;
};

QVector<CaseRule> caseRules(int caseNo) {
    QVector<CaseRule> rows;
    sql::Query query;
    query.exec(
        "SELECT c.RNo,c.RuleNo,c.PNo,u.ID_Name,u.I_Name,u.J_Name,u.Side FROM RLY_CASEINF c"
        " JOIN RLY_RUD u ON u.RNo=c.RNo WHERE c.Case_No=? AND c.PValid=1 AND c.RValid=1"
        " AND u.RType IN (?,?) ORDER BY c.RNo,c.RuleNo",
        {caseNo, kLine, kTransformer});
    while (query.next())
        rows.append({query.number(0),
                     query.number(1),
                     query.number(2),
                     {query.text(3), query.text(4), query.text(5), query.number(6)}});
    return rows;
}

using Standing = QPair<Location, int>;  // place and type

/// The first relay of each type at each place.
QHash<Standing, int> standingRelays() {
    QHash<Standing, int> relays;
    sql::Query query;
    query.exec("SELECT RNo,ID_Name,I_Name,J_Name,Side,RTypeNo FROM RLY_RUD ORDER BY RNo DESC");
    while (query.next())
        relays[{{query.text(1), query.text(2), query.text(3), query.number(4)}, query.number(5)}] = query.number(0);
    return relays;
}

bool isSeries(int kind) {
    return kind >= int(exchange::BranchKind::Line) && kind <= int(exchange::BranchKind::Winding);
}

/// Walks and look-ups of one search.
class Search {
  public:
    Search();
    /// \return false when the branch of the rule's relay is not in the network exactly once
    bool add(int caseNo, const CaseRule& row);
    [[nodiscard]] QVector<QVariantList> rows() const { return rows_; }

  private:
    [[nodiscard]] const BranchRow* onlyBranch(const Location& at) const;
    const QVector<Location>& placesBeyond(const BranchRow& branch, int side);
    void addPlaces(const exchange::WalkStep& step, QVector<Location>& places) const;

    std::shared_ptr<const BranchTable> table_ = BranchTable::current();
    QHash<Location, QVector<const BranchRow*>> branches_;
    QHash<int, CoordinatingRule> rules_ = coordinatingRules();
    QHash<Standing, int> relays_ = standingRelays();
    QHash<QPair<const BranchRow*, int>, QVector<Location>> beyond_;
    std::set<std::array<int, 4>> seen_;
    QVector<QVariantList> rows_;
};

Search::Search() {
    for (const BranchRow& row : table_->rows()) branches_[{row.idName, row.iName, row.jName, 1}].append(&row);
}

const BranchRow* Search::onlyBranch(const Location& at) const {
    const auto rows = branches_.value({at.ID_Name, at.I_Name, at.J_Name, 1});
    return rows.size() == 1 ? rows.front() : nullptr;
}

void Search::addPlaces(const exchange::WalkStep& step, QVector<Location>& places) const {
    for (const int position : table_->graph().at(step.node)) {
        const BranchRow& row = table_->rows()[size_t(position)];
        if (row.idNo == step.idNo || !isSeries(row.flg)) continue;
        places.append({row.idName, row.iName, row.jName, row.iNo == step.node ? 1 : 2});
    }
}

const QVector<Location>& Search::placesBeyond(const BranchRow& branch, int side) {
    const auto key = qMakePair(&branch, side);
    const auto known = beyond_.constFind(key);
    if (known != beyond_.constEnd()) return *known;
    std::vector<exchange::WalkStep> steps;
    table_->graph().walk(side == 1 ? branch.iNo : branch.jNo, branch.idNo, steps, 1, 1);
    QVector<Location> places;
    for (const auto& step : steps) addPlaces(step, places);
    return *beyond_.insert(key, places);
}

bool Search::add(int caseNo, const CaseRule& row) {
    const auto rule = rules_.constFind(row.RuleNo);
    if (rule == rules_.constEnd()) return true;
    const BranchRow* branch = onlyBranch(row.at);
    if (!branch) return false;
    for (const Location& place : placesBeyond(*branch, row.at.Side)) {
        const int other = relays_.value({place, rule->PRTypeNo}, -1);
        if (other < 0) continue;
        if (!seen_.insert({row.RNo, row.PNo, other, rule->part}).second) continue;
        rows_.append({caseNo, row.RNo, row.PNo, other, rule->part});
    }
    return true;
}

bool readsSetting(const QHash<int, QSet<int>>& variables, int rule, int vType) {
    return variables.value(rule).contains(vType);
}

QHash<int, QSet<int>> settingVariables() {
    QHash<int, QSet<int>> variables;
    sql::Query query(tables::ruleConnection);
    query.exec("SELECT RuleNo,VType FROM VARIN WHERE VType>400 AND VType<=420");
    while (query.next()) variables[query.number(0)].insert(query.number(1));
    return variables;
}

}  // namespace

int CoordinationSearch::coordinatedPart(int vType) { return std::clamp((vType - 397) / 4, 1, 5); }

bool CoordinationSearch::SearchRlyCop(int caseNo) {
    static const QStringList columns = {"Case_No", "RNo", "PartNo", "CoRNo", "CoPartNo"};
    Search search;
    bool whole = true;
    for (const CaseRule& row : caseRules(caseNo)) {
        whole = search.add(caseNo, row);
        if (!whole) break;
    }
    if (!whole) ReportError(Text::tr("支路数据抽取错误"), 0);
    sql::Transaction transaction;
    sql::Query query;
    const bool stored = query.exec("DELETE FROM RLY_CASERLYCOP WHERE Case_No=?", {caseNo}) &&
                        sql::insertRows({}, "RLY_CASERLYCOP", columns, search.rows()) && transaction.commit();
    return whole && stored;
}

QVector<CoordinationSearch::Dependent> CoordinationSearch::dependents(int caseNo, int rNo, int pNo, int dzNo,
                                                                      int passedRNo, int passedId) {
    QVector<Dependent> found;
    const auto variables = settingVariables();
    sql::Query query;
    query.exec(
        "SELECT DISTINCT p.RNo,p.PartNo,c.RuleNo FROM RLY_CASERLYCOP p JOIN RLY_CASEINF c"
        " ON c.Case_No=p.Case_No AND c.RNo=p.RNo AND c.PNo=p.PartNo AND c.PValid=1 AND c.RValid=1"
        " WHERE p.CoRNo=? AND p.CoPartNo=? AND p.Case_No=? AND (?<0 OR (p.RNo!=? AND ?>"
        " (SELECT MIN(t.ID) FROM RLY_RDZTEM t WHERE t.RNo=p.RNo AND t.PNo=p.PartNo AND t.Case_No=p.Case_No)))"
        " ORDER BY p.RNo,p.PartNo,c.RuleNo",
        {rNo, pNo, caseNo, passedId, passedRNo, passedId});
    while (query.next())
        if (readsSetting(variables, query.number(2), 396 + 4 * pNo + dzNo))
            found.append({query.number(0), query.number(1), query.number(2)});
    return found;
}
