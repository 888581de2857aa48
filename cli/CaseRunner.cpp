#include "cli/CaseRunner.h"

#include <unistd.h>

#include <QEventLoop>
#include <QSocketNotifier>
#include <csignal>
#include <cstdio>
#include <utility>

namespace cli {

namespace {

int wakePipe[2] = {-1, -1};

void onSignal(int) {
    const char mark = 1;
    [[maybe_unused]] const auto written = ::write(wakePipe[1], &mark, 1);
}

/// While it lives, Ctrl+C and a termination request come as an activation of the notifier.
class Interruption {
  public:
    Interruption() {
        if (::pipe(wakePipe) != 0) return;
        notifier_ = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
        for (const int signal : {SIGINT, SIGTERM}) std::signal(signal, onSignal);
    }
    ~Interruption() {
        for (const int signal : {SIGINT, SIGTERM}) std::signal(signal, SIG_DFL);
        notifier_.reset();
        for (const int end : wakePipe) ::close(end);
    }
    [[nodiscard]] QSocketNotifier* notifier() const { return notifier_.get(); }

  private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

void showProgress(int done, int total, const QString& what) {
    if (isatty(STDERR_FILENO) == 0) return;
    const int percent = total > 0 ? 100 * done / total : 100;
    std::fprintf(stderr, "\r\033[K%3d%% %s", percent, what.toUtf8().constData());
}

}  // namespace

CaseRunner::CaseRunner(Context& context, CaseStore& cases)
    : context_(context), cases_(cases), network_(context.realTime()) {}

CaseRunner::~CaseRunner() = default;

bool CaseRunner::run(const QList<RunSession::Run>& runs) {
    const Interruption interruption;
    runs_ = runs;
    const bool manual = runs.contains(RunSession::Manual);
    start_ = std::make_unique<CalculationStart>(cases_, network_, context_.places(), manual ? 1 : 2);
    QEventLoop loop;
    if (interruption.notifier())
        connect(interruption.notifier(), &QSocketNotifier::activated, this, &CaseRunner::interrupt);
    connect(start_.get(), &CalculationStart::progress, this,
            [](int percent, const QString& what) { showProgress(percent, 100, what); });
    connect(start_.get(), &CalculationStart::failed, this, [this] { leave(false); });
    connect(start_.get(), &CalculationStart::ready, this, &CaseRunner::openSession);
    connect(this, &CaseRunner::left, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    if (!start_->start()) return false;
    loop.exec();
    showProgress(1, 1, "\n");
    return complete_ && !interrupted_;
}

void CaseRunner::openSession() {
    if (interrupted_) return leave(false);
    session_ = std::make_unique<RunSession>(*cases_.current(), context_.places());
    connect(session_.get(), &RunSession::finished, this, &CaseRunner::runEnded);
    connect(session_.get(), &RunSession::progress, this,
            [](int done, int total) { showProgress(done, total, "计算..."); });
    if (!session_->open()) return leave(false);
    startNext();
}

void CaseRunner::startNext() {
    if (runs_.isEmpty()) return leave(true);
    if (!session_->start(runs_.takeFirst())) leave(false);
}

void CaseRunner::runEnded(bool complete) {
    failedSteps_ += session_->failedSteps();
    if (const auto count = session_->withoutResult().size(); count > 0 && !context_.verbose)
        context_.note("另有 " + QString::number(count) + " 条整定原则没有结果（用 --verbose 查看）");
    if (!complete || interrupted_) return leave(false);
    startNext();
}

void CaseRunner::leave(bool complete) {
    if (std::exchange(gone_, true)) return;
    complete_ = complete;
    if (session_) complete ? session_->ensure() : session_->cancel();
    emit left();
}

void CaseRunner::interrupt() {
    if (interrupted_) return;
    interrupted_ = true;
    std::fprintf(stderr, "\n中止计算...\n");
    if (session_ && session_->state() != RunSession::State::Idle)
        session_->abort();
    else
        start_->abort();
}

}  // namespace cli
