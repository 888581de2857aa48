#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <cstdio>

#include "cli/Context.h"

namespace {

void addVerbs(CLI::App& app, cli::Context& context) {
    app.require_subcommand(1);
    app.fallthrough();
    app.add_flag("--json", context.json, "结果以 JSON 写到标准输出");
    app.add_flag("-v,--verbose", context.verbose, "显示系统的全部消息");
    cli::addProject(app, context);
    cli::addImport(app, context);
    cli::addModes(app, context);
    cli::addRelays(app, context);
    cli::addCase(app, context);
    cli::addExport(app, context);
    cli::addFaults(app, context);
    cli::addBook(app, context);
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    cli::Context context;
    context.showMessages();
    CLI::App app("Morvane 继电保护整定计算");
    addVerbs(app, context);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error, std::cout, std::cerr) == 0 ? cli::Ok : cli::Usage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "错误: %s\n", error.what());
        context.exitCode = cli::Internal;
    }
    context.endMessages();
    return context.exitCode;
}
