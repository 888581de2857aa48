#include "cli/Context.h"

#include <QCoreApplication>
#include <cstdio>

#include "platform/host/WinDockFeedback.h"

namespace cli {

namespace {

const char* prefixOf(int level) {
    if (level == WinDockFeedback::Error) return "错误: ";
    return level == WinDockFeedback::Warning ? "警告: " : "";
}

}  // namespace

void Context::show(const QByteArray& line) {
    if (line == lastLine_) {
        ++repeated_;
        return;
    }
    if (repeated_ > 0) std::fprintf(stderr, "    （以上消息又出现 %d 次）\n", repeated_);
    if (!line.isEmpty()) std::fprintf(stderr, "%s\n", line.constData());
    lastLine_ = line;
    repeated_ = 0;
}

void Context::showMessages() {
    WinDockFeedback::setReceiver([this](const char* text, int level) {
        if (level < WinDockFeedback::Warning && !verbose) return;
        show(prefixOf(level) + QString::fromUtf8(text).trimmed().toUtf8());
    });
}

void Context::endMessages() {
    WinDockFeedback::setReceiver({});
    show({});
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

bool Context::openProject(const std::string& name, bool realTime) {
    if (!openServer()) return false;
    project_ = projects_.open(QString::fromStdString(name));
    if (!project_) return stop(BadInput, {});
    QString error;
    return !realTime || realTime_.open(project_->realTimeFile(), &error) || stop(Internal, error);
}

CalculationPlaces Context::places() const {
    return {project_->realTimeName, project_->realTimePath(), project_->workDirectory(),
            QCoreApplication::applicationDirPath() + "/"};
}

QString Context::ruleFolder() { return QCoreApplication::applicationDirPath() + "/../share/morvane/rules"; }

}  // namespace cli
