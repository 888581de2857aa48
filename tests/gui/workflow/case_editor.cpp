// Walking through cases, and what a save, a refusal, an undo and the end of the window leave.
#include <QRadioButton>
#include <QTableWidget>

#include "tests/gui/workflow/CaseEditor.h"

TEST_F(CaseEditor, ShowsTheCaseAskedForAndItsNeighbours) {
    store("零'序\\", 3, {1, 2});
    store("距离", 1, {3});
    open(2);
    EXPECT_EQ(caseName(), "距离");
    EXPECT_FALSE(part<QToolButton>(*editor, "ToolButton_NextRec").isEnabled());
    tool("ToolButton_PrevRec");
    EXPECT_EQ(caseName(), "零'序\\");
    EXPECT_EQ(relays(), "1,2");
    EXPECT_FALSE(part<QToolButton>(*editor, "ToolButton_FirstRec").isEnabled());
    tool("ToolButton_LastRec");
    EXPECT_EQ(relays(), "3");
    whenOpen([](QDialog& search) {
        part<QTableWidget>(search, "table_Key").selectRow(0);
        press(search, "pushButton_Ensure");
    });
    tool("ToolButton_SearchRec");
    EXPECT_EQ(caseName(), "零'序\\");
    whenOpen([](QDialog& search) { press(search, "pushButton_Cancel"); });
    tool("ToolButton_SearchRec");
    EXPECT_EQ(caseName(), "零'序\\");
    EXPECT_EQ(said(), "");
}

TEST_F(CaseEditor, TheFirstCaseGrowsFromNothingAndLeavesNoTraceOnCancel) {
    const QStringList before = everything();
    open();
    EXPECT_FALSE(part<QPushButton>(*editor, "pushButton_AddRly").isEnabled());
    EXPECT_FALSE(part<QPushButton>(*editor, "pushButton_AutoCal").toolTip().isEmpty());
    tool("ToolButton_InsertRec");
    EXPECT_EQ(caseName(), "作业1");
    EXPECT_EQ(part<QLabel>(*editor, "textLabel_CaseInf_FlowNM").text(), "基础方案:");
    pressed("Button_OK");
    EXPECT_EQ(said(), "请选择一个方案或潮流作业");
    choose("comboBox_CaseInf_FlowNM", 1);
    pressed("Button_OK");
    tool("ToolButton_InsertRec");
    EXPECT_EQ(said(), "作业内必须要有待整定保护|作业内必须要有待整定保护");
    EXPECT_EQ(caseName(), "作业1");
    auto& types = part<QComboBox>(*editor, "comboBox_RType");
    ASSERT_TRUE(types.isEnabled());
    choose("comboBox_RType", types.findData(3));
    EXPECT_FALSE(part<QPushButton>(*editor, "pushButton_DeleteRly").isEnabled());
    add({2, 1});
    EXPECT_FALSE(types.isEnabled());
    EXPECT_EQ(casesIn("RLY_CASEINF") + "/" + casesIn("RLY_CASE_RLY"), "1/");
    pressed("Button_Cancel");
    EXPECT_EQ(editor->result(), QDialog::Rejected);
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_RLYOBJ_TEM"), "0");
    EXPECT_EQ(copies(), 0);
    EXPECT_EQ(said(), "");
}

TEST_F(CaseEditor, ADeletedNewCaseTakesItsRowsAlong) {
    store("零序", 3, {1});
    open();
    tool("ToolButton_InsertRec");
    choose("comboBox_RType", part<QComboBox>(*editor, "comboBox_RType").findData(3));
    add({2});
    ASSERT_EQ(casesIn("RLY_CASEINF"), "1,2");
    tool("ToolButton_DeleteRec");
    EXPECT_EQ(casesIn("RLY_CASEINF"), "1");
    EXPECT_EQ(caseName() + relays(), "零序1");
    tool("ToolButton_DeleteRec");
    EXPECT_EQ(casesIn("RLY_CASEINF") + casesIn("RLY_CASE_RLY"), "");
    EXPECT_FALSE(part<QLineEdit>(*editor, "lineEdit_CaseInf_Name").isEnabled());
    EXPECT_EQ(table().settings().rowCount(), 0);
    pressed("Button_OK");
    EXPECT_EQ(editor->result(), QDialog::Accepted);
    EXPECT_EQ(said(), "");
}

