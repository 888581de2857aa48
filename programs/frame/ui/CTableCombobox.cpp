#include "programs/frame/ui/CTableCombobox.h"

#include <QComboBox>
#include <QTableWidget>

CTableCombobox::CTableCombobox(QTableWidget* table, int editType) : QObject(table), TableEditorItem(editType) {}

void CTableCombobox::insertItem(const QString& text) { insertStringList({text}); }

// As in any combo box, the first item stands in the cell until another one is chosen.
void CTableCombobox::insertStringList(const QStringList& texts) {
    const bool first = items_.isEmpty();
    items_ << texts;
    if (first && text().isEmpty()) setCurrentItem(0);
}

void CTableCombobox::setCurrentItem(int index) {
    if (index >= 0 && index < items_.size()) setText(items_[index]);
}

QWidget* CTableCombobox::createEditor(QWidget* parent) {
    auto* combo = new QComboBox(parent);
    combo->addItems(items_);
    combo->setAutoFillBackground(true);
    connect(combo, &QComboBox::activated, this, &CTableCombobox::ValueChanged);
    return combo;
}

void CTableCombobox::showIn(QWidget* editor) const {
    auto* combo = qobject_cast<QComboBox*>(editor);
    for (int i = combo->count(); i < items_.size(); ++i) combo->addItem(items_[i]);
    combo->setCurrentIndex(currentItem());
}

void CTableCombobox::takeFrom(const QWidget* editor) {
    setCurrentItem(qobject_cast<const QComboBox*>(editor)->currentIndex());
}

void CTableCombobox::ValueChanged(int index) {
    setCurrentItem(index);
    emit TableComboboxChanged(index, row());
}
