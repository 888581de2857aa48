#include <QSqlDatabase>
#include <cmath>
#include <complex>

#include "platform/host/BaseTables.h"
#include "platform/host/CaseTransfer.h"
#include "platform/netmodel/TP.h"
#include "platform/rtdb/Records.h"
#include "tests/host/HostFixture.h"
#include "tests/host/SampleNetwork.h"

namespace {

QString text(const std::string& name) { return QString::fromStdString(name); }

class CaseTransfer : public HostFixture {
  protected:
    void SetUp() override {
        HostFixture::SetUp();
        ASSERT_TRUE(host::storeNetwork(sample::network())) << messages.join('\n').toStdString();
    }
    void scheme(const std::string& name) {
        QSqlDatabase database = QSqlDatabase::database();
        const QByteArray bytes = sql::toGbk(text(name));
        CLFCalDataToRTDB toRealTime(0, &database);
        toRealTime.InValidateLFCalDataInRTDB(true);
        EXPECT_EQ(CLFCalDataTransfer(bytes.constData(), &database).ImportLDataFromBaseDB(), 1);
        EXPECT_EQ(toRealTime.ImportLDataToRTDB(), 1);
        EXPECT_EQ(CSTCalDataTransfer(bytes.constData(), &database).ImportSDataFromBaseDB(), 1);
        EXPECT_EQ(CSTCalDataToRTDB(0, &database).ImportSDataToRTDB(), 1);
        analyse();
    }
    void loadFlow(int number, const std::string& name) {
        QSqlDatabase database = QSqlDatabase::database();
        const QByteArray bytes = sql::toGbk(text(name));
        CLFCalDataToRTDB toRealTime(number, &database);
        toRealTime.InValidateLFCalDataInRTDB(true);
        EXPECT_EQ(toRealTime.ImportLDataToRTDB(), 1);
        EXPECT_EQ(CSTCalDataTransfer(bytes.constData(), &database).ImportSDataFromBaseDB(), 1);
        EXPECT_EQ(CSTCalDataToRTDB(0, &database).ImportSDataToRTDB(), 1);
        EXPECT_EQ(CLFResultDataTransfer(number, &database, &realTime, false, 14).ImportLFResultDataToRTDB(), 1);
        analyse();
    }
    void analyse() {
        norvdb::NORVDB network;
        norvdb::TP pass(network);
        pass.tpReadFastdb(&realTime);
        ASSERT_EQ(pass.tpAllnew(), 1);
        pass.tpWriteFastdb(&realTime);
        ASSERT_TRUE(realTime.commit());
    }
    int bus(const std::string& name) { return GetNodeBsNo_FromRTDB(sql::toGbk(text(name)).constData()); }
};

TEST_F(CaseTransfer, BringsEveryElementOfASchemeWithItsData) {
    scheme(sample::kBase);
    EXPECT_TRUE(messages.isEmpty()) << messages.join('\n').toStdString();
    const auto line = record<norvdb::ln>(text(sample::kLine1) + "_ac");
    EXPECT_EQ(std::tie(line.inode, line.jnode), std::make_tuple(text(sample::kBarA), text(sample::kBarB)));
    EXPECT_EQ(std::tie(line.r1, line.x1, line.r0, line.x0), std::make_tuple(0.01, 1.0 / 3, 0.03, 0.9));
    EXPECT_EQ(std::tie(line.id_no, line.valid, line.max_load_a), std::make_tuple(1, 1, 450.0));
    const auto transformer = record<norvdb::xf>(text(sample::kTransformer) + "_2w");
    EXPECT_EQ(std::tie(transformer.zc_type, transformer.rated_kv_j), std::make_tuple(1, 10.5));
    EXPECT_NEAR(transformer.x0, 0.27 + 0.3, 1e-12);
    EXPECT_EQ(record<norvdb::xf>(text(sample::kShifter) + "_sf").kind, 1);
    EXPECT_EQ(record<norvdb::xf>(text(sample::kThree) + "_3w3").zc_type, 1);
    EXPECT_EQ(record<norvdb::un>(text(sample::kGenerator)).grounded, 1);
    EXPECT_EQ(record<norvdb::cp>(text(sample::kReactor)).grounded, 1);
    EXPECT_EQ(record<norvdb::cp>(text(sample::kCapacitor)).x1, -8);
    EXPECT_EQ(record<norvdb::cb>(text(sample::kBreaker) + "_brk").flags, 0x01);
    EXPECT_EQ(record<norvdb::cb>(text(sample::kSwitch) + "_sw").flags, 0x04);
    EXPECT_EQ(record<norvdb::bus>(text(sample::kBarB)).ibs, bus(sample::kBarB));
    EXPECT_EQ(record<norvdb::nd>(text(sample::kMiddleNode)).flags, 0x04 | 0x08 | 0x10);
    EXPECT_EQ(record<norvdb::nd>(text(sample::kStar)).star, 1);
    const auto mutual = records<norvdb::mu>();
    ASSERT_EQ(mutual.size(), 1U);
    EXPECT_EQ(std::tie(mutual[0].first_no, mutual[0].second_no, mutual[0].sense, mutual[0].second_from),
              std::make_tuple(1, 2, -1, 20.0));
    EXPECT_EQ(bus(sample::kBarA), bus(sample::kBarA2));
    EXPECT_EQ(realTime.fact("scheme"), text(sample::kBase));
    EXPECT_EQ(realTime.fact("load_flow"), "0");
}

TEST_F(CaseTransfer, TakesTheChangesOfASchemeAndGoesBackToTheBase) {
    scheme(sample::kReduced);
    EXPECT_EQ(record<norvdb::ln>(text(sample::kLine1) + "_ac").valid, 0);
    EXPECT_EQ(record<norvdb::un>(text(sample::kGenerator)).valid, 0);
    EXPECT_TRUE(records<norvdb::mu>().empty()) << "one of the two lines is out of service";
    EXPECT_NE(bus(sample::kBarA), bus(sample::kBarA2));
    EXPECT_EQ(bus(sample::kStar), 0);
    EXPECT_EQ(bus(sample::kMiddleNode), 0);
    const std::size_t nodes = records<norvdb::nd>().size();
    scheme(sample::kBase);
    EXPECT_EQ(records<norvdb::nd>().size(), nodes);
    EXPECT_EQ(record<norvdb::ln>(text(sample::kLine1) + "_ac").valid, 1);
    EXPECT_EQ(bus(sample::kBarA), bus(sample::kBarA2));
}

TEST_F(CaseTransfer, BringsTheResultsOfALoadFlowCaseToEveryNode) {
    loadFlow(4, sample::kBase);
    const auto node = [&](const std::string& name) { return record<norvdb::nd>(text(name)); };
    EXPECT_NEAR(node(sample::kBarA).v_mag, 1.05, 1e-12);
    EXPECT_NEAR(node(sample::kBarA2).v_angle, 10, 1e-9) << "joined by a closed breaker";
    EXPECT_EQ(node(sample::kGeneratorNode).v_mag, 1) << "no result for this node";
    EXPECT_EQ(record<norvdb::un>(text(sample::kGenerator)).p_mw, 33);
    // The star point's windings carry no current together (the one at a node without a result counts for nothing).
    const auto at = [&](const std::string& name) {
        return std::polar(node(name).v_mag, node(name).v_angle * M_PI / 180);
    };
    const std::complex<double> star = at(sample::kStar), z1(0, 0.2), z2(0.01, 0.1);
    EXPECT_NEAR(std::abs((at(sample::kBarA) - star) / z1 + (at(sample::kMiddleNode) - star) / z2), 0, 1e-9);
    EXPECT_EQ(realTime.fact("load_flow"), "1");
}

TEST_F(CaseTransfer, ALoadFlowCaseStandsOnItsOwnSchemeAndLeavesNothingToTheNext) {
    loadFlow(1, sample::kReduced);
    EXPECT_EQ(record<norvdb::ln>(text(sample::kLine1) + "_ac").valid, 0);
    EXPECT_EQ(realTime.fact("scheme"), text(sample::kReduced));
    scheme(sample::kBase);
    EXPECT_EQ(record<norvdb::nd>(text(sample::kBarA)).v_mag, 1);
    EXPECT_EQ(realTime.fact("load_flow"), "0");
}

TEST_F(CaseTransfer, SaysThatASchemeDoesNotExist) {
    scheme("");
    scheme(sample::kReduced);
    EXPECT_TRUE(messages.isEmpty()) << messages.join('\n').toStdString();
    scheme("没有的方案");
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(record<norvdb::ln>(text(sample::kLine1) + "_ac").valid, 1);
}

TEST_F(CaseTransfer, AnswersBusNumbersFromTheDatabaseOpenedLast) {
    scheme(sample::kBase);
    const int number = bus(sample::kBarB);
    EXPECT_GT(number, 1);
    {
        dbDatabase other;
        ASSERT_TRUE(other.open(folder.path() + "/other"));
        EXPECT_EQ(bus(sample::kBarB), 0);
    }
    EXPECT_EQ(bus(sample::kBarB), number);
    EXPECT_EQ(bus("没有这个节点"), 0);
    EXPECT_EQ(bus(""), 0);
}

TEST_F(CaseTransfer, FailsWithoutTablesOrDatabaseAndSaysSo) {
    QSqlDatabase database = QSqlDatabase::database();
    messages.clear();
    EXPECT_EQ(CLFCalDataToRTDB(77, &database).ImportLDataToRTDB(), 0);
    EXPECT_EQ(messages.size(), 1);
    realTime.close();
    EXPECT_EQ(CLFCalDataToRTDB(0, &database).ImportLDataToRTDB(), 0);
    EXPECT_EQ(CSTCalDataToRTDB(0, &database).ImportSDataToRTDB(), 0);
    EXPECT_EQ(CLFResultDataTransfer(4, &database, &realTime, false, 14).ImportLFResultDataToRTDB(), 0);
}

}  // namespace
