#include "programs/workflow/RunSession.h"

#include <QFile>
#include <algorithm>

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
    step_.signOfLife();
    emit message(line);
    const auto rule = RulesWithoutResult::read(line);
    if (!rule) return false;
    withoutResult_.append(*rule);
    if (recalcPending_ && toStore_) toStore_->append(*rule);
    WinDockFeedback::ShowMessage(wording_(*rule).toUtf8().constData(), "", "", "", WinDockFeedback::Information);
    return true;
}

QList<EngineProcess*> RunSession::processes() const {
    return {&hand_->caseCal().engineProcess(), &auto_->caseCal().engineProcess(), &klm_->caseCal().engineProcess()};
}

bool RunSession::engineRuns() const {
    const auto all = processes();
    return std::any_of(all.begin(), all.end(), [](const EngineProcess* process) { return process->isRunning(); });
}

bool RunSession::open() {
    changed_ = false;
    for (const char* name : {"RELAY.RP1", "RELAY.RP2", "RELAY.RP3", "RELAY.RP4", "RELAY.RP5"})
        QFile::remove(places_.workDir + name);
    if (!shadows_.open()) return false;
    takeOverSensitivityRows(case_.RTypeNo, hand_->relayInput());
    return true;
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
    if (state_ != State::Idle || engineRuns()) return false;
    lossesBefore_ = sql::losses();
    step_.begin({});
    const bool prepared = PrepareRun(run) && (run == Sensitivity || step_.keep());
    if (!prepared) {
        step_.takeBack();
        return false;
    }
    changed_ = true;
    abortFlag_ = partFailed_ = false;
    failedSteps_ = 0;
    withoutResult_.clear();
    run_ = run;
    state_ = State::Busy;
    manualRunning_ = run == Manual;
    if (run != Sensitivity)
        startStep(run == Manual ? static_cast<CStepCalFlow&>(*hand_) : *auto_);
    else
        klm_->Run();
    return true;
}

void RunSession::startStep(CStepCalFlow& flow) {
    const SettingRow row = flow.rowCursor.row();
    if (row.rno != flow.currentRNo() || row.pno != flow.currentPNo()) partFailed_ = false;
    if (&flow == hand_.get()) {
        hand_->shownRNo = row.rno;
        hand_->shownPNo = row.pno;
    }
    state_ = State::Busy;
    step_.begin({row.rno, row.pno, row.ruleNo});
    emit progress(flow.rowCursor.at(), flow.rowCursor.size());
    emit stepStarted(row.rno, row.pno, row.ruleNo);
    flow.Step();
}

bool RunSession::endedWell(CCaseCalFlow& flow) const {
    return !abortFlag_ && flow.caseCal().engineProcess().outcome() == EngineProcess::Outcome::Done;
}

bool RunSession::settle(CCaseCalFlow& flow, bool good) {
    using Outcome = EngineProcess::Outcome;
    if (good && step_.keep()) return !lostStatements();
    step_.takeBack();
    flow.forgetStep();
    partFailed_ = true;
    if (!recalcPending_) ++failedSteps_;
    const Outcome outcome = flow.caseCal().engineProcess().outcome();
    if (abortFlag_ || outcome == Outcome::Aborted || lostStatements()) return false;
    if (const auto* steps = dynamic_cast<CStepCalFlow*>(&flow); steps && !recalcPending_)
        tellFailure(steps->rulesInHand(), outcome != Outcome::NotStarted);
    return outcome != Outcome::NotStarted;
}

void RunSession::tellFailure(const QVector<int>& rules, bool started) {
    const QString reason = started ? RulesWithoutResult::badEnd : RulesWithoutResult::noStart;
    for (const int rule : rules) {
        withoutResult_.append({step_.inHand().RNo, step_.inHand().PNo, rule, reason});
        ReportError(wording_(withoutResult_.last()), 1);
    }
}

void RunSession::AutoCalSlot() {
    CAutoCalFlow& flow = *auto_;
    const bool partEnds = !flow.hasRow || !flow.standsOnSamePart();
    const bool good = endedWell(flow) && flow.ReadResults(1);
    // Of a part that was calculated in part only nothing is a setting.
    if (good && partEnds && !partFailed_) flow.StoreCurrentSettings(flow.currentRNo(), flow.currentPNo());
    if (!settle(flow, good)) return end(false);
    if (step_.wasKept()) flow.relayFault().keepBranchCoefs();
    if (flow.hasRow) return startStep(flow);
    step_.wasKept() ? flow.ReadResults(2) : flow.relayFault().storeBranchCoefs();
    end(!lostStatements());
}

void RunSession::HandCalSlot() {
    CHandCalFlow& flow = *hand_;
    // The rule of a run that has ended has its coefficients in the table.
    const bool good =
        endedWell(flow) && flow.ReadResults(1) && (manualRunning_ || flow.relayFault().replaceBranchCoefs());
    const bool goOn = settle(flow, good);
    if (manualRunning_ && step_.wasKept()) flow.relayFault().keepBranchCoefs();
    if (recalcPending_) return recalculationEnded(goOn);
    if (!goOn) return end(false);
    if (flow.hasRow && flow.standsOnSamePart()) return startStep(flow);
    state_ = State::Waiting;
    emit progress(flow.rowCursor.at(), flow.rowCursor.size());
    emit partShown(flow.shownRNo, flow.shownPNo);
}

bool RunSession::hasFurtherPart() const { return state_ == State::Waiting && hand_->hasRow; }

bool RunSession::next() {
    if (state_ != State::Waiting) return false;
    if (hand_->hasRow) {
        startStep(*hand_);
    } else {
        hand_->ReadResults(2);
        end(true);
    }
    return true;
}

void RunSession::KlmFSlot() {
    const bool good = endedWell(*klm_) && klm_->ReadResults(3);
    const bool goOn = settle(*klm_, good);
    // Its main branches have other numbers than those of the setting runs.
    QFile::remove(places_.workDir + "RELAY.RP3");
    if (!goOn || !step_.wasKept() || confirm_) return end(goOn && step_.wasKept());
    end(storeSensitivityParameters(klm_->relayInput()) && !lostStatements());
}

void RunSession::abort() {
    if (state_ == State::Idle) return;
    abortFlag_ = true;
    if (state_ == State::Waiting) return end(false);
    // Also when it has just ended by itself its end is still to come, and ends the run.
    for (EngineProcess* process : processes()) process->abort();
}

void RunSession::end(bool complete) {
    state_ = State::Idle;
    manualRunning_ = false;
    if (complete && run_ != Sensitivity) toStore_ = withoutResult_;
    emit finished(complete);
}

bool RunSession::ensure() {
    if (state_ != State::Idle || !shadows_.commit()) return false;
    changed_ = false;
    if (toStore_ && !RulesWithoutResult::store(places_.workDir, case_.Case_No, *toStore_))
        ReportError(Text::tr("没有结果的整定原则不能保存"), 1);
    return true;
}

bool RunSession::cancel() {
    if (state_ != State::Idle || !shadows_.restore()) return false;
    changed_ = false;
    return true;
}
