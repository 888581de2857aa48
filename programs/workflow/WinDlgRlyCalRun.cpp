#include <QAbstractProxyModel>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>

#include "programs/frame/ui/PaintTable.h"
#include "programs/workflow/IntermediateResults.h"
#include "programs/workflow/WinDlgEnsureKlmP.h"
#include "programs/workflow/WinDlgRlyCal.h"
#include "programs/workflow/ui/RunProgress.h"
#include "programs/workflow/ui/SettingTable.h"

using State = RunSession::State;

namespace {

void allow(QWidget* widget, const QString& whyNot, const QString& tip = {}) {
    widget->setEnabled(whyNot.isEmpty());
    widget->setToolTip(whyNot.isEmpty() ? tip : whyNot);
}

constexpr int kSensitivityCase = 0;

}  // namespace

/// Enables and names the buttons as the state of the run has it.
void WinDlgRlyCal::showState() {
    const State state = session_.state();
    const bool running = state != State::Idle;
    const QString spoiled = !opened_       ? tr("不能备份工作表，本窗口不能计算")
                            : !valueValid_ ? tr("最近输入的定值无效，请先改正")
                                           : QString();
    const QString why = running ? tr("正在计算") : spoiled;
    for (QWidget* work : {static_cast<QWidget*>(pushButton_CalKlm), static_cast<QWidget*>(pushButton_BuildCalBook),
                          static_cast<QWidget*>(toolButton_Book), static_cast<QWidget*>(pushButton_Ensure)})
        allow(work, why, work == toolButton_Book ? tr("计算书的其他格式") : QString());
    allow(pushButton_KlmSys, running ? why : QString());
    allow(pushButton_Next, state == State::Busy ? tr("正在计算") : spoiled);
    pushButton_Next->setText(!running ? tr("开始") : finishing_ ? tr("完成") : tr("下一步"));
    pushButton_Cancel->setText(running ? tr("中止计算") : tr("取消"));
    const bool mayEdit = state != State::Busy && opened_;
    table_RlyObj->setEditTriggers(mayEdit ? editTriggers_ : QAbstractItemView::EditTriggers());
    table_RlyObj->setSelectionMode(running ? QAbstractItemView::SingleSelection : QAbstractItemView::ExtendedSelection);
    const bool klm = state == State::Busy && run_ == RunSession::Sensitivity && !session_.isRecalculating();
    for (QWidget* table :
         {static_cast<QWidget*>(table_RlyObj), static_cast<QWidget*>(table_RDzTm), static_cast<QWidget*>(table_Klm)})
        table->setEnabled(!klm);
}

/// Takes what is being typed. \return whether the last edit was good, without which nothing is begun
bool WinDlgRlyCal::acceptsWork() {
    table_RlyObj->endEdit();
    return valueValid_ && opened_;
}

void WinDlgRlyCal::PushButton_Next_Clicked() {
    if (!acceptsWork() || session_.state() == State::Busy) return;
    if (session_.state() == State::Idle) return start(runMode_);
    if (!session_.hasFurtherPart() && !finishing_) {
        finishing_ = true;
        return showState();
    }
    finishing_ = false;
    session_.next();
    showState();
}

void WinDlgRlyCal::start(RunSession::Run run) {
    run_ = run;
    aborting_ = finishing_ = false;
    stepRNo_ = stepPNo_ = -1;
    calculated_.clear();
    table_RlyObj->clearPaint();
    progress_->begin(run == RunSession::Sensitivity ? tr("计算灵敏度参量...") : tr("准备计算..."),
                     run == RunSession::Automatic);
    if (!session_.start(run)) {
        progress_->end(tr("计算没有开始，原因见消息窗口"), false);
        DspTable_RlyObj();
        return showState();
    }
    // an automatic run begins with new values of 0
    if (run == RunSession::Automatic) DspTable_RlyObj();
    showWithoutResult();
    showState();
}

void WinDlgRlyCal::abort() {
    aborting_ = true;
    progress_->setStep(tr("正在中止..."));
    session_.abort();
    showState();
}

void WinDlgRlyCal::onStep(int rNo, int pNo, int ruleNo) {
    if (run_ == RunSession::Automatic && stepRNo_ > 0) calculated_.insert(stepRNo_);
    stepRNo_ = rNo;
    stepPNo_ = pNo;
    progress_->setStep((session_.isRecalculating() ? tr("重新计算 ") : tr("计算 ")) + wording_.name(rNo, pNo, ruleNo));
    if (pushButton_Next->isEnabled()) showState();
}

