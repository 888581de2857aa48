// From an empty project to stored settings, once through the windows and once through the command line.
#include <QRadioButton>
#include <QTabWidget>

#include "platform/host/WinDockFeedback.h"
#include "platform/server/Server.h"
#include "programs/frame/ui/RecordTable.h"
#include "tests/flow/CommandLine.h"
#include "tests/gui/workflow/CaseEditor.h"

/// Two projects on the demonstration network with the same zero-sequence relays.
class CaseFlow : public testing::Test {
  protected:
    static constexpr const char* kByWindow = "窗口 'w'";
    static constexpr const char* kByCommand = "命令";

    void SetUp() override {
        WinDockFeedback::setReceiver([this](const char* text, int level) {
            if (level > WinDockFeedback::Diagram) errors << QString::fromUtf8(text);
        });
        for (const char* name : {kByWindow, kByCommand})
            callAll({{"project", "new", name, "--replace"},
                     {"import", name, MORVANE_SOURCE_DIR "/data/networks/demo"},
                     {"relays", "install", name, "--type", "3", "--level", "220", "--ct", "240", "--pt", "2200"},
                     {"relays", "install", name, "--type", "3", "--level", "110", "--ct", "120", "--pt", "1100"}});
    }
    void TearDown() override {
        editor.reset();
        realTime.close();
        callAll({{"project", "delete", kByWindow}, {"project", "delete", kByCommand}});
        WinDockFeedback::setReceiver({});
    }

    void openProject(const char* name) {
        const auto project = projects.open(name);
        ASSERT_TRUE(project);
        QString error;
        ASSERT_TRUE(realTime.open(project->realTimeFile(), &error)) << error.toStdString();
        editor =
            std::make_unique<WinDlgRlyCalMain>(project->realTimeName, project->realTimePath(), project->workDirectory(),
                                               -1, MORVANE_BIN_DIR "/", MORVANE_BIN_DIR "/", &realTime, nullptr);
        editor->show();
    }
    void leaveProject() {
        editor.reset();
        realTime.close();
        for (const QString& connection : {tables::relayConnection, tables::ruleConnection})
            server::closeConnection(connection);
    }
    /// Deals with the next dialog of a class; the window behind the dialog goes on when it is closed.
    static void deal(const QString& name, const std::function<void(QDialog&)>& act, int* dealt) {
        QTimer::singleShot(20, qApp, [=] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog || dialog->objectName() != name) return deal(name, act, dealt);
            act(*dialog);
            if (dialog->isVisible()) dialog->reject();
            ++*dealt;
        });
    }
    static void pickMode(QDialog& picker, const QString& name) {
        auto& all = part<QListWidget>(picker, "listBox_gBSysmode1_Sys");
        all.setCurrentItem(all.findItems(name, Qt::MatchExactly).value(0));
        press(picker, "pushButton_Add");
        press(picker, "pushButton_Ensure");
    }
    void choose(const char* combo, int index) const {
        auto& box = part<QComboBox>(*editor, combo);
        box.setCurrentIndex(index);
        emit box.activated(index);
    }

    void insertCase() {
        part<QToolButton>(*editor, "ToolButton_InsertRec").click();
        choose("comboBox_RType", part<QComboBox>(*editor, "comboBox_RType").findData(3));
        part<QLineEdit>(*editor, "lineEdit_CaseInf_Name").setText("零序");
        choose("comboBox_CaseInf_FlowNM", part<QComboBox>(*editor, "comboBox_CaseInf_FlowNM").findText("基础方案"));
        deal(
            "WinDlgSelectRly",
            [](QDialog& picker) {
                part<QRadioButton>(picker, "radioButton_gBSelection_V").click();
                auto& levels = part<QComboBox>(picker, "comboBox_gBSelection_V");
                for (int i = 0; i < levels.count(); ++i)
                    if (levels.itemText(i).toDouble() == 220) levels.setCurrentIndex(i);
                press(picker, "pushButton_Ensure");
            },
            &dealt);
        press(*editor, "pushButton_AddRly");
        deal(
            "WinDlgselectSYS", [](QDialog& picker) { pickMode(picker, "最大方式"); }, &dealt);
        press(*editor, "pushButton_BigSys");
        deal(
            "WinDlgselectSYS", [](QDialog& picker) { pickMode(picker, "最小方式"); }, &dealt);
        press(*editor, "pushButton_SmallSys");
        const auto boxes = editor->findChildren<QCheckBox*>("checkBox_Part1");
        for (const int part : {2, 3}) boxes[part]->click();
    }
    /// Leaves a rule out for all relays of the case.
    void leaveOut(const QString& rule) {
        deal(
            "WinDlgSelectRule",
            [&](QDialog& rules) {
                for (auto* table : rules.findChildren<RecordTable*>("table_tdRule1_Rule"))
                    for (int row = 0; row < table->rowCount(); ++row)
                        if (table->text(row, 4) == rule) table->setCheck(row, 0, false);
                part<QCheckBox>(rules, "check_InAllRly").setChecked(true);
                press(rules, "pushButton_Back");
            },
            &dealt);
        press(*editor, "pushButton_Rule");
    }
    void calculate() {
        const int before = dealt;
        deal(
            "WinDlgRlyCal",
            [&](QDialog& run) {
                press(run, "pushButton_Next");
                EXPECT_TRUE(
                    QTest::qWaitFor([&] { return part<QPushButton>(run, "pushButton_Ensure").isEnabled(); }, 120000));
                press(run, "pushButton_Ensure");
            },
            &dealt);
        press(*editor, "pushButton_AutoCal");
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return dealt > before && part<QPushButton>(*editor, "pushButton_SaveDz").isEnabled(); }, 120000));
    }
    void save(const char* button) {
        deal(
            "WinDlgSaveDZ", [&](QDialog& dialog) { press(dialog, button); }, &dealt);
        press(*editor, "pushButton_SaveDz");
    }
    static std::string value(const QString& text) { return sql::scalar({}, text).toString().toStdString(); }
    /// The stored settings of all relays, to the last bit.
    QString settingsOf(const char* name) {
        projects.open(name);
        const QString rows = contents("RLY_RDZ");
        leaveProject();
        return rows;
    }

    ProjectStore projects;
    dbDatabase realTime;
    std::unique_ptr<WinDlgRlyCalMain> editor;
    QStringList errors;
    int dealt = 0;
};

