#include <QFileDialog>
#include <QMenu>
#include <QToolButton>

#include "programs/workflow/PickerResults.h"
#include "programs/workflow/WinDlgEditAndSelectPara.h"
#include "programs/workflow/WinDlgselectSYS.h"
#include "tests/gui/workflow/PdfReader.h"
#include "tests/gui/workflow/RunWindow.h"

using testing::HasSubstr;

namespace {

constexpr char kRefused[] = "定值的数据类型错误，或者小于零";

/// The calculated case, its window open.
class RunWindowEdits : public RunWindow {
  protected:
    void SetUp() override {
        RunWindow::SetUp();
        shown_ = window();
        ASSERT_EQ(runThrough(*shown_), "计算完成");
        said();
    }
    [[nodiscard]] int rowOf(int relay, const QString& cdz = "Idz") const { return settings(*shown_).find(relay, cdz); }
    [[nodiscard]] QString cell(int relay, const QString& cdz = "Idz") const {
        return settings(*shown_).text(rowOf(relay, cdz), column(1));
    }
    void clickSetting(int relay, const QString& cdz = "Idz") const {
        SettingTable& table = settings(*shown_);
        table.setCurrentCell(rowOf(relay, cdz), SettingModel::Name);  // a click on the current cell would edit it
        const QModelIndex at = table.currentIndex().siblingAtColumn(column(1));
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(at).center());
    }
    void clickCheck(int at) const {
        PaintTable& table = checks(*shown_);
        table.scrollToItem(table.item(0, at));
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualItemRect(table.item(0, at)).center());
    }
    static void check(double first, double second, int flg) {
        exec("UPDATE RLY_RKLMTEM_TEM SET RFault1=?,RFault2=?,Flg=? WHERE RNo=1 AND PNo=1 AND Cdz='Idz'",
             {first, second, flg});
    }
    [[nodiscard]] double sensitivity() const { return checks(*shown_).text(0, 3).toDouble(); }
    static double stored() {
        return value("SELECT Valsense FROM RLY_RKLMTEM_TEM WHERE RNo=1 AND PNo=1 AND Cdz='Idz'").toDouble();
    }
    static void rules(const QString& text) { ASSERT_TRUE(sql::Query(tables::ruleConnection).exec(text)); }

    std::unique_ptr<WinDlgRlyCal> shown_;
};

}  // namespace

TEST_F(RunWindowEdits, AValueIsStoredInBothMeasures) {
    type(*shown_, rowOf(1), column(1), "1200");
    EXPECT_EQ(working(1, "Idz"), "1200");
    EXPECT_EQ(working(1, "Idz", 12), "5");  // ratio 240
    type(*shown_, rowOf(1, "t"), column(1), "0.5");
    EXPECT_EQ(working(1, "t") + working(1, "t", 12), "0.50.5");  // a time has no ratio
    EXPECT_EQ(said(), "");
    EXPECT_EQ(state(*shown_), "开始 确定 取消");
}

TEST_F(RunWindowEdits, ARefusedValueStopsEverythingUntilAGoodOne) {
    const QString before = contents("RLY_RLYOBJ_TEM");
    for (const char* text : {"-1", "abc", "1e999", "nan"}) {
        type(*shown_, rowOf(1), column(1), text);
        EXPECT_EQ(said(), kRefused) << text;
        EXPECT_EQ(contents("RLY_RLYOBJ_TEM"), before);
        EXPECT_EQ(state(*shown_), "-开始 -确定 取消");
        EXPECT_THAT(button(*shown_, "Ensure").toolTip().toStdString(), HasSubstr("无效"));
    }
    clickSetting(2);  // a look is no correction
    shown_->PushButton_Next_Clicked();
    shown_->PushButton_CalKlm_Clicked();
    shown_->PushButton_BuildCalBook_Clicked();
    shown_->PushButton_Ensure_Clicked();
    EXPECT_EQ(state(*shown_), "-开始 -确定 取消");
    EXPECT_TRUE(shown_->isVisible());
    EXPECT_FALSE(QFile::exists(places.workDir + "CalRef.ROT"));
    EXPECT_EQ(cell(1), "nan");
    type(*shown_, rowOf(2), column(1), "1500");
    EXPECT_EQ(state(*shown_), "开始 确定 取消");
    EXPECT_EQ(cell(1), working(1, "Idz"));  // what holds, not what was refused
    EXPECT_EQ(working(2, "Idz"), "1500");
    // also one that is still being typed
    settings(*shown_).setCurrentCell(rowOf(1), column(1));
    settings(*shown_).setFocus();
    QTest::keyClick(&settings(*shown_), Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), "x");
    shown_->PushButton_Ensure_Clicked();
    EXPECT_EQ(said(), kRefused);
    EXPECT_TRUE(shown_->isVisible());
}

