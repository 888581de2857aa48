#include <QDir>
#include <QProcess>
#include <complex>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>

#include "exchange/NetworkFiles.h"
#include "exchange/RealTimeNameFile.h"
#include "exchange/TextFile.h"
#include "platform/host/BaseTables.h"
#include "platform/host/CaseTransfer.h"
#include "platform/import/Import.h"
#include "platform/netmodel/TP.h"
#include "platform/rtdb/Records.h"
#include "tests/host/HostFixture.h"
#include "tests/host/SampleNetwork.h"

namespace {

/// A network on its way from the importer through the tables to the files of the executables.
class DeliveredNetwork : public HostFixture {
  protected:
    void store(const std::filesystem::path& input) {
        import::Report report;
        store(import::read(input, {}, report));
    }
    void store(const host::NetworkModel& delivered) {
        model = delivered;
        ASSERT_TRUE(host::storeNetwork(model)) << messages.join('\n').toStdString();
    }
    /// \param number  load-flow case; 0: the scheme
    void transfer(int number, const std::string& scheme) {
        const QByteArray name = sql::toGbk(QString::fromStdString(scheme));
        CLFCalDataToRTDB toRealTime(number, nullptr);
        toRealTime.InValidateLFCalDataInRTDB(true);
        if (number == 0) {
            ASSERT_EQ(CLFCalDataTransfer(name.constData(), nullptr).ImportLDataFromBaseDB(), 1);
        }
        ASSERT_EQ(toRealTime.ImportLDataToRTDB(), 1);
        ASSERT_EQ(CSTCalDataTransfer(name.constData(), nullptr).ImportSDataFromBaseDB(), 1);
        ASSERT_EQ(CSTCalDataToRTDB(0, nullptr).ImportSDataToRTDB(), 1);
        if (number > 0) {
            ASSERT_EQ(CLFResultDataTransfer(number, nullptr, &realTime, false, 14).ImportLFResultDataToRTDB(), 1);
        }
        norvdb::NORVDB network;
        norvdb::TP pass(network);
        pass.tpReadFastdb(&realTime);
        ASSERT_EQ(pass.tpAllnew(), 1);
        pass.tpWriteFastdb(&realTime);
        ASSERT_TRUE(realTime.commit());
    }
    /// What VASKEL.EXE makes of the real-time file.
    exchange::NetworkData convert() {
        const QDir work(folder.path());
        work.mkpath("Temp");
        work.mkpath("rt");
        const exchange::RealTimeName name{"rt", "../rt"};
        const std::string place = (folder.path() + "/Temp").toStdString();
        EXPECT_TRUE(exchange::write(place + "/RTDB.INC", exchange::format(name)));
        const std::filesystem::path target = std::filesystem::path(place) / exchange::realTimeFile(name);
        std::filesystem::copy_file(file().toStdString(), target, std::filesystem::copy_options::overwrite_existing);
        QProcess process;
        process.setWorkingDirectory(folder.path() + "/Temp");
        process.start(MORVANE_BIN_DIR "/VASKEL.EXE", QStringList());
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return exchange::readNetwork(place);
    }

