// The network, the modes, the parts and the rules of a case.
#include "programs/workflow/PickerResults.h"
#include "tests/gui/workflow/CaseEditor.h"

namespace {

QStringList itemsOf(const QComboBox& combo) {
    QStringList items;
    for (int i = 0; i < combo.count(); ++i) items << combo.itemText(i);
    return items;
}

}  // namespace

class CaseInputs : public CaseEditor {
  protected:
    void SetUp() override {
        CaseEditor::SetUp();
        store("零序", 3, {1, 2});
    }
    [[nodiscard]] QComboBox& sources() const { return part<QComboBox>(*editor, "comboBox_CaseInf_FlowNM"); }
    [[nodiscard]] QString label() const { return part<QLabel>(*editor, "textLabel_CaseInf_FlowNM").text(); }
    void toggleFlow() { part<QCheckBox>(*editor, "checkBox_CaseInf_Flow").click(); }
    static bool hasBranch(const QString& name) {
        return value("SELECT COUNT(*) FROM RLY_RRBRANCH_TEM WHERE ID_Name=?", {name}).toInt() > 0;
    }
    static QString source() { return value("SELECT CONCAT_WS(',',Mlf,Case_lf,Scheme) FROM RLY_CASE_RLY"); }
};

TEST_F(CaseInputs, TheNetworkOfTheCaseIsBroughtIn) {
    open();
    EXPECT_TRUE(hasBranch("青龙"));
    choose("comboBox_CaseInf_FlowNM", sources().findText("青龙线停运"));
    EXPECT_FALSE(hasBranch("青龙"));
    EXPECT_TRUE(hasBranch("青白I"));
    toggleFlow();
    EXPECT_EQ(label(), "潮流作业:");
    EXPECT_EQ(itemsOf(sources()).value(0), " ");
    choose("comboBox_CaseInf_FlowNM", 0);  // the blank one changes nothing
    EXPECT_EQ(realTime.fact("load_flow"), "0");
    const int flow = sources().findText("夏季大方式");
    ASSERT_GT(flow, 0);
    choose("comboBox_CaseInf_FlowNM", flow);
    EXPECT_TRUE(hasBranch("青龙"));
    EXPECT_EQ(realTime.fact("load_flow"), "1");
    pressed("Button_OK");
    EXPECT_EQ(source(), "1,1,");
    EXPECT_EQ(said(), "");
    open();
    EXPECT_EQ(sources().currentText(), "夏季大方式");
    toggleFlow();
    EXPECT_EQ(label(), "基础方案:");
    pressed("Button_OK");
    EXPECT_EQ(said(), "请选择一个方案或潮流作业");
}

TEST_F(CaseInputs, MissingNetworksAreTold) {
    open();
    toggleFlow();
    const int flow = sources().findText("夏季大方式");
    exec("UPDATE LF_CASE SET Case_Name='冬季' WHERE Case_Name='夏季大方式'");
    choose("comboBox_CaseInf_FlowNM", flow);
    EXPECT_EQ(said(), "潮流作业名没有对应的作业号");
    pressed("Button_OK");
    EXPECT_EQ(said(), "请选择一个方案或潮流作业");
    exec("RENAME TABLE LF_CASE TO Away");
    exec("CREATE TABLE LF_CASE LIKE Away");
    toggleFlow();
    toggleFlow();
    EXPECT_EQ(said(), "没有定义潮流作业");
    exec("DROP TABLE LF_CASE");
    exec("RENAME TABLE Away TO LF_CASE");
    exec("DELETE FROM CDB_SCHEMEINFBAK");
    toggleFlow();
    EXPECT_EQ(said(), "没有定义方案");
    pressed("Button_Cancel");
    EXPECT_EQ(source(), "0,-1,基础方案");
    exec("UPDATE RLY_CASE_RLY SET Mlf=1,Case_lf=77,Scheme=' '");
    open();
    EXPECT_TRUE(QString::fromStdString(said()).contains("作业的潮流作业已不存在，请重新选择"));
}

