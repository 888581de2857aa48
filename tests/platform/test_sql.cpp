#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/server/Server.h"
#include "platform/sql/Sql.h"
#include "tests/platform/Dock.h"
#include "tests/platform/PrivateServer.h"

namespace {

class Sql : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        folders = std::make_unique<PrivateServer>();
        QString error;
        held = server::Hold::acquire(&error);
        ASSERT_TRUE(held) << error.toStdString();
        ASSERT_TRUE(server::openConnection("QMYSQL3", "mysql", {}, {}, {}, {}, &error)) << error.toStdString();
        sql::Query().exec("CREATE DATABASE t" + server::databaseOptions());
        ASSERT_TRUE(server::openConnection("QMYSQL3", "t", {}, {}, {}, {}, &error)) << error.toStdString();
    }
    static void TearDownTestSuite() {
        server::closeConnection({});
        held.reset();
        folders.reset();
    }
    void SetUp() override {
        ASSERT_TRUE(sql::Query().exec("DROP TABLE IF EXISTS rows_"));
        ASSERT_TRUE(sql::Query().exec("CREATE TABLE rows_ " + layout.columnsText()));
    }

    static QVector<QVariantList> numbered(int count) {
        QVector<QVariantList> rows;
        for (int i = 0; i < count; ++i) rows << QVariantList{i, QString("名称%1").arg(i)};
        return rows;
    }
    static int count() { return sql::scalar({}, "SELECT COUNT(*) FROM rows_", {}, -1).toInt(); }

    static inline std::unique_ptr<PrivateServer> folders;
    static inline std::unique_ptr<server::Hold> held;
    sql::Layout layout{"rows_",
                       {{"id", "int(8) unsigned"},
                        {"name", "char(20) BINARY"},
                        {"x", "double(13,6)"},
                        {"note", "char(20)", {}, true},
                        {"y", "double"}},
                       {"PRIMARY KEY(id)"}};
    Dock dock;
};

}  // namespace

TEST_F(Sql, TextsOfAllKindsComeBackAsTheyWere) {
    const QStringList texts{"it's",
                            "\"quoted\"",
                            "back\\slash\\",
                            "\\'",
                            "100%",
                            "%_?",
                            "  leading",
                            "中文'\\%",
                            "? and ?",
                            "`tick`",
                            "-- /* #;",
                            "",
                            "东南西北中发白梅兰竹菊春夏秋冬甲乙丙"};
    ASSERT_EQ(texts.last().size(), 18);
    QVector<QVariantList> rows;
    for (int i = 0; i < texts.size(); ++i) rows << QVariantList{i, texts[i], texts[i].toUtf8()};
    rows << QVariantList{99, QString(20, QChar(0x9F98)), QVariant()};
    ASSERT_TRUE(sql::insertRows({}, "rows_", {"id", "name", "note"}, rows)) << dock.lines.join(' ').toStdString();
    for (int i = 0; i < texts.size(); ++i) {
        sql::Query query;
        ASSERT_TRUE(query.exec("SELECT id,note FROM rows_ WHERE name=?", {texts[i]}) && query.next());
        EXPECT_EQ(query.number(0), i) << texts[i].toStdString();
        EXPECT_EQ(query.text(1), texts[i]);
    }
    sql::Query longest;
    ASSERT_TRUE(longest.exec("SELECT name,note FROM rows_ WHERE id=?", {99}) && longest.next());
    EXPECT_EQ(longest.text(0), QString(20, QChar(0x9F98)));
    EXPECT_TRUE(longest.isNull(1));
}

TEST_F(Sql, NamesCompareByCase) {
    ASSERT_TRUE(sql::insertRows({}, "rows_", {"id", "name", "note"}, {{1, "Line", "Line"}}));
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM rows_ WHERE name=?", {"line"}).toInt(), 0);
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM rows_ WHERE note=?", {"line"}).toInt(), 1);
}

TEST_F(Sql, NumbersKeepEveryDigit) {
    const double numbers[] = {0.1 + 0.2, 1.0 / 3, -2.5e-300, 9999999.999999, 0.8, 1e17, 0};
    for (const double number : numbers) {
        ASSERT_TRUE(sql::Query().exec("REPLACE INTO rows_ (id,y) VALUES (?,?)", {1, number}));
        EXPECT_EQ(sql::scalar({}, "SELECT y FROM rows_").toDouble(), number);
    }
    sql::Query query;
    ASSERT_TRUE(sql::Query().exec("UPDATE rows_ SET x=?,y=?", {0.8, 9999999.999999}));
    ASSERT_TRUE(query.exec("SELECT x,y FROM rows_") && query.next());
    EXPECT_EQ(query.raw(0), "0.8");
    EXPECT_EQ(query.raw(1), "9999999.999999");
}

