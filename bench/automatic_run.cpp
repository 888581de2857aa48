// An automatic run of all line relays of a network, one measurement for each of the three relay types: time and
// statements per run of the engine, and the processor time of module, engine and database server.
// The network is the first argument that is no option; without one it is the demonstration network.

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <iostream>
#include <memory>

#include "platform/host/BaseTables.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/import/Import.h"
#include "platform/rtdb/dbDatabase.h"
#include "platform/server/FileLock.h"
#include "platform/server/Server.h"
#include "platform/sql/Sql.h"
#include "programs/frame/ProjectStore.h"
#include "programs/model/RelayStore.h"
#include "programs/study/ModeStore.h"
#include "programs/workflow/RunSession.h"

namespace {

constexpr int lineElement = 6;

Project project;
dbDatabase realTime;
QString serverFolder;

double processorSeconds(int who) {
    rusage usage{};
    getrusage(who, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           1e-6 * static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
}

double serverSeconds() {
    QFile id(serverFolder + "/server.pid");
    if (!id.open(QIODevice::ReadOnly)) return 0;
    QFile stat("/proc/" + QString::fromLatin1(id.readAll().trimmed()) + "/stat");
    if (!stat.open(QIODevice::ReadOnly)) return 0;
    const QList<QByteArray> fields = stat.readAll().split(' ');
    return (fields.value(13).toDouble() + fields.value(14).toDouble()) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double statementsOfServer() {
    sql::Query query;
    return query.exec("SHOW GLOBAL STATUS LIKE 'Questions'") && query.next() ? query.real(1) : 0;
}

struct Usage {
    double module = processorSeconds(RUSAGE_SELF);
    double engine = processorSeconds(RUSAGE_CHILDREN);
    double server = serverSeconds();
    double statements = statementsOfServer();
};

bool installAll() {
    QVector<RelayRequest> requests;
    for (const Location& place : RelayStore::locations(lineElement))
        for (const int type : {1, 2, 3}) requests << RelayRequest{place, type, 240, 2200, {}};
    return RelayStore::install(requests) == requests.size();
}

bool makeCase(CaseStore& cases, int type) {
    CaseForm form;
    form.name = "C" + QString::number(type);
    form.source = sql::scalar({}, "SELECT SchName FROM CDB_SCHEMEINFBAK LIMIT 1").toString();
    for (const OperatingModeRecord& mode : ModeStore::list())
        (form.bigSys.isEmpty() ? form.bigSys : form.smallSys) << mode.SysNo;
    QVector<int> relays;
    for (const InstalledRelay& relay : RelayStore::list(type)) relays << relay.RNo;
    if (!cases.UpdateCaseChain(1)) return false;
    cases.insert(type, 0, -1, form.source);
    return cases.addRelays(form, relays) && cases.SaveRecord(1, form);
}

/// \return number of engine runs, 0 when the run was not completed
int calculate(CaseStore& cases) {
    NetworkSource network(realTime);
    const CalculationPlaces places{project.realTimeName, project.realTimePath(), project.workDirectory(),
                                   QCoreApplication::applicationDirPath() + "/"};
    CalculationStart start(cases, network, places, 2);
    std::unique_ptr<RunSession> session;
    QEventLoop loop;
    int steps = 0;
    bool whole = false;
    QObject::connect(&start, &CalculationStart::failed, &loop, &QEventLoop::quit);
    QObject::connect(&start, &CalculationStart::ready, &loop, [&] {
        session = std::make_unique<RunSession>(*cases.current(), places);
        QObject::connect(session.get(), &RunSession::progress, &loop, [&] { ++steps; });
        QObject::connect(session.get(), &RunSession::finished, &loop, [&](bool complete) {
            whole = complete;
            loop.quit();
        });
        if (!session->open() || !session->start(RunSession::Automatic)) loop.quit();
    });
    if (!start.start()) return 0;
    loop.exec();
    if (session) session->ensure();
    return whole ? steps : 0;
}

void automaticRun(benchmark::State& state) {
    CaseStore cases;
    if (!makeCase(cases, static_cast<int>(state.range(0)))) return state.SkipWithError("no case");
    int steps = 0;
    const Usage before;
    for (auto _ : state) {
        const int done = calculate(cases);
        if (done == 0) return state.SkipWithError("the run was not completed");
        steps += done;
    }
    const Usage after;
    using benchmark::Counter;
    state.counters["engine_runs"] = Counter(steps, Counter::kAvgIterations);
    state.counters["per_run"] = Counter(steps, Counter::kIsRate | Counter::kInvert);
    state.counters["statements_per_run"] = (after.statements - before.statements) / steps;
    state.counters["module_cpu"] = after.module - before.module;
    state.counters["engine_cpu"] = after.engine - before.engine;
    state.counters["server_cpu"] = after.server - before.server;
}
BENCHMARK(automaticRun)->Arg(1)->Arg(2)->Arg(3)->Unit(benchmark::kSecond)->Iterations(1)->UseRealTime();

bool prepare(const QString& folder, const std::string& input) {
    const QString data = QCoreApplication::applicationDirPath() + "/../share/morvane/";
    const auto made = ProjectStore(folder).create("BENCH", data + "rules");
    if (!made) return false;
    project = *made;
    import::Report report;
    const host::NetworkModel network =
        import::read(input.empty() ? (data + "networks/demo").toStdString() : input, {}, report);
    QString error;
    return host::storeNetwork(network) && ModeStore::saveImported(network.modes) && installAll() &&
           realTime.open(project.realTimeFile(), &error);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const QTemporaryDir folder;
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, folder.path().toUtf8());
    QCoreApplication application(argc, argv);
    serverFolder = folder.path() + "/morvane/server";
    QString error;
    auto hold = server::Hold::acquire(&error);
    if (!hold) std::cerr << error.toStdString() << '\n';
    WinDockFeedback::setReceiver([](const char*, int) {});
    const bool ready = hold && prepare(folder.path() + "/projects", argc > 1 ? argv[1] : "");
    if (ready) benchmark::RunSpecifiedBenchmarks();
    WinDockFeedback::setReceiver({});
    realTime.close();
    hold.reset();
    server::FileLock::wait(serverFolder + "/server.lock", server::FileLock::Mode::Exclusive);
    return ready ? 0 : 1;
}
