#include "programs/workflow/RunSession.h"

#include <QFile>

#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/sql/Sql.h"
#include "programs/engine/CAutoCalFlow.h"
#include "programs/engine/CHandCalFlow.h"
#include "programs/engine/CKlmCalFlow.h"
#include "programs/engine/RunPreparation.h"
#include "programs/engine/Sensitivity.h"
#include "programs/frame/Messages.h"

RunSession::RunSession(const CaseNode& node, const CalculationPlaces& places)
    : case_(node), places_(places), wording_(node.RTypeNo) {
    hand_ =
        std::make_unique<CHandCalFlow>(node.RTypeNo, node.RTypeCode, places.workDir, node.Case_No, places.programDir);
    auto_ =
        std::make_unique<CAutoCalFlow>(node.RTypeNo, node.RTypeCode, places.workDir, node.Case_No, places.programDir);
    klm_ = std::make_unique<CKlmCalFlow>(node.RTypeNo, node.RTypeCode, places.workDir, places.programDir);
    hand_->relayFault().setFirstWrite(1);
    auto_->relayFault().setFirstWrite(1);
    // Queued, so that a start that fails at once still comes after the call that made it.
    connect(&hand_->caseCal().engineProcess(), &EngineProcess::processExited, this, &RunSession::HandCalSlot,
            Qt::QueuedConnection);
    connect(&auto_->caseCal().engineProcess(), &EngineProcess::processExited, this, &RunSession::AutoCalSlot,
            Qt::QueuedConnection);
    connect(&klm_->caseCal().engineProcess(), &EngineProcess::processExited, this, &RunSession::KlmFSlot,
            Qt::QueuedConnection);
    for (EngineProcess* process : processes())
        process->setLineReader([this](const QString& line) { return takeLine(line); });
}

RunSession::~RunSession() = default;

bool RunSession::takeLine(const QString& line) {
    emit message(line);
    const auto rule = RulesWithoutResult::read(line);
    if (!rule) return false;
    withoutResult_.append(*rule);
    WinDockFeedback::ShowMessage(wording_(*rule).toUtf8().constData(), "", "", "", WinDockFeedback::Information);
    return true;
}

QList<EngineProcess*> RunSession::processes() const {
    return {&hand_->caseCal().engineProcess(), &auto_->caseCal().engineProcess(), &klm_->caseCal().engineProcess()};
}

bool RunSession::open() {
    for (const char* name : {"RELAY.RP1", "RELAY.RP2", "RELAY.RP3", "RELAY.RP4", "RELAY.RP5"})
        QFile::remove(places_.workDir + name);
    return shadows_.open();
}

bool RunSession::PrepareRun(Run run) {
    if (run == Sensitivity) return prepareSensitivityRun(case_.Case_No, *klm_);
    return run == Manual ? prepareRun(Manual, *hand_) : prepareRun(Automatic, *auto_);
}

bool RunSession::lostStatements() const {
    if (sql::losses() == lossesBefore_) return false;
    ReportError(Text::tr("计算中与数据库服务器的连接中断，计算中止"), 0);
    return true;
}

bool RunSession::start(Run run) {
    lossesBefore_ = sql::losses();
    for (const EngineProcess* process : processes())
        if (process->isRunning()) return false;
    if (state_ != State::Idle || !PrepareRun(run)) return false;
    abortFlag_ = false;
    failedSteps_ = 0;
    withoutResult_.clear();
    run_ = run;
    state_ = State::Busy;
    if (run == Sensitivity) {
        klm_->Run();
    } else if (run == Manual) {
        manualRunning_ = true;
        stepOrEnd(*hand_);
    } else {
        stepOrEnd(*auto_);
    }
    return true;
}

bool RunSession::stepOrEnd(CStepCalFlow& flow) {
    if (&flow == hand_.get()) {
        hand_->shownRNo = flow.rowCursor.row().rno;
        hand_->shownPNo = flow.rowCursor.row().pno;
    }
    state_ = State::Busy;
    emit progress(flow.rowCursor.at(), flow.rowCursor.size());
    const auto row = flow.rowCursor.row();
    emit stepStarted(row.rno, row.pno, row.ruleNo);
    return flow.Step();
}

bool RunSession::takeResults(CStepCalFlow& flow) {
    using Outcome = EngineProcess::Outcome;
    const Outcome outcome = flow.caseCal().engineProcess().outcome();
    if (outcome == Outcome::Done) flow.ReadResults(1);
    if (outcome != Outcome::Done) ++failedSteps_;
    return outcome != Outcome::Aborted && outcome != Outcome::NotStarted && !abortFlag_ && !lostStatements();
}

void RunSession::AutoCalSlot() {
    CAutoCalFlow& flow = *auto_;
    if (!takeResults(flow)) return end(false);
    if (flow.hasRow && flow.standsOnSamePart()) {
        stepOrEnd(flow);
        return;
    }
    flow.StoreCurrentSettings(flow.currentRNo(), flow.currentPNo());
    if (flow.hasRow) {
        stepOrEnd(flow);
        return;
    }
    if (flow.caseCal().engineProcess().outcome() == EngineProcess::Outcome::Done) flow.ReadResults(2);
    end(!lostStatements());
}

void RunSession::HandCalSlot() {
    CHandCalFlow& flow = *hand_;
    const bool good = takeResults(flow);
    if (recalcPending_) {
        recalcPending_ = false;
        if (!good) recalculations_.clear();
        if (recalculateNext()) return;
        state_ = manualRunning_ ? State::Waiting : State::Idle;
        emit recalculated();
        return;
    }
    if (!good) return end(false);
    if (flow.hasRow && flow.standsOnSamePart()) {
        stepOrEnd(flow);
        return;
    }
    state_ = State::Waiting;
    emit progress(flow.rowCursor.at(), flow.rowCursor.size());
    emit partShown(flow.shownRNo, flow.shownPNo);
}

bool RunSession::hasFurtherPart() const { return state_ == State::Waiting && hand_->hasRow; }

bool RunSession::next() {
    if (state_ != State::Waiting) return false;
    if (hand_->hasRow) return stepOrEnd(*hand_);
    hand_->ReadResults(2);
    end(true);
    return true;
}

void RunSession::KlmFSlot() {
    const bool good = klm_->caseCal().engineProcess().outcome() == EngineProcess::Outcome::Done && !abortFlag_;
    if (!good) {
        ++failedSteps_;
        return end(false);
    }
    klm_->ReadResults(3);
    if (confirm_) return end(!lostStatements());
    end(storeSensitivityParameters(klm_->relayInput()) && !lostStatements());
}

void RunSession::abort() {
    if (state_ == State::Idle) return;
    abortFlag_ = true;
    recalculations_.clear();
    bool running = false;
    for (EngineProcess* process : processes()) {
        running = running || process->isRunning();
        process->abort();
    }
    if (!running) end(false);
}

void RunSession::end(bool complete) {
    state_ = State::Idle;
    manualRunning_ = false;
    recalcPending_ = false;
    if (complete && run_ != Sensitivity) toStore_ = withoutResult_;
    emit finished(complete);
}

bool RunSession::ensure() {
    if (state_ != State::Idle) return false;
    shadows_.commit();
    return !toStore_ || RulesWithoutResult::store(places_.workDir, case_.Case_No, *toStore_);
}

bool RunSession::cancel() { return state_ == State::Idle && shadows_.restore(); }
