#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "programs/frame/ProjectStore.h"
#include "tests/workflow/WorkflowFixture.h"

using testing::HasSubstr;

class Projects : public testing::Test {
  protected:
    void SetUp() override {
        WinDockFeedback::setReceiver([this](const char* text, int level) {
            if (level > WinDockFeedback::Diagram) errors << QString::fromUtf8(text);
        });
        ASSERT_TRUE(CRDatabase("QMYSQL3", "", "", "").ConnectDB("mysql", tables::serverConnection, true));
    }
    void TearDown() override {
        for (const QString& name : store.names()) store.remove(name);
        WinDockFeedback::setReceiver({});
    }
    static QStringList databasesLike(const QString& pattern) {
        CRDatabase("QMYSQL3", "", "", "").ConnectDB("mysql", tables::serverConnection, true);
        QStringList names;
        sql::Query query(tables::serverConnection);
        query.exec("SELECT SCHEMA_NAME FROM information_schema.SCHEMATA WHERE SCHEMA_NAME LIKE ? ORDER BY 1",
                   {pattern});
        while (query.next()) names << query.text(0);
        return names;
    }
    static bool onServer(const QString& text) { return sql::Query(tables::serverConnection).exec(text); }

    QTemporaryDir folder;
    ProjectStore store{folder.path()};
    const QString rules = MORVANE_SOURCE_DIR "/data/rules";
    QStringList errors;
};

TEST_F(Projects, ANewOneHasItsDirectoriesAndBothDatabases) {
    const auto project = store.create("工程 '甲'", rules);
    ASSERT_TRUE(project) << errors.join('|').toStdString();
    EXPECT_EQ(project->realTimeName, "RTDB");
    EXPECT_TRUE(QDir(project->workDirectory()).exists());
    EXPECT_TRUE(QDir(project->directory + project->realTimeName).exists());
    EXPECT_EQ(store.names(), QStringList{"工程 '甲'"});
    EXPECT_GT(sql::scalar(tables::ruleConnection, "SELECT COUNT(*) FROM RULEINF").toInt(), 0);
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM LF_CASE WHERE Case_No=0").toInt(), 1);
    EXPECT_GT(sql::scalar({}, "SELECT COUNT(*) FROM RLY_RLYDSP").toInt(), 0);
    EXPECT_EQ(sql::scalar({}, "SELECT @@character_set_database").toString(), "gbk");
    EXPECT_FALSE(store.create("工程 '甲'", rules));
}

TEST_F(Projects, NamesThatCannotBeAreRefused) {
    for (const char* name : {"", "  ", " a", "a/b", "..", "a\\b", "a.b", "a\tb", "mysql", "xtemrlyrule", "a`b"})
        EXPECT_FALSE(store.create(name, rules)) << name;
    EXPECT_FALSE(store.create(QString("字").repeated(41), rules));
    EXPECT_TRUE(store.create(QString("字").repeated(40), rules)) << errors.join('|').toStdString();
    EXPECT_FALSE(store.open("没有"));
}

TEST_F(Projects, AFailedCreationLeavesNothing) {
    EXPECT_FALSE(store.create("半个", folder.filePath("nowhere")));
    EXPECT_TRUE(databasesLike("半个%").isEmpty());
    EXPECT_TRUE(QDir(folder.path()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty());
}

TEST_F(Projects, WhatAKilledCreationLeftIsClearedAwayByTheNextChange) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(".part-残余/Temp"));
    ASSERT_TRUE(onServer("CREATE DATABASE 残余") && onServer("CREATE DATABASE 残余TEMRLYRULE"));
    EXPECT_TRUE(store.names().isEmpty());
    ASSERT_TRUE(store.create("残余", rules)) << errors.join('|').toStdString();
    EXPECT_EQ(store.names(), QStringList{"残余"});
    ASSERT_TRUE(store.remove("残余"));
    EXPECT_TRUE(databasesLike("残余%").isEmpty());
    EXPECT_FALSE(QDir(folder.filePath("残余")).exists());
}

TEST_F(Projects, ADatabaseThatIsNoProjectOfOursIsLeftAlone) {
    ASSERT_TRUE(onServer("CREATE DATABASE 外来") && onServer("CREATE TABLE 外来.t(a int)"));
    EXPECT_FALSE(store.create("外来", rules));
    EXPECT_EQ(databasesLike("外来%"), QStringList{"外来"});
    EXPECT_TRUE(onServer("SELECT a FROM 外来.t"));
    EXPECT_TRUE(onServer("DROP DATABASE 外来"));
}

TEST_F(Projects, ACopyHasRelaysNetworkAndRealTimeTablesAndOutlivesTheOriginal) {
    const auto old = store.create("原", rules);
    ASSERT_TRUE(old);
    ASSERT_TRUE(sql::Query().exec("INSERT INTO RLY_RUD (RNo,ID_Name) VALUES (7,'线''路')"));
    ASSERT_TRUE(sql::Query().exec("INSERT INTO CDB_SCHEMEINFBAK (SchName) VALUES ('方案乙')"));
    ASSERT_TRUE(sql::Query(tables::ruleConnection).exec("UPDATE RTYPE SET DspCdz='改名' WHERE RTypeNo=1 AND DzNo=1"));
    const int shown = sql::scalar({}, "SELECT COUNT(*) FROM RLY_RLYDSP").toInt();
    QFile file(old->realTimeFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
    file.close();

    EXPECT_FALSE(store.saveAs("原", "原"));
    const auto copy = store.saveAs("原", "副本");
    ASSERT_TRUE(copy) << errors.join('|').toStdString();
    ASSERT_TRUE(store.remove("原"));
    ASSERT_TRUE(store.open("副本"));
    EXPECT_EQ(sql::scalar({}, "SELECT ID_Name FROM RLY_RUD WHERE RNo=7").toString(), "线'路");
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM CDB_SCHEMEINFBAK WHERE SchName='方案乙'").toInt(), 1);
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM RLY_RLYDSP").toInt(), shown);
    EXPECT_EQ(sql::scalar(tables::ruleConnection, "SELECT DspCdz FROM RTYPE WHERE RTypeNo=1 AND DzNo=1").toString(),
              "改名");
    EXPECT_TRUE(QFile::exists(copy->realTimeFile()));
    EXPECT_EQ(store.names(), QStringList{"副本"});
}
