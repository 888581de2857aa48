#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <iostream>

#include "platform/sql/Sql.h"
#include "programs/frame/EditSession.h"
#include "tests/frame/KilledSession.h"
#include "tests/frame/ServerFixture.h"

namespace {

const QVector<EditSession::Table> kRelayTables = {{"RLY_RUD", 118}, {"RLY_RDZ", 119}};

bool exec(const QString& text) { return sql::Query().exec(text); }

class EditSessions : public ServerFixture {
  protected:
    void SetUp() override {
        ServerFixture::SetUp();
        ASSERT_TRUE(exec("INSERT INTO RLY_RUD (RNo,ID_Name) VALUES (3,'c'),(1,'a\\\\\\''),(2,'b')") &&
                    exec("INSERT INTO RLY_RDZ (RNo,DzNo,Cdz) VALUES (1,1,'Z'),(2,1,'Z')"));
    }
    static QString names() {
        QStringList found;
        sql::Query query;
        query.exec("SELECT ID_Name FROM RLY_RUD");
        while (query.next()) found << query.text(0);
        return found.join(',');
    }
    static int count(const QString& table) { return sql::scalar({}, "SELECT COUNT(*) FROM " + table, {}, -1).toInt(); }
    static QStringList shadows() {
        QStringList found;
        sql::Query query;
        query.exec(
            "SELECT TABLE_NAME FROM information_schema.TABLES WHERE TABLE_SCHEMA=DATABASE() AND"
            " TABLE_NAME LIKE '%\\_TEM%' AND TABLE_NAME NOT IN"
            " ('RLY_RKLMTEM_TEM','RLY_RLYOBJ_TEM','RLY_RRBRANCH_TEM') ORDER BY 1");
        while (query.next()) found << query.text(0);
        return found;
    }
    static bool change() { return exec("DELETE FROM RLY_RUD WHERE RNo=2") && exec("UPDATE RLY_RDZ SET Cdz='X'"); }
    const QString before = "a\\',b,c";
    const QString changed = "a\\',c";
};

bool comesTrue(const std::function<bool()>& condition) {
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < 10000; QThread::msleep(5))
        if (condition()) return true;
    return false;
}

}  // namespace

int KilledSession::waitToBeKilled() {
    QString error;
    const auto hold = server::Hold::acquire(&error);
    CRDatabase database{"QMYSQL3", "", "", ""};
    if (!hold || !database.ConnectDB("P", tables::relayConnection, true)) return 1;
    EditSession outer("WinDlgSetRly", kRelayTables, "_TEM");
    EditSession inner("WinDlgActElement", {{"RLY_RUD", 118}}, "_TEM_TM");
    if (!outer.open() || !exec("DELETE FROM RLY_RUD WHERE RNo=2") || !inner.open()) return 1;
    if (!exec("DELETE FROM RLY_RUD WHERE RNo=3")) return 1;
    std::cout << "ready" << std::endl;
    QThread::sleep(60);
    return 0;
}

bool KilledSession::start() {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(variable, "1");
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(QCoreApplication::applicationFilePath(), QStringList());
    return process_.waitForReadyRead(20000) && process_.readAllStandardOutput().contains("ready");
}

void KilledSession::kill() {
    process_.kill();
    process_.waitForFinished();
}

TEST_F(EditSessions, OkKeepsAndCancelTakesBackInTheOldOrder) {
    EditSession session("D", kRelayTables, "_TEM");
    ASSERT_TRUE(session.open());
    EXPECT_EQ(shadows(), (QStringList{"RLY_RDZ_TEM", "RLY_RUD_TEM"}));
    ASSERT_TRUE(change() && session.restore());
    EXPECT_EQ(names(), before);
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM RLY_RDZ WHERE Cdz='Z'").toInt(), 2);
    EXPECT_FALSE(session.isOpen() || session.restore() || session.commit()) << "a session ends once";
    ASSERT_TRUE(session.open() && change() && session.commit());
    EXPECT_EQ(names(), changed);
    EXPECT_EQ(shadows(), QStringList());
}

