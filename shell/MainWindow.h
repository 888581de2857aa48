#pragma once

#include <QMainWindow>
#include <memory>

#include "shell/ProjectJob.h"
#include "shell/ProjectSession.h"
#include "shell/RecentProjects.h"
#include "shell/ServerGate.h"
#include "shell/Settings.h"

class CComboBoxCaseNo;
class CUpdateLabelsCustomEvent;
class DiagramView;
class QLabel;
class QStackedWidget;

namespace shell {

class FindBar;
class Menus;
class MessageDock;
class StartPage;

/// The desktop application's window: the host of the module.
class MainWindow : public QMainWindow {
    Q_OBJECT
  public:
    MainWindow();
    ~MainWindow() override;

    /// Opens a project as soon as the server is there; the user is asked and told as in the menu.
    void openWhenReady(const QString& name);
    [[nodiscard]] bool isProjectOpen() const { return session_->isOpen(); }
    [[nodiscard]] ProjectSession& session() { return *session_; }
    [[nodiscard]] MessageDock& messages() { return *messages_; }
    [[nodiscard]] DiagramView& diagram() { return *diagram_; }
    [[nodiscard]] Menus& menus() { return *menus_; }

  public slots:
    void newProject();
    void chooseProject();
    bool openProject(const QString& name);
    void openDemonstration();
    void importNetwork();
    void saveAs();
    void closeProject();
    void exportDiagram();
    void printDiagram();
    void showSettings();
    void showShortcuts();
    void showAbout();

  signals:
    void projectShown();  ///< the diagram of the project that was opened is drawn

  protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void makeToolBar();
    void makeStatusBar();
    void makeCentre();
    void connectMenus();
    void connectServer();
    void languageChange();
    void restoreWindow();

    void takeModuleEvent(int mode);
    void takeLabelsEvent(const CUpdateLabelsCustomEvent& event);
    void runModuleAction(const QString& name);
    void selectCase();
    void casesChanged();

    ProjectSession::Questions questions();
    bool logIn();
    ProjectSession::Questions::Answer askLeftover(const EditSession::Leftover& leftover);
    void showProject();
    void showStart();
    bool runJob(const ProjectJob::Wish& wish, bool atOnce);
    void fillRecent();
    void refreshStatus();
    void report(const QString& text, int level);
    void placeFindBar();

    Settings settings_;
    RecentProjects recent_;
    ServerGate server_;
    QString waiting_;  ///< project to be opened when the server is there
    Menus* menus_ = nullptr;
    MessageDock* messages_ = nullptr;
    QStackedWidget* pages_ = nullptr;
    StartPage* start_ = nullptr;
    DiagramView* diagram_ = nullptr;
    FindBar* find_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    CComboBoxCaseNo* cases_ = nullptr;
    QComboBox* modes_ = nullptr;
    QLabel *casesLabel_ = nullptr, *modesLabel_ = nullptr;
    QList<QAction*> ofProject_;  ///< parts of the toolbar that are there with a project only
    QAction* moduleAction_ = nullptr;
    QLabel *hovered_ = nullptr, *project_ = nullptr, *network_ = nullptr, *serverText_ = nullptr;
    std::unique_ptr<ProjectSession> session_;
};

}  // namespace shell
