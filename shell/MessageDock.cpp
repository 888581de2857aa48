#include "shell/MessageDock.h"

#include <QClipboard>
#include <QEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QSaveFile>
#include <QScrollBar>
#include <QShortcut>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>

#include "platform/host/WinDockFeedback.h"
#include "shell/Appearance.h"

namespace shell {

MessageDock::MessageDock(QWidget* parent) : QDockWidget(parent) {
    setObjectName("dock_Messages");
    filter_.setSourceModel(&model_);
    auto* content = new QWidget(this);
    auto* rows = new QVBoxLayout(content);
    rows->setContentsMargins(4, 2, 4, 4);
    rows->setSpacing(2);
    makeView();
    rows->addWidget(makeBar());
    rows->addWidget(view_);
    setWidget(content);
    languageChange();
    connect(&model_, &MessageModel::countsChanged, this, &MessageDock::showCounts);
    connect(new QShortcut(QKeySequence::Copy, view_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
            &MessageDock::copy);
    WinDockFeedback::setReceiver([this](const char* text, int level) { model_.post(QString::fromUtf8(text), level); });
}

MessageDock::~MessageDock() { WinDockFeedback::setReceiver({}); }

void MessageDock::makeView() {
    view_ = new QTreeView(this);
    view_->setObjectName("treeView_Messages");
    view_->setModel(&filter_);
    view_->setRootIsDecorated(false);
    view_->setUniformRowHeights(true);
    view_->setAlternatingRowColors(true);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->header()->setStretchLastSection(true);
    const int em = fontMetrics().horizontalAdvance("0");
    view_->setColumnWidth(MessageModel::TimeColumn, em * 12);
    view_->setColumnWidth(MessageModel::GradeColumn, em * 14);
    connect(view_->verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this](int value) { atEnd_ = value == view_->verticalScrollBar()->maximum(); });
    connect(view_->verticalScrollBar(), &QScrollBar::rangeChanged, this, &MessageDock::keepNewestVisible);
}

QWidget* MessageDock::makeBar() {
    auto* bar = new QWidget(this);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    for (int i = kGrades - 1; i >= 0; --i) {
        auto* button = grades_[size_t(i)] = new QToolButton(bar);
        button->setObjectName("toolButton_Grade" + QString::number(i));
        button->setCheckable(true);
        button->setChecked(true);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        row->addWidget(button);
        connect(button, &QToolButton::toggled, this, [this, i](bool shown) { filter_.setShown(Grade(i), shown); });
    }
    text_ = new QLineEdit(bar);
    text_->setObjectName("lineEdit_Filter");
    text_->setClearButtonEnabled(true);
    connect(text_, &QLineEdit::textChanged, this, [this](const QString& text) { filter_.setText(text); });
    row->addWidget(text_, 1);
    row->addWidget(copy_ = makeButton("copy", &MessageDock::copy));
    row->addWidget(save_ = makeButton("save", &MessageDock::save));
    row->addWidget(clear_ = makeButton("clear", &MessageDock::clear));
    return bar;
}

QToolButton* MessageDock::makeButton(const QString& name, void (MessageDock::*slot)()) {
    auto* button = new QToolButton(this);
    button->setObjectName("toolButton_" + name);
    button->setIcon(icon(name));
    button->setAutoRaise(true);
    connect(button, &QToolButton::clicked, this, slot);
    return button;
}

void MessageDock::languageChange() {
    setWindowTitle(tr("消息"));
    text_->setPlaceholderText(tr("只显示含有这段文字的消息"));
    copy_->setToolTip(tr("复制选中的消息（未选中时为全部显示的消息）"));
    save_->setToolTip(tr("把显示的消息存为文本文件"));
    clear_->setToolTip(tr("清除全部消息"));
    showCounts();
}

void MessageDock::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) languageChange();
    QDockWidget::changeEvent(event);
}

void MessageDock::showCounts() {
    static const char* const icons[] = {"diagram", "info", "warning", "error"};
    for (int i = 0; i < kGrades; ++i) {
        QToolButton& button = *grades_[size_t(i)];
        if (button.icon().isNull()) button.setIcon(icon(icons[i]));
        button.setText(MessageModel::nameOf(Grade(i)) + " " + QString::number(model_.count(Grade(i))));
        button.setToolTip(tr("显示或隐藏这一级别的消息"));
    }
}

void MessageDock::keepNewestVisible() {
    if (atEnd_) view_->scrollToBottom();
}

QString MessageDock::text() const {
    QModelIndexList rows = view_->selectionModel()->selectedRows();
    if (rows.isEmpty())
        for (int row = 0; row < filter_.rowCount(); ++row) rows.append(filter_.index(row, 0));
    std::sort(rows.begin(), rows.end());
    QString text;
    for (const QModelIndex& row : std::as_const(rows))
        for (int column = 0; column < MessageModel::ColumnCount; ++column)
            text +=
                row.siblingAtColumn(column).data().toString() + (column + 1 < MessageModel::ColumnCount ? '\t' : '\n');
    return text;
}

void MessageDock::copy() { QGuiApplication::clipboard()->setText(text()); }

void MessageDock::save() {
    const QString name = QFileDialog::getSaveFileName(this, tr("保存消息"), "messages.txt", tr("文本文件 (*.txt)"));
    if (name.isEmpty()) return;
    view_->clearSelection();
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(text().toUtf8()) < 0 || !file.commit())
        model_.post(tr("不能写文件%1：%2").arg(name, file.errorString()), WinDockFeedback::Error);
}

}  // namespace shell