TEST_F(EditSessions, OuterCancelUndoesWhatAnInnerOkKept) {
    EditSession outer("D", kRelayTables, "_TEM");
    EditSession inner("E", {{"RLY_RUD", 118}, {"RLY_RDZ", 119, "_TEM_TM_TM"}}, "_TEM_TM");
    ASSERT_TRUE(outer.open() && exec("DELETE FROM RLY_RUD WHERE RNo=3") && inner.open());
    EXPECT_TRUE(shadows().contains("RLY_RUD_TEM_TM") && shadows().contains("RLY_RDZ_TEM_TM_TM"));
    ASSERT_TRUE(change() && inner.restore());
    EXPECT_EQ(names(), "a\\',b") << "an inner cancel goes back to what the outer had changed";
    ASSERT_TRUE(inner.open() && change() && inner.commit() && outer.restore());
    EXPECT_EQ(names(), before);
}

TEST_F(EditSessions, ColumnsThatCountGoOnWhereTheyStood) {
    ASSERT_TRUE(exec("INSERT INTO RLY_RDZTEM (RNo) VALUES (7),(8)"));
    EditSession session("D", {{"RLY_RDZTEM", 130}, {"RLY_RLYOBJ_TEM", 232, "_TM"}}, "_TEM_TM");
    ASSERT_TRUE(exec("INSERT INTO RLY_RLYOBJ_TEM (RNo,Cdz) VALUES (5,'Z')") && session.open());
    EXPECT_EQ(shadows(), (QStringList{"RLY_RDZTEM_TEM_TM", "RLY_RLYOBJ_TEM_TM"}));
    ASSERT_TRUE(exec("DELETE FROM RLY_RLYOBJ_TEM") && exec("INSERT INTO RLY_RDZTEM (RNo) VALUES (9),(10),(11)") &&
                session.restore() && exec("INSERT INTO RLY_RDZTEM (RNo) VALUES (12)"));
    EXPECT_EQ(sql::scalar({}, "SELECT GROUP_CONCAT(ID,':',RNo ORDER BY ID) FROM RLY_RDZTEM").toString(),
              "1:7,2:8,3:12");
    EXPECT_EQ(count("RLY_RLYOBJ_TEM"), 1);
}

TEST_F(EditSessions, RuleTablesGoBackOnTheirOwnConnection) {
    const auto rules = [] {
        return sql::scalar(tables::ruleConnection, "SELECT GROUP_CONCAT(RuleNo) FROM PARAINF").toString();
    };
    sql::Query rule(tables::ruleConnection);
    ASSERT_TRUE(rule.exec("INSERT INTO PARAINF (RuleNo) VALUES (1),(2)"));
    EditSession session("D", {{"PARAINF", 103}, {"RLY_RUD", 118}}, "_TEM");
    ASSERT_TRUE(session.open() && rule.exec("DELETE FROM PARAINF") && change());
    ASSERT_TRUE(session.restore());
    EXPECT_EQ(rules() + ' ' + names(), "1,2 " + before);
}

TEST_F(EditSessions, AFailedOpeningLeavesNothingAndIsTold) {
    ASSERT_TRUE(exec("DROP TABLE RLY_RDZ"));
    EditSession session("D", kRelayTables, "_TEM");
    EXPECT_FALSE(session.open("不能进行保护装设"));
    EXPECT_EQ(errors.last(), "建立RLY_RDZ_TEM表失败，不能进行保护装设");
    EXPECT_EQ(shadows(), QStringList());
    EXPECT_FALSE(session.restore());
    EXPECT_EQ(names(), before);
}

TEST_F(EditSessions, CancelChangesNothingWhenItCannotTakeEverythingBack) {
    for (const char* damage : {"DROP TABLE RLY_RDZ_TEM", "ALTER TABLE RLY_RDZ_TEM DROP COLUMN DzNo"}) {
        EditSession session("D", kRelayTables, "_TEM");
        ASSERT_TRUE(session.open() && change() && exec(damage));
        EXPECT_FALSE(session.restore());
        EXPECT_EQ(names(), changed) << damage;
        EXPECT_TRUE(session.isOpen() && shadows().contains("RLY_RUD_TEM"));
        ASSERT_TRUE(exec("INSERT INTO RLY_RUD (RNo,ID_Name) VALUES (2,'b')") && session.commit());
    }
}

