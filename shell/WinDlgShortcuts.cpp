#include "shell/WinDlgShortcuts.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace shell {

WinDlgShortcuts::WinDlgShortcuts(const QVector<QPair<QString, QString>>& rows, QWidget* parent) : QDialog(parent) {
    setObjectName("WinDlgShortcuts");
    setWindowTitle(tr("快捷键"));
    QVector<QPair<QString, QString>> all = rows;
    all += {{tr("在图上：移动"), tr("方向键，中键或左键拖动")},
            {tr("在图上：放大、缩小"), tr("滚轮")},
            {tr("在图上：打开元件的保护"), tr("双击")},
            {tr("消息窗口：复制"), "Ctrl+C"}};
    auto* table = new QTableWidget(int(all.size()), 2, this);
    table->setObjectName("table_Shortcuts");
    table->setHorizontalHeaderLabels({tr("操作"), tr("按键")});
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setAlternatingRowColors(true);
    table->verticalHeader()->hide();
    for (int row = 0; row < all.size(); ++row) {
        table->setItem(row, 0, new QTableWidgetItem(all[row].first));
        table->setItem(row, 1, new QTableWidgetItem(all[row].second));
    }
    table->resizeColumnToContents(0);
    table->horizontalHeader()->setStretchLastSection(true);
    auto* buttons = new QDialogButtonBox(this);
    connect(buttons->addButton(tr("关闭"), QDialogButtonBox::RejectRole), &QPushButton::clicked, this,
            &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(table);
    column->addWidget(buttons);
    resize(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 28);
}

}  // namespace shell
