#include <gtest/gtest.h>

#include "platform/server/Server.h"
#include "platform/sql/Sql.h"

TEST(Server, Starts) {
    QString error;
    auto hold = server::Hold::acquire(&error);
    ASSERT_TRUE(hold) << error.toStdString();
    ASSERT_TRUE(server::openConnection("QMYSQL3", "mysql", {}, {}, {}, {}, &error)) << error.toStdString();
    EXPECT_EQ(sql::scalar({}, "SELECT ?", {QString("a'b\\c%d中")}).toString(), "a'b\\c%d中");
    server::closeConnection({});
}