TEST_F(EditSessions, ALostConnectionDoesNotEndASession) {
    EditSession session("D", kRelayTables, "_TEM");
    ASSERT_TRUE(session.open() && change());
    const QString number = sql::scalar({}, "SELECT CONNECTION_ID()").toString();
    ASSERT_TRUE(sql::Query(tables::serverConnection).exec("KILL " + number));
    EXPECT_TRUE(session.restore() || session.restore()) << "the second attempt has a connection again";
    EXPECT_EQ(names(), before);
    EXPECT_EQ(shadows(), QStringList());
}

TEST_F(EditSessions, TablesThatOnlyLookLikeShadowsAreNoLeftovers) {
    ASSERT_TRUE(database.BuildTmpTb("P"));
    EXPECT_TRUE(EditSession::leftovers().isEmpty());
    ASSERT_TRUE(exec("DROP TABLE RLY_RDZ_TEM"));
    {
        EditSession session("D", kRelayTables, "_TEM");
        ASSERT_TRUE(session.open());
        EXPECT_TRUE(EditSession::leftovers().isEmpty()) << "an open session is none";
    }
    EXPECT_EQ(EditSession::leftovers().size(), 1);
    ASSERT_TRUE(exec("DROP TABLE RLY_RDZ_TEM"));
    EXPECT_TRUE(EditSession::leftovers().isEmpty()) << "half of a session cannot be taken back";
    EXPECT_FALSE(shadows().contains("RLY_RUD_TEM"));
    EXPECT_TRUE(shadows().contains("RLY_RUDRM_TEM")) << "a copy without a session stays";
}

TEST_F(EditSessions, AKilledProgramsEditsGoBackOrAreKept) {
    for (const bool back : {true, false}) {
        KilledSession killed;
        ASSERT_TRUE(killed.start());
        EXPECT_TRUE(EditSession::leftovers().isEmpty()) << "its program lives";
        EditSession rival("WinDlgSetAllRly", kRelayTables, "_TEM");
        EXPECT_FALSE(rival.open()) << "its copies are in use";
        killed.kill();
        ASSERT_TRUE(comesTrue([] { return EditSession::leftovers().size() == 2; }));
        const auto found = EditSession::leftovers();
        EXPECT_EQ(found[0].tables, (QStringList{"RLY_RUD", "RLY_RDZ"}));
        EXPECT_LT(found[0].opened.secsTo(QDateTime::currentDateTimeUtc()), 60);
        EXPECT_EQ(found[1].owner + found[1].suffix, "WinDlgActElement_TEM_TM");
        EXPECT_THAT(EditSession::describe(found[0]).toStdString(),
                    testing::AllOf(testing::HasSubstr("保护装设"), testing::HasSubstr("RLY_RUD、RLY_RDZ")));
        ASSERT_EQ(names(), "a\\'");
        if (back) {
            EXPECT_TRUE(EditSession::goBack(found[0]));
            EXPECT_EQ(names(), before);
        } else {
            EXPECT_TRUE(EditSession::goBack(found[1]) && EditSession::keep(found[0]));
            EXPECT_EQ(names(), changed) << "the inner window cancelled, the outer confirmed";
        }
        EXPECT_TRUE(EditSession::leftovers().isEmpty());
        EXPECT_EQ(shadows(), QStringList());
    }
}

TEST_F(EditSessions, SessionsOfOneWindowAreOneLeftover) {
    {
        EditSession details("D", {{"RLY_RUD", 118}}, "_TEM"), master("D", {{"RLY_RDZ", 119}}, "_TEM");
        ASSERT_TRUE(details.open() && master.open() && change());
    }
    const auto found = EditSession::leftovers();
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].tables, (QStringList{"RLY_RUD", "RLY_RDZ"}));
    EXPECT_TRUE(EditSession::goBack(found[0]));
    EXPECT_EQ(names(), before);
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM RLY_RDZ WHERE Cdz='Z'").toInt(), 2);
    EXPECT_TRUE(EditSession::leftovers().isEmpty());
}

TEST_F(EditSessions, TheNextSessionReplacesAWholeLeftover) {
    { ASSERT_TRUE(EditSession("D", kRelayTables, "_TEM").open() && change()); }
    EditSession next("E", {{"RLY_RUD", 118}}, "_TEM");
    ASSERT_TRUE(next.open());
    EXPECT_EQ(shadows(), QStringList("RLY_RUD_TEM")) << "the other half of the old one is gone too";
    ASSERT_TRUE(exec("DELETE FROM RLY_RUD") && next.restore());
    EXPECT_EQ(names(), changed);
}
