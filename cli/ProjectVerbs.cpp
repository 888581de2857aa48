#include <CLI/CLI.hpp>
#include <QDir>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/Context.h"
#include "cli/TextTable.h"
#include "exchange/TextFile.h"
#include "platform/host/BaseTables.h"
#include "platform/import/Import.h"

namespace cli {

namespace {

struct Names {
    std::string name, other;
    bool replace = false;
};

bool removeClaimed(Context& context, const QString& name) {
    const bool known = ProjectStore::whyNotName(name).isEmpty() && QDir(context.projects().directoryOf(name)).exists();
    if (known && !context.claimProject(name)) return false;
    return context.projects().remove(name) || context.stop(known ? Internal : BadInput, {});
}

void create(Context& context, const Names& names) {
    if (!context.openServer()) return;
    const QString name = QString::fromStdString(names.name);
    if (names.replace && context.projects().names().contains(name) && !removeClaimed(context, name)) return;
    const auto project = context.projects().create(name, deliveredFolder("rules"));
    if (!project) context.exitCode = BadInput;
    if (project && !context.json) print("已建立工程 " + name + "，目录 " + project->directory + "\n");
}

void list(Context& context) {
    const QStringList names = context.projects().names();
    nlohmann::json array = nlohmann::json::array();
    for (const QString& name : names) array.push_back(name.toStdString());
    if (context.json) return print(QString::fromStdString(array.dump()) + "\n");
    for (const QString& name : names) print(name + "\n");
}

void showPath(Context& context, const Names& names) {
    const auto project = context.projects().find(QString::fromStdString(names.name));
    if (!project) context.exitCode = BadInput;
    if (project) print(project->directory + "\n");
}

void saveAs(Context& context, const Names& names) {
    if (!context.openServer()) return;
    const QString old = QString::fromStdString(names.name);
    if (context.projects().find(old) && !context.claimProject(old)) return;
    const auto project =
        context.projects().saveAs(QString::fromStdString(names.name), QString::fromStdString(names.other));
    if (!project) context.exitCode = BadInput;
}

void remove(Context& context, const Names& names) {
    if (!context.openServer()) return;
    removeClaimed(context, QString::fromStdString(names.name));
}

void exportNetwork(Context& context, const Names& names) {
    if (!context.openProject(names.name, Access::Read)) return;
    const auto network = host::loadNetwork();
    if (!network) {
        context.stop(Internal, "不能读取工程的网络");
        return;
    }
    try {
        import::writeCsv(*network, names.other);
    } catch (const exchange::FormatError& error) {
        context.stop(BadInput, QString::fromStdString(error.what()));
    }
}

}  // namespace

void addProject(CLI::App& app, Context& context) {
    CLI::App* verb = app.add_subcommand("project", "工程：新建、列出、另存、删除、导出网络")->require_subcommand(1);
    auto names = std::make_shared<Names>();

    CLI::App* made = verb->add_subcommand("new", "新建工程");
    made->add_option("NAME", names->name, "工程名")->required();
    made->add_flag("--replace", names->replace, "同名工程先删除");
    made->callback([=, &context] { create(context, *names); });

    verb->add_subcommand("list", "列出工程")->callback([&context] { list(context); });

    CLI::App* path = verb->add_subcommand("path", "工程目录，计算文件在其下的 Temp/");
    path->add_option("NAME", names->name, "工程名")->required();
    path->callback([=, &context] { showPath(context, *names); });

    CLI::App* saved = verb->add_subcommand("save-as", "另存为新工程");
    saved->add_option("NAME", names->name, "工程名")->required();
    saved->add_option("NEW", names->other, "新工程名")->required();
    saved->callback([=, &context] { saveAs(context, *names); });

    CLI::App* removed = verb->add_subcommand("delete", "删除工程及其数据库");
    removed->add_option("NAME", names->name, "工程名")->required();
    removed->callback([=, &context] { remove(context, *names); });

    CLI::App* exported = verb->add_subcommand("export", "把工程的网络写成 CSV 文件夹");
    exported->add_option("NAME", names->name, "工程名")->required();
    exported->add_option("FOLDER", names->other, "目标文件夹")->required();
    exported->callback([=, &context] { exportNetwork(context, *names); });
}

}  // namespace cli
