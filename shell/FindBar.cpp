#include "shell/FindBar.h"

#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <algorithm>

#include "shell/Appearance.h"

namespace shell {

namespace {

constexpr int kShownRows = 8;
constexpr int kListed = 500;  ///< more hits are counted, not listed

}  // namespace

FindBar::FindBar(Find find, QWidget* parent) : QWidget(parent), find_(std::move(find)) {
    setObjectName("findBar");
    setAutoFillBackground(true);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(6, 4, 6, 4);
    text_ = new QLineEdit(this);
    text_->setObjectName("lineEdit_Find");
    text_->setClearButtonEnabled(true);
    text_->addAction(icon("find"), QLineEdit::LeadingPosition);
    text_->installEventFilter(this);
    count_ = new QLabel(this);
    hits_ = new QListWidget(this);
    hits_->setObjectName("listWidget_Hits");
    hits_->setUniformItemSizes(true);
    hits_->setFixedHeight(kShownRows * (fontMetrics().height() + 4));
    grid->addWidget(text_, 0, 0);
    grid->addWidget(count_, 0, 1);
    grid->addWidget(hits_, 1, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    languageChange();
    connect(text_, &QLineEdit::textChanged, this, &FindBar::search);
    connect(hits_, &QListWidget::itemClicked, this, [this] { choose(hits_->currentRow()); });
    hide();
}

void FindBar::start() {
    show();
    text_->setFocus();
    text_->selectAll();
    search(text_->text());
}

void FindBar::search(const QString& text) {
    hits_->clear();
    const QStringList found = text.trimmed().isEmpty() ? QStringList() : find_(text.trimmed());
    hits_->addItems(found.mid(0, kListed));
    hits_->setVisible(!found.isEmpty());
    count_->setText(text.trimmed().isEmpty() ? QString()
                    : found.isEmpty()        ? tr("没有")
                                             : tr("%1 个").arg(found.size()));
    if (!found.isEmpty()) hits_->setCurrentRow(0);
}

void FindBar::choose(int row) {
    if (const QListWidgetItem* item = hits_->item(row)) emit chosen(item->text());
}

bool FindBar::takeKey(int key) {
    const int row = hits_->currentRow();
    switch (key) {
        case Qt::Key_Escape:
            hide();
            emit ended();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            choose(row);
            return true;
        case Qt::Key_Down:
        case Qt::Key_Up:
            hits_->setCurrentRow(std::clamp(row + (key == Qt::Key_Down ? 1 : -1), 0, std::max(0, hits_->count() - 1)));
            return true;
        default:
            return false;
    }
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && takeKey(static_cast<QKeyEvent*>(event)->key())) return true;
    return QWidget::eventFilter(watched, event);
}

void FindBar::languageChange() { text_->setPlaceholderText(tr("元件、母线或厂站名的一部分")); }

void FindBar::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) languageChange();
    QWidget::changeEvent(event);
}

}  // namespace shell
