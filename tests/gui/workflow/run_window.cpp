#include "tests/gui/workflow/RunWindow.h"

using testing::HasSubstr;

TEST_F(RunWindow, OpensWithTheSettingsOfTheCaseAndNothingToLose) {
    const auto shown = window();
    EXPECT_EQ(shown->windowTitle(), "计算窗口");
    EXPECT_EQ(state(*shown), "开始 确定 取消");
    ASSERT_EQ(settings(*shown).rows().size(), 4);
    EXPECT_EQ(settings(*shown).row(), 0);
    EXPECT_EQ(settings(*shown).column(), column(1));
    EXPECT_EQ(settings(*shown).settings().partOf(column(4)), 4);
    EXPECT_EQ(part<QLineEdit>(*shown, "lineEdit_KlmSys").text(), "最小方式,   ");
    EXPECT_EQ(shadows(), 9);
    takeScreenshot(*shown, "run-idle");
    QTest::keyClick(shown.get(), Qt::Key_Escape);  // asks nothing
    EXPECT_EQ(shown->result(), QDialog::Rejected);
    EXPECT_FALSE(shown->isVisible());
    EXPECT_EQ(shadows(), 0);
    EXPECT_EQ(said(), "");
}

TEST_F(RunWindow, AnAutomaticRunGivesWhatItGivesWithoutAWindow) {
    const QStringList before = allWorking();
    QString expected;
    {
        RunSession session(*cases.current(), places);
        ASSERT_TRUE(session.open());
        ASSERT_EQ(run(session, RunSession::Automatic), "complete") << said();
        expected = contents("RLY_RLYOBJ_TEM");
        ASSERT_TRUE(session.cancel());
    }
    ASSERT_EQ(start(), "ready");
    const auto shown = window();
    press(*shown, "Next");
    EXPECT_EQ(state(*shown), "-下一步 -确定 中止计算");
    EXPECT_FALSE(button(*shown, "Next").toolTip().isEmpty());
    EXPECT_EQ(settings(*shown).editTriggers(), QAbstractItemView::NoEditTriggers);
    ASSERT_TRUE(idles(*shown));
    EXPECT_EQ(step(*shown), "计算完成");
    EXPECT_EQ(state(*shown), "开始 确定 取消");
    EXPECT_EQ(contents("RLY_RLYOBJ_TEM"), expected);
    const SettingTable& table = settings(*shown);
    for (const int relay : {1, 2}) {
        const double current = table.text(table.find(relay, "Idz"), column(1)).toDouble();
        EXPECT_GT(current, 100);
        EXPECT_EQ(current, working(relay, "Idz").toDouble());
        EXPECT_FALSE(table.text(table.find(relay, "Idz"), table.settings().changeColumn(1)).isEmpty());
    }
    takeScreenshot(*shown, "run-finished");
    shown->resize(1440, 920);
    EXPECT_GE(table.viewport()->height() / table.rowHeight(0), 8);
    EXPECT_EQ(table.row(), 0);
    EXPECT_EQ(table.column(), column(1));
    EXPECT_TRUE(table.selectionModel()->isSelected(table.currentIndex()));
    EXPECT_GT(results(*shown).rowCount(), 0);  // of the relay that is looked at
    EXPECT_EQ(said(), "");
    press(*shown, "Ensure");
    EXPECT_EQ(shown->result(), QDialog::Accepted);
    EXPECT_EQ(contents("RLY_RLYOBJ_TEM"), expected);
    EXPECT_NE(allWorking(), before);
    EXPECT_EQ(shadows(), 0);
}

TEST_F(RunWindow, AManualRunShowsEachRelayPartAndEndsAtTheSecondPress) {
    const auto shown = window(1);
    const SettingTable& table = settings(*shown);
    press(*shown, "Next");
    EXPECT_EQ(state(*shown), "-下一步 -确定 中止计算");
    ASSERT_TRUE(waits(*shown));
    EXPECT_EQ(state(*shown), "下一步 -确定 中止计算");
    takeScreenshot(*shown, "run-waiting");
    const int first = table.currentRelay();
    ASSERT_GT(results(*shown).rowCount(), 0);
    for (int row = 0; row < results(*shown).rowCount(); ++row)
        EXPECT_GT(results(*shown).text(row, 8).toInt(), 999);  // rules of sensitivity parameters are none
    // nothing is taken over by itself
    EXPECT_EQ(working(first, "Idz").toDouble(), table.rows()[table.find(first, "Idz")].newValue[0].toDouble());
    press(*shown, "Next");
    ASSERT_TRUE(waits(*shown));
    EXPECT_EQ(button(*shown, "Next").text(), "下一步");
    EXPECT_NE(table.currentRelay(), first);
    press(*shown, "Next");
    EXPECT_EQ(state(*shown), "完成 -确定 中止计算");
    press(*shown, "Next");
    EXPECT_EQ(state(*shown), "开始 确定 取消");
    EXPECT_EQ(step(*shown), "计算完成");
    EXPECT_GT(value("SELECT COUNT(*) FROM RLY_RDZTEM WHERE RDz>0").toInt(), 1);
}

