#include "shell/StartPage.h"

#include <QAction>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

#include "shell/Appearance.h"
#include "shell/Menus.h"

namespace shell {

namespace {

QLabel* makeLabel(QWidget* parent, double size, bool bold) {
    auto* label = new QLabel(parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(bold);
    label->setFont(font);
    return label;
}

}  // namespace

StartPage::StartPage(RecentProjects& recent, const Menus& menus, QWidget* parent) : QWidget(parent), recent_(recent) {
    setObjectName("startPage");
    auto* columns = new QGridLayout(this);
    const int em = fontMetrics().height();
    columns->setContentsMargins(em * 3, em * 2, em * 3, em * 2);
    columns->setHorizontalSpacing(em * 3);
    title_ = makeLabel(this, 2.0, true);
    purpose_ = makeLabel(this, 1.0, false);
    notice_ = makeLabel(this, 1.0, false);
    notice_->setWordWrap(true);
    notice_->hide();
    columns->addWidget(title_, 0, 0, 1, 2);
    columns->addWidget(purpose_, 1, 0, 1, 2);
    columns->addWidget(notice_, 2, 0, 1, 2);
    columns->setRowMinimumHeight(3, em);
    columns->addWidget(makeWays(menus), 4, 0, Qt::AlignTop);
    columns->addWidget(makeList(), 4, 1);
    columns->setColumnStretch(1, 1);
    columns->setRowStretch(4, 1);
    languageChange();
    setFocusProxy(list_);
}

QWidget* StartPage::makeWays(const Menus& menus) {
    auto* ways = new QWidget(this);
    auto* column = new QVBoxLayout(ways);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(fontMetrics().height() / 2);
    for (const char* name : {"new", "open", "demo"}) {
        auto* button = new QToolButton(ways);
        button->setDefaultAction(menus[name]);
        button->setObjectName(QString("toolButton_") + name);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setIconSize(QSize(1, 1) * fontMetrics().height() * 1.6);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setFocusPolicy(Qt::StrongFocus);
        column->addWidget(button);
    }
    return ways;
}

QWidget* StartPage::makeList() {
    auto* part = new QWidget(this);
    auto* rows = new QGridLayout(part);
    rows->setContentsMargins(0, 0, 0, 0);
    heading_ = makeLabel(part, 1.2, true);
    remove_ = new QToolButton(part);
    remove_->setObjectName("toolButton_Remove");
    remove_->setIcon(icon("clear"));
    remove_->setAutoRaise(true);
    empty_ = new QLabel(part);
    empty_->setWordWrap(true);
    list_ = new QListWidget(part);
    list_->setObjectName("listWidget_Recent");
    list_->setAlternatingRowColors(true);
    list_->setIconSize(QSize(1, 1) * fontMetrics().height() * 1.6);
    list_->setContextMenuPolicy(Qt::CustomContextMenu);
    rows->addWidget(heading_, 0, 0);
    rows->addWidget(remove_, 0, 1);
    rows->addWidget(empty_, 1, 0, 1, 2, Qt::AlignTop);
    rows->addWidget(list_, 2, 0, 1, 2);
    rows->setColumnStretch(0, 1);
    rows->setRowStretch(2, 1);
    connect(list_, &QListWidget::itemActivated, this, &StartPage::open);
    connect(list_, &QListWidget::customContextMenuRequested, this, &StartPage::showMenu);
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) { remove_->setEnabled(row >= 0); });
    connect(remove_, &QToolButton::clicked, this, &StartPage::removeCurrent);
    connect(new QShortcut(QKeySequence::Delete, list_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, &StartPage::removeCurrent);
    return part;
}

void StartPage::refresh(const QStringList& existing) {
    existing_ = existing;
    list_->clear();
    for (const RecentProject& project : recent_.list()) addProject(project);
    const bool any = list_->count() > 0;
    list_->setVisible(any);
    remove_->setVisible(any);
    empty_->setVisible(!any);
    list_->setCurrentRow(any ? 0 : -1);
    remove_->setEnabled(any);
}

void StartPage::addProject(const RecentProject& project) {
    const bool there = existing_.contains(project.name);
    const QString second = there ? project.summary.text() : tr("工程目录已不存在");
    auto* item = new QListWidgetItem(
        icon(there ? "project" : "missing"),
        project.name + "    " + QLocale().toString(project.opened, QLocale::ShortFormat) + "\n" + second, list_);
    item->setData(Qt::UserRole, project.name);
    if (!there) item->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
}

void StartPage::showNotice(const QString& text) {
    notice_->setText(text);
    notice_->setVisible(!text.isEmpty());
}

void StartPage::open(const QListWidgetItem* item) { emit openRequested(item->data(Qt::UserRole).toString()); }

void StartPage::removeCurrent() {
    if (const QListWidgetItem* item = list_->currentItem()) recent_.remove(item->data(Qt::UserRole).toString());
    refresh(existing_);
}

void StartPage::showMenu(const QPoint& at) {
    const QListWidgetItem* item = list_->itemAt(at);
    if (!item) return;
    QMenu menu(this);
    const QAction* opens = menu.addAction(icon("open"), tr("打开"));
    const QAction* removes = menu.addAction(icon("clear"), tr("从列表中移去"));
    const QAction* chosen = menu.exec(list_->viewport()->mapToGlobal(at));
    if (chosen == opens) open(item);
    if (chosen == removes) removeCurrent();
}

void StartPage::languageChange() {
    title_->setText("Morvane");
    purpose_->setText(tr("输电网继电保护整定计算"));
    heading_->setText(tr("最近的工程"));
    empty_->setText(tr("还没有打开过工程。新建一个并导入网络，打开已有的工程，或先看看示例工程。"));
    remove_->setToolTip(tr("从列表中移去（不删除工程）"));
    refresh(existing_);
}

void StartPage::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) languageChange();
    QWidget::changeEvent(event);
}

}  // namespace shell
