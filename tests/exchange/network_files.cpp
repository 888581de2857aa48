#include "exchange/NetworkFiles.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <tuple>

#include "exchange/FileNames.h"
#include "exchange/TextFile.h"
#include "tests/TemporaryDirectory.h"
#include "tests/exchange/FormatFailure.h"

namespace exchange {
namespace {

namespace fs = std::filesystem;

class NetworkFilesTest : public TemporaryDirectory {
  protected:
    [[nodiscard]] std::string messageOfReading() const {
        return failureOf([&] { return readNetwork(directory); });
    }
};

NetworkData sample() {
    NetworkData n;
    n.loadFlow = true;
    n.buses = {{2, 230, 1.0 / 3, -17.25, 210.5, "\xb2\x5c, 'a' "}, {3, 115, 1, 0, 0, ""}, {7, 1, 1, 0, 0, " star"}};
    n.lines = {{1, 2, 3, 0.1, 1e-17, 0.3, 0.7, 12.5, 600, 450.125}};
    n.transformers = {{5, 2, 3, 1, 0.001, 0.1, 0.002, 0.2, 3, 180, 230, 121, 400},
                      {6, 7, 2, 31, 0, 0.05, 0, 0.04, 1, 90, 0, 230, 0}};
    n.generators = {{"G1", 2, 0.003, 0.2, 0.004, 0.1, true, 200, 15.75, 120.5, -30.25},
                    {"G,2 ", 3, 0, 0.3, 0, 0, false, 50, 10.5, 0, 0}};
    n.shunts = {{8, 3, -4.5, 0, 0, false, 30, 115}, {9, 2, 5, 0.1, 4.5, true, 60, 230}};
    n.mutuals = {{1, 5, 0.05, 0.2, -1, 10, 90, 0, 80.5}};
    return n;
}

TEST_F(NetworkFilesTest, EveryFieldComesBackBitForBit) {
    const auto n = sample();
    writeNetwork(directory, n);
    const auto r = readNetwork(directory);
    EXPECT_EQ(r.loadFlow, n.loadFlow);
    const auto bus = [](const NetBus& b) { return std::tie(b.no, b.baseKv, b.vMag, b.vAngle, b.vMinKv, b.name); };
    const auto line = [](const NetLine& l) {
        return std::tie(l.idNo, l.iNo, l.jNo, l.r1, l.x1, l.r0, l.x0, l.lengthKm, l.ratedA, l.maxLoadA);
    };
    const auto transformer = [](const NetTransformer& t) {
        return std::tie(t.idNo, t.iNo, t.jNo, t.kind, t.r1, t.x1, t.r0, t.x0, t.zcType, t.ratedMva, t.ratedKvI,
                        t.ratedKvJ, t.maxLoadA);
    };
    const auto generator = [](const NetGenerator& g) {
        return std::tie(g.name, g.no, g.r1, g.x1, g.r0, g.x0, g.grounded, g.ratedMva, g.ratedKv, g.pMw, g.qMvar);
    };
    const auto shunt = [](const NetShunt& s) {
        return std::tie(s.idNo, s.no, s.x1, s.r0, s.x0, s.grounded, s.ratedMvar, s.ratedKv);
    };
    const auto mutual = [](const NetMutual& m) {
        return std::tie(m.firstId, m.secondId, m.r0, m.x0, m.sense, m.firstFrom, m.firstTo, m.secondFrom, m.secondTo);
    };
    const auto same = [](const auto& a, const auto& b, const auto& fields) {
        ASSERT_EQ(a.size(), b.size());
        for (std::size_t i = 0; i < a.size(); ++i) EXPECT_EQ(fields(a[i]), fields(b[i])) << i;
    };
    same(r.buses, n.buses, bus);
    same(r.lines, n.lines, line);
    same(r.transformers, n.transformers, transformer);
    same(r.generators, n.generators, generator);
    same(r.shunts, n.shunts, shunt);
    same(r.mutuals, n.mutuals, mutual);
}

TEST_F(NetworkFilesTest, WritesExactlyTheFilesThatTheModuleRemoves) {
    writeNetwork(directory, {});
    std::size_t expected = 0;
    for (const std::string name : file::kConverterFiles) {
        if (name == file::kOutput) continue;
        EXPECT_TRUE(fs::exists(directory / name)) << name;
        ++expected;
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(directory), fs::directory_iterator()), static_cast<long>(expected));
    EXPECT_TRUE(readNetwork(directory).buses.empty());
}

TEST_F(NetworkFilesTest, ReadingTellsFileAndLineOfWhatIsWrong) {
    writeNetwork(directory, sample());
    const auto good = readAll(directory / "ST.S3");
    ASSERT_TRUE(write(directory / "ST.S3", "1,1,\r\n4,0.3,0.7,\r\n"));
    EXPECT_EQ(messageOfReading(), "ST.S3:2: element 1 is expected");
    ASSERT_TRUE(write(directory / "ST.S3", "1,2,\r\n1,0.3,0.7,\r\n"));
    EXPECT_EQ(messageOfReading(), "ST.S3:1: 1 rows are expected");
    ASSERT_TRUE(write(directory / "ST.S3", "2,1,\r\n1,0.3,0.7,\r\n"));
    EXPECT_EQ(messageOfReading(), "ST.S3:1: the format version is 1");
    ASSERT_TRUE(write(directory / "ST.S3", good.substr(0, good.find('\n') + 1)));
    EXPECT_EQ(messageOfReading(), "ST.S3:1: rows are missing at the end");
    fs::remove(directory / "ST.S3");
    EXPECT_EQ(messageOfReading(), "ST.S3: cannot be read");
}

TEST_F(NetworkFilesTest, ASetThatIsNotWrittenToItsEndIsNoNetwork) {
    writeNetwork(directory, sample());
    fs::create_directory(directory / "ST.S3.new");  // in the way of the file that is written aside
    EXPECT_THROW(writeNetwork(directory, sample()), FormatError);
    EXPECT_EQ(messageOfReading(), "LF.L0: cannot be read");
}

TEST_F(NetworkFilesTest, WhatCannotBeReadBackIsNotWritten) {
    auto n = sample();
    n.lines[0].x0 = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(writeNetwork(directory, n), FormatError);
    EXPECT_FALSE(fs::exists(directory / "LF.L0"));
    n = sample();
    n.buses[1].name = "a\r\nb";
    EXPECT_THROW(writeNetwork(directory, n), FormatError);
}

}  // namespace
}  // namespace exchange
