#include <nlohmann/json.hpp>

#include "cli/CaseVerbs.h"
#include "cli/TextTable.h"

namespace cli {

namespace {

QString stateOf(const CaseRule& rule) {
    if (rule.inForce == rule.relays) return "采用";
    if (rule.inForce == 0) return "不用";
    return QString("部分采用（%1/%2）").arg(rule.inForce).arg(rule.relays);
}

void printJson(const QVector<CaseRule>& rules) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const CaseRule& rule : rules)
        array.push_back({{"part", rule.part},
                         {"rule", rule.rule},
                         {"note", rule.note.toStdString()},
                         {"relays", rule.relays},
                         {"in_force", rule.inForce}});
    print(QString::fromStdString(array.dump(1)) + "\n");
}

void printTable(const QVector<CaseRule>& rules) {
    TextTable table({"段", "原则", "状态", "说明"}, {0, 1});
    for (const CaseRule& rule : rules)
        table.add({QString::number(rule.part), QString::number(rule.rule), stateOf(rule), rule.note});
    table.print();
}

}  // namespace

void setCaseRules(Context& context, const CaseWish& wish) {
    CaseStore cases;
    if (!openCase(context, wish, cases)) return;
    if (!cases.setRules(numbersOf(wish.rulesOn), numbersOf(wish.rulesOff))) {
        context.exitCode = BadInput;
        return;
    }
    context.json ? printJson(cases.rules()) : printTable(cases.rules());
}

}  // namespace cli
