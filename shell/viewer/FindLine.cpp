#include "shell/viewer/FindLine.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolButton>
#include <algorithm>

#include "shell/Appearance.h"

namespace shell {

namespace {

QToolButton* arrow(const char* name, Qt::ArrowType direction, const QString& tip, QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setArrowType(direction);
    button->setAutoRaise(true);
    button->setToolTip(tip);
    return button;
}

}  // namespace

FindLine::FindLine(QPlainTextEdit* edit, QWidget* parent)
    : QWidget(parent),
      edit_(edit),
      text_(new QLineEdit(this)),
      count_(new QLabel(this)),
      previous_(arrow("toolButton_Previous", Qt::UpArrow, tr("上一个 (Shift+F3)"), this)),
      next_(arrow("toolButton_Next", Qt::DownArrow, tr("下一个 (F3)"), this)) {
    setObjectName("findLine");
    text_->setObjectName("lineEdit_Find");
    text_->setPlaceholderText(tr("要查找的文字"));
    text_->setClearButtonEnabled(true);
    text_->addAction(icon("find"), QLineEdit::LeadingPosition);
    text_->installEventFilter(this);
    count_->setObjectName("label_Count");
    count_->setMinimumWidth(fontMetrics().horizontalAdvance("000000 / 000000"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 4, 6, 4);
    for (QWidget* part : {static_cast<QWidget*>(text_), static_cast<QWidget*>(previous_), static_cast<QWidget*>(next_),
                          static_cast<QWidget*>(count_)})
        row->addWidget(part, part == text_ ? 1 : 0);
    connect(text_, &QLineEdit::textChanged, this, &FindLine::searchFromHere);
    connect(previous_, &QToolButton::clicked, this, &FindLine::findPrevious);
    connect(next_, &QToolButton::clicked, this, &FindLine::findNext);
    showHit();
    hide();
}

void FindLine::start() {
    const QString selected = edit_->textCursor().selectedText();
    show();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator)) text_->setText(selected);
    text_->setFocus();
    text_->selectAll();
}

void FindLine::textChanged() {
    collect();
    current_ = -1;
    showHit();
}

void FindLine::collect() {
    hits_.clear();
    const QString wanted = text_->text();
    if (wanted.isEmpty()) return;
    const QString text = edit_->toPlainText();
    for (qsizetype at = text.indexOf(wanted, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(wanted, at + wanted.size(), Qt::CaseInsensitive))
        hits_ << int(at);
}

void FindLine::searchFromHere() {
    collect();
    const int here = edit_->textCursor().selectionStart();
    const auto found = std::lower_bound(hits_.begin(), hits_.end(), here);
    current_ = hits_.isEmpty() ? -1 : found == hits_.end() ? 0 : int(found - hits_.begin());
    showHit();
}

void FindLine::step(int by) {
    if (hits_.isEmpty()) return;
    const int count = int(hits_.size());
    current_ = current_ < 0 ? (by > 0 ? 0 : count - 1) : (current_ + by + count) % count;
    showHit();
}

void FindLine::showHit() {
    const bool asked = !text_->text().isEmpty();
    count_->setText(!asked            ? QString()
                    : hits_.isEmpty() ? tr("没有")
                                      : QString("%1 / %2").arg(current_ + 1).arg(hits_.size()));
    for (QToolButton* button : {previous_, next_}) button->setEnabled(!hits_.isEmpty());
    if (current_ < 0) return;
    QTextCursor cursor = edit_->textCursor();
    cursor.setPosition(hits_[current_]);
    cursor.setPosition(hits_[current_] + int(text_->text().size()), QTextCursor::KeepAnchor);
    edit_->setTextCursor(cursor);
    edit_->centerCursor();
}

bool FindLine::eventFilter(QObject* watched, QEvent* event) {
    if (watched != text_ || event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Escape) {
        hide();
        edit_->setFocus();
        return true;
    }
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter) return false;
    step(key->modifiers() & Qt::ShiftModifier ? -1 : 1);
    return true;
}

}  // namespace shell
