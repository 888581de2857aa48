#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include "platform/sql/Sql.h"
#include "programs/frame/CRDatabase.h"
#include "programs/frame/ProjectClaim.h"
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

TEST(ProjectClaim, TellsWhoHasTheProjectUntilTheHolderGivesItUp) {
    const QTemporaryDir folder;
    const QString directory = folder.path() + "/";
    ProjectClaim::Holder holder;
    auto claim = ProjectClaim::take(directory, 0, &holder);
    ASSERT_TRUE(claim);
    EXPECT_FALSE(ProjectClaim::take(directory, 0, &holder));
    EXPECT_EQ(holder.pid, QCoreApplication::applicationPid());
    EXPECT_FALSE(holder.user.isEmpty() || holder.host.isEmpty() || !holder.since.isValid());
    EXPECT_TRUE(holder.text("it's %1").contains("it's %1")) << holder.text("it's %1").toStdString();
    claim.reset();
    EXPECT_TRUE(ProjectClaim::take(directory, 0, &holder));
    holder = {};
    EXPECT_FALSE(ProjectClaim::take(directory + "absent/", 0, &holder));
    EXPECT_EQ(holder.pid, 0);
}