void WinDlgRlyCal::onMessage(const QString& line) {
    const auto rule = RulesWithoutResult::read(line);
    progress_->addMessage(rule ? wording_(*rule) : line, !rule);
}

/// Brings the table up with an automatic run, some times a second, and marks the relay in hand.
void WinDlgRlyCal::onBeat() {
    const QSet<int> relays = std::exchange(calculated_, {});
    for (const auto& values : IntermediateResults::workingValues(relays))
        if (const int row = table_RlyObj->find(values.RNo, values.Cdz); row >= 0)
            for (int part = 1; part <= type_.NPart; ++part)
                table_RlyObj->setValue(row, part, values.primary[size_t(part - 1)]);
    if (list_WithoutResult->count() != session_.withoutResult().size()) showWithoutResult();
    if (session_.state() != State::Busy || session_.isRecalculating() || stepRNo_ < 0) return;
    table_RlyObj->paintRelay(stepRNo_, table_RlyObj->settings().newColumn(stepPNo_), false);
    scrollTo(stepRNo_, stepPNo_);
}

/// A manual run shows a relay part; the user looks, edits, and presses Next.
void WinDlgRlyCal::HandCalSlot() {
    goTo(stepRNo_, stepPNo_);
    progress_->pause(shown_.label.trimmed() + tr(" %1 段: 请查看结果，可以修改，然后按“下一步”").arg(stepPNo_));
    table_RlyObj->paintRelay(stepRNo_, table_RlyObj->settings().newColumn(stepPNo_), true);
    showWithoutResult();
    showState();
}

void WinDlgRlyCal::onRecalculated() {
    session_.state() == State::Waiting ? progress_->pause(tr("重新计算结束"))
                                       : progress_->end(tr("重新计算结束"), false);
    showState();
    showWithoutResult();
    refreshView();
}

void WinDlgRlyCal::onFinished(bool complete) {
    finishing_ = false;
    const int failed = session_.failedSteps();
    QString outcome = complete ? tr("计算完成") : aborting_ ? tr("计算已中止") : tr("计算没有完成，原因见消息窗口");
    if (failed > 0 && !aborting_) outcome += tr("，%1 次计算程序没有正常结束").arg(failed);
    progress_->end(outcome, complete);
    table_RlyObj->clearPaint();
    showWithoutResult();
    showState();
    if (closing_) return giveUp();
    if (run_ == RunSession::Sensitivity && complete) return KlmFSlot();
    AutoCalSlot();
}

// The run has scrolled the table along: tables and pictures show the current relay again.
void WinDlgRlyCal::AutoCalSlot() {
    DspTable_RlyObj();
    if (table_RlyObj->row() < 0) table_RlyObj->setCurrentCell(0, SettingModel::FirstValue);
    table_RlyObj->scrollTo(table_RlyObj->currentIndex());
    refreshView();
}

void WinDlgRlyCal::KlmFSlot() {
    WinDlgEnsureKlmP dialog(case_.RTypeNo, typeText_, kSensitivityCase, places_.workDir, this);
    dialog.exec();
    refreshView();
}

void WinDlgRlyCal::PushButton_CalKlm_Clicked() {
    if (acceptsWork() && session_.state() == State::Idle) start(RunSession::Sensitivity);
}

void WinDlgRlyCal::PushButton_Cancel_Clicked() {
    if (session_.state() != State::Idle) return abort();
    giveUp();
}

void WinDlgRlyCal::PushButton_Ensure_Clicked() {
    if (!acceptsWork() || session_.state() != State::Idle) return;
    if (session_.ensure()) accept();
}

void WinDlgRlyCal::showWithoutResult() {
    const auto& rules = session_.withoutResult();
    list_WithoutResult->clear();
    for (const RuleWithoutResult& rule : rules) {
        auto* item = new QListWidgetItem(wording_(rule), list_WithoutResult);
        item->setData(Qt::UserRole, rule.RNo);
        item->setData(Qt::UserRole + 1, rule.PNo);
    }
    tabWidget_Right->setTabText(1, tr("没有结果的原则（%1）").arg(rules.size()));
}

void WinDlgRlyCal::scrollTo(int rNo, int pNo) {
    const auto& rows = table_RlyObj->rows();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.RNo == rNo; });
    if (found == rows.end()) return;
    const SettingModel& model = table_RlyObj->settings();
    const QModelIndex at = model.index(int(found - rows.begin()), model.newColumn(pNo));
    const auto* shown = qobject_cast<const QAbstractProxyModel*>(table_RlyObj->model());
    table_RlyObj->scrollTo(shown ? shown->mapFromSource(at) : at);
}