TEST_F(CaseFlow, WindowsAndCommandLineStoreTheSameSettingsBitForBit) {
    openProject(kByWindow);
    insertCase();
    leaveOut("3202");
    const QString before = contents("RLY_RDZ");
    EXPECT_EQ(value("SELECT COUNT(*) FROM RLY_CASEINF WHERE RValid=1 AND RuleNo=3202"), "0");
    calculate();
    const auto& table = part<SettingTable>(*editor, "table_ObjRly");
    ASSERT_GT(table.rows().size(), 20);
    EXPECT_GT(table.rows()[0].newValue[0].toDouble(), 100);
    takeScreenshot(*editor, "case-editor-calculated");
    save("pushButton_SaveChangeHB");
    const QString changed = contents("RLY_RDZ");
    EXPECT_NE(changed, before);
    calculate();  // on the settings stored just now, which other relays coordinate with
    save("pushButton_SaveNotChangeHB");
    press(*editor, "Button_OK");
    EXPECT_EQ(editor->result(), QDialog::Accepted);
    EXPECT_EQ(errors.join('|').toStdString(), "");
    EXPECT_EQ(dealt, 8);
    leaveProject();

    const QStringList made = {"case",  "new",      kByCommand,       "--type", "3", "--name", "零序",  "--level",
                              "220",   "--scheme", "基础方案",       "--part", "1", "2",      "--max", "最大方式",
                              "--min", "最小方式", "--without-rule", "3202"};
    callAll({made, {"case", "run", kByCommand, "零序"}, {"case", "save", kByCommand, "零序", "--force"}});
    EXPECT_EQ(settingsOf(kByCommand), changed);
    callAll({{"case", "run", kByCommand, "零序"}, {"case", "save", kByCommand, "零序", "--force", "--keep-backup"}});
    const QString byWindow = settingsOf(kByWindow);
    EXPECT_EQ(settingsOf(kByCommand), byWindow);
    EXPECT_NE(byWindow, before);
}
