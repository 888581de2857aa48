#include <QSet>
#include <QSqlDatabase>
#include <stdexcept>

#include "platform/sql/Sql.h"
#include "tests/frame/ServerFixture.h"

using tables::Group;

namespace {

class Database : public ServerFixture {
  protected:
    static int count(const QString& table, const QString& connection = {}) {
        return sql::scalar(connection, "SELECT COUNT(*) FROM " + sql::quotedName(table), {}, -1).toInt();
    }
    static bool hasTable(const QString& table, const QString& connection = {}) {
        sql::Query query(connection);
        return query.exec("SHOW TABLES LIKE '" + table + '\'') && query.size() == 1;
    }
    static bool hasDatabase(const QString& name) {
        sql::Query query;
        return query.exec("SELECT 1 FROM information_schema.SCHEMATA WHERE SCHEMA_NAME=?", {name}) && query.size() == 1;
    }
    /// Keys as "unique:column,column", in no order.
    static QSet<QString> keys(const QString& table, const QString& connection) {
        QMap<QString, QString> found;
        sql::Query query(connection);
        query.exec("SHOW INDEX FROM " + sql::quotedName(table));
        while (query.next()) {
            QString& key = found[query.text(2)];
            key += key.isEmpty() ? (query.number(1) == 0 ? "unique:" : "index:") : ",";
            key += query.text(4);
        }
        return {found.cbegin(), found.cend()};
    }
    static bool addTypes(const QString& connection = tables::ruleConnection) {
        return sql::insertRows(connection, "RTYPE",
                               {"RTypeNo", "RTypeCode", "RType", "NPart", "DzNo", "Cdz", "VType", "DspCdz"},
                               {{2, "接地距离'", 6, 3, 2, "t", 4, "时间"},
                                {2, "接地距离'", 6, 3, 1, "Zdz", 2, "阻抗"},
                                {1, "相间距离", 6, 3, 1, "Zdz", 2, "阻抗"}});
    }
    static bool addRelay(int number, const QString& element) {
        return sql::insertRows({}, "RLY_RUD", {"RNo", "ID_Name", "Side"}, {{number, element, -1}});
    }
};

}  // namespace

TEST_F(Database, HasFiftyTwoTablesWithOneCodeEach) {
    QSet<int> codes;
    QSet<QString> names;
    for (const tables::Definition& table : tables::definitions()) {
        codes << table.code;
        names << table.layout.name;
        const auto columns = table.layout.columnNames();
        EXPECT_EQ(QSet<QString>(columns.begin(), columns.end()).size(), columns.size());
    }
    EXPECT_EQ(codes.size(), 52);
    EXPECT_EQ(names.size(), 52);
    EXPECT_EQ(tables::definitions().first().code, 101);
    EXPECT_EQ(tables::definitions().last().code, 141);
}

TEST_F(Database, TablesTakeADefaultForEveryColumn) {
    for (const tables::Definition& table : tables::definitions()) {
        const QString connection = tables::connectionOf(table.group);
        const QString name = table.layout.name;
        ASSERT_TRUE(sql::Query(connection).exec("INSERT INTO " + sql::quotedName(name) + " () VALUES ()"))
            << name.toStdString();
        EXPECT_EQ(count(name, connection), 1);
    }
    sql::Query row;
    ASSERT_TRUE(row.exec("SELECT a.Case_lf,a.Mlf,a.Scheme,b.Dev_Name1,b.CTPri,c.K FROM RLY_CASE_RLY a,RLY_RUD b,"
                         "PTEMRLYRULE.PARAINF c") &&
                row.next());
    EXPECT_EQ(row.number(0), -1);
    EXPECT_EQ(row.raw(1) + row.raw(2) + row.raw(4), "00");
    EXPECT_TRUE(row.isNull(3));
}

TEST_F(Database, KeysAreThoseOfTheTables) {
    const struct {
        const char* table;
        QSet<QString> keys;
    } expected[] = {
        {"PARAINF", {"index:RuleNo,ParNo"}},
        {"RLYVER", {}},
        {"USEFKLM", {"unique:RTypeNo,PNo,Cdz"}},
        {"RLY_RUD", {"unique:RNo", "index:ID_Name,I_Name,J_Name,Side"}},
        {"RLY_RUD_TEM", {"unique:RNo"}},
        {"RLY_CASEINF", {"unique:Case_No,RNO,PNo,RuleNo"}},
        {"RLY_CFZXS", {"unique:Case_No,FzNo", "index:FzNo"}},
        {"RLY_RRBRANCH_TEM", {"unique:ID", "index:ID_Name,I_Name,J_Name", "index:I_No", "index:J_No"}},
        {"RLY_RSYSMODEDLS_TEM", {"index:SysNo", "index:SysName"}},
    };
    ASSERT_TRUE(database.BuildTmpTb("P"));
    for (const auto& table : expected) {
        const QString connection = hasTable(table.table, {}) ? "" : tables::ruleConnection;
        EXPECT_EQ(keys(table.table, connection), table.keys) << table.table;
    }
}