TEST_F(CaseEditor, ARefusedSaveKeepsCaseTableAndWindow) {
    store("零序", 3, {1, 2});
    store("距离", 1, {3});
    open(1);
    const QStringList before = everything();
    const auto stays = [&](const char* why) {
        const std::string caption = why;
        for (const char* button : {"ToolButton_NextRec", "ToolButton_InsertRec", "ToolButton_CopyRec"}) {
            tool(button);
            EXPECT_EQ(said(), caption) << button;
        }
        for (const char* button : {"Button_OK", "pushButton_AutoCal", "pushButton_SaveDz"}) {
            pressed(button);
            EXPECT_EQ(said(), caption) << button;
        }
        EXPECT_EQ(relays(), "1,2");
        EXPECT_TRUE(editor->isVisible() && everything() == before);
    };
    rename("  ");
    stays("作业名不能为空");
    rename("距离");
    stays("作业名已经定义，请更换作业号");
    rename("零序");
    const int row = table().find(2, "t");
    for (const char* bad : {"-0.1", "x", "nan", ""}) {
        table().setValue(row, 4, bad);
        stays("青龙线 青山青龙线侧 保护   定值 动作时间 的数据有错误，请检查");
    }
    EXPECT_FALSE(part<QToolButton>(*editor, "ToolButton_PasteRec").isEnabled());
    part<QRadioButton>(*editor, "radioButton_Erci").click();
    EXPECT_TRUE(part<QRadioButton>(*editor, "radioButton_Yici").isChecked());
    said();
    table().setValue(row, 4, "0");
    tool("ToolButton_NextRec");
    EXPECT_EQ(caseName(), "距离");
    EXPECT_EQ(said(), "");
}

TEST_F(CaseEditor, RelayChangesWaitForTheSaveAndCanBeUndone) {
    store("零序", 3, {1});
    open();
    const QString before = contents("RLY_CASEINF");
    table().setCurrentCell(0, 0);
    pressed("pushButton_DeleteRly");
    EXPECT_EQ(relays(), "");
    add({2, 1});  // 1 comes back with the rules that it had
    EXPECT_EQ(relays(), "1,2");
    tool("ToolButton_RecoverAll");
    EXPECT_EQ(relays(), "1");
    EXPECT_EQ(contents("RLY_CASEINF"), before);
    add({2});
    table().setCurrentCell(table().find(1, "Idz"), 0);
    pressed("pushButton_DeleteRly");
    add({1, 2});
    EXPECT_EQ(relays(), "2,1");
    pressed("Button_OK");
    EXPECT_EQ(value("SELECT GROUP_CONCAT(DISTINCT RNo ORDER BY RNo) FROM RLY_CASEINF"), "1,2");
    EXPECT_EQ(said(), "");
}

TEST_F(CaseEditor, PasteBringsTypeAndContentsOfAnotherCase) {
    store("零序", 3, {1, 2});
    store("距离", 1, {3});
    open(1);
    EXPECT_FALSE(part<QToolButton>(*editor, "ToolButton_PasteRec").isEnabled());
    tool("ToolButton_CopyRec");
    tool("ToolButton_NextRec");
    tool("ToolButton_PasteRec");
    EXPECT_EQ(said(), "作业名与被拷贝的作业相同，请更改作业名");
    EXPECT_EQ(relays(), "1,2");
    EXPECT_EQ(part<QComboBox>(*editor, "comboBox_RType").currentData(), 3);
    EXPECT_EQ(value("SELECT RTypeNo FROM RLY_CASE_RLY WHERE Case_No=2"), "3");
    rename("副本");
    tool("ToolButton_FirstRec");
    tool("ToolButton_DeleteRec");
    EXPECT_EQ(caseName(), "副本");
    EXPECT_FALSE(part<QToolButton>(*editor, "ToolButton_PasteRec").isEnabled());
    editor->ToolButton_PasteRec_clicked();
    EXPECT_EQ(relays(), "1,2");
    EXPECT_EQ(casesIn("RLY_CASE_RLY"), "2");
    EXPECT_EQ(said(), "");
}

