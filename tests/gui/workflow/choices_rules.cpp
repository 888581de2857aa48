#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTabWidget>

#include "programs/frame/ui/EditButton.h"
#include "programs/frame/ui/RecordTable.h"
#include "programs/workflow/PickerResults.h"
#include "programs/workflow/WinDlgEditAndSelectPara.h"
#include "programs/workflow/WinDlgSelectRule.h"
#include "tests/gui/workflow/WorkflowWindows.h"

/// The case 1 with two distance relays, of which the parts one and three are set, and a second parameter group of the
/// rule 1101.
class RuleWindows : public WorkflowWindows {
  protected:
    void SetUp() override {
        WorkflowWindows::SetUp();
        installAt({"青白I", "青龙"}, 1);
        makeCase(1, {1, 2}, 1);
        PartFlg = {1, 0, 1, 0, 0};
        rules("INSERT INTO PARAINF (RuleNo,ParNo,C,K,KNo) VALUES (1101,2,'Kk',0.8,1),(1101,2,'t',0.05,2)");
        ChosenParNo = 0;
    }
    static void rules(const QString& text) {
        ASSERT_TRUE(sql::Query(tables::ruleConnection).exec(text)) << text.toStdString();
    }
    /// The groups of a rule as "ParNo:C=K", in order.
    static QString groups(int rule) {
        QStringList all;
        sql::Query query(tables::ruleConnection);
        query.exec("SELECT ParNo,C,K FROM PARAINF WHERE RuleNo=? ORDER BY ParNo,KNo", {rule});
        while (query.next()) all << query.text(0) + ':' + query.text(1) + '=' + query.raw(2);
        return all.join(' ');
    }
    /// A column of a relay's rules of the case, by number.
    static QString ofRelay(const QString& column, int relay) {
        return value("SELECT GROUP_CONCAT(" + column + " ORDER BY RuleNo) FROM RLY_CASEINF WHERE Case_No=1 AND RNo=?",
                     {relay});
    }
    static bool noCopyLeft() {
        return value(
                   "SELECT COUNT(*) FROM information_schema.TABLES WHERE TABLE_NAME IN"
                   " ('PARAINF_TEM','RLY_CASEINF_TEM_TM')") == "0";
    }
    static RecordTable& page(const QDialog& window, int index) {
        auto& tabs = part<QTabWidget>(window, "tabWidget_Rule");
        tabs.setCurrentIndex(index);
        return *tabs.currentWidget()->findChild<RecordTable*>("table_tdRule1_Rule");
    }
    static void tick(RecordTable& table, int row) {
        table.setCurrentCell(row, 0);
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_Space);
    }
    static void type(RecordTable& table, int row, int column, const QString& text) {
        table.setCurrentCell(row, column);
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_F2);
        auto* editor = qobject_cast<QLineEdit*>(table.indexWidget(table.currentIndex()));
        ASSERT_TRUE(editor);
        editor->clear();
        for (const QChar letter : text) {
            QKeyEvent event(QEvent::KeyPress, 0, Qt::NoModifier, letter);
            QApplication::sendEvent(editor, &event);
        }
    }
};

TEST_F(RuleWindows, EachPartThatTheCaseSetsHasAPageWithItsRules) {
    exec("DELETE FROM RLY_CASEINF WHERE PNo=3");
    WinDlgSelectRule window(1, 1, 1, "相间距离", "青白I线 青山侧 ");
    window.show();
    const auto& tabs = part<QTabWidget>(window, "tabWidget_Rule");
    ASSERT_EQ(tabs.count(), 2);
    EXPECT_EQ(tabs.tabText(0) + tabs.tabText(1), "一段三段");
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_CASEINF WHERE PNo=2 AND PValid=1"), "0") << "of both relays";
    EXPECT_EQ(part<QLabel>(window, "textLabel_Rly").text(), "青白I线 青山侧 ");

    RecordTable& first = page(window, 0);
    EXPECT_TRUE(first.isEnabled());
    ASSERT_EQ(first.rowCount(), 2);
    EXPECT_TRUE(first.isChecked(0, 0));
    EXPECT_EQ(first.text(0, 1), "一段：躲过本线路末端故障");
    EXPECT_EQ(first.text(0, 2), "Kk=0.85,   t=0,   ");
    EXPECT_EQ(first.text(0, 6), "Zdz=Kk×Zl");
    takeScreenshot(window, "select-rules");
    page(window, 1);
    auto* empty = tabs.currentWidget()->findChild<QCheckBox*>("checkBox_tbRule1_Valid");
    EXPECT_FALSE(empty->isEnabled());
    EXPECT_EQ(empty->toolTip(), "本段没有整定原则");
}

