#include <QFile>
#include <QLabel>
#include <QStandardPaths>

#include "programs/frame/ui/PaintTable.h"
#include "programs/workflow/WinDlgEnsureKlmP.h"
#include "tests/gui/workflow/WorkflowWindows.h"

using testing::HasSubstr;

namespace {

enum Column { Note, New, Old, RuleNo };

/// A sensitivity run of two zero-sequence relays has ended; its results stand under case number 0 and nothing is
/// stored.
class Confirmation : public WorkflowWindows {
  protected:
    void SetUp() override {
        WorkflowWindows::SetUp();
        installAt({"青白I", "青龙"}, 3);
        makeCase(3, {1, 2}, 1);
        ASSERT_TRUE(cases.setSensitivityModes({ModeStore::numberOf("最小方式")}));
        ASSERT_EQ(start(), "ready") << said();
        RunSession session(*cases.current(), places);
        session.setParametersToConfirm(true);
        ASSERT_TRUE(session.open());
        ASSERT_EQ(run(session, RunSession::Sensitivity), "complete") << said();
        ASSERT_TRUE(session.ensure());
        ASSERT_EQ(value("SELECT DISTINCT RFault FROM RLY_FKLM"), "1");
        said();
    }
    /// What the run gave and what is stored do not differ.
    static bool resultsAreStored() {
        return value("SELECT COUNT(*) FROM RLY_RDZTEM WHERE Case_No=0 AND RDz>0").toInt() > 2 &&
               value(
                   "SELECT COUNT(*) FROM RLY_RDZTEM t LEFT JOIN RLY_FKLM f USING (ID_Name,I_Name,J_Name,Side,RuleNo)"
                   " WHERE t.Case_No=0 AND NOT f.RFault<=>t.RDz") == "0";
    }
    static QString storedOf(const QString& line, const QString& rule) {
        return value("SELECT RFault FROM RLY_FKLM WHERE ID_Name=? AND Side=1 AND RuleNo=?", {line, rule});
    }
    static void type(RecordTable& table, int row, const QString& text) {
        table.setFocus();
        table.setCurrentCell(row, New);
        QTest::keyClick(&table, Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClicks(editor, text);
    }
    static void click(QTableWidget& table, int row) {
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualItemRect(table.item(row, 0)).center());
        QApplication::processEvents();
    }
    WinDlgEnsureKlmP& open() {
        dialog_ = std::make_unique<WinDlgEnsureKlmP>(3, "线路零序电流保护", 0, places.workDir);
        dialog_->show();
        QApplication::setActiveWindow(dialog_.get());
        placesTable = &part<PaintTable>(*dialog_, "table_gBPos_Pos");
        values = &part<RecordTable>(*dialog_, "table_gBKlmp_Para");
        return *dialog_;
    }
    [[nodiscard]] bool isShown(int row) const {
        return placesTable->currentRow() == row && placesTable->isPainted(row, 0) &&
               !placesTable->isPainted(1 - row, 0);
    }
    std::unique_ptr<WinDlgEnsureKlmP> dialog_;
    PaintTable* placesTable = nullptr;
    RecordTable* values = nullptr;
};

TEST_F(Confirmation, ShowsWhatTheRunGaveBesideWhatStoodBeforeAndStoresItAsItCame) {
    auto& dialog = open();
    takeScreenshot(dialog, "sensitivity-confirmation");
    EXPECT_TRUE(resultsAreStored());
    ASSERT_EQ(placesTable->rowCount(), 2);
    EXPECT_TRUE(isShown(0));
    EXPECT_THAT(placesTable->text(0, 0).toStdString(), HasSubstr("青白I"));
    ASSERT_GE(values->rowCount(), 2);
    for (int row = 0; row < values->rowCount(); ++row) {
        EXPECT_EQ(values->text(row, New), storedOf("青白I", values->text(row, RuleNo)));
        EXPECT_GT(values->text(row, New).toDouble(), 0);
        EXPECT_EQ(values->text(row, Old), "1");
        EXPECT_FALSE(values->text(row, Note).isEmpty());
        EXPECT_GT(values->text(row, RuleNo).toInt(), row > 0 ? values->text(row - 1, RuleNo).toInt() : 0);
        for (const int column : {Note, Old}) EXPECT_FALSE(values->item(row, column)->flags() & Qt::ItemIsEditable);
    }
    press(dialog, "pushButton_Ensure");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_TRUE(resultsAreStored());
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_RKLMTEM_TEM k JOIN RLY_FKLM f USING (ID_Name,I_Name,J_Name,Side,RuleNo)"
                    " WHERE k.RFault1!=f.RFault OR k.RFault1=1"),
              "0");
    EXPECT_NE(value("SELECT COUNT(*) FROM RLY_RKLMTEM_TEM"), "0");
    EXPECT_EQ(value("SHOW TABLES LIKE 'RLY_FKLM\\_TEM'"), "-");
    EXPECT_EQ(said(), "");
}

