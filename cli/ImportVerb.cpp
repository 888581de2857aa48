#include <unistd.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/Context.h"
#include "cli/TextTable.h"
#include "platform/import/Import.h"
#include "programs/study/ImportedNetwork.h"

namespace cli {

namespace {

struct Wish {
    std::string project, input;
    import::Options options;
};

void showReport(const import::Report& report, bool json) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    TextTable table({"类别", "对象", "数量", "说明"}, {2});
    for (const import::Finding& finding : report.findings) {
        array.push_back({{"kind", import::kindText(finding.kind)},
                         {"subject", finding.subject},
                         {"count", finding.count},
                         {"text", finding.text}});
        table.add({QString::fromStdString(import::kindText(finding.kind)), QString::fromStdString(finding.subject),
                   QString::number(finding.count), QString::fromStdString(finding.text)});
    }
    if (json) return print(QString::fromStdString(array.dump(1)) + "\n");
    table.print();
}

void run(Context& context, Wish& wish) {
    import::Report report;
    host::NetworkModel network;
    if (isatty(STDERR_FILENO))
        wish.options.progress = [](int percent, const std::string& what) {
            std::fprintf(stderr, "\r\033[K%3d%% %s%s", percent, what.c_str(), percent >= 100 ? "\n" : "");
        };
    try {
        network = import::read(wish.input, wish.options, report);
    } catch (const import::ImportError& error) {
        context.stop(BadInput, QString::fromStdString(error.what()));
        return;
    }
    if (!context.openProject(wish.project, Access::Write)) return;
    if (!storeImportedNetwork(network)) {
        context.stop(Internal, "网络没有存入工程");
        return;
    }
    showReport(report, context.json);
}

}  // namespace

void addImport(CLI::App& app, Context& context) {
    CLI::App* verb = app.add_subcommand("import", "把网络读入工程：CSV 文件夹、CGMES、MATPOWER");
    auto wish = std::make_shared<Wish>();
    verb->add_option("PROJECT", wish->project, "工程名")->required();
    verb->add_option("INPUT", wish->input, "文件或文件夹")->required();
    verb->add_flag("!--no-shorten", wish->options.shortenNames, "过长的名称拒绝而不缩短");
    verb->add_flag("!--no-defaults", wish->options.defaultSequenceData, "没有零序数据时不取缺省值");
    verb->callback([=, &context] { run(context, *wish); });
}

}  // namespace cli
