#include "platform/host/CaseTransfer.h"
#include "platform/netmodel/TP.h"
#include "platform/rtdb/Records.h"
#include "tests/host/HostFixture.h"

namespace {

/// Two stations joined by a line: in the first a double bus with tie and a transfer bus, in the second one bus.
/// Names are chosen so that their order is not the order in which they are made.
class Topology : public HostFixture {
  protected:
    void SetUp() override {
        HostFixture::SetUp();
        for (const char* name : {"旁母", "线侧", "I母", "II母", "中间", "对侧", "机端", "空母"}) {
            norvdb::nd node;
            node.id = name;
            dbCursor<norvdb::nd>(realTime, dbCursorForUpdate).insert(node);
        }
        join("母联_brk", "I母", "II母", true);
        join("刀1_sw", "I母", "中间", true);
        join("刀2_sw", "II母", "中间", false);
        join("线开关_brk", "中间", "线侧", true);
        join("旁刀_sw", "线侧", "旁母", false);
        line("线_ac", "线侧", "对侧", 1);
        norvdb::un unit;
        unit.id = "机";
        unit.node = "机端";
        dbCursor<norvdb::un>(realTime, dbCursorForUpdate).insert(unit);
        norvdb::ld load;
        load.id = "荷";
        load.node = "空母";
        dbCursor<norvdb::ld>(realTime, dbCursorForUpdate).insert(load);
    }

    void join(const QString& id, const QString& i, const QString& j, int closed) {
        norvdb::cb element;
        element.id = id;
        element.inode = i;
        element.jnode = j;
        element.closed = closed;
        dbCursor<norvdb::cb>(realTime, dbCursorForUpdate).insert(element);
    }
    void line(const QString& id, const QString& i, const QString& j, int valid) {
        norvdb::ln element;
        element.id = id;
        element.inode = i;
        element.jnode = j;
        element.valid = valid;
        dbCursor<norvdb::ln>(realTime, dbCursorForUpdate).insert(element);
    }
    void setClosed(const QString& id, int closed) {
        dbCursor<norvdb::cb> cursor(realTime, dbCursorForUpdate);
        ASSERT_EQ(cursor.select(dbQuery() << "id=" << id), 1);
        cursor.next();
        cursor->closed = closed;
        cursor.update();
    }
    void analyse() {
        norvdb::NORVDB network;
        norvdb::TP pass(network);
        pass.tpReadFastdb(&realTime);
        ASSERT_EQ(pass.tpAllnew(), 1);
        pass.tpWriteFastdb(&realTime);
    }
    int bus(const char* name) { return GetNodeBsNo_FromRTDB(sql::toGbk(name).constData()); }
};

TEST_F(Topology, JoinsNodesAcrossClosedSwitchesAndNotAcrossOpenOnes) {
    analyse();
    EXPECT_EQ(bus("I母"), bus("II母"));
    EXPECT_EQ(bus("I母"), bus("线侧"));
    EXPECT_EQ(bus("旁母"), 0) << "nothing in service is connected";
    setClosed("母联_brk", 0);
    setClosed("刀2_sw", 1);
    setClosed("刀1_sw", 0);
    analyse();
    EXPECT_EQ(bus("II母"), bus("线侧"));
    EXPECT_EQ(bus("I母"), 0);
    setClosed("旁刀_sw", 1);
    setClosed("线开关_brk", 0);
    analyse();
    EXPECT_EQ(bus("旁母"), bus("线侧"));
    EXPECT_EQ(bus("II母"), 0);
}

TEST_F(Topology, NumbersLiveBusesFromTwoWithoutGaps) {
    analyse();
    // By the bytes of the first node's name: I母 (with 线侧), 对侧, 机端; a load alone makes no live bus.
    EXPECT_EQ(bus("I母"), 2);
    EXPECT_EQ(bus("对侧"), 3);
    EXPECT_EQ(bus("机端"), 4);
    EXPECT_EQ(bus("空母"), 0);
    EXPECT_EQ(bus("没有"), 0);
    const auto element = record<norvdb::ln>("线_ac");
    EXPECT_EQ(element.ibs, 2);
    EXPECT_EQ(element.zbs, 3);
    EXPECT_EQ(element.inno, record<norvdb::nd>("线侧").no);
    EXPECT_EQ(element.jnno, record<norvdb::nd>("对侧").no);
    int place = 0;
    for (const auto& node : records<norvdb::nd>(" order by id ")) {
        EXPECT_EQ(node.no, place++);
    }
}

TEST_F(Topology, LeavesOutWhatOnlyAnOutOfServiceBranchTouches) {
    line("停_ac", "旁母", "空母", 0);
    analyse();
    EXPECT_EQ(bus("旁母"), 0);
    EXPECT_EQ(bus("空母"), 0);
    line("单端_ac", "旁母", "空母", 1);
    dbCursor<norvdb::ln> cursor(realTime, dbCursorForUpdate);
    ASSERT_EQ(cursor.select(dbQuery() << "id=" << QString("单端_ac")), 1);
    cursor.next();
    cursor->j_break = 0;
    cursor.update();
    analyse();
    EXPECT_GT(bus("旁母"), 1);
    EXPECT_EQ(bus("空母"), 0);
}

TEST_F(Topology, AnElementAtAnUnknownNodeDoesNotDisturbTheOthers) {
    line("错_ac", "没有", "I母", 1);
    analyse();
    EXPECT_EQ(bus("I母"), 2);
    EXPECT_EQ(record<norvdb::ln>("错_ac").ibs, 0);
    EXPECT_EQ(record<norvdb::ln>("错_ac").inno, 8);
}

TEST_F(Topology, SaysThatThereIsNoNetwork) {
    realTime.execute("DELETE FROM nd");
    norvdb::NORVDB network;
    norvdb::TP pass(network);
    pass.tpReadFastdb(&realTime);
    EXPECT_EQ(pass.tpAllnew(), 0);
    realTime.close();
    EXPECT_THROW(pass.tpReadFastdb(&realTime), std::runtime_error);
    EXPECT_THROW(pass.tpReadFastdb(nullptr), std::runtime_error);
    EXPECT_EQ(bus("I母"), 0);
}

}  // namespace
