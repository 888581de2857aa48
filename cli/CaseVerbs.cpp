#include "cli/CaseVerbs.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "cli/TextTable.h"
#include "programs/study/ModeStore.h"
#include "programs/workflow/RunShadows.h"

namespace cli {

namespace {

QString sourceOf(const CaseNode& node) {
    return node.Mlf == 1 ? "潮流作业 " + QString::number(node.Case_lf) : "方案 " + node.Scheme;
}

QString partsOf(const CaseNode& node) {
    QStringList parts;
    for (int part = 1; part <= kStages; ++part)
        if (node.PartFlg[size_t(part - 1)] != 0) parts.append(QString::number(part));
    return parts.join(',');
}

nlohmann::ordered_json jsonOf(const CaseNode& node) {
    return {{"number", node.Case_No},
            {"name", node.Case_Name.toStdString()},
            {"type", node.RTypeNo},
            {"type_name", node.RTypeCode.toStdString()},
            {"load_flow", node.Case_lf},
            {"scheme", node.Scheme.trimmed().toStdString()},
            {"note", node.Note.toStdString()},
            {"parts", node.PartFlg}};
}

QString namesOf(const QList<int>& modes) {
    QStringList names;
    for (const OperatingModeRecord& mode : ModeStore::list())
        if (modes.contains(mode.SysNo)) names.append(mode.SysName);
    return names.join("、");
}

void addDefinition(CLI::App* made, const std::shared_ptr<CaseWish>& wish) {
    made->add_option("PROJECT", wish->project, "工程名")->required();
    made->add_option("--type", wish->type, "待整定保护类型编号")->required();
    made->add_option("--name", wish->name, "作业名，缺省为“作业”加序号");
    made->add_option("--note", wish->note, "作业描述");
    auto* scheme = made->add_option("--scheme", wish->scheme, "基础方案，缺省为第一个方案");
    made->add_option("--load-flow", wish->loadFlow, "潮流作业名")->excludes(scheme);
    made->add_option("--relay", wish->relays, "待整定保护编号，缺省为该类型的全部有效保护");
    made->add_option("--level", wish->levels, "只取这些电压等级 kV 的保护");
    made->add_option("--part", wish->parts, "考虑整定的段，缺省为全部")->check(CLI::Range(1, kStages));
    made->add_option("--without-rule", wish->rulesOff, "不用这些整定原则，例如 3202")->delimiter(',');
    made->add_option("--max", wish->maximum, "大运行方式");
    made->add_option("--min", wish->minimum, "小运行方式");
    made->add_option("--sens", wish->sensitivity, "灵敏度参量计算用运行方式");
    made->add_option("--outage", wish->outages, "检修元件");
}

CLI::App* addOnCase(CLI::App* verb, const char* word, const char* text, const std::shared_ptr<CaseWish>& wish) {
    CLI::App* made = verb->add_subcommand(word, text);
    made->add_option("PROJECT", wish->project, "工程名")->required();
    made->add_option("CASE", wish->caseName, "作业名或作业号")->required();
    return made;
}

}  // namespace

bool selectCase(Context& context, const std::string& caseName, CaseStore& cases) {
    const QString name = QString::fromStdString(caseName);
    bool isNumber = false;
    const int number = name.toInt(&isNumber);
    if (cases.select(name) || (isNumber && cases.select(number))) return true;
    return context.stop(BadInput, "没有作业" + name);
}

bool openAlone(Context& context, const CaseWish& wish, bool realTime) {
    if (!context.openProject(wish.project, Access::Write, realTime)) return false;
    if (!RunShadows::claim()) return context.stop(NoResult, "另一个程序正在该工程中计算，请稍后再试");
    const auto found = RunShadows::recover();
    if (found == RunShadows::Leftover::Failed) return context.stop(Internal, "不能恢复上一次计算前的数据");
    if (found == RunShadows::Leftover::Restored) context.note("上一次计算没有正常结束，已恢复计算前的数据");
    return true;
}

bool openCase(Context& context, const CaseWish& wish, CaseStore& cases, bool realTime) {
    if (!openAlone(context, wish, realTime)) return false;
    if (!cases.UpdateCaseChain(1)) return context.stop(Internal, {});
    return selectCase(context, wish.caseName, cases);
}

void listCases(Context& context, const CaseWish& wish) {
    CaseStore cases;
    if (!context.openProject(wish.project, Access::Read) || !cases.UpdateCaseChain(1)) return;
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    TextTable table({"编号", "作业名", "保护类型", "网络", "段", "描述"}, {0});
    for (const CaseNode& node : cases.chain()) {
        array.push_back(jsonOf(node));
        table.add(
            {QString::number(node.Case_No), node.Case_Name, node.RTypeCode, sourceOf(node), partsOf(node), node.Note});
    }
    if (context.json) return print(QString::fromStdString(array.dump(1)) + "\n");
    table.print();
}

void showCase(Context& context, const CaseWish& wish) {
    CaseStore cases;
    if (!openCase(context, wish, cases) || !cases.LoadCaseRelays()) return;
    const CaseNode& node = *cases.current();
    const CaseForm form = cases.form();
    QStringList relays;
    for (const CaseSettingRow& row : form.rows)
        if (!relays.contains(row.label)) relays.append(row.label);
    if (context.json) {
        auto object = jsonOf(node);
        object["maximum"] = form.bigSys;
        object["minimum"] = form.smallSys;
        for (const QString& relay : relays) object["relays"].push_back(relay.trimmed().toStdString());
        return print(QString::fromStdString(object.dump(1)) + "\n");
    }
    print("作业 " + node.Case_Name + "（" + QString::number(node.Case_No) + "）: " + node.RTypeCode + "，" +
          sourceOf(node) + "，段 " + partsOf(node) + "\n大运行方式: " + namesOf(form.bigSys) +
          "\n小运行方式: " + namesOf(form.smallSys) + "\n待整定保护 " + QString::number(relays.size()) + " 套:\n");
    for (const QString& relay : relays) print("  " + relay + "\n");
}

void deleteCase(Context& context, const CaseWish& wish) {
    CaseStore cases;
    if (openCase(context, wish, cases) && !cases.remove()) context.exitCode = Internal;
}

void addCase(CLI::App& app, Context& context) {
    CLI::App* verb = app.add_subcommand("case", "作业：定义、计算、结果、保存定值")->require_subcommand(1);
    auto wish = std::make_shared<CaseWish>();

    CLI::App* made = verb->add_subcommand("new", "定义作业");
    addDefinition(made, wish);
    made->callback([=, &context] { newCase(context, *wish); });

    CLI::App* listed = verb->add_subcommand("list", "列出作业");
    listed->add_option("PROJECT", wish->project, "工程名")->required();
    listed->callback([=, &context] { listCases(context, *wish); });

    addOnCase(verb, "show", "显示作业", wish)->callback([=, &context] { showCase(context, *wish); });
    CLI::App* rules = addOnCase(verb, "rules", "列出各段的整定原则，或改变是否采用", wish);
    rules->add_option("--on", wish->rulesOn, "采用这些整定原则")->delimiter(',');
    rules->add_option("--off", wish->rulesOff, "不用这些整定原则")->delimiter(',');
    rules->callback([=, &context] { setCaseRules(context, *wish); });

    addOnCase(verb, "delete", "删除作业", wish)->callback([=, &context] { deleteCase(context, *wish); });
    addOnCase(verb, "klm", "计算灵敏度参量", wish)->callback([=, &context] { runSensitivity(context, *wish); });

    CLI::App* run = addOnCase(verb, "run", "自动计算", wish);
    run->add_flag("--klm", wish->withSensitivity, "先计算灵敏度参量");
    run->callback([=, &context] { runCase(context, *wish); });

    CLI::App* results = verb->add_subcommand("results", "显示定值结果和灵敏度");
    results->add_option("PROJECT", wish->project, "工程名")->required();
    results->add_option("CASE", wish->caseNames, "作业名或作业号，可多个")->required();
    results->add_flag("--csv", wish->csv, "写成 CSV");
    results->callback([=, &context] { showResults(context, *wish); });

    CLI::App* saved = addOnCase(verb, "save", "把定值存入保护，原定值转为后备定值", wish);
    saved->add_flag("--keep-backup", wish->keepBackup, "不改变后备定值");
    saved->add_flag("--force", wish->force, "动作时间没有结果也保存");
    saved->callback([=, &context] { saveSettings(context, *wish); });
}

}  // namespace cli
