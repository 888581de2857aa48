#include "shell/viewer/BookWindow.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QStatusBar>
#include <QTextBlock>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>

#include "shell/Appearance.h"
#include "shell/Settings.h"
#include "shell/viewer/Book.h"
#include "shell/viewer/BookPrint.h"
#include "shell/viewer/CellGrid.h"
#include "shell/viewer/FindLine.h"

namespace shell {

namespace {

constexpr qreal kUsualSize = 11;
constexpr int kSettled = 200;  ///< ms without a further change, after which a file counts as written

}  // namespace

BookWindow::BookWindow(QWidget* parent)
    : QMainWindow(parent),
      trouble_(new QLabel(this)),
      edit_(new QPlainTextEdit(this)),
      find_(new FindLine(edit_, this)),
      state_(new QLabel(this)),
      invalid_(new QLabel(this)) {
    setObjectName("BookWindow");
    layOut();
    addActions();
    changed_.setSingleShot(true);
    changed_.setInterval(kSettled);
    connect(&changed_, &QTimer::timeout, this, &BookWindow::reload);
    for (const auto signal : {&QFileSystemWatcher::fileChanged, &QFileSystemWatcher::directoryChanged})
        connect(&watcher_, signal, this, [this] { changed_.start(); });
    setSize(Settings().store().value("viewer/font_size", kUsualSize).toReal());
    if (!restoreGeometry(Settings().windowPart("viewer"))) resize(900, 700);
}

BookWindow::~BookWindow() {
    Settings().setWindowPart("viewer", saveGeometry());
    Settings().store().setValue("viewer/font_size", points_);
}

void BookWindow::layOut() {
    trouble_->setObjectName("label_Trouble");
    trouble_->setWordWrap(true);
    trouble_->setMargin(8);
    trouble_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    trouble_->hide();
    edit_->setObjectName("plainTextEdit_Book");
    edit_->setReadOnly(true);
    edit_->setUndoRedoEnabled(false);
    edit_->document()->setDocumentMargin(8);
    edit_->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    edit_->viewport()->installEventFilter(this);
    auto* body = new QWidget(this);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(find_);
    rows->addWidget(trouble_);
    rows->addWidget(edit_, 1);
    setCentralWidget(body);
    invalid_->setObjectName("label_Invalid");
    statusBar()->addWidget(state_, 1);
    statusBar()->addPermanentWidget(invalid_);
}

void BookWindow::addActions() {
    QMenu* menu = nullptr;
    auto* bar = addToolBar(tr("工具栏"));
    bar->setObjectName("toolBar");
    bar->setMovable(false);
    const auto add = [&](const QString& text, const QKeySequence& keys, const char* picture, auto&& act) {
        QAction* action = menu->addAction(text);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, act);
        if (!*picture) return;
        action->setIcon(icon(picture));
        bar->addAction(action);
    };
    menu = menuBar()->addMenu(tr("文件(&F)"));
    add(tr("打开(&O)…"), QKeySequence::Open, "open", [this] {
        const QString file = QFileDialog::getOpenFileName(this, tr("打开"), QFileInfo(file_).path(), {}, nullptr,
                                                          QFileDialog::DontUseNativeDialog);
        if (!file.isEmpty()) open(file);
    });
    add(tr("重新读入(&R)"), QKeySequence::Refresh, "", [this] { reload(); });
    add(tr("打印(&P)…"), QKeySequence::Print, "print", [this] { print(); });
    add(tr("关闭(&C)"), QKeySequence("Ctrl+W"), "", [this] { close(); });
    menu = menuBar()->addMenu(tr("编辑(&E)"));
    bar->addSeparator();
    add(tr("复制(&C)"), QKeySequence::Copy, "copy", [this] { edit_->copy(); });
    add(tr("全选(&A)"), QKeySequence::SelectAll, "", [this] { edit_->selectAll(); });
    add(tr("查找(&F)…"), QKeySequence::Find, "find", [this] { find_->start(); });
    add(tr("下一个(&N)"), QKeySequence(Qt::Key_F3), "", [this] { find_->findNext(); });
    add(tr("上一个(&P)"), QKeySequence(Qt::SHIFT | Qt::Key_F3), "", [this] { find_->findPrevious(); });
    menu = menuBar()->addMenu(tr("视图(&V)"));
    bar->addSeparator();
    add(tr("放大(&I)"), QKeySequence("Ctrl++"), "zoom-in", [this] { zoom(1); });
    add(tr("缩小(&O)"), QKeySequence("Ctrl+-"), "zoom-out", [this] { zoom(-1); });
    add(tr("原来大小(&Z)"), QKeySequence("Ctrl+0"), "", [this] { zoom(0); });
}

