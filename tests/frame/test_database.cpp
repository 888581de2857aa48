#include "platform/sql/Sql.h"
#include "tests/frame/ServerFixture.h"

class Database : public ServerFixture {};

TEST_F(Database, BuildsAllCopies) {
    EXPECT_TRUE(database.BuildTmpTb("P"));
    EXPECT_TRUE(errors.isEmpty()) << errors.join('\n').toStdString();
}
