#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

#include "programs/workflow/WinDlgSelectRly.h"
#include "programs/workflow/WinDlgselectSYS.h"
#include "tests/gui/workflow/WorkflowWindows.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<int> pickedRelays() {
    std::vector<int> numbers;
    const SelectedRly* before = nullptr;
    for (const SelectedRly* at = SelectedRlyList; at; at = at->next) {
        EXPECT_EQ(at->previous, before);
        before = at;
        numbers.push_back(at->RNo);
    }
    return numbers;
}

std::vector<int> pickedModes() {
    std::vector<int> numbers;
    for (const SelectedSys* at = SelectedSysList; at; at = at->previous) numbers.insert(numbers.begin(), at->SysNo);
    return numbers;
}

QStringList textsOf(const QListWidget& list) {
    QStringList texts;
    for (int row = 0; row < list.count(); ++row) texts << list.item(row)->text();
    return texts;
}

void doubleClick(QListWidget& list, int row) {
    list.scrollToItem(list.item(row));
    const QPoint at = list.visualItemRect(list.item(row)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
}

}  // namespace

/// Five relays of type 3 on lines of the demonstration network, listed by the names of their lines.
class Pickers : public WorkflowWindows {
  protected:
    void SetUp() override {
        WorkflowWindows::SetUp();
        installAt({"青白I", "青龙"}, 3);
        exec(
            "INSERT INTO RLY_RUD (Valid,RNo,RTypeCode,RTypeNo,RType,ID_Name,I_Name,J_Name,Side) VALUES"
            " (1,11,'t',3,6,'O''Neil','n''1','低压',2),(0,12,'t',3,6,'停用','n''1','低压',1),(1,13,'t',4,6,'别类','a','"
            "b',1)");
        exec("INSERT INTO CDB_NODEBAK (Node_Name,Base_kV) VALUES ('低压',10.5),('n''1',66)");
        replaceSelectedRlys({});
        replaceSelectedSys({});
    }
};

TEST_F(Pickers, RelaysPickedByHandAreHandedOverOnceEachInOrder) {
    WinDlgSelectRly window("距离保护", 3, 6, 0);
    window.show();
    auto& all = part<QListWidget>(window, "listBox_AllRly");
    auto& selected = part<QListWidget>(window, "listBox_RlySelected");
    ASSERT_EQ(all.count(), 3) << "another type and relays out of service are not offered";
    EXPECT_EQ(all.item(0)->text(), "O'Neil线 低压侧");
    EXPECT_FALSE(part<QComboBox>(window, "comboBox_gBSelection_V").isEnabled());

    doubleClick(all, 2);
    doubleClick(all, 0);
    doubleClick(all, 2);
    EXPECT_EQ(textsOf(selected), (QStringList{all.item(2)->text(), all.item(0)->text()}));
    all.setCurrentRow(1);
    press(window, "pushButton_Add");
    doubleClick(selected, 0);
    EXPECT_EQ(textsOf(selected), (QStringList{all.item(0)->text(), all.item(1)->text()}));
    press(window, "pushButton_Ensure");

    EXPECT_EQ(SelectRlyAccepted, 1);
    EXPECT_EQ(pickedRelays().size(), 2);
    EXPECT_EQ(pickedRelays().front(), 11);
    EXPECT_EQ(SelectedRlyList->ID_Name, "O'Neil");
    EXPECT_EQ(SelectedRlyList->Side, 2);
    EXPECT_EQ(SelectedRlyList->RTypeNo, 3);
    EXPECT_EQ(said(), "");
}

TEST_F(Pickers, CancelOfTheRelaysLeavesTheListOfBeforeAndSaysSo) {
    replaceSelectedRlys({{"x", "i", "j", 1, 77, 3}});
    for (const bool byKey : {false, true}) {
        WinDlgSelectRly window("距离保护", 3, 6, 0);
        window.show();
        SelectRlyAccepted = 1;
        doubleClick(part<QListWidget>(window, "listBox_AllRly"), 0);
        press(window, "pushButton_DelAll");
        EXPECT_EQ(part<QListWidget>(window, "listBox_RlySelected").count(), 0);
        doubleClick(part<QListWidget>(window, "listBox_AllRly"), 1);
        byKey ? QTest::keyClick(&window, Qt::Key_Escape) : press(window, "pushButton_Cancel");
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(SelectRlyAccepted, 0);
        EXPECT_THAT(pickedRelays(), ElementsAre(77));
    }
}

