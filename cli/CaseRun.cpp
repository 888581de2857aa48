#include <algorithm>

#include "cli/CaseRunner.h"
#include "cli/CaseVerbs.h"
#include "cli/ResultText.h"
#include "programs/engine/CRelayInputCal.h"
#include "programs/engine/Sensitivity.h"
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

QVector<ResultRow> resultsOf(Context& context, CaseStore& cases) {
    const CaseNode& node = *cases.current();
    return resultTable(node.Case_No, node.RTypeNo, RulesWithoutResult::load(context.places().workDir, node.Case_No));
}

/// Whether every part that acts has its time. A time of 0 that no rule gave would let a backup stage act at once.
bool timesAreGiven(Context& context, CaseStore& cases) {
    QStringList parts;
    for (const ResultRow& row : resultsOf(context, cases))
        if (row.lacksTime) parts.append(row.label.trimmed() + " " + QString::number(row.PNo) + " 段");
    return parts.isEmpty() ||
           context.stop(NoResult, "动作时间没有结果，定值没有保存（--force 仍然保存）: " + parts.join("、"));
}

}  // namespace

bool loadCase(Context& context, CaseStore& cases) {
    if (!cases.LoadCaseRelays()) return context.stop(NoResult, {});
    const CaseNode& node = *cases.current();
    CRelayInputCal input(node.RTypeNo, context.places().workDir, node.Case_No);
    if (!input.BuildSensitivityRows() || !updateSensitivities(node.RTypeNo, input.rules())) context.exitCode = NoResult;
    return true;
}

void runCase(Context& context, const CaseWish& wish) {
    if (wish.withSensitivity) return run(context, wish, {RunSession::Sensitivity, RunSession::Automatic});
    run(context, wish, {RunSession::Automatic});
}

void runSensitivity(Context& context, const CaseWish& wish) { run(context, wish, {RunSession::Sensitivity}); }

void showResults(Context& context, const CaseWish& wish) {
    CaseStore cases;
    QVector<ResultRow> rows;
    if (!openAlone(context, wish) || !cases.UpdateCaseChain(1)) return;
    for (const std::string& name : wish.caseNames) {
        if (!selectCase(context, name, cases) || !loadCase(context, cases)) return;
        rows += resultsOf(context, cases);
    }
    const bool open = std::any_of(rows.begin(), rows.end(), [](const auto& row) { return row.sensitivityOpen; });
    if (open) context.note("灵敏度参量还没有计算，请先运行 case klm");
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
    if (!wish.force && !timesAreGiven(context, cases)) return;
    const bool saved = wish.keepBackup ? SettingStore::saveKeepingBackup() : SettingStore::saveChangingBackup();
    if (!saved) context.exitCode = Internal;
}

}  // namespace cli