TEST_F(RuleWindows, OkStoresTheRelayAloneOrRulesAndGroupsForAll) {
    const QString others = ofRelay("CONCAT(PValid,RValid,ParNo)", 2);
    for (const bool forAll : {false, true}) {
        exec("UPDATE RLY_CASEINF SET PValid=1");
        WinDlgSelectRule window(1, 1, 1, "t", "x");
        window.show();
        RecordTable& table = page(window, 0);
        if (!forAll) tick(table, 0);
        EXPECT_FALSE(table.isChecked(0, 0));
        auto* valid =
            part<QTabWidget>(window, "tabWidget_Rule").currentWidget()->findChild<QCheckBox*>("checkBox_tbRule1_Valid");
        valid->click();
        EXPECT_FALSE(table.isEnabled());
        part<QCheckBox>(window, "check_InAllRly").setChecked(forAll);
        press(window, "pushButton_Back");
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(ofRelay("PValid", 1), "0,0,0,0,0,0,1,1,1");
        EXPECT_EQ(ofRelay("RValid", 1), "0,1,1,1,1,1,1,1,1");
        EXPECT_EQ(ofRelay("RValid", 2), forAll ? "0,1,1,1,1,1,1,1,1" : "1,1,1,1,1,1,1,1,1");
        EXPECT_EQ(ofRelay("PValid", 2), "1,1,0,0,0,0,1,1,1") << "the parts of others stay";
    }
    EXPECT_TRUE(noCopyLeft());
    EXPECT_EQ(said(), "");
}

TEST_F(RuleWindows, TwoThousandRelaysTakeTheRulesOfOneInFewStatements) {
    QVector<QVariantList> rows;
    for (int relay = 1001; relay <= 3000; ++relay)
        for (const int rule : {1101, 1102, 1301}) rows.append({1, relay, relay, rule == 1301 ? 3 : 1, 1, rule, 1, 1});
    ASSERT_TRUE(sql::insertRows({}, "RLY_CASEINF",
                                {"Case_No", "TurnNo", "RNo", "PNo", "PValid", "RuleNo", "RValid", "ParNo"}, rows));
    QElapsedTimer clock;
    clock.start();
    WinDlgSelectRule window(1, 1, 1, "t", "x");
    window.show();
    RecordProperty("open_ms", int(clock.restart()));
    tick(page(window, 0), 1);
    part<QCheckBox>(window, "check_InAllRly").setChecked(true);
    const auto statements = [] {
        sql::Query query;
        query.exec("SHOW SESSION STATUS LIKE 'Questions'");
        return query.next() ? query.number(1) : -1;
    };
    const int before = statements();
    clock.restart();
    press(window, "pushButton_Back");
    RecordProperty("store_ms", int(clock.elapsed()));
    EXPECT_LT(statements() - before, 20);
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_CASEINF WHERE RuleNo=1102 AND RValid=0"), "2002");
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_CASEINF WHERE RuleNo!=1102 AND RValid=0"), "0");
}

TEST_F(RuleWindows, CancelTakesBackWhatWasStoredMeanwhileButNotThePartsLeftOut) {
    for (const bool byKey : {false, true}) {
        WinDlgSelectRule window(1, 1, 1, "t", "x");
        window.show();
        const QString before = contents("RLY_CASEINF");
        tick(page(window, 0), 0);
        exec("UPDATE RLY_CASEINF SET ParNo=7");
        byKey ? QTest::keyClick(&window, Qt::Key_Escape) : press(window, "pushButton_Cancel");
        EXPECT_EQ(contents("RLY_CASEINF"), before);
        EXPECT_EQ(ofRelay("PValid", 2), "1,1,0,0,0,0,1,1,1");
        EXPECT_TRUE(noCopyLeft());
    }
}

