// An automatic run of all line relays of a network, of each of the three relay types, without a window and in the run
// window (offscreen), in turns: wall time and processor time of the programs, the database server, the module and the
// window. The network is the first argument that is no option; without one it is the demonstration network.

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPushButton>
#include <functional>

#include "bench/Usage.h"
#include "programs/workflow/RunSession.h"
#include "programs/workflow/WinDlgRlyCal.h"

namespace {

constexpr int rounds = 3;
constexpr int automatic = 2;

struct Cost {
    double wall = 0, module = 0, engine = 0, server = 0, statements = 0;
};

CalculationPlaces places() {
    return {bench::project.realTimeName, bench::project.realTimePath(), bench::project.workDirectory(),
            QCoreApplication::applicationDirPath() + "/"};
}

/// Brings the case to where a run can start. \return whether it can
bool prepare(CaseStore& cases) {
    NetworkSource network(bench::realTime);
    CalculationStart start(cases, network, places(), automatic);
    QEventLoop loop;
    bool ready = false;
    QObject::connect(&start, &CalculationStart::failed, &loop, &QEventLoop::quit);
    QObject::connect(&start, &CalculationStart::ready, &loop, [&] {
        ready = true;
        loop.quit();
    });
    if (start.start()) loop.exec();
    return ready;
}

Cost measured(const std::function<void()>& run) {
    const bench::Usage before;
    QElapsedTimer clock;
    clock.start();
    run();
    const double wall = 1e-9 * static_cast<double>(clock.nsecsElapsed());
    const bench::Usage after;
    return {wall, after.module - before.module, after.engine - before.engine, after.server - before.server,
            after.statements - before.statements};
}

/// \param steps  becomes the number of engine runs, 0 when the run was not completed
Cost withoutWindow(const CaseNode& node, int& steps) {
    RunSession session(node, places());
    QEventLoop loop;
    bool whole = false;
    steps = 0;
    QObject::connect(&session, &RunSession::progress, &loop, [&] { ++steps; });
    QObject::connect(&session, &RunSession::finished, &loop, [&](bool complete) {
        whole = complete;
        loop.quit();
    });
    if (!session.open()) return {};
    const Cost cost = measured([&] {
        if (session.start(RunSession::Automatic)) loop.exec();
    });
    if (!whole) steps = 0;
    session.cancel();
    return cost;
}

Cost inWindow(const CaseNode& node) {
    const CalculationPlaces at = places();
    WinDlgRlyCal window(at.rtdbName, at.rtdbPath, at.workDir, node.Case_No, node.RTypeNo, node.RTypeCode, at.programDir,
                        {}, automatic);
    window.resize(1280, 800);
    window.show();
    QApplication::processEvents();
    const auto* cancel = window.findChild<QPushButton*>("pushButton_Cancel");
    const QString idle = cancel->text();
    const Cost cost = measured([&] {
        window.findChild<QPushButton*>("pushButton_Next")->click();
        while (cancel->text() != idle) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    });
    window.PushButton_Cancel_Clicked();
    return cost;
}

const Cost& faster(const Cost& a, const Cost& b) { return a.wall < b.wall ? a : b; }

void runWindow(benchmark::State& state) {
    CaseStore cases;
    const int type = static_cast<int>(state.range(0));
    if (!bench::makeCase(cases, type, "W" + QString::number(type))) return state.SkipWithError("no case");
    Cost bare{1e9}, window{1e9};
    int steps = 0;
    for (auto _ : state) {
        for (int round = 0; round < rounds; ++round) {
            if (!prepare(cases)) return state.SkipWithError("no start");
            bare = faster(bare, withoutWindow(*cases.current(), steps));
            if (steps == 0) return state.SkipWithError("the run was not completed");
            if (!prepare(cases)) return state.SkipWithError("no start");
            window = faster(window, inWindow(*cases.current()));
        }
        state.SetIterationTime(window.wall);
    }
    state.counters["engine_runs"] = steps;
    state.counters["bare_wall"] = bare.wall;
    state.counters["bare_module"] = bare.module;
    state.counters["bare_statements"] = bare.statements / steps;
    state.counters["engine"] = window.engine;
    state.counters["server"] = window.server;
    state.counters["module_and_window"] = window.module;
    state.counters["statements"] = window.statements / steps;
    state.counters["window"] = window.module - bare.module;
    state.counters["window_share"] = (window.module - bare.module) / (window.module + window.engine + window.server);
}
BENCHMARK(runWindow)->Arg(1)->Arg(2)->Arg(3)->Unit(benchmark::kSecond)->Iterations(1)->UseManualTime();

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return bench::runInProject<QApplication>(argc, argv);
}