TEST_F(RunWindow, AManualRunThatTakesEachValueOverGivesThoseOfAnAutomaticOne) {
    const auto automatic = window();
    ASSERT_EQ(runThrough(*automatic), "计算完成");
    const QString expected = working(1, "Idz") + "," + working(2, "Idz") + "," + working(1, "Idz", 12);
    press(*automatic, "Cancel");
    ASSERT_EQ(start(), "ready");
    const auto shown = window(1);
    RecordTable& found = results(*shown);
    press(*shown, "Next");
    for (int relay = 0; relay < 2; ++relay) {
        ASSERT_TRUE(waits(*shown));
        int best = -1;  // a current is the greatest of those that the rules give
        for (int row = 0; row < found.rowCount(); ++row)
            if (found.text(row, 6) == "Idz" &&
                (best < 0 || found.text(row, 4).toDouble() > found.text(best, 4).toDouble()))
                best = row;
        ASSERT_GE(best, 0);
        doubleClick(found, best, 3);  // the rule's cell takes nothing
        EXPECT_NE(working(settings(*shown).currentRelay(), "Idz"), found.text(best, 4));
        found.setCurrentCell(best, 4);
        found.setFocus();
        relay == 0 ? QTest::keyClick(&found, Qt::Key_Return) : doubleClick(found, best, 4);
        ASSERT_TRUE(waits(*shown));
        press(*shown, "Next");
    }
    press(*shown, "Next");
    EXPECT_EQ(state(*shown), "开始 确定 取消");
    const auto rounded = [](const QString& text) { return QString::number(text.toDouble(), 'g', 6); };
    EXPECT_EQ(rounded(working(1, "Idz")) + "," + rounded(working(2, "Idz")) + "," + rounded(working(1, "Idz", 12)),
              expected);
}

TEST_F(RunWindow, AManualRunCanBeAbortedAndBegunAgain) {
    auto shown = waiting();
    press(*shown, "Cancel");
    EXPECT_EQ(state(*shown), "开始 确定 取消");
    EXPECT_EQ(step(*shown), "计算已中止");
    takeScreenshot(*shown, "run-aborted");
    const auto relay = settings(*shown).currentRelay();
    press(*shown, "Next");
    ASSERT_TRUE(waits(*shown));
    EXPECT_EQ(settings(*shown).currentRelay(), relay);  // from the first part on
    EXPECT_EQ(state(*shown), "下一步 -确定 中止计算");
    for (int press_ = 0; press_ < 3; ++press_) {
        press(*shown, "Next");
        ASSERT_TRUE(waits(*shown));
    }
    EXPECT_EQ(step(*shown), "计算完成");
    EXPECT_EQ(said(), "");
}

TEST_F(RunWindow, CancelAndTheFrameTakeAllNineTablesBack) {
    exec("INSERT INTO RLY_RRNPH (NCal,RNo,PNo,Case_No) VALUES (1,1,1,1)");
    const QStringList before = allWorking();
    for (const bool byButton : {true, false}) {
        const auto shown = window();
        ASSERT_EQ(runThrough(*shown), "计算完成");
        for (const char* table : {"RLY_RLYOBJ_TEM", "RLY_RDZTEM", "RLY_FAULTINF", "RLY_RRVIN", "RLY_RRNPH"})
            EXPECT_NE(contents(table), before[kWorking.indexOf(table)]) << table;
        if (byButton) {
            press(*shown, "Cancel");
        } else {
            const auto kept = answer(QMessageBox::No);
            QTest::keyClick(shown.get(), Qt::Key_Escape);
            EXPECT_THAT(kept->toStdString(), HasSubstr("放弃"));
            EXPECT_TRUE(shown->isVisible());
            answer(QMessageBox::Yes);
            shown->close();
        }
        EXPECT_FALSE(shown->isVisible());
        EXPECT_EQ(shown->result(), QDialog::Rejected);
        EXPECT_EQ(allWorking(), before);
        EXPECT_EQ(shadows(), 0);
    }
}

TEST_F(RunWindow, ClosingInTheMiddleOfARunEndsItFirst) {
    const QStringList before = allWorking();
    program("HALDERN.EXE", "exec sleep 600");
    const auto shown = window();
    press(*shown, "Next");
    const auto goesOn = answer(QMessageBox::No);
    shown->close();
    EXPECT_THAT(goesOn->toStdString(), HasSubstr("正在计算"));
    EXPECT_TRUE(shown->isVisible());
    EXPECT_EQ(button(*shown, "Cancel").text(), "中止计算");
    answer(QMessageBox::Yes);
    shown->close();
    EXPECT_TRUE(waitFor([&] { return !shown->isVisible(); }));
    EXPECT_EQ(allWorking(), before);
    EXPECT_THAT(said(), HasSubstr("HALDERN.EXE已中止"));
}

TEST_F(RunWindow, ARunWithNothingToCalculateGivesTheButtonsBack) {
    exec("UPDATE RLY_CASEINF SET PValid=0");
    for (const int mode : {1, 2}) {
        const auto shown = window(mode);
        press(*shown, "Next");
        EXPECT_EQ(state(*shown), "开始 确定 取消");
        EXPECT_THAT(step(*shown).toStdString(), HasSubstr("计算没有开始"));
        EXPECT_FALSE(said().empty());
        EXPECT_TRUE(press(*shown, "Ensure"));
    }
    exec("DELETE FROM RLY_RLYOBJ_TEM");
    const auto empty = window();
    press(*empty, "Next");
    press(*empty, "CalKlm");
    EXPECT_EQ(said(), "作业中没有选择保护，不能进行计算|作业中没有选择保护，不能进行计算");
    EXPECT_EQ(state(*empty), "开始 确定 取消");
}