TEST_F(RuleWindows, TheButtonOfARuleChoosesAmongItsGroups) {
    WinDlgSelectRule window(1, 1, 1, "t", "x");
    window.show();
    RecordTable& table = page(window, 0);
    const auto button = [&](int row) { return table.cellWidget(row, 3)->findChild<QPushButton*>("pushButton"); };
    whenOpen([](const QDialog& groups) {
        tick(part<RecordTable>(groups, "table_Para"), 1);
        press(groups, "pushButton_Cancel");
    });
    QTest::mouseClick(button(0), Qt::LeftButton);
    EXPECT_EQ(table.text(0, 5), "1");
    whenOpen([](const QDialog& groups) {
        auto& values = part<RecordTable>(groups, "table_Para");
        EXPECT_TRUE(values.isChecked(0, 0));
        tick(values, 1);
        EXPECT_FALSE(values.isChecked(0, 0)) << "at most one is ticked";
        type(values, 1, 2, "0.75");
        press(groups, "pushButton_Ensure");
    });
    QTest::mouseClick(button(0), Qt::LeftButton);
    EXPECT_EQ(table.text(0, 5), "2");
    EXPECT_EQ(table.text(0, 2), "Kk=0.75,   t=0.05,   ");
    press(window, "pushButton_Back");
    EXPECT_EQ(ofRelay("ParNo", 1), "2,1,1,1,1,1,1,1,1");
    EXPECT_EQ(ofRelay("ParNo", 2), "1,1,1,1,1,1,1,1,1");
    EXPECT_EQ(groups(1101), "1:Kk=0.85 1:t=0 2:Kk=0.75 2:t=0.05");
    EXPECT_EQ(said(), "");
}

TEST_F(RuleWindows, AGroupThatIsNoGroupIsRefusedAndNothingIsStored) {
    const QString values = "第2行参数中有数据错误，请检查";
    const QString number = "第2行参数中有参数组号错误，请检查";
    struct Entry {
        int column;
        const char* text;
        QString message;
    };
    const Entry entries[] = {{2, "", values},    {2, "nan", values},        {2, "inf", values},  {2, "1e400", values},
                             {3, "1,5", values}, {3, "1e7", values},        {3, "1e-9", values}, {1, "", number},
                             {1, "x", number},   {1, "1", number},          {1, "3", number},    {1, "0", number},
                             {1, "2.5", number}, {1, "99999999999", number}};
    const QString before = groups(1101);
    for (const Entry& entry : entries) {
        WinDlgEditAndSelectPara window(1, 1, 1101, 1);
        window.show();
        type(part<RecordTable>(window, "table_Para"), 1, entry.column, entry.text);
        press(window, "pushButton_Ensure");
        EXPECT_EQ(said(), entry.message.toStdString()) << entry.text;
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(groups(1101), before) << entry.text;
        window.reject();
    }
    for (const bool both : {true, false}) {
        WinDlgEditAndSelectPara window(1, 1, 1101, 1);
        window.show();
        auto& table = part<RecordTable>(window, "table_Para");
        for (const int row : {0, 1}) table.setCheck(row, 0, both);
        press(window, "pushButton_Ensure");
        EXPECT_EQ(said(), both ? "只能选择一组参数" : "请选择一组参数");
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(groups(1101), before);
    }
}

TEST_F(RuleWindows, ANewGroupIsNumberedBehindTheLastAndTakesFullWidthDigits) {
    WinDlgEditAndSelectPara window(1, 1, 1101, 2);
    window.show();
    takeScreenshot(window, "parameter-groups");
    EXPECT_EQ(ChosenParNo, 2);
    auto& table = part<RecordTable>(window, "table_Para");
    press(window, "pushButton_Add");
    ASSERT_EQ(table.rowCount(), 3);
    EXPECT_EQ(table.text(2, 1), "3");
    EXPECT_FALSE(table.isChecked(2, 0));
    type(table, 2, 2, "０．９");
    type(table, 2, 3, "1.5");
    tick(table, 2);
    press(window, "pushButton_Ensure");
    EXPECT_EQ(said(), "");
    EXPECT_EQ(ChosenParNo, 3);
    EXPECT_EQ(groups(1101), "1:Kk=0.85 1:t=0 2:Kk=0.8 2:t=0.05 3:Kk=0.9 3:t=1.5");
    EXPECT_EQ(groups(1102), "1:Kk=0.85 1:KkT=0.7 1:t=0") << "other rules are not touched";
    EXPECT_TRUE(noCopyLeft());
}