TEST_F(RunWindowEdits, TheSensitivityFollowsTheValueAndTheParameterInUse) {
    check(1800, 600, 12);
    clickSetting(1);
    const double current = cell(1).toDouble();
    ASSERT_EQ(checks(*shown_).rowCount(), 1);
    EXPECT_NEAR(sensitivity(), 1800 / current, 1e-5);  // 12 is parameter one
    EXPECT_TRUE(checks(*shown_).isPainted(0, 5));
    clickCheck(5);  // in use already
    EXPECT_EQ(checks(*shown_).text(0, 9), "12");
    clickCheck(3);
    EXPECT_EQ(checks(*shown_).text(0, 9), "12");
    clickCheck(7);
    EXPECT_EQ(checks(*shown_).text(0, 9), "22");
    EXPECT_EQ(value("SELECT Flg FROM RLY_RKLMTEM_TEM WHERE RNo=1 AND PNo=1 AND Cdz='Idz'"), "22");
    EXPECT_NEAR(sensitivity(), 600 / current, 1e-5);
    EXPECT_TRUE(checks(*shown_).isPainted(0, 7));
    type(*shown_, rowOf(1), column(1), "1200");
    clickSetting(1);
    EXPECT_EQ(sensitivity(), 0.5);
    EXPECT_EQ(stored(), 0.5);
    QTest::keyClick(&settings(*shown_), Qt::Key_Down);  // a time has no check
    EXPECT_EQ(checks(*shown_).rowCount(), 0);
    EXPECT_FALSE(part<QLabel>(*shown_, "label_KlmReason").text().isEmpty());
    EXPECT_EQ(said(), "");
}

TEST_F(RunWindowEdits, AnImpossibleSensitivityIsToldAndHidden) {
    check(1800, 0, 11);
    clickSetting(1);
    const double before = stored();
    auto& other = part<QPushButton>(*shown_, "pushButton_OtherPara");
    EXPECT_FALSE(other.isVisible());
    type(*shown_, rowOf(1), column(1), "0");
    EXPECT_EQ(said(), "定值不能为0，请重新计算定值，灵敏度＝参量值/定值");
    clickSetting(1);
    said();
    EXPECT_TRUE(checks(*shown_).isRowHidden(0));
    EXPECT_EQ(stored(), before);
    EXPECT_THAT(part<QLabel>(*shown_, "label_KlmReason").text().toStdString(), HasSubstr("定值为0"));
    type(*shown_, rowOf(1), column(1), "1200");
    rules("UPDATE USEFKLM SET KlmFlg=2 WHERE RTypeNo=3");
    clickSetting(1);
    EXPECT_NEAR(sensitivity(), 1200.0 / 1800, 1e-6);  // setting over parameter
    clickCheck(7);
    EXPECT_EQ(said(), "参量值不能为0，请重新计算灵敏度校验用参量值，灵敏度＝定值/参量值");
    EXPECT_TRUE(checks(*shown_).isRowHidden(0));
    EXPECT_NEAR(stored(), 1200.0 / 1800, 1e-6);
    ASSERT_TRUE(other.isVisible());  // the way back, for there is no cell to click
    other.click();
    EXPECT_FALSE(checks(*shown_).isRowHidden(0));
    EXPECT_TRUE(checks(*shown_).isPainted(0, 5));
}