TEST_F(CaseEditor, ACopyOfACaseThatVanishedChangesNothing) {
    store("零序", 3, {1, 2});
    store("距离", 1, {3});
    open(1);
    tool("ToolButton_CopyRec");
    tool("ToolButton_NextRec");
    exec("DELETE FROM RLY_CASE_RLY WHERE Case_No=1");
    tool("ToolButton_PasteRec");
    EXPECT_EQ(said(), "被拷贝的作业已经不存在");
    EXPECT_EQ(relays(), "3");
    EXPECT_EQ(casesIn("RLY_CASEINF"), "1,2");
}

TEST_F(CaseEditor, SecondaryValuesFollowByTheRatios) {
    store("零序", 3, {1, 2});
    open();
    const int row = table().find(1, "Idz");
    table().setValue(row, 1, "1200");
    part<QRadioButton>(*editor, "radioButton_Erci").click();
    EXPECT_EQ(table().text(row, table().settings().newColumn(1)), "5");
    table().setValue(row, 1, "6");
    pressed("Button_OK");
    EXPECT_EQ(value("SELECT CONCAT_WS(',',Rdz11,Rdz12) FROM RLY_CASERDZ WHERE RNo=1 AND Cdz='Idz'"),
              "1440.000000,6.000000");
}

TEST_F(CaseEditor, RelaysThatAreGoneLeaveTheCaseOnRequest) {
    store("零序", 3, {1, 2});
    ASSERT_TRUE(RelayStore::remove({1}));
    for (const auto reply : {QMessageBox::No, QMessageBox::Yes}) {
        open();
        EXPECT_EQ(said(), "作业中涉及的某些保护不存在，请检查数据");
        EXPECT_EQ(relays(), "2");
        QString asked;
        answer(reply, &asked);
        pressed("Button_OK");
        EXPECT_EQ(asked, "从当前作业中删除已经不存在的保护吗？");
        EXPECT_EQ(editor->result(), QDialog::Accepted);
        EXPECT_EQ(value("SELECT GROUP_CONCAT(DISTINCT RNo ORDER BY RNo) FROM RLY_CASEINF"),
                  reply == QMessageBox::Yes ? "2" : "1,2");
    }
}

TEST_F(CaseEditor, ACaseWithoutRelaysDoesNotShowThoseOfTheOneBefore) {
    store("零序", 3, {1, 2});
    store("空", 3, {1});
    exec("DELETE FROM RLY_CASEINF WHERE Case_No=2");
    open(1);
    tool("ToolButton_NextRec");
    EXPECT_EQ(said(), "没有内部作业号为2的作业的信息");
    EXPECT_EQ(caseName() + relays(), "空");
}

TEST_F(CaseEditor, ClosingByTheFrameAsksOnlyWhenSomethingWouldBeLost) {
    store("零序", 3, {1, 2});
    open();
    tool("ToolButton_RecoverAll");
    editor->close();
    EXPECT_FALSE(editor->isVisible());

    open();
    rename("改名");
    answer(QMessageBox::No);
    QTest::keyClick(editor.get(), Qt::Key_Escape);
    EXPECT_TRUE(editor->isVisible());
    tool("ToolButton_CopyRec");  // the new name is stored from here on
    const QString stored = value("SELECT Case_Name FROM RLY_CASE_RLY");
    answer(QMessageBox::Yes);
    editor->close();
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(stored + value("SELECT Case_Name FROM RLY_CASE_RLY"), "改名零序");
}

TEST_F(CaseEditor, WithoutItsCopiesNothingCanBeEdited) {
    store("零序", 3, {1});
    EditSession other("WinDlgRlyCalMain", {{"RLY_CASEINF", 124}}, "_TEM");
    ASSERT_TRUE(other.open());
    open();
    EXPECT_EQ(said(), "建立RLY_CASEINF_TEM表失败，不能编辑作业");
    EXPECT_FALSE(part<QToolButton>(*editor, "ToolButton_InsertRec").isEnabled());
    EXPECT_FALSE(part<QPushButton>(*editor, "Button_OK").isEnabled());
    pressed("Button_Cancel");
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(casesIn("RLY_CASEINF"), "1");
    EXPECT_TRUE(other.commit());
}
