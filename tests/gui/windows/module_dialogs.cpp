#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QtTest/QTest>

#include "programs/frame/UserStore.h"
#include "programs/frame/WinDlgLogIn.h"
#include "programs/frame/WinDlgSetUser.h"
#include "programs/netview/WinDlgDefineDspDz.h"
#include "programs/netview/WinDlgDspRly.h"
#include "programs/netview/WinDlgSetDsp.h"
#include "tests/gui/windows/module_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

template <class Widget>
Widget& part(QWidget& dialog, const char* name) {
    auto* found = dialog.findChild<Widget*>(name);
    if (!found) throw std::runtime_error(name);
    return *found;
}

void press(QWidget& dialog, const char* button) {
    QTest::mouseClick(&part<QPushButton>(dialog, button), Qt::LeftButton);
}

class Dialogs : public ModuleFixture {
  protected:
    static void click(QTableWidget& table, int row, int column) {
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualItemRect(table.item(row, column)).center());
    }
    /// The numbers of a table, a blank where there is none; a bracket where the tick does not go with it.
    static QString numbers(const QTableWidget& table) {
        QString text;
        for (int row = 0; row < table.rowCount(); ++row) {
            const QString number = table.item(row, 1)->text();
            const bool ticked = table.item(row, 0)->checkState() == Qt::Checked;
            text += number.isEmpty() ? " " : number;
            if (ticked == number.isEmpty()) text += ")";
        }
        return text;
    }
    static int rowOf(const QTableWidget& table, const QString& key) {
        for (int row = 0; row < table.rowCount(); ++row)
            if (table.item(row, 2)->text() == key) return row;
        return -1;
    }
    static QString display() {
        return value(
            "SELECT GROUP_CONCAT(CONCAT_WS(',',RTypeNo,CDz,RlyDspNo,DzDspNo,AllDsp,RlyAss,RlyLoc)"
            " ORDER BY RTypeNo,CDz SEPARATOR ';') FROM RLY_RLYDSP");
    }
    static QString name(int type, int number) {
        return value("SELECT DspCDz FROM RTYPE WHERE RTypeNo=? AND DzNo=?", {type, number}, tables::ruleConnection);
    }
    static int tablesLike(const QString& pattern, const QString& connection = {}) {
        return value("SELECT COUNT(*) FROM information_schema.TABLES WHERE TABLE_SCHEMA=DATABASE() AND TABLE_NAME=?",
                     {pattern}, connection)
            .toInt();
    }
};

TEST_F(Dialogs, TickedRowsAreNumberedWithoutGaps) {
    WinDlgSetDsp dialog;
    dialog.show();
    auto& types = part<QTableWidget>(dialog, "table_RlyType");
    ASSERT_EQ(numbers(types), "    ");
    for (const int row : {2, 0, 3, 1}) click(types, row, 0);
    EXPECT_EQ(numbers(types), "2413");
    click(types, 0, 0);
    EXPECT_EQ(numbers(types), " 312");
    QTest::keyClick(&types, Qt::Key_Space);
    EXPECT_EQ(numbers(types), "4312");
    click(types, 1, 1);
    EXPECT_EQ(numbers(types), "4312");  // the order column ticks nothing
    EXPECT_EQ(types.currentRow(), 1);
}

TEST_F(Dialogs, TheSettingsShownAreThoseOfTheTypeInHand) {
    exec("UPDATE RLY_RLYDSP SET RlyDspNo=RTypeNo WHERE RTypeNo IN (2,3)");
    WinDlgSetDsp dialog;
    dialog.show();
    auto& types = part<QTableWidget>(dialog, "table_RlyType");
    auto& settings = part<QTableWidget>(dialog, "table_RlyDz");
    EXPECT_EQ(types.item(0, 0)->text(), "线路接地距离保护");  // those shown stand first
    EXPECT_EQ(numbers(types), "23  ");
    EXPECT_EQ(numbers(settings), "1234");
    click(settings, 1, 0);
    EXPECT_EQ(numbers(settings), "1 23");
    click(types, rowOf(types, "0"), 1);
    EXPECT_EQ(settings.rowCount(), 0);  // a virtual relay has none
    QTest::keyClick(&types, Qt::Key_Up);
    EXPECT_EQ(settings.rowCount(), 3);
    click(types, 0, 1);
    EXPECT_EQ(numbers(settings), "123 ");  // the edit outlived the change of type, the hidden one stands last
    EXPECT_EQ(settings.item(3, 2)->text(), "t");
}

