#include <QRadioButton>
#include <QScrollBar>
#include <QSignalSpy>

#include "programs/frame/ui/CMorvaneObject.h"
#include "programs/workflow/WinDlgSaveDZ.h"
#include "programs/workflow/ui/SettingTable.h"
#include "tests/gui/workflow/WorkflowWindows.h"

namespace {

/// Relays 1 and 2 belong to the case, 3 does not.
class SaveDialog : public WorkflowWindows {
  protected:
    void SetUp() override {
        WorkflowWindows::SetUp();
        installAt({"青白I", "青龙", "青白II"}, 3);
        makeCase(3, {1, 2}, 1);
        exec("UPDATE RLY_RDZ SET NRdz11=100+RNo,NRdz12=1,NRdz52=9,BRdz11=50+RNo,BRdz12=0.5,BRdz52=7 WHERE Cdz!='L'");
        ASSERT_TRUE(cases.LoadCaseRelays());
        exec("UPDATE RLY_RLYOBJ_TEM SET NDz11=200+10*RNo+DzNo,NDz12=2,NDz52=3");
        CMorvaneObject::iRlyDspFlg = 0;
        errors.clear();
    }
    void TearDown() override {
        CMorvaneObject::iRlyDspFlg = 0;
        WorkflowWindows::TearDown();
    }
    /// What stands in RLY_RDZ for a setting: current values, then backups, of part 1 primary and secondary and of part
    /// 5 secondary.
    static std::string record(int relay, const char* cdz) {
        return value(
                   "SELECT CONCAT_WS(' ',NRdz11+0e0,NRdz12+0e0,NRdz52+0e0,BRdz11+0e0,BRdz12+0e0,BRdz52+0e0) FROM "
                   "RLY_RDZ WHERE RNo=? AND Cdz=?",
                   {relay, cdz})
            .toStdString();
    }
    struct Shown {
        WinDlgSaveDZ dialog{3};
        SettingTable& fresh = part<SettingTable>(dialog, "table_Newdz");
        SettingTable& old = part<SettingTable>(dialog, "table_OldDz");
        QSignalSpy rejected{&dialog, &QDialog::rejected};

        Shown() {
            dialog.show();
            EXPECT_TRUE(QTest::qWaitForWindowExposed(&dialog));
        }
        /// Whether the dialog closed, and by reject().
        [[nodiscard]] bool left() const { return !dialog.isVisible() && rejected.size() == 1; }
    };
};

}  // namespace

TEST_F(SaveDialog, ShowsNewAndOldSettingsAndGoesThroughThemTogether) {
    Shown shown;
    auto& [dialog, fresh, old, rejected] = shown;
    EXPECT_EQ(fresh.text(0, 0), "青白I线 青山青白I线侧 ");
    EXPECT_EQ(fresh.text(0, 2), "211");
    EXPECT_EQ(old.text(0, 2), "101");
    EXPECT_EQ(fresh.text(0, fresh.settings().changeColumn(1)), "+110 (+108.9%)");
    takeScreenshot(dialog, "save_settings");
    fresh.sortByColumn(2, Qt::DescendingOrder);
    for (int row = 0; row < fresh.model()->rowCount(); ++row)
        for (const int column : {old.settings().relayColumn(), old.settings().cdzColumn()})
            EXPECT_EQ(fresh.model()->index(row, column).data(), old.model()->index(row, column).data());
    EXPECT_EQ(fresh.model()->index(0, 2).data(), "222");
    old.selectRow(1);
    ASSERT_EQ(fresh.selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(fresh.selectionModel()->selectedRows()[0].row(), 1);
    dialog.resize(700, 260);
    QApplication::processEvents();
    ASSERT_GT(fresh.verticalScrollBar()->maximum(), 0);
    fresh.verticalScrollBar()->setValue(1);
    EXPECT_EQ(old.verticalScrollBar()->value(), 1);
}

TEST_F(SaveDialog, TheMeasuresChangeWhatIsShownOnly) {
    Shown shown;
    const QString before = contents("RLY_RLYOBJ_TEM") + contents("RLY_RDZ");
    QTest::mouseClick(&part<QRadioButton>(shown.dialog, "radioButton_Erci"), Qt::LeftButton, {}, {8, 8});
    EXPECT_EQ(shown.fresh.text(0, 2), "2");
    EXPECT_EQ(shown.old.text(0, 2), "1");
    QTest::mouseClick(&part<QRadioButton>(shown.dialog, "radioButton_Yici"), Qt::LeftButton, {}, {8, 8});
    EXPECT_EQ(shown.fresh.text(0, 2), "211");
    QTest::keyClick(&shown.dialog, Qt::Key_Return);
    EXPECT_TRUE(shown.dialog.isVisible()) << "Enter saves nothing";
    QTest::keyClick(&shown.dialog, Qt::Key_Escape);
    EXPECT_TRUE(shown.left());
    EXPECT_EQ(CMorvaneObject::iRlyDspFlg, 1);
    EXPECT_EQ(contents("RLY_RLYOBJ_TEM") + contents("RLY_RDZ"), before);
}

TEST_F(SaveDialog, SavesWithAndWithoutAChangeOfTheBackup) {
    const std::string length = record(1, "L"), outside = record(3, "Idz");
    Shown keeping;
    press(keeping.dialog, "pushButton_SaveNotChangeHB");
    EXPECT_TRUE(keeping.left());
    EXPECT_EQ(CMorvaneObject::iRlyDspFlg, 1);
    EXPECT_EQ(record(1, "Idz"), "211 2 3 51 0.5 7");
    CMorvaneObject::iRlyDspFlg = 0;
    Shown changing;
    press(changing.dialog, "pushButton_SaveChangeHB");
    EXPECT_TRUE(changing.left());
    EXPECT_EQ(CMorvaneObject::iRlyDspFlg, 1);
    EXPECT_EQ(record(2, "t"), "222 2 3 102 1 9");
    EXPECT_EQ(record(1, "L"), length);
    EXPECT_EQ(record(3, "Idz"), outside);
    EXPECT_EQ(said(), "");
}

TEST_F(SaveDialog, ARefusedSaveIsToldAndLeavesTheDialogOpen) {
    exec("ALTER TABLE RLY_RDZ ADD CONSTRAINT greatest CHECK (NRdz11<220)");
    const QString before = contents("RLY_RDZ");
    Shown shown;
    for (const char* button : {"pushButton_SaveChangeHB", "pushButton_SaveNotChangeHB"}) {
        press(shown.dialog, button);
        EXPECT_TRUE(shown.dialog.isVisible());
        EXPECT_THAT(said(), testing::HasSubstr("定值没有保存，保护的定值没有改变"));
        EXPECT_EQ(contents("RLY_RDZ"), before);
    }
    EXPECT_EQ(CMorvaneObject::iRlyDspFlg, 0);
    press(shown.dialog, "pushButton_Cancel");
    EXPECT_TRUE(shown.left());
}

TEST_F(SaveDialog, ACaseWithoutSettingsHasNothingToSave) {
    exec("DELETE FROM RLY_RLYOBJ_TEM");
    Shown shown;
    EXPECT_FALSE(part<QPushButton>(shown.dialog, "pushButton_SaveChangeHB").isEnabled());
    EXPECT_FALSE(part<QPushButton>(shown.dialog, "pushButton_SaveNotChangeHB").isEnabled());
    EXPECT_EQ(part<QPushButton>(shown.dialog, "pushButton_SaveChangeHB").toolTip(), "没有可以保存的定值");
}
