// From a network file to the branch table: reading, base tables, calculation tables, real-time tables, topology, branch
// table and its index. The network is the first argument that is no option; without one it is the case9241pegase.m of
// the folder that MORVANE_SHARED_NETWORKS names.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <cstdlib>
#include <iostream>

#include "platform/host/BaseTables.h"
#include "platform/host/CaseTransfer.h"
#include "platform/import/Import.h"
#include "platform/netmodel/TP.h"
#include "platform/server/FileLock.h"
#include "platform/server/Server.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/CNetDataCal.h"
#include "programs/frame/CRDatabase.h"
#include "programs/frame/TableNames.h"

namespace {

std::string input;
host::NetworkModel network;
dbDatabase realTime;

host::NetworkModel read() {
    import::Report report;
    return import::read(input, {}, report);
}

void readNetwork(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(read());
    state.counters["nodes"] = static_cast<double>(network.nodes.size());
}
BENCHMARK(readNetwork)->Unit(benchmark::kMillisecond);

void storeNetwork(benchmark::State& state) {
    for (auto _ : state) {
        if (!host::storeNetwork(network)) state.SkipWithError("not stored");
    }
}
BENCHMARK(storeNetwork)->Unit(benchmark::kMillisecond);

void loadNetwork(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(host::loadNetwork());
}
BENCHMARK(loadNetwork)->Unit(benchmark::kMillisecond);

void transferScheme(benchmark::State& state) {
    const QString scheme = QString::fromStdString(network.schemes.front().name);
    for (auto _ : state) {
        if (!CNetDataCal().ConvertCaseData(0, scheme, 0, &realTime)) state.SkipWithError("not transferred");
        realTime.commit();
    }
}
BENCHMARK(transferScheme)->Unit(benchmark::kMillisecond);

void topology(benchmark::State& state) {
    for (auto _ : state) {
        norvdb::NORVDB model;
        norvdb::TP pass(model);
        pass.tpReadFastdb(&realTime);
        pass.tpAllnew();
        pass.tpWriteFastdb(&realTime);
        realTime.commit();
    }
}
BENCHMARK(topology)->Unit(benchmark::kMillisecond);

void branchTable(benchmark::State& state) {
    CNetDataCal netData;
    for (auto _ : state) {
        if (!netData.BuildBranchTable(0) || !netData.NumberBranchNodes()) state.SkipWithError("not built");
    }
}
BENCHMARK(branchTable)->Unit(benchmark::kMillisecond);

void branchIndex(benchmark::State& state) {
    for (auto _ : state) {
        BranchTable::invalidate();
        state.counters["rows"] = static_cast<double>(BranchTable::current()->rows().size());
    }
}
BENCHMARK(branchIndex)->Unit(benchmark::kMillisecond);

/// A project of its own for the run.
bool openProject(const QString& folder) {
    CRDatabase database("QMYSQL3", "", "", "");
    return database.ConnectDB("mysql", tables::serverConnection, true) &&
           database.ConnectDB("BENCHTEMRLYRULE", tables::ruleConnection, false) &&
           database.ConnectDB("BENCH", tables::relayConnection, false) &&
           tables::CreateRuleTables(tables::ruleConnection) && database.BuildNewTable("BENCH") &&
           database.BuildTmpTb("BENCH") && realTime.open(folder + "/bench.rtdb");
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const QTemporaryDir folder;
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(name, folder.path().toUtf8());
    }
    QCoreApplication application(argc, argv);
    const char* shared = std::getenv("MORVANE_SHARED_NETWORKS");
    if (argc < 2 && !shared) {
        std::cerr << "name a network, or the folder of the public networks in MORVANE_SHARED_NETWORKS\n";
        return 1;
    }
    input = argc > 1 ? argv[1] : std::string(shared) + "/matpower/case9241pegase.m";
    QString error;
    auto hold = server::Hold::acquire(&error);
    if (!hold || !openProject(folder.path())) {
        std::cerr << "no project: " << error.toStdString() << '\n';
        return 1;
    }
    network = read();
    if (!host::storeNetwork(network)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    realTime.close();
    hold.reset();
    server::FileLock::wait(folder.path() + "/morvane/server/server.lock", server::FileLock::Mode::Exclusive);
    return 0;
}
