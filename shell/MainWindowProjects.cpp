// Getting and leaving projects.
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolBar>

#include "platform/host/BaseTables.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/host/diagram/DiagramView.h"
#include "platform/host/ui/CComboBoxCaseNo.h"
#include "platform/host/ui/WaitCursor.h"
#include "platform/sql/Sql.h"
#include "programs/frame/UserStore.h"
#include "programs/frame/WinDlgLogIn.h"
#include "programs/frame/ui/CMorvaneObject.h"
#include "shell/Appearance.h"
#include "shell/FindBar.h"
#include "shell/MainWindow.h"
#include "shell/Menus.h"
#include "shell/StartPage.h"
#include "shell/WinDlgOpen.h"
#include "shell/WinDlgProject.h"
#include "shell/WinDlgSettings.h"
#include "shell/WinDlgShortcuts.h"

namespace shell {

namespace {

constexpr char kDemonstration[] = "演示";

}  // namespace

void MainWindow::connectServer() {
    connect(&server_, &ServerGate::ready, this, [this] {
        start_->showNotice({});
        refreshStatus();
        const QString name = std::exchange(waiting_, {});
        if (name == kDemonstration && !session_->store().names().contains(name)) return openDemonstration();
        if (!name.isEmpty()) openProject(name);
    });
    connect(&server_, &ServerGate::failed, this, [this](const QString& reason) {
        waiting_.clear();
        start_->showNotice(tr("数据库服务器不能使用：%1。请在“工具 - 设置”中检查。").arg(reason));
        report(reason, WinDockFeedback::Error);
        refreshStatus();
    });
}

void MainWindow::openWhenReady(const QString& name) {
    if (server_.isOpen()) return void(openProject(name));
    waiting_ = name;
    start_->showNotice(tr("正在启动数据库服务器，随后打开工程 %1…").arg(name));
    server_.open();
    refreshStatus();
}

bool MainWindow::logIn() {
    if (!settings_.loginAtOpening() || UserStore::logIn({})) return true;
    WinDlgLogIn dialog(this, "WinDlgLogIn", true);
    return dialog.exec() == QDialog::Accepted && WinDlgLogIn::iLogIn_User_PurView > 0;
}

ProjectSession::Questions::Answer MainWindow::askLeftover(const EditSession::Leftover& leftover) {
    using Answer = ProjectSession::Questions::Answer;
    QMessageBox box(QMessageBox::Question, tr("上次没有正常结束的编辑"), EditSession::describe(leftover),
                    QMessageBox::NoButton, this);
    box.setObjectName("messageBox_Leftover");
    box.setInformativeText(tr("保留那次所做的修改，还是恢复到修改以前？"));
    const auto* keep = box.addButton(tr("保留修改"), QMessageBox::AcceptRole);
    const auto* back = box.addButton(tr("恢复到修改前"), QMessageBox::DestructiveRole);
    box.setEscapeButton(box.addButton(tr("不打开工程"), QMessageBox::RejectRole));
    box.exec();
    return box.clickedButton() == keep ? Answer::Keep : box.clickedButton() == back ? Answer::GoBack : Answer::Cancel;
}

ProjectSession::Questions MainWindow::questions() {
    return {[this] { return logIn(); }, [this](const auto& leftover) { return askLeftover(leftover); }};
}

bool MainWindow::openProject(const QString& name) {
    closeProject();
    QString reason;
    const auto outcome = session_->open(name, questions(), &reason);
    if (outcome == ProjectSession::Outcome::Opened) {
        showProject();
        return true;
    }
    showStart();
    if (outcome == ProjectSession::Outcome::Declined) return false;
    if (!reason.isEmpty()) report(reason, WinDockFeedback::Error);
    QMessageBox box(QMessageBox::Warning, tr("工程没有打开"),
                    reason.isEmpty() ? tr("不能打开工程 %1，原因见消息窗口。").arg(name) : reason, QMessageBox::Ok,
                    this);
    box.setObjectName("messageBox_NotOpened");
    box.exec();
    return false;
}

void MainWindow::showProject() {
    const host::WaitCursor wait;
    find_->hide();
    pages_->setCurrentWidget(diagram_);
    menus_->setProjectOpen(true);
    casesChanged();
    diagram_->setLayoutDirectory(session_->project().directory);
    diagram_->setHandler(session_->module().handler);
    if (const auto network = host::loadNetwork()) diagram_->showNetwork(*network);
    for (QAction* action : std::as_const(ofProject_)) action->setVisible(true);
    recent_.put(session_->project().name, NetworkSummary::ofOpenProject());
    fillRecent();
    refreshStatus();
    diagram_->setFocus();
}

void MainWindow::closeProject() {
    if (session_->isOpen()) recent_.put(session_->project().name, NetworkSummary::ofOpenProject());
    diagram_->setHandler(nullptr);
    session_->close();
    showStart();
}

void MainWindow::showStart() {
    find_->hide();
    menus_->setProjectOpen(false);
    cases_->clear();
    for (QAction* action : std::as_const(ofProject_)) action->setVisible(false);
    pages_->setCurrentWidget(start_);
    start_->refresh(session_->store().names());
    hovered_->clear();
    fillRecent();
    refreshStatus();
    start_->setFocus();
}

void MainWindow::fillRecent() {
    QMenu* menu = menus_->recent();
    menu->clear();
    for (const RecentProject& project : recent_.list())
        connect(menu->addAction(project.name), &QAction::triggered, this,
                [this, name = project.name] { openWhenReady(name); });
    menu->setEnabled(!menu->isEmpty());
}

void MainWindow::refreshStatus() {
    if (!session_) return;
    serverText_->setText(server_.text());
    const bool open = session_->isOpen();
    setWindowTitle(open ? session_->project().name + " - Morvane" : QStringLiteral("Morvane"));
    project_->setText(open ? tr("工程 %1").arg(session_->project().name) : QString());
    project_->setToolTip(open ? session_->project().directory : QString());
    sql::Query query;
    if (!open || session_->module().GetCase_No() < 0 ||
        !query.exec("SELECT Mlf,Case_lf,Scheme FROM RLY_CASE_RLY WHERE Case_No=?", {session_->module().GetCase_No()}) ||
        !query.next())
        return network_->setText(open ? tr("没有选作业") : QString());
    network_->setText(query.number(0) == 1 ? tr("网络: 潮流作业 %1").arg(query.number(1))
                                           : tr("网络: 方案 %1").arg(query.text(2)));
}

bool MainWindow::runJob(const ProjectJob::Wish& wish, bool atOnce) {
    if (!server_.isOpen()) {
        report(server_.text(), WinDockFeedback::Warning);
        return false;
    }
    const QString before = session_->isOpen() ? session_->project().name : QString();
    bool left = false;
    WinDlgProject dialog(
        wish, settings_,
        [&] {
            left = true;
            diagram_->setHandler(nullptr);
            before == wish.name || before == wish.oldName ? session_->suspend() : session_->close();
        },
        this);
    if (atOnce) dialog.startAtOnce();
    const bool done = dialog.exec() == QDialog::Accepted;
    if (done) return openProject(dialog.projectName());
    if (left && !before.isEmpty()) openProject(before);
    return false;
}

void MainWindow::newProject() { runJob({}, false); }

void MainWindow::importNetwork() {
    ProjectJob::Wish wish;
    wish.kind = ProjectJob::Wish::Kind::Import;
    wish.name = session_->project().name;
    runJob(wish, false);
}

void MainWindow::saveAs() {
    ProjectJob::Wish wish;
    wish.kind = ProjectJob::Wish::Kind::SaveAs;
    wish.oldName = session_->project().name;
    runJob(wish, false);
}

void MainWindow::openDemonstration() {
    if (!server_.isOpen() || session_->store().names().contains(kDemonstration)) return openWhenReady(kDemonstration);
    ProjectJob::Wish wish;
    wish.name = kDemonstration;
    wish.source = deliveredFolder("networks/demo");
    wish.demonstration = true;
    runJob(wish, true);
}

void MainWindow::chooseProject() {
    WinDlgOpen dialog(session_->store().names(), this);
    if (dialog.exec() == QDialog::Accepted && !dialog.chosen().isEmpty()) openWhenReady(dialog.chosen());
}

}  // namespace shell
