#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "engines/network/RealTimeReader.h"
#include "exchange/FileNames.h"
#include "exchange/RealTimeNameFile.h"
#include "exchange/RealTimeTables.h"
#include "tests/TemporaryDirectory.h"
#include "tests/engines/EngineRun.h"

namespace engines {
namespace {

namespace fs = std::filesystem;

/// A working directory Temp with RTDB.INC and a real-time directory beside it, as the module leaves them.
class ConverterProgram : public TemporaryDirectory {
  protected:
    fs::path working, tables;

    void SetUp() override {
        TemporaryDirectory::SetUp();
        working = directory / "Temp";
        tables = directory / "net" / "tables.db";
        fs::create_directories(working);
        fs::create_directories(tables.parent_path());
        exchange::replace(working / "RTDB.INC", exchange::format(exchange::RealTimeName{"net", "../net"}));
        for (const char* text : exchange::rtdb::kCreate) sql(text);
        sql("INSERT INTO meta VALUES('version','1'),('load_flow','1')");
        sql("INSERT INTO nd(id,ibs,base_kv,v_mag,v_angle,v_min_kv,star) VALUES"
            "(x'422c20b25c',2,230,1.02,-3.5,0,0),('A2',2,230,1.02,-3.5,210,0),('C',3,110,0.98,-7,0,0),"
            "('S_N',4,230,1,0,0,1),('D',1,10,1,0,0,0)");
        sql("INSERT INTO ln(id,id_no,ibs,zbs,valid,i_break,j_break,r1,x1,r0,x0,length_km,rated_a,max_load_a) VALUES"
            "('L1_ac',7,2,3,1,1,1,0.01,0.1,0.03,0.3,12.5,600,400),('open at J',8,2,3,1,1,0,0,1,0,1,0,0,0),"
            "('open at I',9,2,3,1,0,1,0,1,0,1,0,0,0),('not valid',10,2,3,0,1,1,0,1,0,1,0,0,0),"
            "('outside',11,2,1,1,1,1,0,1,0,1,0,0,0),('one bus',12,2,2,1,1,1,0,1,0,1,0,0,0),"
            "('L2_ac',13,3,2,1,1,1,0.02,0.2,0.06,0.6,25,600,0)");
        sql("INSERT INTO xf(id,id_no,ibs,zbs,valid,kind,r1,x1,r0,x0,zc_type,rated_mva,rated_kv_i,rated_kv_j,max_load_a)"
            " VALUES('T1_2w',20,2,3,1,1,0.001,0.1,0.002,0.2,2,180,230,115,350),"
            "('S_3w1',21,4,2,1,31,0,0.05,NULL,NULL,0,90,230,230,0)");
        sql("INSERT INTO un(id,ibs,valid,r1,x1,r0,x0,grounded,rated_mva,rated_kv,p_mw,q_mvar)"
            " VALUES('G1',3,1,0.003,0.2,NULL,NULL,0,200,15.75,120.5,-30),('G2',1,1,0,0.2,0,0,0,1,1,0,0)");
        sql("INSERT INTO cp(id,ibs,valid,id_no,x1,r0,x0,grounded,rated_mvar,rated_kv)"
            " VALUES('C1',3,1,30,-4,NULL,NULL,0,30,110),('R1',2,1,31,5,0.1,4.5,1,60,230)");
        sql("INSERT INTO mu(first_no,second_no,r0,x0,sense,first_to,second_from) VALUES(7,13,0.01,0.1,-1,60,40),"
            "(7,9,0.01,0.1,1,100,0)");
    }

    void sql(const std::string& text) const {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(tables.c_str(), &database), SQLITE_OK);
        char* error = nullptr;
        sqlite3_exec(database, text.c_str(), nullptr, nullptr, &error);
        EXPECT_EQ(error, nullptr) << error;
        sqlite3_close(database);
    }