TEST_F(Pickers, AVoltageLevelTakesTheRelaysWithANodeInItsBand) {
    WinDlgSelectRly window("距离保护", 3, 6, 0);
    window.show();
    auto& levels = part<QComboBox>(window, "comboBox_gBSelection_V");
    part<QRadioButton>(window, "radioButton_gBSelection_V").click();
    EXPECT_TRUE(levels.isEnabled());
    EXPECT_FALSE(part<QPushButton>(window, "pushButton_Add").isEnabled());
    EXPECT_EQ(part<QPushButton>(window, "pushButton_Add").toolTip(), "选“指定”后可用");

    ASSERT_GE(levels.findText("10.5"), 0);
    levels.setCurrentText("10.5");
    press(window, "pushButton_Ensure");
    EXPECT_EQ(said(), "电压等级数据有错不能选择保护") << "bands are told by nominal levels";
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(SelectRlyAccepted, 0);

    levels.addItems({"10.000", "220"});
    levels.setCurrentText("10.000");
    press(window, "pushButton_Ensure");
    EXPECT_THAT(pickedRelays(), ElementsAre(11, 12)) << "by number, at either end, also out of service";
    EXPECT_EQ(SelectRlyAccepted, 1);
    EXPECT_EQ(said(), "");
}

TEST_F(Pickers, TheWholeNetworkTakesEveryRelayOfTheTypeByNumber) {
    WinDlgSelectRly window("距离保护", 3, 6, 0);
    window.show();
    doubleClick(part<QListWidget>(window, "listBox_AllRly"), 0);
    part<QRadioButton>(window, "radioButton_gBSelection_Net").click();
    EXPECT_FALSE(part<QComboBox>(window, "comboBox_gBSelection_V").isEnabled());
    press(window, "pushButton_Ensure");
    EXPECT_THAT(pickedRelays(), ElementsAre(1, 2, 11, 12));
}

TEST_F(Pickers, TheListIsSearchedByPositionAndByWordsWithoutLosingItsOrder) {
    WinDlgSelectRly window("距离保护", 3, 6, 0);
    window.show();
    takeScreenshot(window, "select-relays");
    auto& all = part<QListWidget>(window, "listBox_AllRly");
    auto& filter = part<QLineEdit>(window, "lineEdit_Filter");
    auto& position = part<QLineEdit>(window, "lineEdit_gBRly1_Position");
    const QString last = all.item(2)->text();
    filter.setText("neil 侧");
    EXPECT_TRUE(all.item(2)->isHidden());
    EXPECT_EQ(all.currentRow(), 0);
    position.setText(last.section("线", 0, 0));
    EXPECT_EQ(all.currentRow(), 2) << "a name that was filtered away is shown again";
    EXPECT_FALSE(all.item(2)->isHidden());
    position.setText("不存在");
    EXPECT_EQ(all.currentRow(), 2);
    filter.setFocus();
    QTest::keyClick(&filter, Qt::Key_Up);
    QTest::keyClick(&filter, Qt::Key_Return);
    EXPECT_TRUE(window.isVisible()) << "Enter takes the entry, it does not end the dialog";
    EXPECT_EQ(textsOf(part<QListWidget>(window, "listBox_RlySelected")), QStringList{all.item(1)->text()});
}

