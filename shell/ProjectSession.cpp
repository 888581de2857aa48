#include "shell/ProjectSession.h"

#include <QDir>
#include <QSqlDatabase>

#include "platform/server/Server.h"
#include "programs/frame/TableNames.h"
#include "programs/frame/ui/CMorvaneObject.h"
#include "programs/workflow/RunShadows.h"

namespace shell {

namespace {

bool fail(QString* reason, const QString& text) {
    *reason = text;
    return false;
}

void closeConnections() {
    for (const QString& connection : {tables::relayConnection, tables::ruleConnection, tables::serverConnection})
        server::closeConnection(connection);
}

}  // namespace

ProjectSession::ProjectSession(const Seat& seat) : seat_(seat) {}

ProjectSession::~ProjectSession() { close(); }

bool ProjectSession::claim(const QString& name, QString* reason) {
    if (claim_ && claimed_ == name) return true;
    ProjectClaim::Holder holder;
    claim_ = ProjectClaim::take(store_.directoryOf(name), 0, &holder);
    claimed_ = name;
    return claim_ || fail(reason, holder.text(name));
}

bool ProjectSession::openDatabases(const QString& name, QString* reason) {
    project_ = store_.open(name);
    return project_ && realTime_.open(project_->realTimeFile(), reason);
}

// Runs of another program that still goes on are none of the leftovers, but nothing may be taken back under it.
bool ProjectSession::settleLeftovers(const Questions& questions, QString* reason, bool* declined) {
    if (!RunShadows::claim()) return fail(reason, tr("另一个程序正在该工程中计算，请稍后再试"));
    for (auto found = EditSession::leftovers(); !found.isEmpty(); found = EditSession::leftovers()) {
        const auto answer = questions.leftover(found.first());
        *declined = answer == Questions::Answer::Cancel;
        if (*declined) return false;
        const bool done =
            answer == Questions::Answer::Keep ? EditSession::keep(found.first()) : EditSession::goBack(found.first());
        if (!done) return fail(reason, tr("上次没有正常结束的编辑不能处理，工程没有打开"));
    }
    return true;
}

void ProjectSession::startModule() {
    directoryBefore_ = QDir::currentPath();
    module_ = std::make_unique<CMorvaneObject>(seat_.cases, seat_.modes, &realTime_, seat_.module);
    module_->SetDynMenuActions(seat_.actions);
    QSqlDatabase database = QSqlDatabase::database(tables::relayConnection, false);
    module_->InitCalcModule(&database, project_->directory, QCoreApplication::applicationDirPath(), nullptr);
    module_->RedrawLabels();  // settings may have been saved since the last time
    module_->InitDynMenuStatus();
}

ProjectSession::Outcome ProjectSession::open(const QString& name, const Questions& questions, QString* reason) {
    reason->clear();
    suspend();
    if (claimed_ != name) close();
    if (!store_.find(name)) return Outcome::Failed;
    bool declined = false;
    bool opened = claim(name, reason) && openDatabases(name, reason);
    if (opened && questions.logIn) declined = !questions.logIn();
    opened = opened && !declined && settleLeftovers(questions, reason, &declined);
    if (opened)
        startModule();
    else
        close();
    return opened ? Outcome::Opened : declined ? Outcome::Declined : Outcome::Failed;
}

void ProjectSession::suspend() {
    if (module_) {
        module_->CloseCalcModule();
        module_.reset();
        QDir::setCurrent(directoryBefore_);
    }
    realTime_.close();
    if (project_) closeConnections();
    project_.reset();
}

void ProjectSession::close() {
    suspend();
    claim_.reset();
    claimed_.clear();
}

}  // namespace shell
