#pragma once

#include <gtest/gtest.h>

#include <QStringList>
#include <QTemporaryDir>

#include "platform/host/WinDockFeedback.h"
#include "platform/rtdb/dbCursor.h"
#include "platform/server/Server.h"
#include "platform/sql/Sql.h"

/// An empty project database on the default connection and an empty real-time file; messages of the dock are collected.
class HostFixture : public testing::Test {
  protected:
    void SetUp() override {
        WinDockFeedback::setReceiver([this](const char* text, int) { messages << QString::fromUtf8(text); });
        QString error;
        ASSERT_TRUE(server::openConnection("QMYSQL3", "mysql", "", "", "", "", &error)) << error.toStdString();
        sql::Query query;
        ASSERT_TRUE(query.exec("DROP DATABASE IF EXISTS HOSTTEST"));
        ASSERT_TRUE(query.exec("CREATE DATABASE HOSTTEST " + server::databaseOptions()));
        ASSERT_TRUE(server::openConnection("QMYSQL3", "HOSTTEST", "", "", "", "", &error)) << error.toStdString();
        ASSERT_TRUE(realTime.open(file(), &error)) << error.toStdString();
    }
    void TearDown() override { WinDockFeedback::setReceiver({}); }

    [[nodiscard]] QString file() const { return folder.path() + "/test.rtdb"; }
    template <class Record>
    std::vector<Record> records(const dbQuery& query = {}) {
        std::vector<Record> found;
        dbCursor<Record> cursor(realTime);
        cursor.select(query);
        while (cursor.next()) found.push_back(*cursor.get());
        return found;
    }
    /// The one record with this id.
    template <class Record>
    Record record(const QString& id) {
        const auto found = records<Record>(dbQuery() << "id=" << id);
        EXPECT_EQ(found.size(), 1U) << id.toStdString();
        return found.size() == 1 ? found.front() : Record();
    }

    QTemporaryDir folder;
    dbDatabase realTime;
    QStringList messages;
};