TEST_F(Database, CopiesHoldTheRowsUnderAnyName) {
    ASSERT_TRUE(addRelay(7, "it's \\ 100%"));
    for (const QString name : {"RLY_RUD_TEM", "RLY_RUD_TEM_TM", "odd `name"}) {
        ASSERT_TRUE(CRDatabase::BuildTable(name, 218, 1));
        EXPECT_EQ(sql::scalar({}, "SELECT ID_Name FROM " + sql::quotedName(name)).toString(), "it's \\ 100%");
    }
    ASSERT_TRUE(addRelay(8, "new"));
    EXPECT_TRUE(CRDatabase::BuildTable("RLY_RUD_TEM", 218, 0));
    EXPECT_EQ(count("RLY_RUD_TEM"), 1) << "a copy that is there stays as it is";
    EXPECT_TRUE(CRDatabase::BuildTable("RLY_RUD_TEM", 218, 1));
    EXPECT_EQ(count("RLY_RUD_TEM"), 2);
}

TEST_F(Database, EveryTableHasItsCopy) {
    ASSERT_TRUE(addTypes() && addRelay(1, "L1"));
    ASSERT_TRUE(sql::Query().exec("INSERT INTO RLY_RDZTEM (RNo) VALUES (1),(2)"));
    for (const tables::Definition& table : tables::definitions()) {
        if (table.code > 200) continue;
        const QString copy = table.layout.name + "_TEM";
        ASSERT_TRUE(CRDatabase::BuildTable(copy, table.code + 100, 1)) << errors.join('\n').toStdString();
        const QString connection = tables::connectionOf(table.group);
        EXPECT_EQ(count(copy, connection), count(table.layout.name, connection));
    }
}

TEST_F(Database, CodesInAGapAreRefused) {
    for (const int code : {100, 131, 132, 135, 138, 142, 149, 162, 200, 235, 242, 249, 262}) {
        errors.clear();
        EXPECT_FALSE(CRDatabase::BuildTable("T", code, 0));
        EXPECT_EQ(errors, QStringList({"T表没有定义", "T表创建失败********************"})) << code;
    }
    errors.clear();
    EXPECT_FALSE(CRDatabase::BuildTable("T", 131, 1));
    EXPECT_EQ(errors, QStringList({"无法确认的表", "无法删除已经存在的表T不能执行创建表操作"}));
}

TEST_F(Database, DisplayTableIsFilledOnce) {
    ASSERT_TRUE(addTypes());
    ASSERT_TRUE(database.BuildNewTable("P"));
    QStringList rows;
    sql::Query query;
    ASSERT_TRUE(
        query.exec("SELECT RTypeNo,DzDspNo,CDz,DspDz,RTypeCode,AllDsp+RlyAss+RlyDspNo+RlyLoc FROM RLY_RLYDSP "
                   "ORDER BY RTypeNo,DzDspNo"));
    while (query.next())
        rows << query.raw(0) + query.raw(1) + query.raw(2) + query.raw(3) + query.raw(4) + query.raw(5);
    EXPECT_EQ(rows, QStringList({"11Zdz阻抗相间距离0", "21Zdz阻抗接地距离'0", "22t时间接地距离'0"}));
    ASSERT_TRUE(addRelay(1, "L1"));
    ASSERT_TRUE(sql::Query().exec("DELETE FROM RLY_RLYDSP WHERE RTypeNo=2"));
    ASSERT_TRUE(database.BuildNewTable("P"));
    EXPECT_EQ(count("RLY_RLYDSP"), 1);
    EXPECT_EQ(count("RLY_RUD"), 1);
}

TEST_F(Database, BuildingTheCopiesEmptiesTheWorkingTables) {
    ASSERT_TRUE(addRelay(1, "L1"));
    ASSERT_TRUE(sql::Query().exec("INSERT INTO RLY_RDZTEM (RNo) VALUES (1)"));
    ASSERT_TRUE(database.BuildTmpTb("P"));
    EXPECT_EQ(count("RLY_RUD_TEM"), 1);
    EXPECT_EQ(count("RLY_RDZTEM"), 0);
    ASSERT_TRUE(addRelay(2, "L2"));
    ASSERT_TRUE(sql::Query().exec("INSERT INTO RLY_KFINF (FzNo) VALUES (1)"));
    EXPECT_TRUE(database.DeleteTMTabDat());
    EXPECT_EQ(count("RLY_RUD_TEM"), 0);
    EXPECT_EQ(count("RLY_RUD"), 2);
    EXPECT_TRUE(messages.contains("删除临时数据表RLY_RUD_TEM 数据成功"));
    EXPECT_TRUE(database.DeleteRLYTM());
    EXPECT_EQ(count("RLY_KFINF"), 0);
    EXPECT_TRUE(messages.contains("删除RLY_CFZXSRM表中数据"));
    ASSERT_TRUE(sql::Query().exec("DROP TABLE RLY_KFINF"));
    EXPECT_FALSE(database.DeleteRLYTM());
    EXPECT_EQ(errors.last(), "无法删除RLYTM库中各表数据");
}

