#include "programs/workflow/PictureCoefficients.h"

#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/frame/TableNames.h"

namespace {

constexpr int kOfRelay = -1, kOfBranch = -2;
constexpr int kFirstKind = 451, kLastKind = 456;

struct Variable {
    int ModeNo = 0, VType = 0;
};

QHash<QPair<int, int>, Variable> coefficientVariables() {
    QHash<QPair<int, int>, Variable> variables;
    sql::Query query(tables::ruleConnection);
    query.exec("SELECT RuleNo,VarNo,ModeNo,VType FROM VARIN WHERE VType BETWEEN ? AND ?", {kFirstKind, kLastKind});
    while (query.next()) variables[{query.number(0), query.number(1)}] = {query.number(2), query.number(3)};
    return variables;
}

bool isAssist(int vType) { return vType > 452; }

}  // namespace

PictureCoefficients::PictureCoefficients(int caseNo, int rNo, int rTypeNo) {
    readKinds(rTypeNo);
    readRun(caseNo, rNo);
    readRules(caseNo, rNo);
}

void PictureCoefficients::readKinds(int rTypeNo) {
    sql::Query query(tables::ruleConnection);
    query.exec(
        "SELECT DISTINCT v.VType FROM VARIN v JOIN RTYPERULE t ON t.RuleNo=v.RuleNo"
        " WHERE t.RTypeNo=? AND v.VType BETWEEN ? AND ?",
        {rTypeNo, kFirstKind, kLastKind});
    while (query.next()) wanted_.insert(query.number(0) % 2 == 1 ? Positive : Zero);
    if (wanted_.isEmpty()) wanted_.insert(Positive);
}

void PictureCoefficients::take(Sequence sequence, QPair<int, int> of, double share) {
    double& kept = shares_[sequence][of];
    kept = std::max(kept, share);
}

void PictureCoefficients::readRun(int caseNo, int rNo) {
    sql::Query query;
    query.exec("SELECT MIDNo,MSide,FZ1,FZ0 FROM RLY_KFINF WHERE Case_No=? AND NLRNo=?", {caseNo, rNo});
    while (query.next()) {
        take(Positive, {query.number(0), query.number(1)}, query.real(2));
        take(Zero, {query.number(0), query.number(1)}, query.real(3));
    }
}

void PictureCoefficients::readRules(int caseNo, int rNo) {
    const auto variables = coefficientVariables();
    sql::Query query;
    query.exec(
        "SELECT f.RuleNo,v.VarNo,f.RMNo,v.V,f.NSela,f.NSelc FROM RLY_FAULTINF f JOIN RLY_RRVIN v ON v.RNo=f.RNo"
        " AND v.PNo=f.PNo AND v.RuleNo=f.RuleNo AND v.NCal=f.NCal AND v.Case_No=f.Case_No"
        " WHERE f.RNo=? AND f.Case_No=? AND f.RMNo BETWEEN 21 AND 45 AND v.V>0",
        {rNo, caseNo});
    while (query.next()) {
        const Variable variable = variables.value({query.number(0), query.number(1)});
        const int mode = query.number(2);
        if (variable.ModeNo != mode) continue;
        const bool relay = mode > 30 && mode < 41;
        const double value = query.real(3);
        take(variable.VType % 2 == 1 ? Positive : Zero, {query.number(relay ? 4 : 5), relay ? kOfRelay : kOfBranch},
             isAssist(variable.VType) ? 1 / value : value);
    }
}

std::optional<double> PictureCoefficients::share(Sequence sequence, int idNo, int side, int relay) const {
    std::optional<double> largest;
    for (const QPair<int, int>& key : {qMakePair(idNo, side), qMakePair(relay, kOfRelay), qMakePair(idNo, kOfBranch)}) {
        const auto found = shares_[sequence].constFind(key);
        if (found != shares_[sequence].constEnd()) largest = std::max(largest.value_or(0), *found);
    }
    return largest;
}

std::optional<double> PictureCoefficients::of(int idNo, int side, int relay) const {
    double largest = 0;
    for (const int sequence : wanted_) {
        const auto found = share(Sequence(sequence), idNo, side, relay);
        if (!found) return std::nullopt;
        largest = std::max(largest, *found);
    }
    return largest;
}
