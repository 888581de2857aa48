
#include "programs/study/ModeStore.h"
#include "tests/workflow/WorkflowFixture.h"

class Modes : public WorkflowFixture {
  protected:
    static OperatingModeRecord mode(const QString& name) {
        OperatingModeRecord made;
        made.SysName = name;
        made.rows = {{1, "L1", "A", "B", 0, 0, "0.01", "0.2"}};
        return made;
    }
    QString refusalOf(OperatingModeRecord refused) {
        errors.clear();
        return ModeStore::save(refused) ? QString("saved") : errors.join('|');
    }
};

TEST_F(Modes, AreNumberedBehindTheHighestInUse) {
    OperatingModeRecord first = mode("大"), second = mode("小"), third = mode("检修");
    ASSERT_TRUE(ModeStore::save(first) && ModeStore::save(second) && ModeStore::save(third));
    EXPECT_EQ(first.SysNo, 1);
    EXPECT_EQ(third.SysNo, 3);
    ASSERT_TRUE(ModeStore::remove(first.SysNo));
    OperatingModeRecord fourth = mode("新");
    ASSERT_TRUE(ModeStore::save(fourth));
    EXPECT_EQ(fourth.SysNo, 4);
    EXPECT_EQ(rows("SELECT SysName FROM RLY_RSYSMODE ORDER BY SysName").size(), 3);
}

TEST_F(Modes, ARefusedModeSaysWhyAndIsNotStored) {
    OperatingModeRecord taken = mode("大");
    ASSERT_TRUE(ModeStore::save(taken));
    EXPECT_EQ(refusalOf(mode("大")), "运行方式已经存在");
    EXPECT_EQ(refusalOf(mode("  ")), "运行方式名不能为空");
    EXPECT_EQ(refusalOf(mode("*NEW_VALUE*")), "运行方式名不能为*NEW_VALUE*");
    OperatingModeRecord bad = mode("小");
    bad.rows.clear();
    EXPECT_EQ(refusalOf(bad), "运行方式内容不能为空");
    bad.rows = {{1, "L1", "A", "B", 0, 0, "0", "0"}, {1, "L1", "A", "B", 0, 0, "x", "0"}};
    EXPECT_EQ(refusalOf(bad), "第2行,R的输入类型有错误");
    bad.rows[1].R = "0";
    bad.rows[1].X = "nan";
    EXPECT_EQ(refusalOf(bad), "第2行,X的输入类型有错误");
    bad.rows[1] = {1, "L1", "A", " ", 0, 0, "0", "0"};
    EXPECT_EQ(refusalOf(bad), "第2行,支路J侧节点名不能为空");
    EXPECT_EQ(count("RLY_RSYSMODEDLS"), 1);
    EXPECT_EQ(count("RLY_RSYSMODE"), 1);
}

TEST_F(Modes, ASaveThatTheServerRefusesKeepsTheOldRows) {
    OperatingModeRecord kept = mode("大");
    ASSERT_TRUE(ModeStore::save(kept));
    OperatingModeRecord tooGreat = kept;
    tooGreat.rows[0].X = "1e9";
    EXPECT_FALSE(ModeStore::save(tooGreat));
    EXPECT_EQ(rows("SELECT SysName,X FROM RLY_RSYSMODEDLS"), QStringList{"大,0.2"});
    EXPECT_EQ(count("RLY_RSYSMODE"), 1);
}

TEST_F(Modes, ACutBranchHasTheGreatestImpedance) {
    OperatingModeRecord cut = mode("切除");
    cut.rows[0].Flg = 1;
    ASSERT_TRUE(ModeStore::save(cut));
    EXPECT_EQ(rows("SELECT Flg,R,X FROM RLY_RSYSMODEDLS"), QStringList{"1,9999999.999999,9999999.999999"});
}

TEST_F(Modes, ImportedModesReplaceThoseOfTheSameName) {
    host::OperatingMode imported;
    imported.name = "最大方式";
    imported.changes.push_back({1, "L1", "A", "B", false, false, 0.01, 0.3});
    ASSERT_TRUE(ModeStore::saveImported({imported}));
    imported.changes.push_back({0, "L1", "A", "B", true, false, 0, 0});
    ASSERT_TRUE(ModeStore::saveImported({imported}));
    const auto modes = ModeStore::list();
    ASSERT_EQ(modes.size(), 1);
    EXPECT_EQ(modes[0].SysNo, 1);
    EXPECT_EQ(modes[0].rows.size(), 2);
    imported.changes.back().element.clear();
    EXPECT_FALSE(ModeStore::saveImported({imported}));
    EXPECT_EQ(ModeStore::list()[0].rows.size(), 2);
}

TEST_F(Modes, ARenamedModeLeavesNoHeadBehind) {
    OperatingModeRecord renamed = mode("旧名");
    ASSERT_TRUE(ModeStore::save(renamed));
    renamed.SysName = "新名";
    ASSERT_TRUE(ModeStore::save(renamed));
    EXPECT_EQ(rows("SELECT SysName FROM RLY_RSYSMODE"), QStringList{"新名"});
    EXPECT_EQ(ModeStore::numberOf("旧名"), 0);
}
