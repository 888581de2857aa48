#pragma once

#include <QObject>
#include <memory>

#include "cli/Context.h"
#include "programs/workflow/RunSession.h"

namespace cli {

/// Runs a case to its end in the event loop: start of the calculation, then one run after the other. Ctrl+C ends it
/// cleanly; progress goes to standard error.
class CaseRunner : public QObject {
    Q_OBJECT

  public:
    CaseRunner(Context& context, CaseStore& cases);
    ~CaseRunner() override;

    /// \param runs  in this order
    /// \return false when a run did not come to its end; the working tables are then as before
    bool run(const QList<RunSession::Run>& runs);
    /// Engine runs that ended badly although the run as a whole went on.
    [[nodiscard]] int failedSteps() const { return failedSteps_; }

  signals:
    void left();

  private:
    void openSession();
    void startNext();
    void runEnded(bool complete);
    void leave(bool complete);
    void interrupt();

    Context& context_;
    CaseStore& cases_;
    NetworkSource network_;
    std::unique_ptr<CalculationStart> start_;
    std::unique_ptr<RunSession> session_;
    QList<RunSession::Run> runs_;
    bool complete_ = false;
    bool interrupted_ = false;
    bool gone_ = false;
    int failedSteps_ = 0;
};

}  // namespace cli
