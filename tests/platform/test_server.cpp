#include <gtest/gtest.h>
#include <signal.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include "platform/server/Server.h"
#include "platform/sql/Sql.h"
#include "tests/platform/Dock.h"
#include "tests/platform/PrivateServer.h"

namespace {

class Client {
  public:
    Client() { process_.start(QCoreApplication::applicationFilePath(), {"--client"}); }
    ~Client() { leave(); }

    QString answer() {
        while (!process_.canReadLine())
            if (!process_.waitForReadyRead(60000)) return "no answer";
        return QString::fromUtf8(process_.readLine()).trimmed();
    }
    void leave() {
        process_.closeWriteChannel();
        process_.waitForFinished();
    }
    void kill() {
        process_.kill();
        process_.waitForFinished();
    }

  private:
    QProcess process_;
};

bool runs(qint64 process) { return ::kill(static_cast<pid_t>(process), 0) == 0; }

qint64 residentKilobytes(qint64 process) {
    QFile status(QString("/proc/%1/status").arg(process));
    if (!status.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.simplified().split(' ').value(1).toLongLong();
    return -1;
}

QString whyNotAcquired() {
    QString error;
    return server::Hold::acquire(&error) ? QString() : error;
}

bool open(const QString& database) {
    QString error;
    const bool opened = server::openConnection("QMYSQL3", database, {}, {}, {}, {}, &error);
    EXPECT_TRUE(opened) << error.toStdString();
    return opened;
}

class Server : public testing::Test {
  protected:
    ~Server() override { server::closeConnection({}); }

    std::unique_ptr<server::Hold> hold() {
        QString error;
        auto held = server::Hold::acquire(&error);
        EXPECT_TRUE(held) << error.toStdString();
        return held;
    }

    PrivateServer folders;
    Dock dock;
};

}  // namespace

TEST_F(Server, IsSharedAndStopsWithTheLastClientHoweverThatEnds) {
    Client first;
    ASSERT_EQ(first.answer(), "joined");
    const qint64 process = folders.processId();
    ASSERT_TRUE(runs(process));
    Client second;
    ASSERT_EQ(second.answer(), "joined");
    EXPECT_EQ(folders.processId(), process);
    first.kill();
    QThread::msleep(200);
    EXPECT_TRUE(runs(process));
    second.kill();
    folders.waitUntilDown();
    EXPECT_FALSE(runs(process));
    Client third;
    ASSERT_EQ(third.answer(), "joined");
    EXPECT_NE(folders.processId(), process);
}

TEST_F(Server, TakesManyClientsThatStartAtOnce) {
    Client clients[5];
    for (Client& client : clients) EXPECT_EQ(client.answer(), "joined");
}

TEST_F(Server, IsPrivateAndSmall) {
    const auto held = hold();
    ASSERT_TRUE(held && open("mysql"));
    EXPECT_EQ(sql::scalar({}, "SELECT @@skip_networking").toInt(), 1);
    ASSERT_TRUE(sql::Query().exec("CREATE TABLE test_rows (a int, b char(200))"));
    for (int i = 0; i < 20; ++i) sql::Query().exec("INSERT INTO test_rows SELECT seq,'x' FROM seq_1_to_20000");
    EXPECT_GT(residentKilobytes(folders.processId()), 1);
    EXPECT_LT(residentKilobytes(folders.processId()), 200 * 1024);
}

TEST_F(Server, ComesBackAfterAKillWithAllThatWasCommitted) {
    const auto held = hold();
    ASSERT_TRUE(held && open("mysql"));
    ASSERT_TRUE(sql::Query().exec("CREATE TABLE kept (a int)"));
    ASSERT_TRUE(sql::Query().exec("INSERT INTO kept VALUES (1)"));
    ::kill(static_cast<pid_t>(folders.processId()), SIGKILL);
    folders.waitUntilDown();
    const int before = sql::losses();
    EXPECT_FALSE(sql::Query().exec("INSERT INTO kept VALUES (2)"));
    EXPECT_EQ(sql::losses(), before + 1);
    ASSERT_EQ(dock.lines.size(), 1);
    EXPECT_TRUE(dock.lines[0].contains("连接中断"));
    EXPECT_TRUE(sql::Query().exec("INSERT INTO kept VALUES (3)"));
    EXPECT_EQ(sql::scalar({}, "SELECT SUM(a) FROM kept").toInt(), 4);
    EXPECT_EQ(sql::scalar({}, "SELECT @@sql_mode").toString(), "STRICT_TRANS_TABLES,NO_ENGINE_SUBSTITUTION");
}

TEST_F(Server, DoesNotRunTheSecondHalfOfABrokenTransaction) {
    const auto held = hold();
    ASSERT_TRUE(held && open("mysql"));
    ASSERT_TRUE(sql::Query().exec("CREATE TABLE kept (a int)"));
    {
        sql::Transaction whole;
        ASSERT_TRUE(sql::Query().exec("INSERT INTO kept VALUES (1)"));
        ::kill(static_cast<pid_t>(folders.processId()), SIGKILL);
        folders.waitUntilDown();
        EXPECT_FALSE(sql::Query().exec("INSERT INTO kept VALUES (2)"));
        EXPECT_FALSE(sql::Query().exec("INSERT INTO kept VALUES (3)"));
        EXPECT_FALSE(whole.commit());
    }
    EXPECT_EQ(dock.lines.size(), 1);
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM kept", {}, -1).toInt(), 0);
}

TEST_F(Server, RunsNothingOfATransactionThatCouldNotBegin) {
    const auto held = hold();
    ASSERT_TRUE(held && open("mysql"));
    ASSERT_TRUE(sql::Query().exec("CREATE TABLE kept (a int)"));
    const auto kill = [this] {
        ::kill(static_cast<pid_t>(folders.processId()), SIGKILL);
        folders.waitUntilDown();
    };
    const auto insertTwo = [] {
        sql::Query().exec("INSERT INTO kept VALUES (1)");
        sql::Query().exec("INSERT INTO kept VALUES (2)");
    };
    kill();
    {
        sql::Transaction whole;
        insertTwo();
        EXPECT_TRUE(whole.commit()) << "the server is back by then";
    }
    kill();
    server::Settings absent = held->settings();
    absent.program = "/nonexistent/mariadbd";
    server::setCurrent(absent);
    {
        sql::Transaction whole;
        server::setCurrent(held->settings());
        insertTwo();
        EXPECT_FALSE(whole.commit());
    }
    QString error;
    ASSERT_TRUE(server::reopenConnection({}, &error)) << error.toStdString();
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM kept", {}, -1).toInt(), 2);
}

TEST_F(Server, TellsALossOnceHoweverManyStatementsFail) {
    auto held = hold();
    ASSERT_TRUE(held && open("mysql"));
    held.reset();
    folders.waitUntilDown();
    server::Settings unreachable;
    unreachable.embedded = false;
    server::setCurrent(unreachable);
    sql::Query query;
    for (int i = 0; i < 20; ++i) EXPECT_FALSE(query.exec("SELECT 1"));
    EXPECT_EQ(dock.lines.size(), 1) << dock.lines.join('\n').toStdString();
    EXPECT_EQ(query.errorText(), "没有与数据库服务器的连接");
    EXPECT_FALSE(sql::Query("nobody").exec("SELECT 1"));
    EXPECT_EQ(dock.lines.last(), "没有数据库连接nobody");
}

TEST_F(Server, SurvivesTheDeathOfItsKeeper) {
    const auto held = hold();
    ASSERT_TRUE(held && open("mysql"));
    QFile stat(QString("/proc/%1/stat").arg(folders.processId()));
    ASSERT_TRUE(stat.open(QIODevice::ReadOnly));
    const pid_t keeper = stat.readAll().split(' ').value(3).toInt();
    ASSERT_GT(keeper, 1);
    ::kill(keeper, SIGKILL);
    folders.waitUntilDown();
    EXPECT_FALSE(sql::Query().exec("SELECT 1"));
    EXPECT_TRUE(sql::Query().exec("SELECT 1"));
}

TEST_F(Server, PreparesAnewWhenPreparationWasKilled) {
    {
        Client client;
        QElapsedTimer clock;
        clock.start();
        while (QDir(folders.path("server")).entryList({"data.new*"}).isEmpty() && clock.elapsed() < 30000)
            QThread::msleep(1);
        client.kill();
    }
    ASSERT_FALSE(QFileInfo::exists(folders.path("server/data")));
    const auto held = hold();
    ASSERT_TRUE(held && open("mysql"));
    EXPECT_TRUE(QDir(folders.path("server")).entryList({"data.new*"}).isEmpty());
}

TEST_F(Server, WorksInAFolderWithALongName) {
    folders.useFolder(folders.path(QString(120, 'x')));
    const auto held = hold();
    EXPECT_TRUE(held && open("mysql"));
}

TEST_F(Server, SaysInOneSentenceWhyItDoesNotStart) {
    folders.write("server.ini", "[server]\nprogram = /nonexistent/mariadbd\n");
    EXPECT_EQ(whyNotAcquired(), "找不到数据库服务器程序/nonexistent/mariadbd，请安装MariaDB服务器");
    folders.write("server.ini", "[server]\n\nport = many\n");
    EXPECT_TRUE(whyNotAcquired().endsWith("第3行有错误"));
    folders.write("server.ini", "");
    ASSERT_TRUE(hold());
    folders.waitUntilDown();
    folders.write("server/data/ibdata1", "nonsense");
    EXPECT_TRUE(whyNotAcquired().startsWith("数据库服务器不能启动：InnoDB:")) << whyNotAcquired().toStdString();
    folders.write("server/data/morvane-version", "2\n");
    EXPECT_TRUE(whyNotAcquired().contains("由较新版本的程序建立（版本2）"));
}

TEST_F(Server, CanBeAnotherOneThatTheSettingsName) {
    const auto held = hold();
    ASSERT_TRUE(held && open("mysql"));
    ASSERT_TRUE(sql::Query().exec("CREATE USER 'guest'@'localhost' IDENTIFIED BY 'a;b,\"c\\\\'"));
    const QByteArray head = "[server]\nsocket = " + held->settings().socket.toUtf8() + "\nuser = guest\n";
    folders.write("server.ini", head + "password = a;b,\"c\\\n");
    EXPECT_EQ(whyNotAcquired(), "");
    folders.write("server.ini", head + "password = wrong\n");
    EXPECT_EQ(whyNotAcquired(), "数据库服务器本机拒绝用户guest登录，请检查用户名和密码");
    folders.write("server.ini", "[server]\nhost = 127.0.0.1\nport = 1\n");
    EXPECT_TRUE(whyNotAcquired().startsWith("不能连接到数据库服务器127.0.0.1：")) << whyNotAcquired().toStdString();
}

TEST_F(Server, RefusesDatabasesOfANewerVersionAndUnfinishedOnes) {
    const auto held = hold();
    ASSERT_TRUE(held && open("mysql"));
    ASSERT_TRUE(sql::Query().exec("CREATE DATABASE `odd``name`" + server::databaseOptions()));
    QString error;
    EXPECT_TRUE(server::openConnection("QMYSQL", "odd`name", "other", {}, {}, {}, &error)) << error.toStdString();
    ASSERT_TRUE(server::markDatabases({}, {"odd`name"}, false));
    EXPECT_FALSE(server::openConnection("QMYSQL", "odd`name", "other", {}, {}, {}, &error));
    EXPECT_TRUE(error.contains("没有建立完整"));
    ASSERT_TRUE(sql::Query().exec("ALTER DATABASE `odd``name` COMMENT 'morvane 2'"));
    EXPECT_FALSE(server::openConnection("QMYSQL", "odd`name", "other", {}, {}, {}, &error));
    EXPECT_TRUE(error.contains("较新版本"));
    EXPECT_FALSE(sql::Query("other").quietly().exec("SELECT 1")) << "a refused connection must not stay";
}
