// Opening the single-line diagram, with the layout computed and with the kept one, and painting it while it is moved.
// Networks that are not of this project come from the folder that MORVANE_SHARED_NETWORKS names.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QScrollBar>
#include <QTemporaryDir>
#include <cstdlib>
#include <filesystem>

#include "platform/host/diagram/DiagramView.h"
#include "platform/host/diagram/Drawing.h"
#include "platform/import/Import.h"

namespace {

host::NetworkModel read(const std::string& path) {
    import::Report report;
    return import::read(path, {}, report);
}

void open(DiagramView& view, const host::NetworkModel& network) {
    QEventLoop loop;
    QObject::connect(&view, &DiagramView::ready, &loop, &QEventLoop::quit);
    view.showNetwork(network);
    if (!view.isReady()) loop.exec();
    benchmark::DoNotOptimize(view.grab());
}

void openFirst(benchmark::State& state, const std::string& path) {
    const host::NetworkModel network = read(path);
    DiagramView view;
    view.resize(1600, 1000);
    for (auto _ : state) open(view, network);
    state.counters["figures"] = static_cast<double>(view.drawing().figures.size());
}

void openAgain(benchmark::State& state, const std::string& path) {
    const host::NetworkModel network = read(path);
    const QTemporaryDir kept;
    DiagramView view;
    view.resize(1600, 1000);
    view.setLayoutDirectory(kept.path());
    open(view, network);
    for (auto _ : state) open(view, network);
}

/// One step of a drag, painted.
/// \param scale  0: the whole diagram in the window
void pan(benchmark::State& state, const std::string& path, double scale) {
    const host::NetworkModel network = read(path);
    DiagramView view;
    view.resize(1600, 1000);
    view.show();
    open(view, network);
    QApplication::processEvents();
    if (scale > 0) {
        view.setTransform(QTransform::fromScale(scale, scale));
        view.centerOn(view.drawing().bounds.center());
    }
    int step = 7;
    for (auto _ : state) {
        view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->value() + step);
        view.viewport()->repaint();
        step = -step;
    }
}

void add(const std::string& name, const std::string& path) {
    if (!std::filesystem::exists(path)) return;
    const auto time = benchmark::kMillisecond;
    benchmark::RegisterBenchmark(("open/" + name).c_str(), openFirst, path)->Unit(time)->UseRealTime();
    benchmark::RegisterBenchmark(("open again/" + name).c_str(), openAgain, path)->Unit(time)->UseRealTime();
    benchmark::RegisterBenchmark(("move whole/" + name).c_str(), pan, path, 0.0)->Unit(time);
    benchmark::RegisterBenchmark(("move half size/" + name).c_str(), pan, path, 0.5)->Unit(time);
    benchmark::RegisterBenchmark(("move full size/" + name).c_str(), pan, path, 1.0)->Unit(time);
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    QApplication application(argc, argv);
    const QString data = QDir(QCoreApplication::applicationDirPath()).filePath("../share/morvane/networks/demo");
    add("demonstration", data.toStdString());
    if (const char* shared = std::getenv("MORVANE_SHARED_NETWORKS"))
        for (const char* name : {"case118", "case_ACTIVSg2000", "case9241pegase"})
            add(name, std::string(shared) + "/matpower/" + name + ".m");
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
