#include "programs/reports/BookContent.h"

#include <algorithm>
#include <memory>

#include "platform/sql/Sql.h"
#include "programs/engine/RuleData.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/TableNames.h"
#include "programs/reports/BookFaultRows.h"
#include "programs/reports/BookSettings.h"
#include "programs/reports/BookUnits.h"

std::optional<double> BookVariable::shown() const {
    if (!V) return std::nullopt;
    return ofFault() ? *V * 1000.0 : *V;
}

bool BookRule::hasCoefficients() const {
    return std::any_of(variables.begin(), variables.end(),
                       [](const auto& variable) { return variable.isCoefficient(); });
}

bool BookRule::withoutResult() const {
    return std::all_of(results.begin(), results.end(), [](const auto& result) { return result.Rdz == 0; });
}

namespace {

constexpr int kFirstSettingRule = 100;

/// The texts of the rules, and the parameter groups of the case.
struct RuleTexts {
    QHash<int, BookRule> rules;                                 ///< texts and variables, without values
    QHash<QPair<int, int>, QVector<BookParameter>> parameters;  ///< by rule and group
    QHash<BookRuleKey, int> groups;

    bool read(int caseNo) {
        sql::Query texts(tables::ruleConnection), variables(tables::ruleConnection), values(tables::ruleConnection),
            used;
        if (!texts.exec("SELECT RuleNo,Note,Formula FROM RULEINF") ||
            !variables.exec("SELECT RuleNo,ModeNo,VType,Cin,VarNo FROM VARIN ORDER BY RuleNo,VarNo ASC") ||
            !values.exec("SELECT RuleNo,ParNo,C,K FROM PARAINF ORDER BY RuleNo,ParNo,KNo ASC") ||
            !used.exec("SELECT RNo,PNo,RuleNo,ParNo FROM RLY_CASEINF WHERE Case_No=?", {caseNo}))
            return false;
        while (texts.next()) {
            BookRule& rule = rules[texts.number(0)];
            rule.Note = texts.text(1);
            rule.Formula = texts.text(2);
        }
        while (variables.next()) {
            BookVariable variable;
            variable.ModeNo = variables.number(1);
            variable.VType = variables.number(2);
            variable.Cin = variables.text(3);
            variable.VarNo = variables.number(4);
            rules[variables.number(0)].variables.append(variable);
        }
        while (values.next()) parameters[{values.number(0), values.number(1)}].append({values.text(2), values.real(3)});
        while (used.next()) groups.insert({used.number(0), used.number(1), used.number(2)}, used.number(3));
        return true;
    }
};

using Values = QHash<QPair<BookRuleKey, int>, double>;  // by rule of a part and `VarNo`

bool readValues(int caseNo, Values& values) {
    sql::Query query;
    if (!query.exec("SELECT RNo,PNo,RuleNo,VarNo,V FROM RLY_RRVIN WHERE Case_No=?", {caseNo})) return false;
    while (query.next()) {
        const QPair key{BookRuleKey{query.number(0), query.number(1), query.number(2)}, query.number(3)};
        if (!values.contains(key)) values.insert(key, query.real(4));
    }
    return true;
}

/// All that the rules of a book are made from.
class Reader {
  public:
    explicit Reader(const BookRequest& request) : request_(request), faults_(request.caseNo, network_) {}

    bool read(BookContent& content) {
        rules_ = RuleData::read();
        if (const RelayTypeInfo* type = rules_->type(request_.rTypeNo)) type_ = *type;
        content.RType = type_.RType;
        return network_.read() && faults_.read() && texts_.read(request_.caseNo) &&
               readValues(request_.caseNo, values_) &&
               readBookCoefficients(request_.caseNo, network_, content.coefficients) && readParts(content) &&
               (request_.sensitivity || readBookSettings(*rules_, type_, content));
    }

  private:
    bool readParts(BookContent& content) {
        sql::Query query;
        if (!query.exec("SELECT RNo,ID_Name,I_Name,J_Name,Side,PNo,Cdz,RuleNo,Rdz FROM RLY_RDZTEM WHERE Case_No=?"
                        " ORDER BY ID ASC",
                        {request_.caseNo}))
            return false;
        while (query.next()) {
            const BookRuleKey key{query.number(0), query.number(5), query.number(7)};
            auto& parts = content.parts;
            if (parts.isEmpty() || parts.last().RNo != key.RNo || parts.last().PNo != key.PNo)
                parts.append({key.RNo,
                              key.PNo,
                              locationLabel(type_.RType, query.text(1), query.text(2), query.text(3), query.number(4)),
                              {},
                              {}});
            auto& rules = parts.last().rules;
            if (rules.isEmpty() || rules.last().RuleNo != key.RuleNo) rules.append(rule(key));
            const QString cdz = query.text(6);
            const SettingKind* setting = type_.setting(cdz);
            rules.last().results.append(
                {cdz, setting ? setting->DspCdz : cdz, query.real(8), bookUnit(setting ? setting->VType : 0)});
        }
        return true;
    }

    BookRule rule(const BookRuleKey& key) const {
        BookRule made = texts_.rules.value(key.RuleNo);
        made.RuleNo = key.RuleNo;
        // A sensitivity rule belongs to no case; the engine is given its first group.
        made.ParNo = texts_.groups.value(key, key.RuleNo < kFirstSettingRule ? 1 : 0);
        made.parameters = texts_.parameters.value({key.RuleNo, made.ParNo});
        const SettingRule* known = rules_->rule(key.RuleNo);
        for (BookVariable& variable : made.variables) {
            if (const auto it = values_.constFind({key, variable.VarNo}); it != values_.constEnd()) variable.V = *it;
            variable.unit = unitOfVariable(variable.VType, known ? known->prTypeNo : 0);
            faults_.describe(variable, key);
        }
        if (known) {
            made.outputs = known->outputs;
            made.lines = known->block.lines;
        }
        return made;
    }

    [[nodiscard]] QString unitOfVariable(int vType, int prTypeNo) const {
        if (vType <= 400 || vType > 420) return bookVariableUnit(vType);
        const RelayTypeInfo* coordinated = rules_->type(prTypeNo);
        const int dzNo = (vType - 401) % 4 + 1;
        for (const SettingKind& setting : coordinated ? coordinated->settings : QVector<SettingKind>())
            if (setting.DzNo == dzNo) return bookUnit(setting.VType);
        return {};
    }

    BookRequest request_;
    std::shared_ptr<const RuleData> rules_;
    RelayTypeInfo type_;
    BookNetwork network_;
    BookFaultRows faults_;
    RuleTexts texts_;
    Values values_;
};

}  // namespace

std::optional<BookContent> readBookContent(const BookRequest& request) {
    BookContent content;
    content.request = request;
    const int before = sql::losses();
    if (!Reader(request).read(content) || sql::losses() != before) return std::nullopt;
    return content;
}
