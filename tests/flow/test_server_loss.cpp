#include <signal.h>

#include <QElapsedTimer>
#include <QSqlRecord>
#include <QThread>

#include "platform/server/Server.h"
#include "platform/sql/Sql.h"
#include "tests/flow/CommandLine.h"
#include "tests/platform/PrivateServer.h"

using testing::AnyOf;
using testing::HasSubstr;

namespace {

/// Calls whatever is asked again and again, at most for some seconds.
template <class Condition>
bool comesTrue(Condition condition, int seconds = 20) {
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < 1000 * seconds; QThread::msleep(2))
        if (condition()) return true;
    return false;
}

/// All rows of the tables of the cases and of the stored settings, table by table.
QStringList caseData() {
    QStringList rows;
    QString error;
    EXPECT_TRUE(server::openConnection("QMYSQL3", "丢失", "", "", "", "", &error)) << error.toStdString();
    for (const QString table : {"RLY_CASE_RLY", "RLY_CASEINF", "RLY_RUDSYS", "RLY_CASERDZ", "RLY_RDZ", "RLY_RUD"}) {
        sql::Query query;
        EXPECT_TRUE(query.exec("SELECT * FROM " + table + " ORDER BY 1,2,3,4"));
        rows << table + " " + QString::number(query.size());
        while (query.next()) {
            QStringList cells;
            for (int k = 0; k < query.cursor().record().count(); ++k) cells << query.raw(k);
            rows << cells.join('|');
        }
    }
    server::closeConnection("");
    return rows;
}

/// A user of its own, whose server nobody but the programs called here holds, with the demonstration's zero-sequence
/// relays, settings stored once, and a case of all of them.
class ServerLoss : public testing::Test {
  protected:
    void SetUp() override {
        callAll({{"project", "new", "丢失"},
                 {"import", "丢失", MORVANE_SOURCE_DIR "/data/networks/demo"},
                 {"relays", "install", "丢失", "--type", "3", "--level", "220", "--ct", "240", "--pt", "2200"},
                 {"case", "new", "丢失", "--type", "3", "--name", "零序", "--max", "最大方式", "--min", "最小方式"},
                 {"case", "run", "丢失", "零序"},
                 {"case", "save", "丢失", "零序"}});
        output = directoryOf("丢失") + "Temp/RELAY.RP1";
    }
    /// Starts an automatic run and returns when some of its steps are done.
    void startRun(QProcess& run) const {
        QFile::remove(output);
        run.start(MORVANE_BIN_DIR "/morvane", {"case", "run", "丢失", "零序"});
        ASSERT_TRUE(comesTrue([&] { return QFile::exists(output); })) << run.readAllStandardError().toStdString();
        ASSERT_FALSE(run.waitForFinished(50)) << "the run is over before it can be disturbed";
    }
    [[nodiscard]] QStringList heldData() const {
        QString error;
        const auto hold = server::Hold::acquire(&error);
        EXPECT_TRUE(hold) << error.toStdString();
        return hold ? caseData() : QStringList();
    }
    PrivateServer folders;
    QString output;
};

}  // namespace

TEST_F(ServerLoss, AKilledServerEndsTheRunAndChangesNoCase) {
    const QStringList before = heldData();
    ASSERT_GT(before.size(), 50);
    QProcess run;
    ASSERT_NO_FATAL_FAILURE(startRun(run));
    const qint64 server = folders.processId();
    ASSERT_GT(server, 1);
    ASSERT_EQ(::kill(pid_t(server), SIGKILL), 0);
    ASSERT_TRUE(run.waitForFinished(20000)) << "the run hangs";
    EXPECT_EQ(run.exitStatus(), QProcess::NormalExit);
    EXPECT_THAT(run.exitCode(), AnyOf(3, 4));
    const QString told = QString::fromUtf8(run.readAllStandardError());
    EXPECT_EQ(told.count("与数据库服务器的连接中断："), 1) << told.toStdString();
    EXPECT_LE(told.count("错误: "), 3) << told.toStdString();
    EXPECT_FALSE(told.contains("SELECT") || told.contains("INSERT")) << told.toStdString();

    EXPECT_EQ(heldData(), before);
    const Answer again = call({"case", "run", "丢失", "零序"});
    EXPECT_EQ(again.code, 0) << again.err;
}

TEST_F(ServerLoss, AKilledClientLeavesNoServerAndNoHalfCase) {
    const QStringList before = heldData();
    QProcess run;
    ASSERT_NO_FATAL_FAILURE(startRun(run));
    const qint64 server = folders.processId();
    ASSERT_GT(server, 1);
    run.kill();
    ASSERT_TRUE(run.waitForFinished(20000));
    EXPECT_TRUE(comesTrue([&] { return ::kill(pid_t(server), 0) != 0; })) << "the server outlives its last client";
    EXPECT_EQ(heldData(), before);
    const Answer again = call({"case", "run", "丢失", "零序"});
    EXPECT_EQ(again.code, 0) << again.err;
    EXPECT_THAT(call({"case", "results", "丢失", "零序", "--csv"}).out, HasSubstr(",3101,"));
}
