#include "programs/workflow/ui/RunProgress.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QToolButton>

#include "programs/frame/ui/DialogParts.h"

namespace {

constexpr int kBeat = 250;  // ms
constexpr int kMostMessages = 5000;

QString clockText(qint64 milliseconds) {
    const qint64 seconds = (milliseconds + 500) / 1000;
    const QString rest =
        QString("%1:%2").arg(seconds / 60 % 60, 2, 10, QChar('0')).arg(seconds % 60, 2, 10, QChar('0'));
    return seconds < 3600 ? rest : QString::number(seconds / 3600) + ":" + rest;
}

}  // namespace

RunProgress::RunProgress(QWidget* parent)
    : QWidget(parent),
      progressBar_Run(named<QProgressBar>("progressBar_Run", this)),
      label_Step(named<QLabel>("label_Step", this)),
      label_Time(named<QLabel>("label_Time", this)),
      label_Silence(named<QLabel>("label_Silence", this)),
      toolButton_Messages(named<QToolButton>("toolButton_Messages", this)),
      textEdit_Messages(named<QPlainTextEdit>("textEdit_Messages", this)) {
    setObjectName("RunProgress");
    layOut();
    connect(&clock_, &QTimer::timeout, this, &RunProgress::draw);
    connect(toolButton_Messages, &QToolButton::toggled, this, [this](bool open) {
        textEdit_Messages->setVisible(open);
        toolButton_Messages->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
    });
    showMessages();
}

void RunProgress::layOut() {
    progressBar_Run->setRange(0, 1);
    progressBar_Run->setFixedWidth(240);
    toolButton_Messages->setCheckable(true);
    toolButton_Messages->setArrowType(Qt::RightArrow);
    toolButton_Messages->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    toolButton_Messages->setAutoRaise(true);
    textEdit_Messages->setReadOnly(true);
    textEdit_Messages->setMaximumBlockCount(kMostMessages);
    textEdit_Messages->setMaximumHeight(fontMetrics().lineSpacing() * 7);
    textEdit_Messages->setTabChangesFocus(true);
    for (QWidget* hidden : {static_cast<QWidget*>(textEdit_Messages), static_cast<QWidget*>(label_Silence)})
        hidden->hide();
    label_Step->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    label_Step->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* rows = new QGridLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(progressBar_Run, 0, 0);
    rows->addWidget(label_Step, 0, 1);
    rows->addWidget(label_Time, 0, 2);
    rows->addWidget(toolButton_Messages, 0, 3);
    rows->addWidget(label_Silence, 1, 0, 1, 4);
    rows->addWidget(textEdit_Messages, 2, 0, 1, 4);
    rows->setColumnStretch(1, 1);
}

void RunProgress::begin(const QString& what, bool expects) {
    expects_ = expects;
    working_ = true;
    done_ = total_ = messages_ = warnings_ = 0;
    unshown_.clear();
    textEdit_Messages->clear();
    step_ = what;
    run_.start();
    sign_.start();
    clock_.start(kBeat);
    draw();
}

void RunProgress::setSteps(int done, int total) {
    done_ = done;
    total_ = total;
}

void RunProgress::setStep(const QString& what) {
    if (!run_.isValid()) run_.start();
    if (!clock_.isActive()) clock_.start(kBeat);
    working_ = true;
    step_ = what;
    sign_.start();
}

void RunProgress::addMessage(const QString& line, bool warning) {
    ++messages_;
    if (warning) ++warnings_;
    unshown_.append((warning ? tr("警告: ") : QString()) + line);
    if (unshown_.size() > kMostMessages) unshown_.removeFirst();
    sign_.start();
}

void RunProgress::pause(const QString& what) {
    working_ = false;
    step_ = what;
    draw();
}

void RunProgress::end(const QString& outcome, bool whole) {
    clock_.stop();
    if (whole) done_ = total_ = std::max(total_, 1);
    pause(outcome);
    run_.invalidate();
}

void RunProgress::say(const QString& text) {
    if (clock_.isActive()) return;
    step_ = text;
    label_Step->setText(text);
    label_Step->setToolTip(text);
}

void RunProgress::draw() {
    if (label_Step->text() != step_) {
        label_Step->setText(step_);
        label_Step->setToolTip(step_);
    }
    progressBar_Run->setRange(0, total_ > 0 ? total_ : working_ ? 0 : 1);
    progressBar_Run->setValue(done_);
    showTime();
    showSilence();
    showMessages();
    if (clock_.isActive()) emit beat();
}

void RunProgress::showTime() {
    if (!run_.isValid()) return;
    QString text = tr("已用 ") + clockText(run_.elapsed());
    if (expects_ && working_ && done_ > 0)
        text += tr("，预计还要 ") + clockText(run_.elapsed() * (total_ - done_) / done_);
    label_Time->setText(text);
}

void RunProgress::showSilence() {
    const bool silent = working_ && sign_.isValid() && sign_.elapsed() >= patience_;
    if (silent)
        label_Silence->setText(tr("计算程序仍在运行，已有 %1 秒没有消息。可以继续等待，或者按“中止计算”结束它。")
                                   .arg(sign_.elapsed() / 1000));
    label_Silence->setVisible(silent);
}

void RunProgress::showMessages() {
    if (!unshown_.isEmpty()) textEdit_Messages->appendPlainText(unshown_.join('\n'));
    unshown_.clear();
    toolButton_Messages->setText(warnings_ > 0 ? tr("消息 %1 条，警告 %2 条").arg(messages_).arg(warnings_)
                                               : tr("消息 %1 条").arg(messages_));
}

void RunProgress::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) showMessages();
    QWidget::changeEvent(event);
}
