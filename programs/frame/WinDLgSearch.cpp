#include "programs/frame/WinDLgSearch.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "programs/frame/ui/PaintTable.h"

int WinDLgSearch::iSearchResult = -1;

namespace {

struct Kind {
    const char* caption;
    int width;
};
constexpr Kind kKinds[] = {
    {"", 200},
    {QT_TRANSLATE_NOOP("WinDLgSearch", "运行方式名"), 200},
    {QT_TRANSLATE_NOOP("WinDLgSearch", "保护安装位置"), 200},
    {QT_TRANSLATE_NOOP("WinDLgSearch", "应用的计算"), 800},
    {QT_TRANSLATE_NOOP("WinDLgSearch", "应用的计算"), 800},
    {QT_TRANSLATE_NOOP("WinDLgSearch", "主干支路"), 200},
    {QT_TRANSLATE_NOOP("WinDLgSearch", "作业名"), 200},
    {QT_TRANSLATE_NOOP("WinDLgSearch", "主干支路"), 200},
    {QT_TRANSLATE_NOOP("WinDLgSearch", "保护"), 200},
};

}  // namespace

WinDLgSearch::WinDLgSearch(const QStringList& items, int kind, QWidget* parent, const char* name, bool modal,
                           Qt::WindowFlags flags)
    : QDialog(parent, flags),
      table_Key(new PaintTable(this, "table_Key")),
      lineEdit_Search(new QLineEdit(this)),
      pushButton_Select(new QPushButton(tr("查找"), this)),
      pushButton_Ensure(new QPushButton(tr("确定"), this)),
      pushButton_Cancel(new QPushButton(tr("取消"), this)) {
    iSearchResult = -1;
    setObjectName(name ? name : "WinDLgSearch");
    setWindowTitle(tr("记录查找"));
    setModal(modal);
    fill(items, kind >= 1 && kind <= 8 ? kind : 0);
    layOut(table_Key->columnWidth(0));
    connect(pushButton_Select, &QPushButton::clicked, this, &WinDLgSearch::PushButton_Select_Clicked);
    connect(lineEdit_Search, &QLineEdit::returnPressed, this, &WinDLgSearch::PushButton_Select_Clicked);
    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDLgSearch::PushButton_Ensure_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDLgSearch::PushButton_Cancel_Clicked);
    connect(table_Key, &QTableWidget::cellClicked, this, &WinDLgSearch::Table_Key_Selected);
    connect(table_Key, &QTableWidget::cellDoubleClicked, this, &WinDLgSearch::PushButton_Ensure_Clicked);
    connect(new QShortcut(QKeySequence(Qt::Key_F3), this), &QShortcut::activated, this, &WinDLgSearch::findNext);
}

void WinDLgSearch::fill(const QStringList& items, int kind) {
    table_Key->setColumnCount(1);
    table_Key->setHorizontalHeaderLabels({tr(kKinds[kind].caption)});
    table_Key->setColumnWidth(0, kKinds[kind].width);
    table_Key->setRowCount(static_cast<int>(items.size()));
    for (int row = 0; row < items.size(); ++row) table_Key->setText(row, 0, items[row]);
    table_Key->selectWholeRows();
    table_Key->setReadOnly(true);
}

void WinDLgSearch::layOut(int width) {
    lineEdit_Search->setObjectName("lineEdit_Search");
    pushButton_Select->setObjectName("pushButton_Select");
    pushButton_Ensure->setObjectName("pushButton_Ensure");
    pushButton_Cancel->setObjectName("pushButton_Cancel");
    pushButton_Select->setAutoDefault(false);
    pushButton_Ensure->setDefault(true);
    auto* find = new QHBoxLayout;
    find->addWidget(lineEdit_Search, 1);
    find->addWidget(pushButton_Select);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(pushButton_Ensure);
    buttons->addWidget(pushButton_Cancel);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(find);
    rows->addWidget(table_Key, 1);
    rows->addLayout(buttons);
    table_Key->horizontalHeader()->setStretchLastSection(true);
    lineEdit_Search->setFocus();
    resize(qMax(360, width + 80), 420);
}

void WinDLgSearch::PushButton_Select_Clicked() { findFrom(0); }

void WinDLgSearch::findNext() { findFrom(table_Key->currentRow() + 1); }

void WinDLgSearch::findFrom(int first) {
    const QString wanted = lineEdit_Search->text().trimmed();
    if (wanted.isEmpty()) return;
    for (int row = first; row < table_Key->rowCount(); ++row)
        if (table_Key->text(row, 0).trimmed().contains(wanted)) return Table_Key_Selected(row);
}

void WinDLgSearch::Table_Key_Selected(int row) { table_Key->selectRow(row); }

void WinDLgSearch::PushButton_Ensure_Clicked() {
    iSearchResult = table_Key->currentRow();
    accept();
}

void WinDLgSearch::PushButton_Cancel_Clicked() { reject(); }

// Enter in the line searches and takes nothing.
void WinDLgSearch::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || focusWidget() != lineEdit_Search) QDialog::keyPressEvent(event);
}
