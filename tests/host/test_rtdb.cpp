#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>

#include "platform/rtdb/CaseRecords.h"
#include "platform/rtdb/Records.h"
#include "tests/host/HostFixture.h"

namespace {

using RealTime = HostFixture;

/// Number of nodes that another program sees.
int nodesOutside(const QString& file) {
    sqlite3* db = nullptr;
    sqlite3_stmt* statement = nullptr;
    sqlite3_open_v2(file.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_prepare_v2(db, "SELECT count(*) FROM nd", -1, &statement, nullptr);
    const int count = sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int(statement, 0) : -1;
    sqlite3_finalize(statement);
    sqlite3_close(db);
    return count;
}

void insertNodes(dbDatabase& realTime, const QStringList& names) {
    dbCursor<norvdb::nd> cursor(realTime, dbCursorForUpdate);
    for (const QString& name : names) {
        norvdb::nd node;
        node.id = name;
        ASSERT_TRUE(cursor.insert(node));
    }
}

TEST_F(RealTime, ShowsChangesToOthersOnlyAfterACommit) {
    insertNodes(realTime, {"甲"});
    EXPECT_EQ(records<norvdb::nd>().size(), 1U);
    EXPECT_EQ(nodesOutside(file()), 0);
    ASSERT_TRUE(realTime.commit());
    EXPECT_EQ(nodesOutside(file()), 1);
    insertNodes(realTime, {"乙"});
    realTime.rollback();
    EXPECT_EQ(records<norvdb::nd>().size(), 1U);
}

TEST_F(RealTime, FindsNamesWhateverTheyHold) {
    const QStringList names{" or 1=1", "a' or 'a'='a", "乗\\", "100%", "\"", "id=?", "order by id"};
    insertNodes(realTime, names);
    for (const QString& name : names) EXPECT_EQ(record<norvdb::nd>(name).id, name);
}

TEST_F(RealTime, OrdersNodesByTheBytesOfTheirNames) {
    insertNodes(realTime, {"阿", "Z", "中", "a", " A"});  // GBK B0 A2, 5A, D6 D0, 61, 20
    QStringList order;
    for (const auto& node : records<norvdb::nd>(" order by id ")) order << node.id;
    EXPECT_EQ(order, (QStringList{" A", "Z", "a", "阿", "中"}));
}

TEST_F(RealTime, TakesEveryShapeOfCondition) {
    dbCursor<norvdb::addition_graph> cursor(realTime, dbCursorForUpdate);
    for (int recid : {2, 5, 6}) {
        norvdb::addition_graph label;
        label.recid = recid;
        label.module_num = recid == 6 ? 13 : 14;
        label.id_name = "线'1";
        label.percent_pos = recid;
        ASSERT_TRUE(cursor.insert(label));
    }
    const int recid = 5;
    EXPECT_EQ(cursor.select("module_num=14"), 2);
    EXPECT_EQ(cursor.select("recid=5and module_num=14"), 1);
    EXPECT_EQ(cursor.select(dbQuery() << "recid=" << recid << "and module_num=" << 14), 1);
    EXPECT_EQ(cursor.select(dbQuery() << "recid=" << 2 << " or percent_pos=" << 6), 2);
    EXPECT_EQ(cursor.select(dbQuery() << "module_num=14 and id_name=" << QString("线'1") << " and i_name=" << QString()
                                      << " and percent_pos=" << recid),
              1);
    EXPECT_TRUE(messages.isEmpty()) << messages.join('\n').toStdString();
    EXPECT_EQ(cursor.select("id_name='线'"), 0);
    EXPECT_EQ(cursor.select("recid=1;drop table nd"), 0);
    EXPECT_EQ(messages.size(), 2);
}

TEST_F(RealTime, UpdatesAndRemovesTheRecordOfTheCursor) {
    insertNodes(realTime, {"甲", "乙", "丙"});
    dbCursor<norvdb::nd> cursor(realTime, dbCursorForUpdate);
    ASSERT_EQ(cursor.select(), 3);
    ASSERT_TRUE(cursor.next() && cursor.remove());
    ASSERT_TRUE(cursor.next());
    cursor->base_kv = 110;
    cursor->flags = 0x10;
    ASSERT_TRUE(cursor.update());
    EXPECT_EQ(records<norvdb::nd>().size(), 2U);
    EXPECT_EQ(record<norvdb::nd>("乙").base_kv, 110);
    EXPECT_EQ(record<norvdb::nd>("丙").base_kv, 0);
    dbCursor<norvdb::nd> reader(realTime);
    reader.select();
    EXPECT_FALSE(reader.removeAll());
    EXPECT_EQ(records<norvdb::nd>().size(), 2U);
}

TEST_F(RealTime, KeepsBothCaseHeaders) {
    norvdb::case_st st;
    st.calculate = -1.0;
    st.accuracy = 0.0005;
    st.note = QString(100, 'n');
    norvdb::case_lf lf;
    lf.case_no = 3;
    lf.scheme = "方'案";
    lf.ntrans = 7;
    ASSERT_TRUE(dbCursor<norvdb::case_st>(realTime, dbCursorForUpdate).insert(st));
    ASSERT_TRUE(dbCursor<norvdb::case_lf>(realTime, dbCursorForUpdate).insert(lf));
    const auto storedSt = records<norvdb::case_st>().at(0);
    const auto storedLf = records<norvdb::case_lf>().at(0);
    EXPECT_EQ(std::tie(storedSt.calculate, storedSt.accuracy, storedSt.note),
              std::tie(st.calculate, st.accuracy, st.note));
    EXPECT_EQ(std::tie(storedLf.case_no, storedLf.scheme, storedLf.ntrans), std::tie(lf.case_no, lf.scheme, lf.ntrans));
}

void overwrite(const QString& name, const QByteArray& bytes, qint64 at = 0) {
    QFile target(name);
    ASSERT_TRUE(target.open(QIODevice::ReadWrite));
    target.seek(at);
    target.write(bytes);
}

TEST_F(RealTime, RefusesADamagedForeignOrNewerFileInOneSentence) {
    QStringList names;
    for (int k = 0; k < 3000; ++k) names << QString("节点%1").arg(k);
    insertNodes(realTime, names);
    ASSERT_TRUE(realTime.commit());
    realTime.close();
    const QString damaged = folder.path() + "/damaged", text = folder.path() + "/text",
                  newer = folder.path() + "/newer";
    ASSERT_TRUE(QFile::copy(file(), damaged) && QFile::copy(file(), newer));
    overwrite(damaged, QByteArray(20000, '\xff'), 60000);
    overwrite(text, QByteArray(5000, 'x'));
    QString error;
    dbDatabase other;
    ASSERT_TRUE(other.open(newer, &error)) << error.toStdString();
    ASSERT_TRUE(other.setFact("version", "99") && other.commit());
    other.close();
    for (const QString& name : {damaged, text, newer}) {
        EXPECT_FALSE(other.open(name, &error));
        EXPECT_TRUE(error.contains(name) && !error.contains('\n')) << error.toStdString();
        EXPECT_FALSE(other.isOpen());
        EXPECT_EQ(dbDatabase::current(), nullptr);
    }
    EXPECT_TRUE(other.open(file(), &error)) << error.toStdString();
}

TEST_F(RealTime, AProgramKilledInTheMiddleOfAChangeLeavesWhatWasCommitted) {
    insertNodes(realTime, {"甲", "乙"});
    ASSERT_TRUE(realTime.commit());
    realTime.close();
    const pid_t child = fork();
    if (child == 0) {
        dbDatabase other;
        other.open(file());
        dbCursor<norvdb::nd> cursor(other, dbCursorForUpdate);
        cursor.removeAll();
        norvdb::nd node;
        for (int k = 0; k < 100000; ++k) {  // more than is kept in memory, so that the file itself has changed
            node.id = QString::number(k);
            cursor.insert(node);
        }
        kill(getpid(), SIGKILL);
    }
    ASSERT_GT(child, 0);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_TRUE(QFile::exists(file() + "-journal"));
    QString error;
    ASSERT_TRUE(realTime.open(file(), &error)) << error.toStdString();
    EXPECT_EQ(records<norvdb::nd>().size(), 2U);
    EXPECT_EQ(nodesOutside(file()), 2);
}

}  // namespace