    host::NetworkModel model;
};

TEST_F(DeliveredNetwork, TheDemoReachesTheExecutablesWhole) {
    store(MORVANE_SOURCE_DIR "/data/networks/demo");
    transfer(0, model.schemes.front().name);
    const auto network = convert();
    EXPECT_EQ(network.lines.size(), model.lines.size());
    EXPECT_EQ(network.transformers.size(), model.transformers2.size() + 3 * model.transformers3.size());
    EXPECT_EQ(network.generators.size(), model.generators.size());
    EXPECT_EQ(network.shunts.size(), model.shunts.size());
    EXPECT_EQ(network.mutuals.size(), model.mutuals.size());
    // Nodes joined by closed switches are one bus, so there are far fewer buses than nodes, all of one voltage.
    EXPECT_LT(network.buses.size(), model.nodes.size());
    std::map<int, double> baseKv;
    for (const auto& bus : network.buses) baseKv[bus.no] = bus.baseKv;
    for (const auto& node : records<norvdb::nd>("ibs>1")) {
        EXPECT_EQ(baseKv.at(node.ibs), node.base_kv) << node.id.toStdString();
    }
}

/// Power that a bus sends into its branches less what its generators bring, MVA; line charging is left out.
std::map<int, std::complex<double>> mismatches(const exchange::NetworkData& network) {
    std::map<int, std::complex<double>> voltage, power;
    for (const auto& bus : network.buses) voltage[bus.no] = std::polar(bus.vMag, bus.vAngle * M_PI / 180);
    const auto send = [&](int from, int to, double r, double x) {
        const auto current = (voltage[from] - voltage[to]) / std::complex<double>(r, x);
        power[from] += 100.0 * voltage[from] * std::conj(current);
        power[to] -= 100.0 * voltage[to] * std::conj(current);
    };
    for (const auto& line : network.lines) send(line.iNo, line.jNo, line.r1, line.x1);
    for (const auto& t : network.transformers) send(t.iNo, t.jNo, t.r1, t.x1);
    for (const auto& unit : network.generators) power[unit.no] -= std::complex<double>(unit.pMw, unit.qMvar);
    return power;
}

TEST_F(DeliveredNetwork, TheDemosLoadFlowArrivesAtEveryBusAndBalances) {
    store(MORVANE_SOURCE_DIR "/data/networks/demo");
    ASSERT_FALSE(model.loadFlow.empty());
    transfer(model.loadFlow.front().number, model.loadFlow.front().scheme);
    const auto network = convert();
    EXPECT_TRUE(network.loadFlow);
    for (const auto& bus : network.buses) {
        EXPECT_FALSE(bus.vMag == 1 && bus.vAngle == 0) << bus.no << ": no result came here";
        EXPECT_NEAR(bus.vMag, 1, 0.15) << bus.no;
    }
    auto power = mismatches(network);
    for (const auto& load : records<norvdb::ld>()) power[load.ibs] += std::complex<double>(load.p_mw, load.q_mvar);
    for (const auto& [no, left] : power) EXPECT_NEAR(left.real(), 0, 0.1) << no;
}

TEST_F(DeliveredNetwork, TheDemosSecondSchemeDiffersByWhatItNames) {
    store(MORVANE_SOURCE_DIR "/data/networks/demo");
    ASSERT_GE(model.schemes.size(), 2U);
    transfer(0, model.schemes[1].name);
    std::size_t linesOut = 0;
    for (const auto& change : model.schemes[1].changes) linesOut += change.table == "line" && !change.inService;
    EXPECT_EQ(convert().lines.size(), model.lines.size() - linesOut);
}

TEST_F(DeliveredNetwork, NamesThatFilesStumbleOverReachTheExecutables) {
    store(sample::network());
    transfer(4, sample::kBase);
    const auto network = convert();
    ASSERT_EQ(network.generators.size(), 1U);
    EXPECT_EQ(network.generators[0].name, sql::toGbk(QString::fromStdString(sample::kGenerator)).toStdString());
    std::set<QString> names;
    for (const auto& bus : network.buses) names.insert(sql::fromGbk(QByteArray::fromStdString(bus.name)));
    for (const auto& name :
         {sample::kBarA, sample::kBarB, sample::kGeneratorNode, sample::kMiddleNode, sample::kStar}) {
        EXPECT_TRUE(names.contains(QString::fromStdString(name))) << name;
    }
    EXPECT_EQ(network.mutuals.size(), 1U);
    EXPECT_EQ(network.transformers.size(), 5U);
}

/// A public network below the folder that the environment names, or beside the checkout.
std::filesystem::path publicNetwork(const std::string& name) {
    const char* folder = std::getenv("MORVANE_SHARED_NETWORKS");
    return std::filesystem::path(folder ? folder : MORVANE_SHARED_NETWORKS) / name;
}

TEST_F(DeliveredNetwork, AStationOfBreakersAndDisconnectorsBecomesTheSameBusesAsItsBusBranchForm) {
    const auto source = publicNetwork("cgmes_minigrid");
    if (!std::filesystem::exists(source)) GTEST_SKIP() << "no public networks at " << source;
    const std::filesystem::path gathered = folder.path().toStdString() + "/cgmes";
    for (const char* part : {"BaseCase_Complete_v3", "Boundary_v3"}) {
        std::filesystem::create_directories(gathered);
        std::filesystem::copy(source / "NodeBreaker" / part, gathered / part);
    }
    store(gathered);
    transfer(0, model.schemes.front().name);
    const auto detailed = convert();
    store(source / "BusBranch");
    transfer(0, model.schemes.front().name);
    const auto plain = convert();
    EXPECT_EQ(detailed.buses.size(), plain.buses.size());
    EXPECT_EQ(detailed.lines.size(), plain.lines.size());
    EXPECT_EQ(detailed.transformers.size(), plain.transformers.size());
    EXPECT_EQ(detailed.generators.size(), plain.generators.size());
}

TEST_F(DeliveredNetwork, ALargeNetworkOfSwitchesHasTheBusesOfItsPublishedTopology) {
    const auto source = publicNetwork("cgmes3_smallgrid");
    if (!std::filesystem::exists(source)) GTEST_SKIP() << "no public networks at " << source;
    store(source);
    transfer(0, model.schemes.front().name);
    const auto network = convert();
    EXPECT_EQ(model.switches.size(), 1107U);
    EXPECT_EQ(network.buses.size(), 118U) << "as many as its own topology file has topological nodes";
    EXPECT_EQ(network.lines.size(), model.lines.size());
    EXPECT_EQ(network.transformers.size(), model.transformers2.size());
}

}  // namespace