TEST_F(Confirmation, CancelTakesBackAlsoWhatTheOpeningStored) {
    const QString before = contents("RLY_FKLM");
    for (const bool byKey : {false, true}) {
        auto& dialog = open();
        type(*values, 0, "55");
        click(*placesTable, 1);
        ASSERT_EQ(storedOf("青白I", "21"), "55");
        byKey ? QTest::keyClick(&dialog, Qt::Key_Escape) : press(dialog, "pushButton_Cancel");
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(contents("RLY_FKLM"), before);
        EXPECT_EQ(value("SHOW TABLES LIKE 'RLY_FKLM\\_TEM'"), "-");
    }
}

TEST_F(Confirmation, MovingOnStoresThePlaceLeftAndARefusedValueStaysInHand) {
    auto& dialog = open();
    const QString computed = storedOf("青白I", "21");
    for (const char* text : {"0", "-3", "abc", "nan", "1e9", "0.0000001", ""}) {
        type(*values, 0, text);
        click(*placesTable, 1);
        EXPECT_TRUE(isShown(0)) << text;
        EXPECT_EQ(said(), "参量类型错误或数值小于等于零") << text;
        EXPECT_EQ(storedOf("青白I", "21"), computed) << text;
        EXPECT_EQ(values->text(0, New), text);
        EXPECT_TRUE(part<QLabel>(dialog, "textLabel_Complaint").isVisible());
    }
    press(dialog, "pushButton_Ensure");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(said(), "参量类型错误或数值小于等于零");
    type(*values, 0, "123.456");
    click(*placesTable, 1);
    EXPECT_TRUE(isShown(1));
    EXPECT_EQ(storedOf("青白I", "21"), "123.456");
    EXPECT_FALSE(part<QLabel>(dialog, "textLabel_Complaint").isVisible());
    QTest::keyClick(placesTable, Qt::Key_Up);
    QApplication::processEvents();
    EXPECT_TRUE(isShown(0));
    EXPECT_EQ(values->text(0, New), "123.456");
    type(*values, 0, "77");
    press(dialog, "pushButton_Ensure");  // takes what stands in the open editor
    EXPECT_EQ(value("SELECT DISTINCT RFault1 FROM RLY_RKLMTEM_TEM WHERE ID_Name='青白I' AND RuleNo=21"), "77");
}

TEST_F(Confirmation, AParameterWithoutAValueIsMarkedAndDoesNotKeepTheOthersFromBeingConfirmed) {
    exec("UPDATE RLY_RDZTEM SET RDz=0 WHERE Case_No=0 AND ID_Name='青龙' AND RuleNo=22");
    auto& dialog = open();
    auto& hint = part<QLabel>(dialog, "textLabel_Complaint");
    EXPECT_FALSE(placesTable->item(1, 0)->toolTip().isEmpty());
    EXPECT_TRUE(placesTable->item(0, 0)->toolTip().isEmpty());
    EXPECT_FALSE(hint.isVisible());
    click(*placesTable, 1);
    ASSERT_TRUE(isShown(1));
    takeScreenshot(dialog, "sensitivity-without-value");
    EXPECT_TRUE(hint.isVisible());
    EXPECT_THAT(hint.text().toStdString(), HasSubstr("没有算出值"));
    EXPECT_EQ(values->item(1, New)->toolTip(), "该参量没有算出值");
    EXPECT_TRUE(values->item(0, New)->toolTip().isEmpty());
    type(*values, 0, "77");  // another parameter of the place can be changed
    click(*placesTable, 0);
    ASSERT_TRUE(isShown(0));
    EXPECT_EQ(storedOf("青龙", "21") + "/" + storedOf("青龙", "22"), "77/0");
    click(*placesTable, 1);
    EXPECT_EQ(said(), "");
    type(*values, 1, "-1");  // what the user types has to be a value
    press(dialog, "pushButton_Ensure");
    ASSERT_TRUE(dialog.isVisible());
    EXPECT_EQ(said(), "参量类型错误或数值小于等于零");
    takeScreenshot(dialog, "sensitivity-refused");
    EXPECT_EQ(values->item(1, New)->toolTip(), "参量应为大于零的数值");
    type(*values, 1, "0");  // as it came
    press(dialog, "pushButton_Ensure");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(said(), "有参量没有算出值的保护位置: 1 处，其灵敏度没有结果");
    EXPECT_EQ(value("SELECT DISTINCT RFault2 FROM RLY_RKLMTEM_TEM WHERE ID_Name='青龙' AND DRuleNo=22"), "0");
}

