#include "cli/Context.h"

#include <QCoreApplication>
#include <cstdio>

#include "platform/host/WinDockFeedback.h"

namespace cli {

namespace {

constexpr int kClaimWaitMs = 3000;

const char* prefixOf(int level) {
    if (level == WinDockFeedback::Error) return "错误: ";
    return level == WinDockFeedback::Warning ? "警告: " : "";
}

}  // namespace

void Context::show(const QByteArray& line) {
    if (line.isEmpty() || ++told_[line] > 1) return;
    std::fprintf(stderr, "%s\n", line.constData());
    order_.append(line);
}

void Context::showMessages() {
    WinDockFeedback::setReceiver([this](const char* text, int level) {
        if (level < WinDockFeedback::Warning && !verbose) return;
        show(prefixOf(level) + QString::fromUtf8(text).trimmed().toUtf8());
    });
}

void Context::endMessages() {
    WinDockFeedback::setReceiver({});
    for (const QByteArray& line : std::as_const(order_))
        if (const int times = told_.value(line); times > 1)
            std::fprintf(stderr, "（共 %d 次）%s\n", times, line.constData());
    told_.clear();
    order_.clear();
}

bool Context::stop(ExitCode code, const QString& text) {
    if (!text.isEmpty()) show("错误: " + text.toUtf8());
    exitCode = code;
    return false;
}

bool Context::openServer() {
    QString error;
    hold_ = server::Hold::acquire(&error);
    return hold_ || stop(Internal, error);
}

bool Context::claimProject(const QString& name) {
    ProjectClaim::Holder holder;
    claim_ = ProjectClaim::take(projects_.directoryOf(name), kClaimWaitMs, &holder);
    return claim_ || stop(NoResult, holder.text(name));
}

bool Context::openProject(const std::string& name, Access access, bool realTime) {
    const QString project = QString::fromStdString(name);
    if (!projects_.find(project)) return stop(BadInput, {});
    if ((access == Access::Write && !claimProject(project)) || !openServer()) return false;
    project_ = projects_.open(project);
    if (!project_) return stop(BadInput, {});
    QString error;
    return !realTime || realTime_.open(project_->realTimeFile(), &error) || stop(Internal, error);
}

CalculationPlaces Context::places() const {
    return {project_->realTimeName, project_->realTimePath(), project_->workDirectory(),
            QCoreApplication::applicationDirPath() + "/"};
}

}  // namespace cli
