#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "platform/sql/Sql.h"
#include "programs/frame/CRDatabase.h"
#include "programs/frame/ProjectStore.h"
#include "programs/frame/TableNames.h"

namespace {

bool hasAllTables() {
    for (const tables::Definition& table : tables::definitions())
        if (!sql::Query(tables::connectionOf(table.group)).exec("SELECT 1 FROM " + sql::quotedName(table.layout.name)))
            return false;
    return true;
}

}  // namespace

TEST(Projects, AreWholeAndSeparateAfterOneWasSavedAsAnother) {
    const QTemporaryDir folder;
    ProjectStore projects(folder.path());
    const auto made = projects.create("东部电网", MORVANE_SOURCE_DIR "/data/rules");
    ASSERT_TRUE(made);
    EXPECT_TRUE(hasAllTables());
    ASSERT_TRUE(sql::Query().exec("INSERT INTO RLY_RUD (RNo) VALUES (1)"));
    ASSERT_TRUE(projects.saveAs("东部电网", "it's 100%"));
    EXPECT_TRUE(hasAllTables());
    ASSERT_TRUE(sql::Query().exec("INSERT INTO RLY_RUD (RNo) VALUES (2)"));
    ASSERT_TRUE(projects.open("东部电网"));
    EXPECT_TRUE(hasAllTables());
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM RLY_RUD").toInt(), 1);
    ASSERT_TRUE(projects.remove("东部电网"));
    EXPECT_EQ(projects.names(), QStringList{"it's 100%"});
    ASSERT_TRUE(projects.open("it's 100%"));
    EXPECT_EQ(sql::scalar({}, "SELECT COUNT(*) FROM RLY_RUD").toInt(), 2);
    EXPECT_TRUE(projects.remove("it's 100%"));
}