TEST_F(Confirmation, AValueTypedForAParameterThatHadNoneIsStored) {
    exec("UPDATE RLY_RDZTEM SET RDz=0 WHERE Case_No=0 AND ID_Name='青龙'");
    auto& dialog = open();
    click(*placesTable, 1);
    for (int row = 0; row < values->rowCount(); ++row) type(*values, row, "4.5");
    click(*placesTable, 0);
    EXPECT_EQ(placesTable->item(1, 0)->toolTip(), "");
    press(dialog, "pushButton_Ensure");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(storedOf("青龙", "22"), "4.5");
    EXPECT_EQ(said(), "");
}

/// The relay at 东江变 looks into a line behind which there is no further one.
class ConfirmationAtTheEndOfTheNetwork : public Confirmation {
  protected:
    void SetUp() override {
        WorkflowWindows::SetUp();
        ASSERT_EQ(RelayStore::install({{place("青白I", 1), 3, 240, 2200, {}}, {place("东龙", 1), 3, 240, 2200, {}}}),
                  2);
        makeCase(3, {1, 2}, 1);
        ASSERT_TRUE(cases.setSensitivityModes({ModeStore::numberOf("最小方式")}));
        ASSERT_EQ(start(), "ready") << said();
    }
};

TEST_F(ConfirmationAtTheEndOfTheNetwork, WhatTheEngineGaveIsConfirmed) {
    RunSession session(*cases.current(), places);
    session.setParametersToConfirm(true);
    ASSERT_TRUE(session.open());
    ASSERT_EQ(run(session, RunSession::Sensitivity), "complete") << said();
    auto& dialog = open();
    click(*placesTable, 1);
    ASSERT_TRUE(isShown(1));
    takeScreenshot(dialog, "sensitivity-end-of-network");
    press(dialog, "pushButton_Ensure");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(resultsAreStored());
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_FKLM WHERE ID_Name='东龙' AND Side=1 AND RFault=0"), "1");
    EXPECT_EQ(said(), "有参量没有算出值的保护位置: 1 处，其灵敏度没有结果");
    ASSERT_TRUE(session.cancel());
}

TEST_F(Confirmation, ABookThatCannotBeWrittenOrShownIsTold) {
    auto& dialog = open();
    const QString book = places.workDir + "CalRef.ROT";
    QFile::remove(book);
    ASSERT_TRUE(QDir().mkdir(book));
    press(dialog, "pushButton_CalResult");
    EXPECT_EQ(said(), "生成计算书失败");
    ASSERT_TRUE(QDir().rmdir(book));
    if (!QStandardPaths::findExecutable("NotePad", {QCoreApplication::applicationDirPath()}).isEmpty())
        GTEST_SKIP() << "the viewer lies beside the test and would open a window that stays";
    press(dialog, "pushButton_CalResult");
    EXPECT_EQ(said(), "生成计算书失败");
    QFile written(book);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_THAT(sql::fromGbk(written.readAll()).toStdString(), HasSubstr("灵敏度计算用故障量计算"));
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(Confirmation, WithoutACopyNothingCanBeConfirmed) {
    exec("CREATE VIEW RLY_FKLM_TEM AS SELECT 1");  // cannot be replaced by a table
    const QString before = contents("RLY_FKLM");
    auto& dialog = open();
    EXPECT_FALSE(part<QPushButton>(dialog, "pushButton_Ensure").isEnabled());
    EXPECT_FALSE(part<QPushButton>(dialog, "pushButton_Ensure").toolTip().isEmpty());
    EXPECT_THAT(said(), HasSubstr("不能确认灵敏度参量"));
    press(dialog, "pushButton_Cancel");
    EXPECT_EQ(contents("RLY_FKLM"), before);
}

}  // namespace
