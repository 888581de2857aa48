#include "shell/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>

#include "platform/host/WinDockFeedback.h"
#include "platform/host/diagram/DiagramView.h"
#include "platform/host/ui/CComboBoxCaseNo.h"
#include "platform/host/ui/HostEvents.h"
#include "programs/frame/ui/CMorvaneObject.h"
#include "shell/Appearance.h"
#include "shell/FindBar.h"
#include "shell/Menus.h"
#include "shell/MessageDock.h"
#include "shell/StartPage.h"

namespace shell {

namespace {

constexpr int kLabels = 0x02 | 0x04;
constexpr int kNetwork = 0x18 | 0x28;
constexpr int kReadingTime = 10000;  ///< ms that a reason stays in the status bar

}  // namespace

MainWindow::MainWindow() : recent_(settings_.store()) {
    setObjectName("mainWindow");
    setWindowIcon(QIcon(":/icons/morvane.svg"));
    host::setMainWidget(this);
    menus_ = new Menus(menuBar());
    messages_ = new MessageDock(this);
    addDockWidget(Qt::BottomDockWidgetArea, messages_);
    makeToolBar();
    makeCentre();
    makeStatusBar();
    session_ = std::make_unique<ProjectSession>(ProjectSession::Seat{cases_, modes_, moduleAction_, menus_->module()});
    connectMenus();
    connectServer();
    languageChange();
    restoreWindow();
    showStart();
    server_.open();
    refreshStatus();
}

MainWindow::~MainWindow() {
    diagram_->setHandler(nullptr);
    session_->close();
    host::setMainWidget(nullptr);
}

void MainWindow::makeToolBar() {
    toolBar_ = addToolBar(QString());
    toolBar_->setObjectName("toolBar");
    toolBar_->setIconSize(QSize(1, 1) * fontMetrics().height() * 1.4);
    for (const char* name : {"new", "open", "import", "find", "fit", "zoom_in", "zoom_out"})
        toolBar_->addAction((*menus_)[name]);
    ofProject_.append(toolBar_->addSeparator());
    moduleAction_ = new QAction(this);
    moduleAction_->setEnabled(false);
    const auto add = [this](QLabel*& label, QComboBox* combo, const char* name, int letters) {
        label = new QLabel(toolBar_);
        label->setBuddy(combo);
        label->setMargin(fontMetrics().height() / 4);
        combo->setObjectName(name);
        combo->setMinimumContentsLength(letters);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        ofProject_ += {toolBar_->addWidget(label), toolBar_->addWidget(combo)};
    };
    add(casesLabel_, cases_ = new CComboBoxCaseNo(toolBar_), "comboBox_Case", 16);
    add(modesLabel_, modes_ = new QComboBox(toolBar_), "comboBox_Mode", 10);
    connect(cases_, &QComboBox::activated, this, &MainWindow::selectCase);
    connect(cases_, &CComboBoxCaseNo::itemsChanged, this, &MainWindow::casesChanged);
    connect(cases_, &CComboBoxCaseNo::caseNameChanged, this, [this](const QString& name) {
        cases_->setCurrentIndex(cases_->findText(name));
        refreshStatus();
    });
}

void MainWindow::makeCentre() {
    pages_ = new QStackedWidget(this);
    start_ = new StartPage(recent_, *menus_, pages_);
    diagram_ = new DiagramView(pages_);
    diagram_->setObjectName("diagram");
    pages_->addWidget(start_);
    pages_->addWidget(diagram_);
    setCentralWidget(pages_);
    find_ = new FindBar([this](const QString& text) { return diagram_->find(text); }, pages_);
    connect(find_, &FindBar::chosen, diagram_, [this](const QString& name) { diagram_->selectElement(name); });
    connect(find_, &FindBar::ended, diagram_, [this] { diagram_->setFocus(); });
    connect(start_, &StartPage::openRequested, this, &MainWindow::openWhenReady);
    connect(diagram_, &DiagramView::hovered, this, [this](const QString& text) { hovered_->setText(text); });
    connect(diagram_, &DiagramView::ready, this, [this](const QString& notice) {
        if (!notice.isEmpty()) report(notice, WinDockFeedback::Warning);
        if (!session_->isOpen()) return;
        diagram_->refreshLabels(session_->realTime());
        diagram_->refreshStates(session_->realTime());
        emit projectShown();
    });
}

void MainWindow::makeStatusBar() {
    hovered_ = new QLabel(this);
    hovered_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(hovered_, 1);
    for (QLabel** label : {&network_, &project_, &serverText_}) {
        *label = new QLabel(this);
        (*label)->setContentsMargins(fontMetrics().height() / 2, 0, fontMetrics().height() / 2, 0);
        statusBar()->addPermanentWidget(*label);
    }
    network_->setObjectName("label_Network");
    project_->setObjectName("label_Project");
    serverText_->setObjectName("label_Server");
}

void MainWindow::connectMenus() {
    const auto on = [this](const char* name, auto slot) { connect((*menus_)[name], &QAction::triggered, this, slot); };
    on("new", &MainWindow::newProject);
    on("open", &MainWindow::chooseProject);
    on("demo", &MainWindow::openDemonstration);
    on("import", &MainWindow::importNetwork);
    on("save_as", &MainWindow::saveAs);
    on("close", &MainWindow::closeProject);
    on("export", &MainWindow::exportDiagram);
    on("print", &MainWindow::printDiagram);
    on("quit", &MainWindow::close);
    on("find", [this] { placeFindBar(), find_->start(); });
    on("fit", [this] { diagram_->fit(); });
    on("zoom_in", [this] { diagram_->zoomBy(1.25); });
    on("zoom_out", [this] { diagram_->zoomBy(0.8); });
    on("settings", &MainWindow::showSettings);
    on("shortcuts", &MainWindow::showShortcuts);
    on("about", &MainWindow::showAbout);
    const auto couple = [](QAction* action, QAction* shown) {
        connect(action, &QAction::triggered, shown, [shown] { shown->trigger(); });
        connect(shown, &QAction::toggled, action, &QAction::setChecked);
        action->setChecked(true);
    };
    couple((*menus_)["messages"], messages_->toggleViewAction());
    couple((*menus_)["toolbar"], toolBar_->toggleViewAction());
    connect(menus_, &Menus::moduleAction, this, &MainWindow::runModuleAction);
    connect(menus_, &Menus::refused, this, [this](const QString& why) { statusBar()->showMessage(why, kReadingTime); });
}

void MainWindow::languageChange() {
    toolBar_->setWindowTitle(tr("工具栏"));
    casesLabel_->setText(tr("作业:"));
    modesLabel_->setText(tr("方式:"));
    cases_->setPlaceholderText(tr("选择作业"));
    cases_->setToolTip(tr("选一个作业，图和实时库换成它的网络"));
    modes_->setToolTip(tr("保护编辑：可以改保护；保护整定：可以计算定值"));
    menus_->languageChange();
    refreshStatus();
}

void MainWindow::restoreWindow() {
    resize(screen()->availableSize() * 0.8);
    resizeDocks({messages_}, {fontMetrics().height() * 8}, Qt::Vertical);
    restoreGeometry(settings_.windowPart("geometry"));
    restoreState(settings_.windowPart("state"));
}

bool MainWindow::event(QEvent* event) {
    if (int(event->type()) == host::subModuleEvent) {
        const std::unique_ptr<int> mode(static_cast<int*>(static_cast<host::DataCustomEvent*>(event)->data()));
        takeModuleEvent(*mode);
        return true;
    }
    if (int(event->type()) == host::updateLabelsEvent) {
        takeLabelsEvent(static_cast<CUpdateLabelsCustomEvent&>(*event));
        return true;
    }
    return QMainWindow::event(event);
}

void MainWindow::takeModuleEvent(int mode) {
    if (modes_->currentIndex() != mode && mode < modes_->count()) modes_->setCurrentIndex(mode);
    menus_->tidy();
}

void MainWindow::takeLabelsEvent(const CUpdateLabelsCustomEvent& event) {
    if (!session_ || !session_->isOpen() || !diagram_->isReady()) return;
    if (event.flags() & kLabels) diagram_->refreshLabels(session_->realTime());
    if (event.flags() & kNetwork & ~kLabels) diagram_->refreshStates(session_->realTime());
    refreshStatus();
}

void MainWindow::runModuleAction(const QString& name) {
    bool handled = false;
    session_->module().ProcessDynMenuInterface(name, handled);
    refreshStatus();
}

void MainWindow::selectCase() {
    session_->module().SetCase_No(cases_->currentIndex());
    refreshStatus();
}

void MainWindow::casesChanged() {
    const int number = session_->isOpen() ? session_->module().GetCase_No() : -1;
    cases_->setCurrentIndex(number < 0 ? -1 : cases_->findText(session_->module().GetCase_Name(number)));
    refreshStatus();
}

void MainWindow::report(const QString& text, int level) {
    WinDockFeedback::ShowMessage(text.toUtf8().constData(), "", "", "", level);
}

void MainWindow::placeFindBar() {
    find_->adjustSize();
    const int width = std::min(pages_->width(), fontMetrics().averageCharWidth() * 60);
    find_->setGeometry(pages_->width() - width, 0, width, find_->sizeHint().height());
    find_->raise();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    if (find_ && find_->isVisible()) placeFindBar();
}

void MainWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange && session_) languageChange();
    QMainWindow::changeEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (QApplication::activeModalWidget()) return event->ignore();
    settings_.setWindowPart("geometry", saveGeometry());
    settings_.setWindowPart("state", saveState());
    closeProject();
    QMainWindow::closeEvent(event);
}

}  // namespace shell
