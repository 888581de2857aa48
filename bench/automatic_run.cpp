// An automatic run of all line relays of a network, one measurement for each of the three relay types: time and
// statements per run of the engine, and the processor time of module, engine and database server.
// The network is the first argument that is no option; without one it is the demonstration network.

#include <QEventLoop>
#include <memory>

#include "bench/Usage.h"
#include "programs/workflow/RunSession.h"

namespace {

using bench::Usage;

/// \return number of engine runs, 0 when the run was not completed
int calculate(CaseStore& cases) {
    NetworkSource network(bench::realTime);
    const CalculationPlaces places{bench::project.realTimeName, bench::project.realTimePath(),
                                   bench::project.workDirectory(), QCoreApplication::applicationDirPath() + "/"};
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
    const int type = static_cast<int>(state.range(0));
    if (!bench::makeCase(cases, type, "C" + QString::number(type))) return state.SkipWithError("no case");
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

}  // namespace

int main(int argc, char** argv) { return bench::runInProject<QCoreApplication>(argc, argv); }
