#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTabWidget>
#include <numeric>

#include "programs/frame/ui/PaintTable.h"
#include "programs/workflow/WinDlgRlyCal.h"
#include "programs/workflow/ui/SettingTable.h"
#include "tests/gui/workflow/WorkflowWindows.h"

/// The run window on a case of the demonstration network: zero-sequence relays 1 and 2, part 1.
class RunWindow : public WorkflowWindows {
  protected:
    void SetUp() override {
        WorkflowWindows::SetUp();
        prepare({"青白I", "青龙"}, {1});
    }
    /// \param lines  relays 1, 2 .. at their first ends
    void prepare(const QStringList& lines, const QVector<int>& parts) {
        installAt(lines, 3);
        QVector<int> relays(lines.size());
        std::iota(relays.begin(), relays.end(), 1);
        makeCase(3, relays, parts);
        ASSERT_TRUE(cases.setSensitivityModes({ModeStore::numberOf("最小方式")}));
        ASSERT_EQ(start(), "ready") << said();
        said();
    }
    /// \param mode  1 manual, 2 automatic
    std::unique_ptr<WinDlgRlyCal> window(int mode = 2) {
        const CaseNode& node = *cases.current();
        auto made =
            std::make_unique<WinDlgRlyCal>(places.rtdbName, places.rtdbPath, places.workDir, node.Case_No, node.RTypeNo,
                                           "零序电流保护", places.programDir, folder.path() + "/", mode);
        made->show();
        return made;
    }
    static SettingTable& settings(const WinDlgRlyCal& window) { return part<SettingTable>(window, "table_RlyObj"); }
    static RecordTable& results(const WinDlgRlyCal& window) { return part<RecordTable>(window, "table_RDzTm"); }
    static PaintTable& checks(const WinDlgRlyCal& window) { return part<PaintTable>(window, "table_Klm"); }
    static QString step(const WinDlgRlyCal& window) { return part<QLabel>(window, "label_Step").text(); }
    static QPushButton& button(const WinDlgRlyCal& window, const char* name) {
        return part<QPushButton>(window, (std::string("pushButton_") + name).c_str());
    }
    static bool press(const WinDlgRlyCal& window, const char* name) {
        const bool could = button(window, name).isEnabled();
        QTest::mouseClick(&button(window, name), Qt::LeftButton);
        return could;
    }
    /// Captions of the three buttons, a "-" before those that cannot be pressed.
    static std::string state(const WinDlgRlyCal& window) {
        QStringList texts;
        for (const char* name : {"Next", "Ensure", "Cancel"})
            texts << (button(window, name).isEnabled() ? "" : "-") + button(window, name).text();
        return texts.join(' ').toStdString();
    }
    static bool idles(const WinDlgRlyCal& window, int ms = 20000) {
        return waitFor([&] { return button(window, "Cancel").text() == "取消"; }, ms);
    }
    static bool waits(const WinDlgRlyCal& window) {
        return waitFor([&] { return button(window, "Next").isEnabled(); });
    }
    /// Runs automatically to the end. \return what the window says then
    static QString runThrough(const WinDlgRlyCal& window) {
        EXPECT_TRUE(press(window, "Next"));
        EXPECT_TRUE(idles(window));
        return step(window);
    }
    /// Types a text into a cell as a user does.
    static void type(const WinDlgRlyCal& window, int row, int column, const QString& text) {
        SettingTable& table = settings(window);
        table.setCurrentCell(row, column);
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_Return);
        auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_TRUE(editor) << "no editor";
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();  // the text is taken from the event loop
    }
    static void doubleClick(RecordTable& table, int row, int column) {
        table.scrollToItem(table.item(row, column));
        const QPoint at = table.visualItemRect(table.item(row, column)).center();
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, at);
    }
    static QString working(int relay, const QString& cdz, int column = 11) {
        return value("SELECT NDz" + QString::number(column) + " FROM RLY_RLYOBJ_TEM WHERE RNo=? AND Cdz=?",
                     {relay, cdz});
    }
    /// Answers the next question. \return the question, once it has come
    static std::shared_ptr<QString> answer(QMessageBox::StandardButton button) {
        auto asked = std::make_shared<QString>();
        whenOpen([=](QDialog& dialog) {
            auto* box = qobject_cast<QMessageBox*>(&dialog);
            if (!box) return;
            *asked = box->text();
            box->button(button)->click();
        });
        return asked;
    }
    static inline const QStringList kWorking = {"RLY_RLYOBJ_TEM", "RLY_RDZTEM",  "RLY_FAULTINF",
                                                "RLY_KFINF",      "RLY_RRVIN",   "RLY_RRNPH",
                                                "RLY_CFZXS",      "RLY_CFZXSRM", "RLY_CRUDRM"};
    static QStringList allWorking() {
        QStringList all;
        for (const QString& table : kWorking) all << contents(table);
        return all;
    }
    static int shadows() {
        return value(
                   "SELECT COUNT(*) FROM information_schema.TABLES WHERE TABLE_SCHEMA=DATABASE() AND TABLE_NAME LIKE "
                   "'%\\_TM'")
            .toInt();
    }
    /// A window as it stood after the first relay part of a manual run.
    std::unique_ptr<WinDlgRlyCal> waiting() {
        auto made = window(1);
        press(*made, "Next");
        EXPECT_TRUE(waits(*made));
        return made;
    }
    static int column(int part) { return SettingModel::FirstValue + part - 1; }
};
