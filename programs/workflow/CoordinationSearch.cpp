#include "programs/workflow/CoordinationSearch.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <vector>

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
        "SELECT v.RuleNo,v.VType,i.PRTypeNo FROM VARIN v LEFT JOIN RULEINF i ON i.RuleNo=v.RuleNo"
        " WHERE v.VType>400 AND v.VType<=420 ORDER BY v.RuleNo,v.VarNo");
    while (query.next()) {
        if (rules.contains(query.number(0))) continue;
        rules[query.number(0)] = {query.isNull(2) ? -1 : query.number(2),
                                  CoordinationSearch::coordinatedPart(query.number(1))};
    }
    return rules;
}

/// A relay of the case with one of its rules.
struct CaseRule {
    int RNo, RuleNo, PNo;
};

QVector<CaseRule> caseRules(int caseNo, const QList<int>& coordinating) {
    QVector<CaseRule> rows;
    sql::Query query;
    query.exec("SELECT RNo,RuleNo,PNo FROM RLY_CASEINF WHERE Case_No=? AND PValid=1 AND RValid=1 AND RuleNo IN (" +
                   sql::numberList(coordinating) + ") ORDER BY RNo,RuleNo,PNo",
               {caseNo});
    while (query.next()) rows.append({query.number(0), query.number(1), query.number(2)});
    return rows;
}

/// The relays of the project by number and by place.
class Relays {
  public:
    Relays();
    /// Place of a relay at a branch; null for others.
    [[nodiscard]] const Location* onBranch(int rNo) const {
        const auto found = onBranch_.constFind(rNo);
        return found == onBranch_.constEnd() ? nullptr : &*found;
    }
    /// The first relay of a type at a place, -1 without one.
    [[nodiscard]] int standing(const Location& place, int type) const { return standing_.value({place, type}, -1); }

  private:
    QHash<int, Location> onBranch_;
    QHash<QPair<Location, int>, int> standing_;
};

Relays::Relays() {
    sql::Query query;
    query.exec("SELECT RNo,ID_Name,I_Name,J_Name,Side,RTypeNo,RType FROM RLY_RUD ORDER BY RNo DESC");
    while (query.next()) {
        const Location at{query.text(1), query.text(2), query.text(3), query.number(4)};
        const int element = query.number(6);
        if (element == kLine || element == kTransformer) onBranch_.insert(query.number(0), at);
        standing_.insert({at, query.number(5)}, query.number(0));
    }
}

bool isSeries(int kind) {
    return kind >= int(exchange::BranchKind::Line) && kind <= int(exchange::BranchKind::Winding);
}

using Relation = std::array<int, 4>;  // RNo, PartNo, CoRNo, CoPartNo

/// Walks and look-ups of one search; the relays come one after the other.
class Search {
  public:
    Search();
    /// \return false when the branch of the rule's relay is not in the network exactly once
    bool add(const CaseRule& row);
    [[nodiscard]] const std::vector<Relation>& relations() const { return relations_; }
    [[nodiscard]] const QHash<int, CoordinatingRule>& rules() const { return rules_; }

  private:
    bool enter(int rNo);
    [[nodiscard]] QVector<Location> placesBeyond(const BranchRow& branch, int side) const;
    void addPlaces(const exchange::WalkStep& step, QVector<Location>& places) const;
    const QVector<int>& others(int type);

    std::shared_ptr<const BranchTable> table_ = BranchTable::current();
    QHash<Location, QVector<const BranchRow*>> branches_;
    QHash<int, CoordinatingRule> rules_ = coordinatingRules();
    Relays relays_;
    std::vector<Relation> relations_;
    int rNo_ = -1;              ///< the relay in hand
    bool passedOver_ = true;    ///< it stands at no branch
    QVector<Location> places_;  ///< where those may stand with which it coordinates
    QHash<int, QVector<int>> others_;
    std::set<Relation> seen_;
};