TEST_F(RunWindowEdits, IntermediateResultsAreThoseOfSettingRules) {
    exec("UPDATE RLY_RDZTEM SET RuleNo=999 WHERE RNo=1 AND RuleNo=3101");
    exec("UPDATE RLY_RDZTEM SET RuleNo=1000,Cdz=IF(Cdz='t','odd',Cdz) WHERE RNo=1 AND RuleNo=3102");
    clickSetting(1);
    RecordTable& found = results(*shown_);
    ASSERT_EQ(found.rowCount(), 2);
    EXPECT_EQ(found.text(0, 8) + found.text(1, 8), "10001000");
    QStringList names{found.text(0, 1), found.text(1, 1)};
    names.sort();
    EXPECT_EQ(names.join(' '), "odd 零序电流定值");  // a setting that the type does not have goes by its key
}

TEST_F(RunWindowEdits, AnotherParameterCalculatesTheRuleAgain) {
    clickSetting(1);
    RecordTable& found = results(*shown_);
    int row = 0;
    while (found.text(row, 8) != "3101" || found.text(row, 6) != "Idz") ++row;
    const double before = found.text(row, 4).toDouble();
    ASSERT_GT(before, 0);
    const auto pressButton = [&] {
        auto* editor = found.indexWidget(found.model()->index(row, 7));
        ASSERT_TRUE(editor);
        found.scrollToItem(found.item(row, 7));
        QTest::mouseClick(editor->findChild<QPushButton*>(), Qt::LeftButton);
    };
    whenOpen([](QDialog& dialog) { ASSERT_TRUE(qobject_cast<WinDlgEditAndSelectPara*>(&dialog)); });
    pressButton();  // called off
    EXPECT_EQ(state(*shown_), "开始 确定 取消");
    whenOpen([](QDialog& dialog) {
        RecordTable& groups = part<RecordTable>(dialog, "table_Para");
        groups.setText(0, 2, QString::number(2 * groups.text(0, 2).toDouble()));
        ::press(dialog, "pushButton_Ensure");
    });
    messages.clear();
    pressButton();
    EXPECT_EQ(state(*shown_), "-下一步 -确定 中止计算");
    ASSERT_TRUE(idles(*shown_));
    EXPECT_THAT(messages.join('|').toStdString(), HasSubstr("重新计算 "));
    EXPECT_NEAR(found.text(row, 4).toDouble(), 2 * before, 1e-3);
    EXPECT_NEAR(working(1, "Idz").toDouble(), before, 1e-2);  // taking it over is up to the user
    EXPECT_EQ(said(), "");
}

TEST_F(RunWindowEdits, ChosenModesAreStoredAndACalledOffChoiceChangesNothing) {
    auto& line = part<QLineEdit>(*shown_, "lineEdit_KlmSys");
    whenOpen([](QDialog& dialog) { ASSERT_TRUE(qobject_cast<WinDlgselectSYS*>(&dialog)); });
    press(*shown_, "KlmSys");
    EXPECT_EQ(line.text(), "最小方式,   ");
    whenOpen([](QDialog& dialog) {
        auto& offered = part<QListWidget>(dialog, "listBox_gBSysmode1_Sys");
        emit offered.doubleClicked(offered.model()->index(0, 0));
        emit offered.doubleClicked(offered.model()->index(1, 0));
        ::press(dialog, "pushButton_Ensure");
    });
    press(*shown_, "KlmSys");
    EXPECT_EQ(value("SELECT COUNT(DISTINCT SysNo) FROM RLY_KLMFSYS WHERE Case_No=1"), "2");
    EXPECT_THAT(line.text().toStdString(), testing::AllOf(HasSubstr("最小方式,   "), HasSubstr("最大方式,   ")));
}

