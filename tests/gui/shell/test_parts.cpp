// The message dock, the import report, and the making of projects, each by itself.
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QToolButton>
#include <QTreeView>
#include <thread>

#include "platform/host/WinDockFeedback.h"
#include "shell/ImportReport.h"
#include "shell/WinDlgProject.h"
#include "tests/gui/shell/Workbench.h"

using testing::HasSubstr;
using testing::Not;

namespace {

void tell(const std::string& text, int level) { WinDockFeedback::ShowMessage(text.c_str(), "", "", "", level); }

std::string contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

}  // namespace

TEST(Drawings, OfTheHostAndOfTheShellAreBothInTheProgram) {
    EXPECT_TRUE(QFile::exists(":/morvane/icons/insert.svg"));
    EXPECT_TRUE(QFile::exists(":/icons/new.svg"));
}

TEST(Messages, AreFilteredByLevelAndTextCopiedAndFollowedToTheNewest) {
    shell::MessageDock dock;
    dock.resize(600, 200);
    dock.show();
    std::thread([] { tell("from a thread", WinDockFeedback::Warning); }).join();
    tell("broken", WinDockFeedback::Error);
    for (int i = 0; i < 30000; ++i) tell("line " + std::to_string(i), WinDockFeedback::Information);
    tell("last broken", WinDockFeedback::Error);
    ASSERT_TRUE(waitFor([&] { return dock.model().rowCount() > 0; }));
    EXPECT_EQ(dock.model().rowCount(), shell::MessageModel::kept);
    EXPECT_EQ(dock.model().count(shell::Grade::Error), 1) << "the oldest go first";
    QCoreApplication::processEvents();
    auto* bar = dock.findChild<QTreeView*>()->verticalScrollBar();
    EXPECT_EQ(bar->value(), bar->maximum());

    dock.findChild<QToolButton*>("toolButton_Grade1")->setChecked(false);
    EXPECT_EQ(dock.text().count('\n'), 1);
    dock.copy();
    EXPECT_THAT(QGuiApplication::clipboard()->text().toStdString(), HasSubstr("\t错误\tlast broken\n"));
    dock.findChild<QToolButton*>("toolButton_Grade1")->setChecked(true);
    dock.findChild<QLineEdit*>("lineEdit_Filter")->setText("LINE 2999");
    EXPECT_EQ(dock.text().count('\n'), 10);
    dock.clear();
    EXPECT_EQ(dock.text(), "");
}

TEST(ImportReport, HoldsEveryFindingInBothFormsAndEscapesNames) {
    import::Report report;
    using Kind = import::Finding::Kind;
    report.add(Kind::Came, "线路", "导入", 7);
    report.add(Kind::Defaulted, "发电机", "零序电抗取缺省值", 3);
    report.add(Kind::Suspicious, "L<1>&", "r0 < r1");
    shell::ImportReportPage page;
    page.show(report, "甲");
    const QTemporaryDir folder;
    ASSERT_TRUE(page.saveAs(folder.filePath("a.html")) && page.saveAs(folder.filePath("a.txt")));
    const std::string html = contentOf(folder.filePath("a.html"));
    const std::string text = contentOf(folder.filePath("a.txt"));
    EXPECT_THAT(html, HasSubstr("L&lt;1&gt;&amp;</td><td class=\"n\">1</td><td>r0 &lt; r1"));
    EXPECT_THAT(html, Not(HasSubstr("L<1>")));
    EXPECT_THAT(text, HasSubstr("可疑 (1)\n  L<1>&\t1\tr0 < r1\n"));
    EXPECT_LT(text.find("可疑"), text.find("读入")) << "doubts come first";
    EXPECT_FALSE(page.saveAs(folder.filePath("absent/a.txt")));

    auto* view = page.findChild<QTreeView*>("treeView_Report");
    EXPECT_EQ(view->model()->rowCount(), 3);
    page.findChild<QLineEdit*>("lineEdit_Filter")->setText("电抗");
    EXPECT_EQ(view->model()->rowCount(), 1);
}

class NewProject : public Workbench {
  protected:
    /// Fills in the dialog of a new project and presses its button, when it can be pressed.
    bool make(shell::WinDlgProject& dialog, const QString& name, const QString& source) {
        dialog.findChild<QLineEdit*>("lineEdit_Name")->setText(name);
        dialog.findChild<QLineEdit*>("lineEdit_Source")->setText(source);
        auto* ensure = dialog.findChild<QPushButton*>("pushButton_Ensure");
        if (ensure->isEnabled()) ensure->click();
        return ensure->isEnabled();
    }
    QString textOf(shell::WinDlgProject& dialog, const char* label) { return dialog.findChild<QLabel*>(label)->text(); }
    shell::Settings settings;
};

TEST_F(NewProject, TellsWhatANameOrASourceLacksAndLeavesNothingOfAFailure) {
    openDemonstration();
    bool stored = false;
    shell::WinDlgProject dialog({}, settings, [&] { stored = true; });
    EXPECT_FALSE(make(dialog, "a/b", {}));
    EXPECT_THAT(textOf(dialog, "textLabel_Name").toStdString(), HasSubstr("路径符号"));
    EXPECT_FALSE(make(dialog, project, {}));
    EXPECT_FALSE(make(dialog, "甲", MORVANE_SOURCE_DIR "/README.md"));
    EXPECT_THAT(textOf(dialog, "textLabel_Kind").toStdString(), HasSubstr("README.md"));
    const QTemporaryDir folder;
    QFile broken(folder.filePath("a.m"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly) && broken.write("mpc.bus = [1 2") > 0);
    broken.close();
    make(dialog, "甲", broken.fileName());
    ASSERT_TRUE(waitFor([&] { return !textOf(dialog, "textLabel_Reason").isEmpty(); }));
    EXPECT_THAT(textOf(dialog, "textLabel_Reason").toStdString(), HasSubstr("a.m"));
    EXPECT_FALSE(stored);
    EXPECT_TRUE(window->isProjectOpen()) << "a network that cannot be read costs nothing";
    EXPECT_FALSE(window->session().store().names().contains("甲"));
}

TEST_F(NewProject, StaysResponsiveWhileItImportsAndCanBeStopped) {
    const QString large =
        qEnvironmentVariable("MORVANE_SHARED_NETWORKS", MORVANE_SHARED_NETWORKS) + "/matpower/case9241pegase.m";
    if (!QFile::exists(large)) GTEST_SKIP() << "the public networks are not there: " << large.toStdString();
    openDemonstration();
    window->closeProject();
    shell::WinDlgProject dialog({}, settings, [] {});
    int turns = 0;
    QElapsedTimer clock;
    clock.start();
    QTimer heart;
    QObject::connect(&heart, &QTimer::timeout, [&] { ++turns; });
    heart.start(10);
    dialog.show();
    ASSERT_TRUE(make(dialog, "大网", large));
    ASSERT_TRUE(waitFor([&] { return window->session().store().names().contains("大网"); }));
    dialog.reject();
    ASSERT_TRUE(waitFor([&] { return !textOf(dialog, "textLabel_Reason").isEmpty(); }));
    EXPECT_GT(turns, clock.elapsed() / 40) << "the window stood still";
    EXPECT_FALSE(window->session().store().names().contains("大网"));
}