Search::Search() {
    for (const BranchRow& row : table_->rows()) branches_[{row.idName, row.iName, row.jName, 1}].append(&row);
}

void Search::addPlaces(const exchange::WalkStep& step, QVector<Location>& places) const {
    for (const int position : table_->graph().at(step.node)) {
        const BranchRow& row = table_->rows()[size_t(position)];
        if (row.idNo == step.idNo || !isSeries(row.flg)) continue;
        places.append({row.idName, row.iName, row.jName, row.iNo == step.node ? 1 : 2});
    }
}

QVector<Location> Search::placesBeyond(const BranchRow& branch, int side) const {
    std::vector<exchange::WalkStep> steps;
    table_->graph().walk(side == 1 ? branch.iNo : branch.jNo, branch.idNo, steps, 1, 1);
    QVector<Location> places;
    for (const auto& step : steps) addPlaces(step, places);
    return places;
}

bool Search::enter(int rNo) {
    if (rNo == rNo_) return true;
    rNo_ = rNo;
    others_.clear();
    seen_.clear();
    const Location* at = relays_.onBranch(rNo);
    passedOver_ = !at;
    if (!at) return true;
    const auto branches = branches_.value({at->ID_Name, at->I_Name, at->J_Name, 1});
    if (branches.size() != 1) return false;
    places_ = placesBeyond(*branches.front(), at->Side);
    return true;
}

const QVector<int>& Search::others(int type) {
    const auto known = others_.constFind(type);
    if (known != others_.constEnd()) return *known;
    QVector<int> found;
    for (const Location& place : places_)
        if (const int other = relays_.standing(place, type); other >= 0) found.append(other);
    return *others_.insert(type, found);
}

bool Search::add(const CaseRule& row) {
    if (!enter(row.RNo)) return false;
    if (passedOver_) return true;
    const CoordinatingRule rule = rules_.value(row.RuleNo);
    for (const int other : others(rule.PRTypeNo)) {
        const Relation relation = {row.RNo, row.PNo, other, rule.part};
        if (seen_.insert(relation).second) relations_.push_back(relation);
    }
    return true;
}

std::optional<std::vector<Relation>> storedRelations(int caseNo) {
    std::vector<Relation> stored;
    sql::Query query;
    if (!query.exec("SELECT RNo,PartNo,CoRNo,CoPartNo FROM RLY_CASERLYCOP WHERE Case_No=?", {caseNo}))
        return std::nullopt;
    while (query.next()) stored.push_back({query.number(0), query.number(1), query.number(2), query.number(3)});
    return stored;
}

/// A relation that stands as it was found needs no rows written: a case that is calculated again mostly has it.
bool stands(int caseNo, std::vector<Relation> found) {
    auto stored = storedRelations(caseNo);
    if (!stored) return false;
    std::sort(stored->begin(), stored->end());
    std::sort(found.begin(), found.end());
    return stored == found;
}

bool store(int caseNo, const std::vector<Relation>& relations) {
    static const QStringList columns = {"Case_No", "RNo", "PartNo", "CoRNo", "CoPartNo"};
    if (stands(caseNo, relations)) return true;
    QVector<QVariantList> rows;
    for (const Relation& one : relations) rows.append({caseNo, one[0], one[1], one[2], one[3]});
    sql::Transaction transaction;
    return sql::Query().exec("DELETE FROM RLY_CASERLYCOP WHERE Case_No=?", {caseNo}) &&
           sql::insertRows({}, "RLY_CASERLYCOP", columns, rows) && transaction.commit();
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
    Search search;
    const QVector<CaseRule> rows = caseRules(caseNo, search.rules().keys());
    const bool whole = std::all_of(rows.begin(), rows.end(), [&](const CaseRule& row) { return search.add(row); });
    if (!whole) ReportError(Text::tr("支路数据抽取错误"), 0);
    return store(caseNo, search.relations()) && whole;
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