TEST_F(RunWindowEdits, ASensitivityRunStandsUnderNumber0AndIsConfirmed) {
    const auto ofCase = [] {
        return value("SELECT GROUP_CONCAT(RNo,RuleNo,Cdz,RDz ORDER BY ID) FROM RLY_RDZTEM WHERE Case_No=1");
    };
    const QString before = ofCase();
    clickSetting(1);
    QString name;
    whenOpen([&](QDialog& dialog) {
        name = dialog.metaObject()->className();
        dialog.accept();
    });
    press(*shown_, "CalKlm");
    EXPECT_FALSE(settings(*shown_).isEnabled());
    EXPECT_FALSE(results(*shown_).isEnabled());
    EXPECT_EQ(state(*shown_), "-下一步 -确定 中止计算");
    ASSERT_TRUE(waitFor([&] { return !name.isEmpty() && !QApplication::activeModalWidget(); }));
    EXPECT_EQ(name, "WinDlgEnsureKlmP");
    EXPECT_TRUE(settings(*shown_).isEnabled());
    EXPECT_EQ(state(*shown_), "开始 确定 取消");
    EXPECT_EQ(ofCase(), before);
    EXPECT_GT(value("SELECT COUNT(*) FROM RLY_RDZTEM WHERE Case_No=0 AND RDz>0").toInt(), 0);
    EXPECT_EQ(said(), "");
}

TEST_F(RunWindowEdits, ASensitivityWithoutAComputedParameterIsNoFigureUntilItIsConfirmed) {
    clickSetting(1);
    const double current = cell(1).toDouble();
    EXPECT_FALSE(checks(*shown_).isRowHidden(0));
    EXPECT_EQ(checks(*shown_).text(0, 3), "参量未计算");
    EXPECT_THAT(checks(*shown_).item(0, 3)->toolTip().toStdString(), HasSubstr("计算灵敏度参量"));
    takeScreenshot(*shown_, "run-parameter-open");
    EXPECT_NEAR(stored(), 1 / current, 1e-6) << "the row is kept as it is formed";
    bool confirmed = false;
    whenOpen([&](QDialog& dialog) {
        ::press(dialog, "pushButton_Ensure");
        confirmed = true;
    });
    press(*shown_, "CalKlm");
    ASSERT_TRUE(waitFor([&] { return confirmed && !QApplication::activeModalWidget(); }));
    const double parameter = checks(*shown_).text(0, 5).toDouble();
    EXPECT_GT(parameter, 1);
    EXPECT_NEAR(sensitivity(), parameter / current, 1e-4 * parameter / current);
    EXPECT_EQ(part<QLabel>(*shown_, "label_KlmReason").text(), "");
}

TEST_F(RunWindowEdits, ABookWithoutResultsIsToldInsteadOfWritten) {
    exec("DELETE FROM RLY_RDZTEM WHERE Case_No=1");
    press(*shown_, "BuildCalBook");
    EXPECT_EQ(said(), "没有计算结果，不能生成计算书");
    EXPECT_FALSE(QFile::exists(places.workDir + "CalRef.ROT"));
}

TEST_F(RunWindowEdits, SensitivitiesOfAnotherCaseDoNotStandInThisOne) {
    clickSetting(1);
    exec("UPDATE RLY_RKLMTEM_TEM SET Valsense=17.5");
    ASSERT_TRUE(press(*shown_, "Ensure"));
    shown_ = window();
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_RKLMTEM_TEM WHERE Valsense>17"), "0");
    exec("UPDATE RLY_RKLMTEM_TEM SET RNo=9 WHERE RNo=2");
    ASSERT_TRUE(press(*shown_, "Ensure"));
    shown_ = window();
    EXPECT_EQ(value("SELECT GROUP_CONCAT(DISTINCT RNo ORDER BY RNo) FROM RLY_RKLMTEM_TEM"), "1,2");
}

