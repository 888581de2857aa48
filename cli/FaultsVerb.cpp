#include "cli/FaultsVerb.h"

#include <CLI/CLI.hpp>
#include <QElapsedTimer>
#include <memory>

#include "cli/CaseVerbs.h"
#include "exchange/TextFile.h"

namespace cli {

namespace {

using engines::Currents;
using engines::FaultReport;
using engines::FaultReporter;

Currents currentsOf(const FaultsWish& wish, bool everyBus) {
    if (wish.currents == "all") return Currents::All;
    if (wish.currents == "none") return Currents::None;
    return wish.currents.empty() && everyBus ? Currents::None : Currents::Touching;
}

/// What --c says for the method. \return false with the exit code set
bool readVoltageFactor(Context& context, const FaultsWish& wish, FaultsNetwork& network) {
    network.iec = wish.iec();
    network.method.maximum = wish.c != "min";
    if (wish.c.empty() || (network.iec && (wish.c == "max" || wish.c == "min"))) return true;
    bool isNumber = false;
    const double c = QString::fromStdString(wish.c).toDouble(&isNumber);
    if (!isNumber || !(c > 0 && c < 10))
        return context.stop(BadInput,
                            network.iec ? "--c 应为 max、min 或一个正数" : "classical 方法的 --c 应为一个正数");
    if (!network.iec && !wish.loadFlow.empty()) return context.stop(BadInput, "短路前为潮流时不能再给 --c");
    network.prefault = c;
    network.method.c = c;
    return true;
}

bool chooseRelays(Context& context, const FaultsWish& wish, const FaultsNetwork& network, engines::ReportScope& scope) {
    for (const std::string& word : wish.impedances) {
        engines::BranchEnd end;
        if (!findBranchEnd(network, QString::fromStdString(word), end))
            return context.stop(BadInput, "--impedance 应为 支路:I 或 支路:J：" + QString::fromStdString(word));
        scope.relays.push_back(end);
    }
    return true;
}

double factorOf(const FaultsNetwork& network, const engines::Condition& condition) {
    if (condition.branch.value < 0) return network.factorAt(condition.bus);
    return network.factorAt(network.network.branches[static_cast<std::size_t>(condition.branch.value)].from);
}

/// Every bus and kind; by the study of all buses unless each fault is asked about the whole network.
void studyEveryBus(const FaultsWish& wish, const FaultsNetwork& network, const engines::ModeNetwork& mode,
                   const FaultReporter& reporter, bool whole, std::vector<FaultsCase>& cases,
                   std::vector<FaultReport>& reports) {
    engines::Complex ohm;
    parseImpedance(wish.zf, ohm);
    const engines::BusStudy study(mode);
    const auto kinds = faultKinds(wish);
    for (int i = 0; i < static_cast<int>(network.network.buses.size()); ++i) {
        const auto& bus = network.network.buses[static_cast<std::size_t>(i)];
        if (bus.star) continue;
        const engines::Complex z = ohm * (100 / (bus.baseKv * bus.baseKv));
        for (const engines::FaultKind kind : kinds) {
            const engines::Condition condition{{}, {i}, 0, kind, z, 1};
            cases.push_back({network.busNames[static_cast<std::size_t>(i)], kindCode(kind), {}});
            reports.push_back(whole ? reporter.report({&condition, 1}, network.factorAt({i}))
                                    : reporter.report(study, {i}, kind, z, network.factorAt({i})));
        }
    }
}

/// Tells, when asked for, what each step took.
class StepTimes {
  public:
    explicit StepTimes(Context& context) : context_(context) { timer_.start(); }
    void done(const QString& step) {
        const double ms = double(timer_.nsecsElapsed()) / 1e6;
        timer_.start();
        if (context_.verbose) context_.note(step + " " + QString::number(ms, 'f', 1) + " ms");
    }