TEST_F(Pickers, TheElementPickerFillsThePosition) {
    WinDlgSelectRly window("距离保护", 3, 6, 0);
    window.show();
    whenOpen([](QDialog& picker) {
        EXPECT_EQ(picker.objectName(), "WinDlgCalBranchChoose");
        part<QLineEdit>(picker, "lineEdit_Filter").setText("青龙");
        press(picker, "pushButton_Ensure");
    });
    press(window, "pushButton_gBRly1_Position");
    EXPECT_EQ(part<QLineEdit>(window, "lineEdit_gBRly1_Position").text(), "青龙");
    EXPECT_TRUE(part<QListWidget>(window, "listBox_AllRly").currentItem()->text().startsWith("青龙线"));
    const std::map<int, QString> pickers = {
        {0, "WinDlgCalBusChoose"}, {1, "WinDlgCalEleTerm1Choose"}, {10, "WinDlgCalBranchChoose"}};
    for (const auto& [rType, name] : pickers) {
        WinDlgSelectRly other("t", 3, rType, 0);
        other.show();
        whenOpen([expected = name](const QDialog& picker) { EXPECT_EQ(picker.objectName(), expected); });
        press(other, "pushButton_gBRly1_Position");
        EXPECT_EQ(part<QLineEdit>(other, "lineEdit_gBRly1_Position").text(), "") << "nothing was picked";
    }
}

TEST_F(Pickers, TwoThousandRelaysOpenAtOnceAndAreAllTakenOver) {
    QVector<QVariantList> rows;
    for (int number = 0; number < 2000; ++number)
        rows.append({1, 100 + number, "t", 5, 6, QString("线路%1").arg(number, 4, 10, QChar('0')), "a", "b", 1});
    ASSERT_TRUE(sql::insertRows(
        {}, "RLY_RUD", {"Valid", "RNo", "RTypeCode", "RTypeNo", "RType", "ID_Name", "I_Name", "J_Name", "Side"}, rows));
    QElapsedTimer clock;
    clock.start();
    WinDlgSelectRly window("t", 5, 6, 0);
    window.show();
    QApplication::processEvents();
    EXPECT_LT(clock.elapsed(), 1000);
    RecordProperty("open_ms", int(clock.restart()));
    auto& all = part<QListWidget>(window, "listBox_AllRly");
    part<QLineEdit>(window, "lineEdit_Filter").setText("路19");
    all.selectAll();
    press(window, "pushButton_Add");
    EXPECT_EQ(part<QListWidget>(window, "listBox_RlySelected").count(), 100);
    EXPECT_LT(clock.elapsed(), 2000);
    RecordProperty("filter_and_add_ms", int(clock.elapsed()));
}

TEST_F(Pickers, ModesAreHandedOverInTheOrderPickedAndCancelKeepsThoseOfBefore) {
    const int large = ModeStore::numberOf("最大方式");
    const int small = ModeStore::numberOf("最小方式");
    exec("INSERT INTO RLY_RSYSMODEDLS (SysNo,SysName,ID_Name) VALUES (91,'O''Neil ''方式''','x')");
    WinDlgselectSYS window;
    window.show();
    takeScreenshot(window, "select-modes");
    auto& all = part<QListWidget>(window, "listBox_gBSysmode1_Sys");
    const auto rowOf = [&](const char* name) { return int(textsOf(all).indexOf(name)); };
    doubleClick(all, rowOf("O'Neil '方式'"));
    doubleClick(all, rowOf("最小方式"));
    doubleClick(all, rowOf("最大方式"));
    doubleClick(all, rowOf("最小方式"));
    auto& selected = part<QListWidget>(window, "listBox_gBSysmode2_Sys");
    EXPECT_EQ(textsOf(selected), (QStringList{"O'Neil '方式'", "最小方式", "最大方式"}));
    selected.setCurrentRow(2);
    press(window, "pushButton_Delete");
    doubleClick(all, rowOf("最大方式"));
    press(window, "pushButton_Ensure");
    EXPECT_THAT(pickedModes(), ElementsAre(91, small, large));

    WinDlgselectSYS cancelled;
    cancelled.show();
    doubleClick(part<QListWidget>(cancelled, "listBox_gBSysmode1_Sys"), 0);
    press(cancelled, "pushButton_Cancel");
    EXPECT_THAT(pickedModes(), ElementsAre(91, small, large));

    WinDlgselectSYS none;
    none.show();
    press(none, "pushButton_Ensure");
    EXPECT_THAT(pickedModes(), IsEmpty());
    EXPECT_EQ(said(), "");
}