TEST_F(RunWindowEdits, TheBookIsWrittenShownAndExported) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    press(*shown_, "BuildCalBook");
    qputenv("PATH", path);
    EXPECT_EQ(said(), "生成计算书失败");  // no viewer
    EXPECT_GT(QFileInfo(places.workDir + "CalRef.ROT").size(), 100);
    program("NotePad", "cp \"$1\" " + places.programDir.toUtf8() + "shown");
    press(*shown_, "BuildCalBook");
    EXPECT_TRUE(waitFor([&] { return QFile::exists(places.programDir + "shown"); }, 5000));
    EXPECT_EQ(said(), "");
    const auto actions = part<QToolButton>(*shown_, "toolButton_Book").menu()->actions();
    ASSERT_EQ(actions.size(), 3);
    for (const char* file : {"book.pdf", "book.html"}) {
        whenOpen([&](QDialog& dialog) {
            auto* choice = qobject_cast<QFileDialog*>(&dialog);
            ASSERT_TRUE(choice);
            part<QLineEdit>(dialog, "fileNameEdit").setText(folder.filePath(file));
            QMetaObject::invokeMethod(choice, "accept");
        });
        actions[QString(file).endsWith("pdf") ? 1 : 2]->trigger();
        EXPECT_THAT(step(*shown_).toStdString(), HasSubstr("已写入")) << file;
    }
    PdfReader pdf(folder.filePath("book.pdf"));
    EXPECT_TRUE(pdf.whole);
    EXPECT_GT(pdf.links.size(), 5);
    for (const auto& heading : pdf.outline) EXPECT_GE(heading.at.page, 0) << heading.title.toStdString();
    QFile page(folder.filePath("book.html"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    EXPECT_TRUE(page.readAll().endsWith("</body>\n</html>\n"));
    EXPECT_EQ(said(), "");
}

namespace {

/// Relay 1 coordinates with relay 2 behind its line: parts 1 and 2.
class RunWindowCoordination : public RunWindow {
  protected:
    void SetUp() override {
        WorkflowWindows::SetUp();
        prepare({"青白I", "白石"}, {1, 2});
    }
    static double second() {
        return value("SELECT RDz FROM RLY_RDZTEM WHERE Case_No=1 AND RNo=1 AND PNo=2 AND RuleNo=3201 AND Cdz='Idz'")
            .toDouble();
    }
};

}  // namespace

TEST_F(RunWindowCoordination, AnEditCalculatesTheRulesThatDependOnIt) {
    const auto shown = window();
    ASSERT_EQ(runThrough(*shown), "计算完成");
    const double before = second(), first = working(2, "Idz").toDouble();
    ASSERT_GT(before, 0);
    messages.clear();
    type(*shown, settings(*shown).find(2, "Idz"), column(1), QString::number(3 * first));
    EXPECT_EQ(button(*shown, "Cancel").text(), "中止计算");
    ASSERT_TRUE(idles(*shown));
    EXPECT_THAT(messages.join('|').toStdString(), HasSubstr("重新计算 青白I"));
    EXPECT_NEAR(second(), 3 * before, 1e-3 * before);
    EXPECT_EQ(said(), "");
}

TEST_F(RunWindowCoordination, ARecalculationThatHangsCanBeStoppedAndLeavesTheResultsOfBefore) {
    const auto shown = window();
    ASSERT_EQ(runThrough(*shown), "计算完成");
    const double before = second();
    program("HALDERN.EXE", "exec sleep 600");
    said();
    type(*shown, settings(*shown).find(2, "Idz"), column(1), "123");
    EXPECT_EQ(state(*shown), "-下一步 -确定 中止计算");
    press(*shown, "Cancel");
    ASSERT_TRUE(idles(*shown, 2000));
    EXPECT_EQ(second(), before);
    EXPECT_EQ(working(2, "Idz"), "123");  // what the user typed stays
    EXPECT_THAT(said(), HasSubstr("重新计算没有完成"));
}