TEST_F(CaseInputs, AHalfSwitchedNetworkIsToldAndBroughtInWhenACalculationStarts) {
    open();
    exec("RENAME TABLE L3_1 TO Away");
    toggleFlow();
    choose("comboBox_CaseInf_FlowNM", sources().findText("夏季大方式"));
    EXPECT_TRUE(errors.contains("切换网络失败，实时库中的网络不完整，不能计算"));
    said();
    pressed("pushButton_AutoCal");
    EXPECT_TRUE(errors.contains("切换网络失败，实时库中的网络不完整，不能计算"));
    EXPECT_TRUE(part<QPushButton>(*editor, "pushButton_AutoCal").isEnabled());
    exec("RENAME TABLE Away TO L3_1");
    said();
    whenWindow("WinDlgRlyCal", [](QDialog& run) { run.reject(); });
    pressed("pushButton_AutoCal");
    EXPECT_TRUE(waitFor([&] { return windowsSeen == 1; }));
    EXPECT_EQ(said(), "");
}

TEST_F(CaseInputs, ModesArePickedAndNamedAndStored) {
    open();
    const auto pick = [&](const char* button, const QStringList& names) {
        whenOpen([&](QDialog& picker) {
            auto& all = part<QListWidget>(picker, "listBox_gBSysmode1_Sys");
            for (const QString& name : names) {
                all.setCurrentItem(all.findItems(name, Qt::MatchExactly).value(0));
                press(picker, "pushButton_Add");
            }
            press(picker, names.isEmpty() ? "pushButton_Cancel" : "pushButton_Ensure");
        });
        pressed(button);
    };
    pick("pushButton_BigSys", {"最大方式", "最小方式"});
    EXPECT_EQ(part<QLineEdit>(*editor, "lineEdit_BigSys").text(), "最大方式,   最小方式,   ");
    pick("pushButton_SmallSys", {"最小方式"});
    EXPECT_EQ(value("SELECT GROUP_CONCAT(SysName,SFlg) FROM RLY_RUDSYS"), "最大方式1");
    pick("pushButton_BigSys", {});  // a cancelled choice hands over the last one
    EXPECT_EQ(part<QLineEdit>(*editor, "lineEdit_BigSys").text(), "最小方式,   ");
    pressed("Button_OK");
    EXPECT_EQ(value("SELECT GROUP_CONCAT(SysName,SFlg ORDER BY SFlg) FROM RLY_RUDSYS"), "最小方式1,最小方式2");
}

TEST_F(CaseInputs, PartsAndNoteAreTheCases) {
    open();
    const auto boxes = editor->findChildren<QCheckBox*>("checkBox_Part1");
    ASSERT_EQ(boxes.size(), 5);
    EXPECT_TRUE(boxes[3]->isEnabled());
    EXPECT_FALSE(boxes[4]->isEnabled() || boxes[4]->isVisible()) << "the type has four parts";
    boxes[1]->click();
    EXPECT_EQ(PartFlg, (std::array<int, kStages>{1, 0, 1, 1, 1}));
    part<QTextEdit>(*editor, "textEdit_CaseInf_Note").setPlainText("甲\n乙 ");
    pressed("Button_OK");
    EXPECT_EQ(value("SELECT CONCAT_WS(',',PartFlg1,PartFlg2,PartFlg3,PartFlg5,Note) FROM RLY_CASE_RLY"),
              "1,0,1,1,甲 乙");
    EXPECT_EQ(said(), "");
}

TEST_F(CaseInputs, TheRuleDialogIsOpenedForTheRelayInHand) {
    open();
    table().setCurrentCell(table().find(2, "t"), 0);
    QString opened;
    whenOpen([&](QDialog& rules) { opened = rules.objectName(); });
    pressed("pushButton_Rule");
    EXPECT_EQ(opened, "WinDlgSelectRule");
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_CASEINF WHERE RValid=0"), "0");
}
