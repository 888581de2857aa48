#include "shell/WinDlgOpen.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "shell/Appearance.h"

namespace shell {

WinDlgOpen::WinDlgOpen(const QStringList& names, QWidget* parent) : QDialog(parent) {
    setObjectName("WinDlgOpen");
    setWindowTitle(tr("打开工程"));
    auto* rows = new QVBoxLayout(this);
    lineEdit_Filter = new QLineEdit(this);
    lineEdit_Filter->setObjectName("lineEdit_Filter");
    lineEdit_Filter->setPlaceholderText(tr("工程名的一部分"));
    lineEdit_Filter->setClearButtonEnabled(true);
    listWidget_Projects = new QListWidget(this);
    listWidget_Projects->setObjectName("listWidget_Projects");
    for (const QString& name : names) listWidget_Projects->addItem(new QListWidgetItem(icon("project"), name));
    auto* buttons = new QDialogButtonBox(this);
    pushButton_Ensure = buttons->addButton(tr("打开"), QDialogButtonBox::AcceptRole);
    pushButton_Ensure->setObjectName("pushButton_Ensure");
    pushButton_Cancel = buttons->addButton(tr("取消"), QDialogButtonBox::RejectRole);
    pushButton_Cancel->setObjectName("pushButton_Cancel");
    rows->addWidget(lineEdit_Filter);
    rows->addWidget(listWidget_Projects);
    if (names.isEmpty()) rows->addWidget(new QLabel(tr("还没有工程。"), this));
    rows->addWidget(buttons);
    connect(lineEdit_Filter, &QLineEdit::textChanged, this, &WinDlgOpen::filter);
    connect(listWidget_Projects, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(listWidget_Projects, &QListWidget::currentRowChanged, this,
            [this](int row) { pushButton_Ensure->setEnabled(row >= 0); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(fontMetrics().averageCharWidth() * 60, fontMetrics().height() * 20);
    filter({});
}

void WinDlgOpen::filter(const QString& text) {
    int first = -1;
    for (int row = 0; row < listWidget_Projects->count(); ++row) {
        QListWidgetItem* item = listWidget_Projects->item(row);
        item->setHidden(!item->text().contains(text, Qt::CaseInsensitive));
        if (!item->isHidden() && first < 0) first = row;
    }
    listWidget_Projects->setCurrentRow(first);
    pushButton_Ensure->setEnabled(first >= 0);
    pushButton_Ensure->setToolTip(first >= 0 ? QString() : tr("没有这样的工程"));
}

QString WinDlgOpen::chosen() const {
    const QListWidgetItem* item = listWidget_Projects->currentItem();
    return item ? item->text() : QString();
}

}  // namespace shell
