#include <QElapsedTimer>
#include <QToolButton>

#include "programs/workflow/ui/RunProgress.h"
#include "tests/gui/workflow/RunWindow.h"

using testing::HasSubstr;

namespace {

/// Longest time between two turns of the event loop.
class Pulse {
  public:
    Pulse() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { longest_ = std::max(longest_, since_.restart()); });
        since_.start();
        timer_.start(5);
    }
    [[nodiscard]] qint64 longest() const { return longest_; }

  private:
    QTimer timer_;
    QElapsedTimer since_;
    qint64 longest_ = 0;
};

}  // namespace

TEST_F(RunWindow, AHangingProgramIsToldAndCanBeStopped) {
    program("HALDERN.EXE", "echo thinking >&2; exec sleep 600");
    const auto shown = window();
    part<RunProgress>(*shown, "RunProgress").setPatience(600);
    const auto& silence = part<QLabel>(*shown, "label_Silence");
    press(*shown, "Next");
    const QStringList step = allWorking();
    {
        const Pulse pulse;
        EXPECT_TRUE(waitFor([&] { return silence.isVisible(); }));
        EXPECT_THAT(silence.text().toStdString(), HasSubstr("仍在运行"));
        EXPECT_EQ(state(*shown), "-下一步 -确定 中止计算");
        QTest::qWait(300);
        EXPECT_LT(pulse.longest(), 50);
    }
    part<QToolButton>(*shown, "toolButton_Messages").click();
    takeScreenshot(*shown, "run-hanging");
    EXPECT_THAT(part<QPlainTextEdit>(*shown, "textEdit_Messages").toPlainText().toStdString(), HasSubstr("thinking"));
    EXPECT_EQ(part<RunProgress>(*shown, "RunProgress").warnings(), 1);
    press(*shown, "Cancel");
    ASSERT_TRUE(idles(*shown, 2000));
    EXPECT_FALSE(silence.isVisible());
    EXPECT_EQ(RunWindow::step(*shown), "计算已中止");
    EXPECT_THAT(said(), HasSubstr("HALDERN.EXE已中止"));
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_CRUDRM"), "0");  // no trace of the step
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_RDZTEM WHERE RDz<>0"), "0");
    mend("HALDERN.EXE");
    EXPECT_EQ(runThrough(*shown), "计算完成");
    EXPECT_GT(working(2, "Idz").toDouble(), 100);
}

TEST_F(RunWindow, AManualRunThatHangsCanBeStoppedToo) {
    const auto shown = waiting();
    program("HALDERN.EXE", "exec sleep 600");
    press(*shown, "Next");
    EXPECT_EQ(state(*shown), "-下一步 -确定 中止计算");
    press(*shown, "Cancel");
    ASSERT_TRUE(idles(*shown, 2000));
    EXPECT_EQ(state(*shown), "开始 确定 取消");
}

TEST_F(RunWindow, AProgramThatDiesInTheMiddleLeavesItsPartWithoutResult) {
    program("HALDERN.EXE", "if test -e once; then kill -KILL $$; fi; : > once; exec " MORVANE_BIN_DIR "/HALDERN.EXE");
    const auto shown = window();
    EXPECT_THAT(runThrough(*shown).toStdString(), HasSubstr("计算程序没有正常结束"));
    EXPECT_THAT(said(), HasSubstr("HALDERN.EXE异常终止"));
    const SettingTable& table = settings(*shown);
    const auto shownValue = [&](int relay) { return table.text(table.find(relay, "Idz"), column(1)).toDouble(); };
    EXPECT_GT(std::max(shownValue(1), shownValue(2)), 100);
    EXPECT_EQ(std::min(shownValue(1), shownValue(2)), 0);
    auto& missing = part<QListWidget>(*shown, "list_WithoutResult");
    ASSERT_GT(missing.count(), 0);
    EXPECT_THAT(missing.item(0)->text().toStdString(), HasSubstr("没有结果"));
    // from the list to the relay, where the reason stands in place of a value
    const int relay = shownValue(1) > 0 ? 2 : 1;
    settings(*shown).setCurrentCell(table.find(3 - relay, "Idz"), column(1));
    const auto ofRelay = [&](int row) { return missing.item(row)->data(Qt::UserRole).toInt() == relay; };
    int row = 0;
    while (row < missing.count() - 1 && !ofRelay(row)) ++row;
    emit missing.itemActivated(missing.item(row));
    EXPECT_EQ(table.currentRelay(), relay);
    ASSERT_GT(results(*shown).rowCount(), 0);
    takeScreenshot(*shown, "run-without-result");
    results(*shown).setCurrentCell(0, 4);
    EXPECT_FALSE(results(*shown).text(0, 4).isEmpty());
    EXPECT_NE(results(*shown).text(0, 4), "0");
    shown->Table_RDzTm_DoubleClicked();  // a reason is no value
    EXPECT_EQ(working(relay, "Idz").toDouble(), 0);
}

TEST_F(RunWindow, AProgramThatIsNotThereEndsTheRun) {
    ASSERT_TRUE(QFile::remove(places.programDir + "HALDERN.EXE"));
    for (const int mode : {1, 2}) {
        const auto shown = window(mode);
        press(*shown, "Next");
        ASSERT_TRUE(idles(*shown));
        EXPECT_THAT(step(*shown).toStdString(), HasSubstr("计算没有完成"));
        EXPECT_THAT(said(), HasSubstr("执行HALDERN.EXE失败"));
        press(*shown, "CalKlm");
        ASSERT_TRUE(idles(*shown));
        EXPECT_TRUE(settings(*shown).isEnabled());
        EXPECT_THAT(said(), HasSubstr("执行HALDERN.EXE失败"));
    }
}

TEST_F(RunWindow, WithoutCopiesOfTheTablesNothingIsCalculated) {
    exec("RENAME TABLE RLY_KFINF TO RLY_AWAY");
    const auto shown = window();
    EXPECT_THAT(said(), HasSubstr("RLY_KFINF"));
    EXPECT_EQ(state(*shown), "-开始 -确定 取消");
    EXPECT_THAT(step(*shown).toStdString(), HasSubstr("不能计算"));
    press(*shown, "Cancel");
    EXPECT_FALSE(shown->isVisible());
    exec("RENAME TABLE RLY_AWAY TO RLY_KFINF");
}

TEST_F(RunWindow, ARestoreThatFailsKeepsTheWindowUntilTheUserLetsItGo) {
    const QStringList before = allWorking();
    const auto shown = window();
    ASSERT_EQ(runThrough(*shown), "计算完成");
    exec("RENAME TABLE RLY_KFINF TO RLY_AWAY");
    const auto stays = answer(QMessageBox::No);
    press(*shown, "Cancel");
    EXPECT_THAT(stays->toStdString(), HasSubstr("工作表没有恢复"));
    EXPECT_TRUE(shown->isVisible());
    exec("RENAME TABLE RLY_AWAY TO RLY_KFINF");
    press(*shown, "Cancel");
    EXPECT_FALSE(shown->isVisible());
    EXPECT_EQ(allWorking(), before);
}
