#include <nlohmann/json.hpp>

#include "cli/CaseRunner.h"
#include "cli/CaseVerbs.h"
#include "cli/TextTable.h"
#include "platform/import/CsvTable.h"
#include "programs/engine/CRelayInputCal.h"
#include "programs/engine/Sensitivity.h"
#include "programs/workflow/ResultTable.h"
#include "programs/workflow/SettingStore.h"

namespace cli {

namespace {

/// Runs the case; what came out becomes the case's own, when it came out whole.
void run(Context& context, const CaseWish& wish, const QList<RunSession::Run>& runs) {
    CaseStore cases;
    if (!openCase(context, wish, cases, true)) return;
    CaseRunner runner(context, cases);
    if (!runner.run(runs)) {
        context.stop(NoResult, "计算没有完成");
        return;
    }
    if (runner.failedSteps() > 0)
        context.stop(NoResult, "有 " + QString::number(runner.failedSteps()) + " 次计算没有结果");
    if (runs.contains(RunSession::Automatic) && !cases.SaveRecord(1, cases.form())) context.exitCode = Internal;
}

/// Brings the working tables to the case and computes its sensitivities.
bool load(Context& context, CaseStore& cases) {
    if (!cases.LoadCaseRelays()) return context.stop(NoResult, {});
    const CaseNode& node = *cases.current();
    CRelayInputCal input(node.RTypeNo, context.places().workDir, node.Case_No);
    if (!input.BuildSensitivityRows() || !updateSensitivities(node.RTypeNo, input.rules())) context.exitCode = NoResult;
    return true;
}

QString valueText(const ResultRow& row, double value) {
    const QString unit = unitOf(row.VType);
    return unit.isEmpty() ? number(value) : number(value) + " " + unit;
}

QString ruleText(const ResultRow& row) {
    if (row.RuleNo != 0) return QString::number(row.RuleNo) + " " + row.ruleNote;
    return row.ruled ? "没有结果" : "-";
}

void printTable(const QVector<ResultRow>& rows) {
    TextTable table({"保护类型", "安装位置", "段", "定值", "一次值", "二次值", "灵敏度", "决定的原则"}, {2, 4, 5, 6});
    QString last;
    for (const ResultRow& row : rows) {
        const QString place = row.RTypeCode + row.label;
        table.add({place == last ? QString() : row.RTypeCode, place == last ? QString() : row.label.trimmed(),
                   QString::number(row.PNo), row.DspCdz, valueText(row, row.primary), valueText(row, row.secondary),
                   row.sensitivity ? number(*row.sensitivity) : "-", ruleText(row)});
        last = place;
    }
    table.print();
}

void printCsv(const QVector<ResultRow>& rows) {
    std::string text;
    import::appendCsv(text, {"relay", "type", "location", "part", "setting", "primary", "secondary", "unit",
                             "sensitivity", "rule", "rule_note"});
    for (const ResultRow& row : rows)
        import::appendCsv(text,
                          {std::to_string(row.RNo), row.RTypeCode.toStdString(), row.label.trimmed().toStdString(),
                           std::to_string(row.PNo), row.Cdz.toStdString(), number(row.primary).toStdString(),
                           number(row.secondary).toStdString(), unitOf(row.VType).toStdString(),
                           row.sensitivity ? number(*row.sensitivity).toStdString() : "",
                           row.RuleNo != 0 ? std::to_string(row.RuleNo) : "", row.ruleNote.toStdString()});
    print(QString::fromStdString(text));
}

void printJson(const QVector<ResultRow>& rows) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const ResultRow& row : rows) {
        nlohmann::ordered_json object = {{"relay", row.RNo},
                                         {"type", row.RTypeCode.toStdString()},
                                         {"location", row.label.trimmed().toStdString()},
                                         {"part", row.PNo},
                                         {"setting", row.Cdz.toStdString()},
                                         {"unit", unitOf(row.VType).toStdString()},
                                         {"primary", row.primary},
                                         {"secondary", row.secondary},
                                         {"previous", row.oldPrimary},
                                         {"rule", row.RuleNo},
                                         {"rule_note", row.ruleNote.toStdString()}};
        if (row.sensitivity) object["sensitivity"] = *row.sensitivity;
        array.push_back(object);
    }
    print(QString::fromStdString(array.dump(1)) + "\n");
}

}  // namespace

void runCase(Context& context, const CaseWish& wish) {
    if (wish.withSensitivity) return run(context, wish, {RunSession::Sensitivity, RunSession::Automatic});
    run(context, wish, {RunSession::Automatic});
}

void runSensitivity(Context& context, const CaseWish& wish) { run(context, wish, {RunSession::Sensitivity}); }

void showResults(Context& context, const CaseWish& wish) {
    CaseStore cases;
    QVector<ResultRow> rows;
    if (!context.openProject(wish.project) || !cases.UpdateCaseChain(1)) return;
    for (const std::string& name : wish.caseNames) {
        if (!selectCase(context, name, cases) || !load(context, cases)) return;
        rows += resultTable(cases.current()->Case_No, cases.current()->RTypeNo);
    }
    if (context.json)
        printJson(rows);
    else if (wish.csv)
        printCsv(rows);
    else
        printTable(rows);
}

void saveSettings(Context& context, const CaseWish& wish) {
    CaseStore cases;
    if (!openCase(context, wish, cases)) return;
    if (!cases.LoadCaseRelays()) {
        context.exitCode = NoResult;
        return;
    }
    const bool saved = wish.keepBackup ? SettingStore::saveKeepingBackup() : SettingStore::saveChangingBackup();
    if (!saved) context.exitCode = Internal;
}

}  // namespace cli