    void expectFailure(const std::string& line) const {
        const auto run = runEngine(exchange::file::kConverterProgram, working);
        EXPECT_NE(run.status, 0);
        EXPECT_EQ(run.error, line + "\n");
        EXPECT_LE(std::distance(fs::directory_iterator(working), fs::directory_iterator()), 1) << "only RTDB.INC";
    }
};

template <class Element>
std::vector<int> numbersOf(const std::vector<Element>& elements) {
    std::vector<int> numbers;
    for (const auto& element : elements) numbers.push_back(element.idNo);
    return numbers;
}

TEST_F(ConverterProgram, HandsOverWhatTakesPart) {
    ASSERT_EQ(runEngine(exchange::file::kConverterProgram, working).status, 0);
    const auto n = exchange::readNetwork(working);
    EXPECT_TRUE(n.loadFlow);

    ASSERT_EQ(n.buses.size(), 3U);
    EXPECT_EQ(n.buses[0].no, 2);
    EXPECT_EQ(n.buses[0].name, "A2") << "the first node by id gives the bus its name";
    EXPECT_EQ(n.buses[0].vMinKv, 210);
    EXPECT_EQ(n.buses[1].vAngle, -7);
    EXPECT_EQ(n.buses[2].name, "S_N");

    EXPECT_THAT(numbersOf(n.lines), ::testing::ElementsAre(7, 13));
    EXPECT_EQ(n.lines[0].x0, 0.3);
    EXPECT_EQ(n.lines[0].lengthKm, 12.5);
    EXPECT_EQ(n.lines[0].maxLoadA, 400);
    EXPECT_EQ(n.lines[1].iNo, 3);

    EXPECT_THAT(numbersOf(n.transformers), ::testing::ElementsAre(20, 21));
    EXPECT_EQ(n.transformers[0].zcType, 2);
    EXPECT_EQ(n.transformers[0].ratedKvJ, 115);
    EXPECT_EQ(n.transformers[1].kind, 31);
    EXPECT_EQ(n.transformers[1].iNo, 4);

    ASSERT_EQ(n.generators.size(), 1U);
    EXPECT_EQ(n.generators[0].name, "G1");
    EXPECT_EQ(n.generators[0].qMvar, -30);
    EXPECT_THAT(numbersOf(n.shunts), ::testing::ElementsAre(30, 31));
    EXPECT_EQ(n.shunts[1].x0, 4.5);

    ASSERT_EQ(n.mutuals.size(), 1U) << "the other couples a line that takes no part";
    EXPECT_EQ(n.mutuals[0].sense, -1);
    EXPECT_EQ(n.mutuals[0].firstTo, 60);
    EXPECT_EQ(n.mutuals[0].secondFrom, 40);
}

TEST_F(ConverterProgram, LeavesTheTablesAsTheyAreAndTheSameBytesEachTime) {
    const auto before = exchange::readAll(tables);
    const auto run = [&] {
        EXPECT_EQ(runEngine(exchange::file::kConverterProgram, working).status, 0);
        std::string all;
        for (const char* name : exchange::file::kConverterFiles)
            if (fs::exists(working / name)) all += exchange::readAll(working / name);
        return all;
    };
    EXPECT_EQ(run(), run());
    EXPECT_EQ(exchange::readAll(tables), before);
}

TEST_F(ConverterProgram, TellsWhatIsMissingInOneLine) {
    sql("UPDATE ln SET x0=NULL WHERE id_no=13");
    expectFailure("tables.db: L2_ac: x0 is missing");
    sql("UPDATE ln SET x0=1");
    sql("DROP TABLE mu");
    expectFailure("tables.db: no such table: mu");
    sql("UPDATE meta SET value='2' WHERE name='version'");
    expectFailure("tables.db: has layout version '2', 1 is expected");
    exchange::replace(tables, "this is no database at all, only a text of some length");
    expectFailure("tables.db: file is not a database");
    fs::remove(tables);
    expectFailure("tables.db: cannot be read");
    exchange::replace(working / "RTDB.INC", "net\r\n");
    expectFailure("RTDB.INC:1: a name and a path in quotes are expected");
    fs::remove(working / "RTDB.INC");
    expectFailure("RTDB.INC: cannot be read");
}

}  // namespace
}  // namespace engines
