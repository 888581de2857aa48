// Starts of calculations from the case editor.
#include <QProgressDialog>

#include "tests/gui/workflow/CaseEditor.h"

class CaseStart : public CaseEditor {
  protected:
    void SetUp() override {
        CaseEditor::SetUp();
        store("零序", 3, {1, 2});
    }
    [[nodiscard]] QProgressDialog* box() const { return editor->findChild<QProgressDialog*>(); }
    [[nodiscard]] bool isIdle() const {
        return !box() && part<QPushButton>(*editor, "pushButton_AutoCal").isEnabled() &&
               part<QLineEdit>(*editor, "lineEdit_CaseInf_Name").isEnabled();
    }
};

TEST_F(CaseStart, TheRunWindowOpensAndItsValuesStandInTheTable) {
    open();
    const auto boxes = editor->findChildren<QCheckBox*>("checkBox_Part1");
    boxes[2]->click();
    whenWindow("WinDlgRlyCal", [&](QDialog& run) {
        EXPECT_FALSE(box());
        EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_RLYOBJ_TEM"), "4");
        EXPECT_EQ(value("SELECT GROUP_CONCAT(DISTINCT PNo) FROM RLY_CASEINF WHERE PValid=0"), "3");
        exec("UPDATE RLY_RLYOBJ_TEM SET NDz11=345.5 WHERE RNo=2 AND Cdz='Idz'");
        run.accept();
    });
    pressed("pushButton_HandCal");
    ASSERT_TRUE(waitFor([&] { return windowsSeen == 1 && isIdle(); }));
    EXPECT_EQ(table().text(table().find(2, "Idz"), table().settings().newColumn(1)), "345.5");
    pressed("Button_OK");
    EXPECT_EQ(value("SELECT Rdz11+0 FROM RLY_CASERDZ WHERE RNo=2 AND Cdz='Idz'"), "345.5");
    EXPECT_EQ(said(), "");
}

TEST_F(CaseStart, AHangingProgramIsStoppedAndTheEditorStaysUsable) {
    program("QORDEN.EXE", "exec sleep 60");
    open();
    pressed("pushButton_AutoCal");
    ASSERT_TRUE(waitFor([&] { return box() && box()->labelText() == "确定计算顺序..."; }));
    QProgressDialog* first = box();
    editor->PushButton_AutoCal_Clicked();
    editor->Button_OK_clicked();
    editor->Button_Cancel_clicked();
    EXPECT_EQ(box(), first);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_FALSE(part<QPushButton>(*editor, "Button_OK").isEnabled());
    auto* stop = first->findChild<QPushButton*>();
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->text(), "中止");
    stop->click();
    ASSERT_TRUE(waitFor([&] { return isIdle(); }, 3000));
    EXPECT_EQ(said(), "QORDEN.EXE已中止");
    mend("QORDEN.EXE");
    whenWindow("WinDlgRlyCal", [](QDialog& run) { run.reject(); });
    pressed("pushButton_AutoCal");
    EXPECT_TRUE(waitFor([&] { return windowsSeen == 1 && isIdle(); }));
}

TEST_F(CaseStart, AProgramThatFailsOpensNoRunWindow) {
    open();
    for (const char* name : {"VASKEL.EXE", "QORDEN.EXE"}) {
        program(name, "exit 4");
        pressed("pushButton_AutoCal");
        EXPECT_TRUE(waitFor([&] { return isIdle(); }));
        EXPECT_EQ(said(), std::string(name) + "出错，返回码4，没有计算结果");
        QFile::remove(places.programDir + name);
        pressed("pushButton_HandCal");
        EXPECT_TRUE(waitFor([&] { return isIdle(); }));
        EXPECT_EQ(said(), "执行" + std::string(name) + "失败");
        mend(name);
    }
    exec("DELETE FROM ST_CASE");
    pressed("pushButton_AutoCal");
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(said(), "暂稳作业信息表中没有当前作业号的记录！");
}

TEST_F(CaseStart, CancelTakesARealCalculationBackTableByTable) {
    const QStringList before = everything();
    open();
    for (const int part : {1, 2, 3}) editor->findChildren<QCheckBox*>("checkBox_Part1")[part]->click();
    tool("ToolButton_CopyRec");
    ASSERT_TRUE(cases.UpdateCaseChain(1));
    ASSERT_EQ(start(), "ready") << said();
    RunSession session(*cases.current(), places);
    ASSERT_TRUE(session.open());
    ASSERT_EQ(run(session, RunSession::Automatic), "complete") << said();
    ASSERT_TRUE(session.ensure());
    const QStringList calculated = everything();
    for (const char* filled : {"RLY_RUDSYS", "RLY_RDZTEM", "RLY_FAULTINF", "RLY_RRVIN"})
        EXPECT_NE(value(QString("SELECT COUNT(*) FROM ") + filled), "0") << filled;
    EXPECT_NE(calculated, before);
    pressed("Button_Cancel");
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(copies(), 0);
}

TEST_F(CaseStart, ARunThatAnotherProgramLeftIsTakenBackFirst) {
    {
        RunSession left(*cases.current(), places);
        ASSERT_TRUE(left.open());
        exec("INSERT INTO RLY_CRUDRM (RNo,Case_No) VALUES (1,1)");
    }
    open();
    EXPECT_EQ(said(), "上一次计算没有正常结束，已恢复计算前的数据");
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_CRUDRM"), "0");
}