TEST_F(Dialogs, OkStoresTheDisplayAndCancelTakesEveryTypeBack) {
    const QString before = display();
    const auto edit = [](QDialog& dialog) {
        auto& types = part<QTableWidget>(dialog, "table_RlyType");
        auto& settings = part<QTableWidget>(dialog, "table_RlyDz");
        click(types, rowOf(types, "3"), 0);
        for (const char* type : {"1", "2", "3"}) {
            click(types, rowOf(types, type), 1);
            click(settings, 0, 0);
        }
        part<QRadioButton>(dialog, "radioButton_RlyDz").click();
        part<QCheckBox>(dialog, "checkBox_DspAss").setChecked(true);
    };
    {
        WinDlgSetDsp dialog;
        dialog.show();
        edit(dialog);
        EXPECT_NE(display(), before);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_EQ(dialog.result(), QDialog::Rejected);
        EXPECT_FALSE(dialog.isVisible());
    }
    EXPECT_EQ(display(), before);
    EXPECT_EQ(CMorvaneObject::iRlyDspAss, 0);
    {
        WinDlgSetDsp dialog;
        dialog.show();
        edit(dialog);
        press(dialog, "pushButton_Ensure");
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
    }
    EXPECT_EQ(display(),
              "0,V,0,1,2,1,0;1,L,0,2,2,1,0;1,Zdz,0,0,2,1,0;1,t,0,1,2,1,0;2,K,0,2,2,1,0;2,L,0,3,2,1,0;2,Zdz,0,0,2,1,0;"
              "2,t,0,1,2,1,0;3,Idz,1,0,2,1,0;3,L,1,2,2,1,0;3,t,1,1,2,1,0");
    EXPECT_EQ(CMorvaneObject::iRlyDspAss, 1);
    EXPECT_EQ(tablesLike("RLY_RLYDSP_TEM"), 0);
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(Dialogs, TheRelayFilterIsKeptOnCancelAndSetOnOk) {
    WinDlgDspRly::iSelRTypeNo = -1;
    {
        WinDlgDspRly dialog;
        auto& list = part<QListWidget>(dialog, "listBox_RlyType");
        auto& line = part<QLineEdit>(dialog, "lineEdit_RlyType");
        EXPECT_EQ(list.item(0)->text() + list.item(1)->text(), "全部虚拟保护");
        EXPECT_EQ(line.text(), "全部");
        list.setCurrentRow(3);
        EXPECT_EQ(line.text(), "线路接地距离保护");
        press(dialog, "pushButton_Cancel");
        EXPECT_EQ(WinDlgDspRly::iSelRTypeNo, -1);
        press(dialog, "pushButton_Ensure");
        EXPECT_EQ(WinDlgDspRly::iSelRTypeNo, 2);
    }
    WinDlgDspRly dialog;
    EXPECT_EQ(part<QLineEdit>(dialog, "lineEdit_RlyType").text(), "线路接地距离保护");
    part<QListWidget>(dialog, "listBox_RlyType").setCurrentRow(0);
    press(dialog, "pushButton_Ensure");
    EXPECT_EQ(WinDlgDspRly::iSelRTypeNo, -1);
}

TEST_F(Dialogs, ANewNameIsStoredOnOkAndCancelUndoesWhatAChangeOfTypeSaved) {
    const QString before = name(1, 1);
    {
        WinDlgDefineDspDz dialog;
        dialog.show();
        auto& table = part<QTableWidget>(dialog, "table_DspDz");
        auto& combo = part<QComboBox>(dialog, "comboBox_RType");
        EXPECT_EQ(combo.itemText(0), "线路相间距离保护");  // the virtual relay is not offered
        EXPECT_FALSE(table.item(0, 0)->flags() & Qt::ItemIsEditable);
        table.item(0, 1)->setText("Z'定值\\");
        combo.setCurrentIndex(1);
        dialog.ComboBox_RType_Changed(1);
        EXPECT_EQ(name(1, 1), "Z'定值\\");
        EXPECT_EQ(table.rowCount(), 4);
        dialog.close();
    }
    EXPECT_EQ(name(1, 1), before);
    WinDlgDefineDspDz dialog;
    dialog.show();
    auto& table = part<QTableWidget>(dialog, "table_DspDz");
    table.setCurrentCell(1, 1);
    table.editItem(table.item(1, 1));
    auto* editor = table.viewport()->findChild<QLineEdit*>();
    ASSERT_TRUE(editor);
    editor->setText("时限");  // still open when OK is pressed
    QMetaObject::invokeMethod(&dialog, "PushButton_Ensure_Clicked");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(name(1, 2), "时限");
    EXPECT_EQ(tablesLike("RTYPE_TEM", tables::ruleConnection), 0);
    exec("UPDATE RTYPE SET DspCDz='动作时间' WHERE RTypeNo=1 AND DzNo=2", {}, tables::ruleConnection);
}

TEST_F(Dialogs, ANameThatCannotBeStoredStaysInTheTable) {
    WinDlgDefineDspDz dialog;
    auto& table = part<QTableWidget>(dialog, "table_DspDz");
    auto& combo = part<QComboBox>(dialog, "comboBox_RType");
    table.item(1, 1)->setText("改名");
    const QString longName(21, QChar(u'长'));
    for (const QString& bad : {QString("  \t"), longName, QString("阻抗Ω😀")}) {
        table.item(0, 1)->setText(bad);
        combo.setCurrentIndex(2);
        dialog.ComboBox_RType_Changed(2);
        EXPECT_EQ(combo.currentIndex(), 0);
        EXPECT_EQ(table.item(0, 1)->text(), bad);
        EXPECT_EQ(table.item(1, 1)->text(), "改名");
        EXPECT_EQ(name(1, 2), "动作时间");
        dialog.PushButton_Ensure_Clicked();
        EXPECT_NE(dialog.result(), QDialog::Accepted);
    }
    ASSERT_EQ(errors.size(), 6);
    EXPECT_EQ(errors[0], "定值名不能为空");
    EXPECT_THAT(errors[2], Holds("超过20个字符"));
    EXPECT_THAT(errors[4], Holds("GBK"));
}

class Users : public Dialogs {
  protected:
    /// \return whether the entries were accepted
    static bool setPassword(const QString& old, const QString& fresh, const QString& again) {
        WinDlgSetUser dialog;
        part<QLineEdit>(dialog, "lineEdit_OldPassWord").setText(old);
        part<QLineEdit>(dialog, "lineEdit_NewPassWord").setText(fresh);
        part<QLineEdit>(dialog, "lineEdit_EnsurePassWord").setText(again);
        press(dialog, "pushButton_Ensure");
        return dialog.result() == QDialog::Accepted;
    }
    static bool logIn(const QString& password) {
        WinDlgLogIn dialog;
        part<QLineEdit>(dialog, "lineEdit_PassWord").setText(password);
        press(dialog, "pushButton_Ensure");
        return dialog.result() == QDialog::Accepted;
    }
    static QString stored() {
        return value("SELECT CONCAT_WS(',',User_Name,User_PurView,User_PassWord) FROM RLY_RLYUSER");
    }
};

TEST_F(Users, APasswordHasSixCharactersAndIsComparedExactly) {
    EXPECT_TRUE(setPassword("随便", "aB 3'密", "aB 3'密"));  // no password yet: the old entry is not looked at
    EXPECT_EQ(stored(), "Administrator,1,aB 3'密");
    WinDlgLogIn::iLogIn_User_PurView = -1;
    for (const char* wrong : {"ab 3'密", "aB 3'密 ", "aB3'密", "", "' OR ''='"}) EXPECT_FALSE(logIn(wrong)) << wrong;
    EXPECT_EQ(WinDlgLogIn::iLogIn_User_PurView, -1);
    EXPECT_EQ(errors.count("密码错误"), 5);
    EXPECT_TRUE(logIn("aB 3'密"));
    EXPECT_EQ(WinDlgLogIn::iLogIn_User_PurView, 1);

    WinDlgLogIn dialog;
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(WinDlgLogIn::iLogIn_User_PurView, 0);
}

TEST_F(Users, RefusedPasswordsLeaveTheOldOne) {
    ASSERT_TRUE(setPassword("", "secret", "secret"));
    EXPECT_FALSE(setPassword("Secret", "", ""));
    EXPECT_FALSE(setPassword("secret", "12345", "12345"));
    EXPECT_FALSE(setPassword("secret", "1234567", "x"));
    EXPECT_FALSE(setPassword("secret", "", "123456"));
    EXPECT_FALSE(setPassword("secret", "123456", "123457"));
    EXPECT_FALSE(setPassword("secret", "12345 ", "12345 "));  // the column would lose the blank
    EXPECT_FALSE(setPassword("secret", "1234😀", "1234😀"));
    EXPECT_THAT(errors, ElementsAre("原密码错误，不能修改密码", "密码长度应为6位，或不填", "密码长度应为6位，或不填",
                                    "新密码与确认密码不同", "新密码与确认密码不同", Holds("末尾"), Holds("GBK")));
    EXPECT_TRUE(logIn("secret"));
    EXPECT_TRUE(setPassword("secret", "", ""));
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_RLYUSER"), "0");
}

TEST_F(Users, WithoutAPasswordOnlyAnEmptyEntryLogsIn) {
    EXPECT_FALSE(logIn("x"));
    EXPECT_TRUE(logIn(""));
    EXPECT_EQ(WinDlgLogIn::iLogIn_User_PurView, 1);
}

TEST_F(Users, AFailedStatementOpensNothingAndShowsNoPassword) {
    exec("RENAME TABLE RLY_RLYUSER TO Away");
    EXPECT_FALSE(logIn(""));
    EXPECT_FALSE(setPassword("", "secret", "secret"));
    exec("RENAME TABLE Away TO RLY_RLYUSER");
    exec("ALTER TABLE RLY_RLYUSER MODIFY User_PassWord char(3)");
    EXPECT_FALSE(setPassword("", "secret", "secret"));
    exec("ALTER TABLE RLY_RLYUSER MODIFY User_PassWord char(6) BINARY");
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_RLYUSER"), "0");
    ASSERT_FALSE(errors.isEmpty());
    for (const QString& line : errors + lines) EXPECT_FALSE(line.contains("secret")) << line.toStdString();
}

}  // namespace