void BookWindow::open(const QString& file) {
    file_ = file;
    setWindowTitle(QFileInfo(file).fileName());
    edit_->clear();
    reload();
}

void BookWindow::reload() {
    const Book book = readBook(file_);
    const int line = edit_->verticalScrollBar()->value();
    if (book.whyNot.isEmpty() && book.text != edit_->toPlainText()) showText(book.text);
    edit_->verticalScrollBar()->setValue(line);
    showState(book.whyNot, book.invalid);
    watch();
}

void BookWindow::showText(const QString& text) {
    cells_.reset();
    edit_->setPlainText(text);
    find_->textChanged();
    if (!CellGrid(edit_->font()).fits(text)) cells_ = std::make_unique<CellFormat>(edit_->document(), edit_->font());
}

// What was read last stays in view when the file goes away.
void BookWindow::showState(const QString& whyNot, int invalid) {
    trouble_->setVisible(!whyNot.isEmpty());
    trouble_->setText(tr("不能读文件 %1：%2").arg(file_, whyNot));
    edit_->setVisible(whyNot.isEmpty() || !edit_->document()->isEmpty());
    const int lines = edit_->blockCount() - (edit_->document()->lastBlock().length() == 1);
    state_->setText(whyNot.isEmpty() ? tr("%1 行").arg(lines) : QString());
    invalid_->setText(invalid == 0 ? QString() : tr("不是 GBK 编码的字符，显示为 �：%1 处").arg(invalid));
}

// The folder too: writers replace a file by another of its name, and one that is not there yet may come.
void BookWindow::watch() {
    const QString folder = QFileInfo(file_).absolutePath();
    if (!watcher_.directories().contains(folder)) {
        if (!watcher_.directories().isEmpty()) watcher_.removePaths(watcher_.directories());
        watcher_.addPath(folder);
    }
    if (watcher_.files().contains(file_)) return;
    if (!watcher_.files().isEmpty()) watcher_.removePaths(watcher_.files());
    if (QFileInfo::exists(file_)) watcher_.addPath(file_);
}

void BookWindow::print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(windowTitle());
    printer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) printBook(windowTitle(), edit_->toPlainText(), printer);
}

void BookWindow::zoom(int steps) { setSize(steps == 0 ? kUsualSize : points_ + steps); }

void BookWindow::setSize(qreal points) {
    points_ = std::clamp(points, 5.0, 48.0);
    edit_->setFont(CellGrid::font(points_));
    if (cells_) cells_ = std::make_unique<CellFormat>(edit_->document(), edit_->font());
}

bool BookWindow::eventFilter(QObject* watched, QEvent* event) {
    const auto* wheel = event->type() == QEvent::Wheel ? static_cast<QWheelEvent*>(event) : nullptr;
    if (!wheel || !(wheel->modifiers() & Qt::ControlModifier)) return QMainWindow::eventFilter(watched, event);
    if (wheel->angleDelta().y() != 0) zoom(wheel->angleDelta().y() > 0 ? 1 : -1);
    return true;
}

}  // namespace shell
