#include "shell/ProjectJob.h"

#include "platform/server/Server.h"
#include "programs/frame/ProjectStore.h"
#include "programs/frame/TableNames.h"
#include "programs/study/ImportedNetwork.h"
#include "shell/Demonstration.h"

namespace shell {

namespace {

struct Stopped {};

constexpr int kReadShare = 50;  ///< percent of the bar for the reading

/// Connections belong to the thread that opened them.
struct ConnectionsOfThread {
    ~ConnectionsOfThread() {
        for (const QString& connection :
             {tables::relayConnection, tables::ruleConnection, tables::serverConnection, tables::oldRelayConnection,
              tables::oldRuleConnection, tables::oldCaseConnection, tables::oldWorkingConnection})
            server::closeConnection(connection);
    }
};

}  // namespace

ProjectJob::ProjectJob(QObject* parent) : QObject(parent) {}

ProjectJob::~ProjectJob() {
    stopped_ = true;
    if (thread_) thread_->wait();
}

void ProjectJob::run(const std::function<bool()>& work, Ended ended) {
    auto outcome = std::make_shared<Outcome>(Outcome::Failed);
    thread_.reset(QThread::create([=] {
        try {
            if (work()) *outcome = Outcome::Done;
        } catch (const Stopped&) {
            *outcome = Outcome::Stopped;
        }
    }));
    connect(thread_.get(), &QThread::finished, this, [=, this] {
        thread_->wait();
        thread_.reset();
        (this->*ended)(*outcome);
    });
    thread_->start();
}

void ProjectJob::tell(int percent, const QString& what) {
    if (stopped_) throw Stopped();
    QMetaObject::invokeMethod(
        this, [=, this] { emit progress(percent, what); }, Qt::QueuedConnection);
}

void ProjectJob::read(const Wish& wish) {
    wish_ = wish;
    stopped_ = false;
    reason_.clear();
    report_ = {};
    network_ = {};
    wish_.options.progress = [this](int percent, const std::string& what) {
        tell(percent * kReadShare / 100, QString::fromStdString(what));
    };
    run([this] { return wish_.source.isEmpty() || readNetwork(); }, &ProjectJob::networkRead);
}

bool ProjectJob::readNetwork() {
    tell(0, tr("读网络"));
    try {
        network_ = import::read(wish_.source.toStdString(), wish_.options, report_);
        return true;
    } catch (const import::ImportError& error) {
        reason_ = QString::fromStdString(error.what());
        return false;
    }
}

void ProjectJob::store() {
    run([this] { return storeAll(); }, &ProjectJob::stored);
}

bool ProjectJob::makeProject() {
    ProjectStore store;
    if (wish_.kind == Wish::Kind::SaveAs) return store.saveAs(wish_.oldName, wish_.name).has_value();
    if (wish_.kind == Wish::Kind::Create) return store.create(wish_.name, deliveredFolder("rules")).has_value();
    return store.open(wish_.name).has_value();
}

bool ProjectJob::fillProject() {
    if (wish_.source.isEmpty()) return true;
    tell(75, tr("存网络"));
    if (!storeImportedNetwork(network_)) return false;
    tell(90, wish_.demonstration ? tr("装设保护，定义作业") : tr("存网络"));
    return !wish_.demonstration || makeDemonstration();
}

// A project that could not be filled is not left behind half made.
bool ProjectJob::storeAll() {
    const ConnectionsOfThread connections;
    const bool isNew = wish_.kind != Wish::Kind::Import;
    tell(kReadShare, wish_.kind == Wish::Kind::SaveAs ? tr("复制工程") : tr("建立工程"));
    if (!makeProject()) return false;
    try {
        if (fillProject()) return true;
        if (isNew) ProjectStore().remove(wish_.name);
    } catch (const Stopped&) {
        if (isNew) ProjectStore().remove(wish_.name);
        throw;
    }
    return false;
}

}  // namespace shell
