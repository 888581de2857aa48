#include "programs/frame/ui/CEditButton.h"

#include <QLineEdit>
#include <QPushButton>

#include "programs/frame/ui/EditButton.h"

TableEditorItem::TableEditorItem(int editType)
    : QTableWidgetItem(UserType + 1), editType_(static_cast<EditType>(editType)) {
    if (editType == Never) setFlags(flags() & ~Qt::ItemIsEditable);
}

CEditButton::CEditButton(QTableWidget* table, int editType) : QObject(table), TableEditorItem(editType) {}

QWidget* CEditButton::createEditor(QWidget* parent) {
    editor_ = new EditButton(parent, "EditButton");
    connect(editor_->pushButton, &QPushButton::clicked, this, &CEditButton::ButtonClickSlot);
    connect(editor_->lineEdit, &QLineEdit::editingFinished, this, &CEditButton::LineEditEditSlot);
    connect(editor_->lineEdit, &QLineEdit::selectionChanged, this, &CEditButton::LineEditSelectSlot);
    return editor_;
}

void CEditButton::showIn(QWidget* editor) const { qobject_cast<EditButton*>(editor)->lineEdit->setText(text()); }

void CEditButton::takeFrom(const QWidget* editor) {
    setText(qobject_cast<const EditButton*>(editor)->lineEdit->text());
}

void CEditButton::ButtonClickSlot() { emit ButtonClickSingal(row()); }

void CEditButton::LineEditEditSlot() {
    if (editor_) takeFrom(editor_);
    emit LineEditEditSingal(row());
}

void CEditButton::LineEditSelectSlot() { emit LineEditSelectSingal(row()); }

QWidget* CTableButton::createEditor(QWidget* parent) {
    CEditButton::createEditor(parent);
    editor_->lineEdit->hide();
    editor_->setFocusProxy(editor_->pushButton);
    return editor_;
}
