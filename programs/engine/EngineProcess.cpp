#include "programs/engine/EngineProcess.h"

#include <QStringDecoder>

#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"

namespace {

constexpr qsizetype kLongestLine = 2000;

QString decoded(const QByteArray& line) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(line);
    return utf8.hasError() ? sql::fromGbk(line) : text;
}

}  // namespace

EngineProcess::EngineProcess(const char* program, int failureLevel) : program_(program), failureLevel_(failureLevel) {
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setStandardOutputFile(QProcess::nullDevice());
    connect(&process_, &QProcess::finished, this, &EngineProcess::onFinished);
    connect(&process_, &QProcess::readyReadStandardError, this, [this] { showLines(false); });
}

EngineProcess::~EngineProcess() {
    process_.disconnect(this);
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished(3000);
}

bool EngineProcess::start(const QString& exeDir, const QString& workDir) {
    if (isRunning()) {
        ReportError(Text::tr("执行") + program_ + Text::tr("失败，上一次计算还没有结束"), failureLevel_);
        return false;
    }
    aborting_ = false;
    errors_.clear();
    process_.setWorkingDirectory(workDir);
    process_.start(exeDir + program_, QStringList());
    outcome_ = Outcome::Running;
    if (process_.waitForStarted(-1)) return true;
    outcome_ = Outcome::NotStarted;
    ReportError(Text::tr("执行") + program_ + Text::tr("失败"), failureLevel_);
    QMetaObject::invokeMethod(this, &EngineProcess::processExited, Qt::QueuedConnection);
    return false;
}

void EngineProcess::abort() {
    if (!isRunning()) return;
    aborting_ = true;
    process_.kill();
}

void EngineProcess::showLine(const QByteArray& line) {
    const QString text = decoded(line.left(kLongestLine).trimmed());
    if (text.isEmpty() || (reader_ && reader_(text))) return;
    WinDockFeedback::ShowMessage(text.toUtf8().constData(), "", "", "", WinDockFeedback::Warning);
}

void EngineProcess::showLines(bool rest) {
    errors_ += process_.readAllStandardError();
    for (qsizetype end; (end = errors_.indexOf('\n')) >= 0; errors_.remove(0, end + 1)) showLine(errors_.left(end));
    if (!rest && errors_.size() < kLongestLine) return;
    showLine(errors_);
    errors_.clear();
}

void EngineProcess::onFinished(int status, QProcess::ExitStatus how) {
    showLines(true);
    if (aborting_) {
        outcome_ = Outcome::Aborted;
        ReportError(program_ + Text::tr("已中止"), 1);
    } else if (how == QProcess::CrashExit) {
        outcome_ = Outcome::Crashed;
        ReportError(program_ + Text::tr("异常终止，没有计算结果"), failureLevel_);
    } else if (status != 0) {
        outcome_ = Outcome::Failed;
        ReportError(program_ + Text::tr("出错，返回码") + QString::number(status) + Text::tr("，没有计算结果"),
                    failureLevel_);
    } else {
        outcome_ = Outcome::Done;
    }
    emit processExited();
}