TEST_F(Database, DroppingTheCopiesClosesTheConnections) {
    ASSERT_TRUE(addRelay(1, "L1") && database.BuildTmpTb("P"));
    EXPECT_TRUE(database.DeleteTmpTb(tables::ruleConnection, tables::relayConnection, tables::caseConnection,
                                     tables::workingConnection));
    EXPECT_TRUE(messages.contains("删除临时数据表RTYPE_TEM 成功"));
    EXPECT_EQ(messages.last(), "删除临时数据表RLY_CFZXSRM成功");
    EXPECT_FALSE(QSqlDatabase::contains(tables::ruleConnection) || QSqlDatabase::contains(tables::relayConnection));
    EXPECT_FALSE(database.DeleteTmpTb(tables::ruleConnection, tables::relayConnection, tables::caseConnection,
                                      tables::workingConnection));
    EXPECT_EQ(errors, QStringList{"数据库连接错误，不能删除临时表"});
    ASSERT_TRUE(database.ConnectToBaseDb("P"));
    EXPECT_EQ(count("RLY_RUD"), 1);
    EXPECT_FALSE(hasTable("RLY_RUD_TEM") || hasTable("RLY_RDZTEM"));
}

TEST_F(Database, NewDatabasesAreEmptyAndHoldChinese) {
    ASSERT_TRUE(addRelay(1, QString(20, QChar(0x7AD9))));
    EXPECT_EQ(sql::scalar({}, "SELECT ID_Name FROM RLY_RUD").toString(), QString(20, QChar(0x7AD9)));
    ASSERT_TRUE(database.ConnectDB("P", tables::relayConnection, false));
    EXPECT_FALSE(hasTable("RLY_RUD"));
    server::closeConnection(tables::serverConnection);
    errors.clear();
    EXPECT_FALSE(database.ConnectDB("P", tables::relayConnection, false));
    EXPECT_EQ(errors, QStringList{"没有建立与MYSQL库的连接"});
    EXPECT_FALSE(database.ConnectDB("absent", "other", true));
    EXPECT_EQ(errors[1], "打开数据库absent失败: ");
    EXPECT_FALSE(QSqlDatabase::contains("other"));
    EXPECT_FALSE(CRDatabase("NOSUCHDRIVER", "", "", "").ConnectDB("P", "other", true));
    EXPECT_EQ(errors.last(), "不能连接到数据库other");
}

TEST_F(Database, DeletingAProjectDropsItsDatabases) {
    ASSERT_TRUE(sql::Query(tables::serverConnection).exec("DROP DATABASE PTEMRLYRULE"));
    EXPECT_TRUE(database.DeleteDb("P"));
    EXPECT_TRUE(messages.contains("删除数据库PTEMRLYRULE") && messages.contains("删除数据库P"));
    ASSERT_TRUE(database.ConnectDB("mysql", {}, true));
    EXPECT_FALSE(hasDatabase("P"));
}

namespace {

class SaveAs : public Database {
  protected:
    // The old project holds rows of every group; then the connections stand on the new one.
    void fillOldAndMakeNew() {
        ASSERT_TRUE(addTypes() && addRelay(1, "it's \\ 站"));
        ASSERT_TRUE(sql::Query().exec("INSERT INTO RLY_CASE_RLY (Case_No,Case_Name) VALUES (3,'作业')"));
        ASSERT_TRUE(sql::Query().exec("INSERT INTO RLY_RDZTEM (RNo,Rdz) VALUES (1,0.8),(2,9999999.999999)"));
        ASSERT_TRUE(sql::Query().exec("INSERT INTO RLY_RLYDSP (RTypeNo,CDz) VALUES (1,'own')"));
        ASSERT_TRUE(database.ConnectDB("QTEMRLYRULE", tables::ruleConnection, false));
        ASSERT_TRUE(tables::CreateRuleTables(tables::ruleConnection) && addTypes());
        ASSERT_TRUE(database.ConnectDB("Q", tables::relayConnection, false));
    }
    void TearDown() override {
        database.DeleteDb("Q");
        Database::TearDown();
    }
};

}  // namespace

