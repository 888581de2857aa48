#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>
#include <memory>
#include <optional>

#include "platform/rtdb/dbDatabase.h"
#include "platform/server/Server.h"
#include "programs/frame/ProjectClaim.h"
#include "programs/frame/ProjectStore.h"
#include "programs/workflow/CalculationStart.h"

namespace CLI {
class App;
}

namespace cli {

enum class Access { Read, Write };
enum ExitCode { Ok = 0, Usage = 1, BadInput = 2, NoResult = 3, Internal = 4 };

/// What every verb works with. A verb leaves its exit code here.
class Context {
  public:
    int exitCode = Ok;
    bool json = false;
    bool verbose = false;

    /// Sends the dock's messages to standard error; one that repeats is written when it first comes, and at the end
    /// once more with its count.
    void showMessages();
    void endMessages();
    /// \return false with the exit code set
    bool openServer();
    /// Server, databases and, when asked for, the real-time database of a project. For writing nobody else may have the
    /// project open.
    bool openProject(const std::string& name, Access access, bool realTime = false);
    /// Claims a project for this program. \return false with the exit code set when another one has it
    bool claimProject(const QString& name);

    [[nodiscard]] const Project& project() const { return *project_; }
    void setProject(const Project& project) { project_ = project; }
    ProjectStore& projects() { return projects_; }
    dbDatabase& realTime() { return realTime_; }
    [[nodiscard]] CalculationPlaces places() const;

    /// A line on standard error that is no fault.
    void note(const QString& text) { show(text.toUtf8()); }
    /// Tells why a verb stops and sets its exit code. \return false
    bool stop(ExitCode code, const QString& text);

  private:
    void show(const QByteArray& line);

    QHash<QByteArray, int> told_;  ///< how often each line came
    QVector<QByteArray> order_;
    std::unique_ptr<server::Hold> hold_;
    ProjectStore projects_;
    std::optional<Project> project_;
    std::optional<ProjectClaim> claim_;
    dbDatabase realTime_;
};

// One file per verb.
void addProject(CLI::App& app, Context& context);
void addImport(CLI::App& app, Context& context);
void addModes(CLI::App& app, Context& context);
void addRelays(CLI::App& app, Context& context);
void addCase(CLI::App& app, Context& context);
void addExport(CLI::App& app, Context& context);
void addFaults(CLI::App& app, Context& context);
void addBook(CLI::App& app, Context& context);

}  // namespace cli
