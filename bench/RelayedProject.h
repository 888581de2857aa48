#pragma once

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <iostream>
#include <string>

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
#include "programs/workflow/CaseStore.h"

/// A project in folders of its own with relays of the types 1, 2 and 3 at both ends of every line, and the cases that
/// the benchmarks of the case workflow make in it.
namespace bench {

inline constexpr int lineElement = 6;
inline Project project;
inline dbDatabase realTime;
inline QString scheme;        ///< of the network
inline QString serverFolder;  ///< of the database server that belongs to the project

/// Statements that the server has had from all programs; asking counts as one.
inline double statementsOfServer() {
    sql::Query query;
    return query.exec("SHOW GLOBAL STATUS LIKE 'Questions'") && query.next() ? query.real(1) : 0;
}

inline bool installAll() {
    QVector<RelayRequest> requests;
    for (const Location& place : RelayStore::locations(lineElement))
        for (const int type : {1, 2, 3}) requests << RelayRequest{place, type, 240, 2200, {}};
    return RelayStore::install(requests) == requests.size();
}

/// Stores a case of all relays of a type on the scheme of the network; it is the current one afterwards.
inline bool makeCase(CaseStore& cases, int type, const QString& name) {
    CaseForm form;
    form.name = name;
    form.source = scheme;
    for (const OperatingModeRecord& mode : ModeStore::list())
        (form.bigSys.isEmpty() ? form.bigSys : form.smallSys) << mode.SysNo;
    QVector<int> relays;
    for (const InstalledRelay& relay : RelayStore::list(type)) relays << relay.RNo;
    if (!cases.UpdateCaseChain(1)) return false;
    cases.insert(type, 0, -1, form.source);
    return cases.addRelays(form, relays) && cases.SaveRecord(1, form);
}

/// \param input  network file or folder; empty: the demonstration network
inline bool makeProject(const QString& folder, const std::string& input) {
    const QString data = QCoreApplication::applicationDirPath() + "/../share/morvane/";
    const auto made = ProjectStore(folder).create("BENCH", data + "rules");
    if (!made) return false;
    project = *made;
    import::Report report;
    const host::NetworkModel network =
        import::read(input.empty() ? (data + "networks/demo").toStdString() : input, {}, report);
    if (!network.schemes.empty()) scheme = QString::fromStdString(network.schemes.front().name);
    QString error;
    return host::storeNetwork(network) && ModeStore::saveImported(network.modes) && installAll() &&
           realTime.open(project.realTimeFile(), &error);
}

/// Runs the benchmarks of the program in a project made for them and takes everything away again. The network is the
/// first argument that is no option; without one it is the demonstration network.
template <class Application>
int runInProject(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const QTemporaryDir folder;
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, folder.path().toUtf8());
    Application application(argc, argv);
    serverFolder = folder.path() + "/morvane/server";
    QString error;
    auto hold = server::Hold::acquire(&error);
    if (!hold) std::cerr << error.toStdString() << '\n';
    WinDockFeedback::setReceiver([](const char*, int) {});
    const bool ready = hold && makeProject(folder.path() + "/projects", argc > 1 ? argv[1] : "");
    if (ready) benchmark::RunSpecifiedBenchmarks();
    WinDockFeedback::setReceiver({});
    realTime.close();
    hold.reset();
    server::FileLock::wait(serverFolder + "/server.lock", server::FileLock::Mode::Exclusive);
    return ready ? 0 : 1;
}

}  // namespace bench