TEST_F(SaveAs, CopiesEverythingAndStandsOnTheNewProject) {
    fillOldAndMakeNew();
    ASSERT_TRUE(database.SaveAsDb("P", "Q")) << errors.join('\n').toStdString();
    EXPECT_EQ(sql::scalar({}, "SELECT DATABASE()").toString(), "Q");
    EXPECT_EQ(sql::scalar({}, "SELECT ID_Name FROM RLY_RUD_TEM").toString(), "it's \\ 站");
    EXPECT_EQ(sql::scalar({}, "SELECT Case_Name FROM RLY_CASE_RLY").toString(), "作业");
    EXPECT_EQ(sql::scalar({}, "SELECT SUM(Rdz) FROM RLY_RDZTEM").toDouble(), 0.8 + 9999999.999999);
    EXPECT_EQ(count("RTYPE", tables::ruleConnection), 3);
    EXPECT_EQ(sql::scalar({}, "SELECT CDz FROM RLY_RLYDSP").toString(), "own");
    EXPECT_EQ(count("RLY_RLYDSP"), 1);
    EXPECT_TRUE(messages.contains("另存数据表RLY_RUD_TEM成功!"));
    EXPECT_EQ(messages.last(), "另存工程成功");
    EXPECT_FALSE(QSqlDatabase::contains(tables::oldRelayConnection));
    ASSERT_TRUE(database.ConnectToBaseDb("P")) << "the old project is there still";
    EXPECT_EQ(count("RLY_RUD"), 1);
    ASSERT_TRUE(database.ConnectToBaseDb("Q")) << "the new one counts as complete";
}

TEST_F(SaveAs, KeepsTheWorkingCopiesThatAreThere) {
    ASSERT_TRUE(addRelay(1, "before") && CRDatabase::BuildTable("RLY_RUD_TEM", 218, 1));
    ASSERT_TRUE(sql::Query().exec("UPDATE RLY_RUD SET RNo=2"));
    ASSERT_TRUE(sql::Query().exec("DROP TABLE RLY_KFINF"));
    fillOldAndMakeNew();
    ASSERT_TRUE(database.SaveAsDb("P", "Q"));
    EXPECT_EQ(sql::scalar({}, "SELECT RNo FROM RLY_RUD_TEM").toInt(), 1);
    EXPECT_EQ(count("RLY_RUD"), 2);
    EXPECT_EQ(count("RLY_KFINF"), 0);
}

TEST_F(SaveAs, FailureRemovesTheNewProjectAndReturnsToTheOld) {
    fillOldAndMakeNew();
    ASSERT_TRUE(sql::Query(tables::serverConnection).exec("DROP TABLE P.RLY_CASEINF"));
    EXPECT_FALSE(database.SaveAsDb("P", "Q"));
    EXPECT_TRUE(errors.contains("另存数据表RLY_CASEINF失败!") && errors.contains("另存工程失败"));
    EXPECT_EQ(sql::scalar({}, "SELECT DATABASE()").toString(), "P");
    EXPECT_EQ(count("RTYPE", tables::ruleConnection), 3);
    EXPECT_FALSE(hasDatabase("Q") || hasDatabase("QTEMRLYRULE"));
    EXPECT_FALSE(QSqlDatabase::contains(tables::oldRelayConnection));
}

TEST_F(SaveAs, EndedInTheMiddleLeavesNothingThatLooksWhole) {
    fillOldAndMakeNew();
    WinDockFeedback::setReceiver([](const char* text, int) {
        if (QString::fromUtf8(text) == "另存数据表RLY_RUD成功!") throw std::runtime_error("killed");
    });
    EXPECT_THROW(database.SaveAsDb("P", "Q"), std::runtime_error);
    WinDockFeedback::setReceiver([this](const char* text, int) { errors << QString::fromUtf8(text); });
    EXPECT_FALSE(database.ConnectDB("Q", {}, true));
    EXPECT_EQ(errors.last(), "数据库Q没有建立完整，不能打开，请删除后重新建立");
    EXPECT_FALSE(database.ConnectDB("QTEMRLYRULE", {}, true));
    ASSERT_TRUE(database.ConnectToBaseDb("P"));
    EXPECT_EQ(count("RLY_RUD") + count("RLY_RDZTEM"), 3);
}

TEST_F(SaveAs, WithEqualOrUnknownNamesTouchesNothing) {
    ASSERT_TRUE(addRelay(1, "L1"));
    EXPECT_FALSE(database.SaveAsDb("P", "P"));
    EXPECT_EQ(errors, QStringList{"不能另存为同名工程"});
    EXPECT_FALSE(database.SaveAsDb("absent", "P"));
    EXPECT_EQ(errors.last(), "不能另存工程");
    EXPECT_EQ(count("RLY_RUD"), 1);
}
