#include "programs/workflow/ui/ChoiceDialog.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <algorithm>

#include "platform/host/ui/Icons.h"
#include "programs/frame/ui/DialogParts.h"

namespace {

QVector<int> selectedRows(const QListWidget& list) {
    QVector<int> rows;
    for (const QModelIndex& index : list.selectionModel()->selectedIndexes())
        if (!list.item(index.row())->isHidden()) rows << index.row();
    if (rows.isEmpty() && list.currentRow() >= 0) rows << list.currentRow();
    std::sort(rows.begin(), rows.end());
    return rows;
}

QVBoxLayout* boxed(QGroupBox* box, QWidget* list, QWidget* count) {
    auto* rows = box->layout() ? qobject_cast<QVBoxLayout*>(box->layout()) : new QVBoxLayout(box);
    rows->addWidget(list, 1);
    rows->addWidget(count);
    return rows;
}

}  // namespace

ChoiceDialog::ChoiceDialog(const char* all, const char* chosen, QWidget* parent)
    : QDialog(parent),
      listBox_All(named<QListWidget>(all, this)),
      listBox_Chosen(named<QListWidget>(chosen, this)),
      lineEdit_Filter(named<QLineEdit>("lineEdit_Filter", this)),
      pushButton_Add(named<QPushButton>("pushButton_Add", this)),
      pushButton_Delete(named<QPushButton>("pushButton_Delete", this)),
      pushButton_DelAll(named<QPushButton>("pushButton_DelAll", this)),
      pushButton_Ensure(named<QPushButton>("pushButton_Ensure", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)),
      offered_(new QLabel(this)),
      taken_(new QLabel(this)) {
    for (QListWidget* list : {listBox_All, listBox_Chosen}) {
        list->setUniformItemSizes(true);
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    }
    for (QPushButton* button : {pushButton_Add, pushButton_Delete, pushButton_DelAll}) button->setAutoDefault(false);
    lineEdit_Filter->setClearButtonEnabled(true);
    lineEdit_Filter->addAction(host::icon("search"), QLineEdit::LeadingPosition);
    connect(lineEdit_Filter, &QLineEdit::textChanged, this, &ChoiceDialog::filter);
}

void ChoiceDialog::offer(const QVector<Entry>& entries) {
    entries_ = entries;
    QStringList labels;
    for (const Entry& entry : entries) labels << entry.label;
    listBox_All->addItems(labels);
    filter(lineEdit_Filter->text());
}

void ChoiceDialog::take(int row) {
    if (row < 0 || row >= entries_.size()) return;
    const auto same = [&](int other) { return entries_[other].key == entries_[row].key; };
    if (std::any_of(chosen_.begin(), chosen_.end(), same)) return;
    chosen_ << row;
    listBox_Chosen->addItem(entries_[row].label);
    showCounts();
}

void ChoiceDialog::putBack(int chosenRow) {
    if (chosenRow < 0 || chosenRow >= chosen_.size()) return;
    chosen_.removeAt(chosenRow);
    delete listBox_Chosen->takeItem(chosenRow);
    showCounts();
}

void ChoiceDialog::takeSelected() {
    for (const int row : selectedRows(*listBox_All)) take(row);
}

void ChoiceDialog::putBackSelected() {
    const QVector<int> rows = selectedRows(*listBox_Chosen);
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) putBack(*row);
}

void ChoiceDialog::putBackAll() {
    chosen_.clear();
    listBox_Chosen->clear();
    showCounts();
}

void ChoiceDialog::showRow(int row) {
    if (row < 0 || row >= entries_.size()) return;
    if (listBox_All->item(row)->isHidden()) lineEdit_Filter->clear();
    listBox_All->setCurrentRow(row);
    listBox_All->scrollToItem(listBox_All->item(row), QAbstractItemView::PositionAtCenter);
}

QHBoxLayout* ChoiceDialog::lists(QGroupBox* all, QGroupBox* chosen) {
    auto* buttons = new QVBoxLayout;
    buttons->addStretch();
    for (QPushButton* button : {pushButton_Add, pushButton_Delete, pushButton_DelAll}) buttons->addWidget(button);
    buttons->addStretch();
    boxed(all, listBox_All, offered_)->insertWidget(all->layout()->count() - 2, lineEdit_Filter);
    boxed(chosen, listBox_Chosen, taken_);
    auto* row = new QHBoxLayout;
    row->addWidget(all, 1);
    row->addLayout(buttons);
    row->addWidget(chosen, 1);
    return row;
}

void ChoiceDialog::nameParts() {
    lineEdit_Filter->setPlaceholderText(tr("名称的一部分"));
    pushButton_Add->setText(tr("增加"));
    pushButton_Delete->setText(tr("删除"));
    pushButton_DelAll->setText(tr("全删"));
    pushButton_Ensure->setText(tr("确定"));
    pushButton_Cancel->setText(tr("取消"));
    showCounts();
}

void ChoiceDialog::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const QWidget* in = focusWidget();
    const bool choosing = in == listBox_All || qobject_cast<const QLineEdit*>(in);
    if (choosing && (key == Qt::Key_Return || key == Qt::Key_Enter)) return takeSelected();
    if (in == listBox_Chosen && key == Qt::Key_Delete) return putBackSelected();
    if (choosing && (key == Qt::Key_Up || key == Qt::Key_Down)) return moveCurrent(key == Qt::Key_Down ? 1 : -1);
    QDialog::keyPressEvent(event);
}

void ChoiceDialog::filter(const QString& text) {
    const QStringList words = text.split(' ', Qt::SkipEmptyParts);
    int first = -1;
    shown_ = 0;
    for (int row = 0; row < entries_.size(); ++row) {
        const bool shown = std::all_of(words.begin(), words.end(), [&](const QString& word) {
            return entries_[row].label.contains(word, Qt::CaseInsensitive);
        });
        listBox_All->item(row)->setHidden(!shown);
        if (shown && shown_++ == 0) first = row;
    }
    listBox_All->setCurrentRow(first);
    showCounts();
}

void ChoiceDialog::moveCurrent(int step) {
    for (int row = listBox_All->currentRow() + step; row >= 0 && row < listBox_All->count(); row += step)
        if (!listBox_All->item(row)->isHidden()) return listBox_All->setCurrentRow(row);
}

void ChoiceDialog::showCounts() {
    offered_->setText(shown_ == entries_.size() ? tr("共 %1 个").arg(shown_)
                                                : tr("共 %1 个，显示 %2 个").arg(entries_.size()).arg(shown_));
    taken_->setText(tr("已选 %1 个").arg(chosen_.size()));
}