  private:
    Context& context_;
    QElapsedTimer timer_;
};

void run(Context& context, const FaultsWish& wish) {
    CaseWish place;
    place.project = wish.project;
    FaultsNetwork network;
    std::vector<FaultsCase> cases;
    std::vector<FaultReport> reports;
    engines::ReportScope scope;
    StepTimes times(context);
    if (!openAlone(context, place) || !readVoltageFactor(context, wish, network)) return;
    times.done("打开工程");
    if (!loadFaultsNetwork(context, wish, network) || !findFaultsCases(context, wish, network, cases) ||
        !chooseRelays(context, wish, network, scope))
        return;
    times.done("取得网络");
    const bool everyBus = cases.empty();
    scope.currents = currentsOf(wish, everyBus);
    const bool whole = scope.currents == Currents::All || !scope.relays.empty();
    const engines::ModeNetwork mode(network.network, network.changes);
    const FaultReporter reporter(mode, scope, network.charging);
    if (everyBus) studyEveryBus(wish, network, mode, reporter, whole, cases, reports);
    for (std::size_t k = reports.size(); k < cases.size(); ++k)
        reports.push_back(reporter.report(cases[k].conditions, factorOf(network, cases[k].conditions.front())));
    times.done("计算 " + QString::number(cases.size()) + " 个故障");
    writeFaults(wish, network, cases, reports);
    times.done("输出");
}

void addPlaces(CLI::App* verb, const std::shared_ptr<FaultsWish>& wish) {
    verb->add_option("--bus", wish->buses, "故障母线（节点名）；不给位置时为全部母线");
    verb->add_option("--branch", wish->branches, "故障支路：线路、双绕组变压器，三绕组变压器写作 名:绕组号");
    verb->add_option("--at", wish->percents, "支路上的位置，距 I 侧的百分数，缺省 50");
    verb->add_option("--kind", wish->kinds, "类型：3ph 1ph 2ph 2phg open1 open2 open3，缺省前四种")
        ->check(CLI::IsMember({"3ph", "1ph", "2ph", "2phg", "open1", "open2", "open3", "simultaneous"}));
    verb->add_option("--condition", wish->conditions,
                     "同时发生的条件之一，写作 类型@母线 或 类型@支路:百分数，例如 1ph@线路1:50；全部一起作用");
    verb->add_option("--zf", wish->zf, "短路阻抗 R+jX，欧姆");
}

void addNetwork(CLI::App* verb, const std::shared_ptr<FaultsWish>& wish) {
    auto* scheme = verb->add_option("--scheme", wish->scheme, "方案，缺省为第一个方案");
    verb->add_option("--load-flow", wish->loadFlow, "潮流作业名，短路前为其潮流")->excludes(scheme);
    verb->add_option("--mode", wish->mode, "运行方式");
    verb->add_option("--outage", wish->outages, "停运的线路、变压器或电源");
    verb->add_option("--method", wish->method, "方法：classical（缺省）或 iec60909")
        ->check(CLI::IsMember({"classical", "iec60909"}));
    verb->add_option("--c", wish->c, "电压系数：iec60909 为 max（缺省）、min 或数值，classical 为短路前电压标幺值");
    verb->add_flag("--charging", wish->charging, "计及线路零序电容");
}

}  // namespace

void addFaults(CLI::App& app, Context& context) {
    auto wish = std::make_shared<FaultsWish>();
    CLI::App* verb = app.add_subcommand("faults", "短路计算：任意位置、类型、同时故障，IEC 60909 初始短路电流");
    verb->add_option("PROJECT", wish->project, "工程名")->required();
    addPlaces(verb, wish);
    addNetwork(verb, wish);
    verb->add_option("--currents", wish->currents, "支路电流：touching 与故障相连的，all 全部并给出母线电压，none 不给")
        ->check(CLI::IsMember({"touching", "all", "none"}));
    verb->add_option("--impedance", wish->impedances, "给出测量阻抗的支路端，写作 支路:I 或 支路:J");
    verb->add_flag("--factors", wish->factors, "列出 IEC 60909 的修正系数");
    verb->add_option("--out", wish->out, "输出：table（缺省）、csv 或 json")
        ->check(CLI::IsMember({"table", "csv", "json"}));
    verb->callback([=, &context] {
        if (context.json) wish->out = "json";
        try {
            run(context, *wish);
        } catch (const exchange::FormatError& error) {
            context.stop(BadInput, "网络数据不能计算：" + QString::fromStdString(error.what()));
        }
    });
}

}  // namespace cli