TEST_F(Sql, WhatCannotBeStoredIsRefusedAndTold) {
    const QVariantList bad[] = {{-1, "n", 0},
                                {1, QString(21, 'x'), 0},
                                {1, "\xF0\x9F\x92\xA1", 0},
                                {1, "n", 1e9},
                                {1, "n", std::numeric_limits<double>::quiet_NaN()},
                                {1, "n"}};
    for (const QVariantList& values : bad) {
        dock.lines.clear();
        EXPECT_FALSE(sql::Query().exec("INSERT INTO rows_ (id,name,x) VALUES (?,?,?)", values));
        ASSERT_EQ(dock.lines.size(), 1);
        EXPECT_TRUE(dock.lines[0].contains("INSERT INTO rows_"));
    }
    EXPECT_EQ(count(), 0);
    dock.lines.clear();
    EXPECT_FALSE(sql::Query().quietly().exec("SELECT nothing"));
    EXPECT_TRUE(dock.lines.isEmpty());
}

TEST_F(Sql, ManyRowsGoInOneStatementAndAllOrNone) {
    const auto inserts = [] {
        sql::Query query;
        return query.exec("SHOW SESSION STATUS LIKE 'Com_insert'") && query.next() ? query.number(1) : -1;
    };
    const int before = inserts();
    ASSERT_TRUE(sql::insertRows({}, "rows_", {"id", "name"}, numbered(1000)));
    EXPECT_EQ(inserts(), before + 1);
    EXPECT_EQ(count(), 1000);
    ASSERT_TRUE(sql::Query().exec("DELETE FROM rows_ WHERE id<99000"));
    QVector<QVariantList> tooMany = numbered(100000);  // more than one statement holds
    tooMany.last()[0] = 0;
    EXPECT_FALSE(sql::insertRows({}, "rows_", {"id", "name"}, tooMany));
    EXPECT_EQ(count(), 0);
    tooMany.last()[0] = 99999;
    EXPECT_TRUE(sql::insertRows({}, "rows_", {"id", "name"}, tooMany));
    EXPECT_EQ(count(), 100000);
}

TEST_F(Sql, TransactionsUndoWhatIsNotCommittedInsideToo) {
    const auto insert = [](int id) { return sql::Query().exec("INSERT INTO rows_ (id) VALUES (?)", {id}); };
    {
        sql::Transaction whole;
        ASSERT_TRUE(insert(1));
    }
    EXPECT_EQ(count(), 0);
    {
        sql::Transaction outer;
        ASSERT_TRUE(insert(1));
        sql::Transaction inner;
        ASSERT_TRUE(insert(2) && inner.commit());
        EXPECT_TRUE(outer.commit());
    }
    EXPECT_EQ(count(), 2);
    {
        sql::Transaction outer;
        ASSERT_TRUE(insert(3));
        { sql::Transaction inner; }
        EXPECT_FALSE(outer.commit());
    }
    EXPECT_EQ(count(), 2);
}

TEST_F(Sql, EveryCharacterThatFitsIsStoredAndComesBack) {
    QVector<QVariantList> rows;
    for (char32_t code = 0x20; code < 0x10000; ++code) {
        const QString text = QString::fromUcs4(&code, 1) + '|';
        if (!(code >= 0xD800 && code < 0xE000) && sql::whyNotStorable(text, 20).isEmpty())
            rows << QVariantList{static_cast<int>(code), text};
    }
    ASSERT_GT(rows.size(), 21000);
    ASSERT_TRUE(sql::insertRows({}, "rows_", {"id", "name"}, rows));
    sql::Query query;
    ASSERT_TRUE(query.exec("SELECT id,name FROM rows_"));
    int wrong = 0;
    while (query.next()) {
        const char32_t code = static_cast<char32_t>(query.number(0));
        wrong += query.text(1) != QString::fromUcs4(&code, 1) + '|';
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(Sql, SaysWhyATextIsNotStorable) {
    EXPECT_EQ(sql::whyNotStorable("  东城'\\%", 20), "");
    EXPECT_EQ(sql::whyNotStorable(QString(20, QChar(0x4E2D)), 20), "");
    EXPECT_EQ(sql::whyNotStorable(QString(21, QChar(0x4E2D)), 20), "超过20个字符");
    EXPECT_EQ(sql::whyNotStorable("a ", 20), "末尾有空格");
    EXPECT_EQ(sql::whyNotStorable("a\tb", 20), "含有控制字符");
    EXPECT_EQ(sql::whyNotStorable(QString("Malm\u00F6"), 20), "含有GBK字符集以外的字符");
    EXPECT_EQ(sql::toGbk("中a"), QByteArray("\xD6\xD0"
                                            "a"));
    EXPECT_EQ(sql::fromGbk("\xD6\xD0"), "中");
}