TEST_F(RuleWindows, DeletingAGroupThatOthersMeanAsksFirst) {
    exec("UPDATE RLY_CASEINF SET ParNo=2 WHERE RNo=2 AND RuleNo=1101");
    exec("INSERT INTO RLY_CASEINF (Case_No,RNo,PNo,RuleNo,ParNo) VALUES (5,2,1,1101,2),(5,3,1,1101,1)");
    const QString before = contents("RLY_CASEINF");
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
        WinDlgEditAndSelectPara window(1, 1, 1101, 2);
        window.show();
        auto& table = part<RecordTable>(window, "table_Para");
        table.setCurrentCell(0, 2);
        whenOpen([answer](const QDialog& dialog) {
            const auto& question = dynamic_cast<const QMessageBox&>(dialog);
            EXPECT_TRUE(question.text().startsWith("有 2 个作业的 3 套保护采用第 1 组或其后的参数组"))
                << question.text().toStdString();
            question.button(answer)->click();
        });
        press(window, "pushButton_Delete");
        EXPECT_EQ(table.rowCount(), answer == QMessageBox::Yes ? 1 : 2);
        if (answer == QMessageBox::No) continue;
        EXPECT_EQ(table.text(0, 1), "1") << "the rest is numbered anew";
        EXPECT_EQ(table.text(0, 2), "0.8");
        press(window, "pushButton_Ensure");
        EXPECT_EQ(ChosenParNo, 1);
    }
    EXPECT_EQ(groups(1101), "1:Kk=0.8 1:t=0.05");
    EXPECT_EQ(contents("RLY_CASEINF"), before) << "what others have chosen is theirs";
    EXPECT_EQ(said(), "");
}

TEST_F(RuleWindows, TheChosenGroupCanBeDeletedOnlyForAnotherAndCancelRestores) {
    exec("UPDATE RLY_CASEINF SET ParNo=1 WHERE RuleNo=1101");
    rules("INSERT INTO PARAINF (RuleNo,ParNo,C,K,KNo) VALUES (1102,2,'O''\\\"k',1,1)");
    const QString before = groups(1101) + groups(1102);
    WinDlgEditAndSelectPara window(1, 1, 1101, 2);
    window.show();
    auto& table = part<RecordTable>(window, "table_Para");
    table.setCurrentCell(1, 2);
    press(window, "pushButton_Delete");
    ASSERT_EQ(table.rowCount(), 1) << "nobody else means the last one, so nobody is asked";
    press(window, "pushButton_Ensure");
    EXPECT_EQ(said(), "请选择一组参数");
    rules("UPDATE PARAINF SET K=99");
    ChosenParNo = 1;
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(groups(1101) + groups(1102), before);
    EXPECT_EQ(ChosenParNo, 2);
    EXPECT_TRUE(noCopyLeft());
}

TEST_F(RuleWindows, ARuleWithoutParametersHasAnEmptyTable) {
    WinDlgEditAndSelectPara window(1, 1, 3299, 0);
    window.show();
    EXPECT_EQ(part<RecordTable>(window, "table_Para").rowCount(), 0);
    EXPECT_EQ(part<RecordTable>(window, "table_Para").columnCount(), 2);
    EXPECT_FALSE(part<QPushButton>(window, "pushButton_Add").isEnabled());
    EXPECT_EQ(part<QPushButton>(window, "pushButton_Add").toolTip(), "该整定原则没有参数");
    EXPECT_FALSE(part<QPushButton>(window, "pushButton_Delete").isEnabled());
    press(window, "pushButton_Ensure");
    EXPECT_EQ(said(), "请选择一组参数");
    EXPECT_TRUE(window.isVisible());
}

TEST_F(RuleWindows, AGroupThatLacksAParameterShowsItEmptyAndAsksForIt) {
    rules("DELETE FROM PARAINF WHERE RuleNo=1101 AND ParNo=2 AND C='Kk'");
    WinDlgEditAndSelectPara window(1, 1, 1101, 1);
    window.show();
    auto& table = part<RecordTable>(window, "table_Para");
    EXPECT_EQ(table.text(1, 2), "");
    EXPECT_EQ(table.text(1, 3), "0.05");
    press(window, "pushButton_Ensure");
    EXPECT_EQ(said(), "第2行参数中有数据错误，请检查");
}

TEST_F(RuleWindows, ASecondWindowOnTheSameTableCannotStore) {
    WinDlgSelectRule first(1, 1, 1, "t", "x");
    first.show();
    WinDlgSelectRule second(1, 2, 1, "t", "x");
    second.show();
    EXPECT_EQ(said(), "建立RLY_CASEINF_TEM_TM表失败");
    EXPECT_FALSE(part<QPushButton>(second, "pushButton_Back").isEnabled());
    EXPECT_NE(part<QPushButton>(second, "pushButton_Back").toolTip(), "");
    second.reject();
    press(first, "pushButton_Back");
    EXPECT_TRUE(noCopyLeft());
}
