// From the start of the workbench's process to the diagram of a project, and the memory it took.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <memory>

#include "platform/server/Server.h"

namespace {

QString program(const char* name) { return QCoreApplication::applicationDirPath() + "/" + name; }

bool call(const QStringList& words) { return QProcess::execute(program("morvane"), words) == 0; }

void start(benchmark::State& state, const QString& project, bool serverRuns) {
    QString error;
    double megabytes = 0;
    for (auto _ : state) {
        const auto hold = serverRuns ? server::Hold::acquire(&error) : nullptr;
        QProcess process;
        QElapsedTimer clock;
        clock.start();
        process.start(program("morvane-workbench"), {project, "--until-shown"});
        QByteArray line;
        while (!line.contains('\n') && process.waitForReadyRead(60000)) line += process.readAllStandardOutput();
        state.SetIterationTime(double(clock.nsecsElapsed()) * 1e-9);
        process.waitForFinished();
        const auto peak = QRegularExpression("shown, at most (\\d+) kB").match(line);
        if (!peak.hasMatch()) return state.SkipWithError("the diagram was not shown");
        megabytes = peak.captured(1).toDouble() / 1024;
    }
    state.counters["peak_MB"] = megabytes;
}

void add(const QString& project, const QString& network) {
    if (!QFile::exists(network) || !call({"project", "new", project}) || !call({"import", project, network})) return;
    for (const bool serverRuns : {false, true})
        benchmark::RegisterBenchmark(
            ("start/" + project.toStdString() + (serverRuns ? "/server_running" : "/server_stopped")).c_str(),
            [=](benchmark::State& state) { start(state, project, serverRuns); })
            ->UseManualTime()
            ->Iterations(5)
            ->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
    const QTemporaryDir folder;
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, folder.path().toUtf8());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    add("demo", QCoreApplication::applicationDirPath() + "/../share/morvane/networks/demo");
    for (const char* name : {"case118", "case_ACTIVSg2000"})
        add(name, qEnvironmentVariable("MORVANE_SHARED_NETWORKS") + "/matpower/" + name + ".m");
    benchmark::RunSpecifiedBenchmarks();
}
