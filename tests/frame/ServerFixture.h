#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>
#include <memory>

#include "platform/host/WinDockFeedback.h"
#include "platform/server/Server.h"
#include "programs/frame/CRDatabase.h"
#include "programs/frame/TableNames.h"
#include "tests/platform/PrivateServer.h"

/// A server of its own for a test program: make one in main() before the tests run. Folders are temporary.
class TestServer {
  public:
    TestServer() {
        hold_ = server::Hold::acquire(&error_);
        if (!hold_) ADD_FAILURE() << error_.toStdString();
    }
    [[nodiscard]] bool runs() const { return hold_ != nullptr; }

  private:
    PrivateServer folders_;
    QString error_;
    std::unique_ptr<server::Hold> hold_;
};

/// A fresh project for every test: databases "P" (default connection) and "PTEMRLYRULE" ("RLYRULE"), both with all
/// their tables, and no rows. Messages to the dock are collected in `messages`.
class ServerFixture : public testing::Test {
  protected:
    void SetUp() override {
        WinDockFeedback::setReceiver([this](const char* text, int level) {
            (level > WinDockFeedback::Diagram ? errors : messages) << QString::fromUtf8(text);
        });
        ASSERT_TRUE(database.ConnectDB("mysql", tables::serverConnection, true));
        ASSERT_TRUE(database.ConnectDB("PTEMRLYRULE", tables::ruleConnection, false));
        ASSERT_TRUE(database.ConnectDB("P", tables::relayConnection, false));
        ASSERT_TRUE(tables::CreateRuleTables(tables::ruleConnection));
        ASSERT_TRUE(database.BuildNewTable("P"));
        messages.clear();
        errors.clear();
    }
    void TearDown() override {
        database.DeleteDb("P");
        WinDockFeedback::setReceiver({});
    }

    CRDatabase database{"QMYSQL3", "", "", ""};
    QStringList messages;  ///< information and diagram lines
    QStringList errors;    ///< warnings and errors
};
