#pragma once

#include <QCoreApplication>
#include <functional>
#include <memory>
#include <optional>

#include "platform/rtdb/dbDatabase.h"
#include "programs/frame/EditSession.h"
#include "programs/frame/ProjectClaim.h"
#include "programs/frame/ProjectStore.h"

class CComboBoxCaseNo;
class CMorvaneObject;
class QAction;
class QComboBox;
template <class Key, class T>
class QMap;

namespace shell {

/// The project in hand: its claim, its databases and the module on them, in the order in which the module wants to be
/// called. One at a time.
class ProjectSession {
    Q_DECLARE_TR_FUNCTIONS(shell::ProjectSession)
  public:
    /// What the host's window lends to the module; all live longer than the session.
    struct Seat {
        CComboBoxCaseNo* cases = nullptr;
        QComboBox* modes = nullptr;
        QAction* module = nullptr;
        QMap<QString, QAction*>* actions = nullptr;
    };
    /// What is asked of the user on the way.
    struct Questions {
        /// \return false: the project is not opened
        std::function<bool()> logIn;
        enum class Answer { Keep, GoBack, Cancel };
        std::function<Answer(const EditSession::Leftover&)> leftover;
    };

    explicit ProjectSession(const Seat& seat);
    ~ProjectSession();

    enum class Outcome { Opened, Failed, Declined };
    /// Opens a project; another one that was open is closed before. \param reason  set when it failed and the dock does
    /// not have the reason already
    Outcome open(const QString& name, const Questions& questions, QString* reason);
    /// Gives everything back. Nothing when no project is open.
    void close();
    /// Gives everything back but the claim, so that the databases can be worked on from elsewhere; open() follows.
    void suspend();

    [[nodiscard]] bool isOpen() const { return module_ != nullptr; }
    [[nodiscard]] const Project& project() const { return *project_; }
    [[nodiscard]] CMorvaneObject& module() const { return *module_; }
    dbDatabase& realTime() { return realTime_; }
    [[nodiscard]] ProjectStore& store() { return store_; }

  private:
    bool claim(const QString& name, QString* reason);
    bool openDatabases(const QString& name, QString* reason);
    bool settleLeftovers(const Questions& questions, QString* reason, bool* declined);
    void startModule();

    Seat seat_;
    ProjectStore store_;
    std::optional<ProjectClaim> claim_;
    QString claimed_;
    std::optional<Project> project_;
    dbDatabase realTime_;
    std::unique_ptr<CMorvaneObject> module_;
    QString directoryBefore_;
};

}  // namespace shell
