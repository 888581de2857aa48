#pragma once

#include <QAbstractItemDelegate>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>

/// How one types into a table of numbers and names: Enter opens the editor of the current cell; in an editor it takes
/// the text and goes to the next row. \tparam View  QTableView or a class derived from it
template <class View>
class TypingTable : public View {
  public:
    using View::View;

    /// Takes what stands in the editor that is open, if any.
    void endEdit() {
        if (this->state() != View::EditingState) return;
        const QModelIndex at = this->currentIndex();
        QWidget* editor = this->indexWidget(at) ? this->indexWidget(at) : QApplication::focusWidget();
        if (!editor || editor == this || !this->isAncestorOf(editor)) return;
        this->commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }

  protected:
    void startTyping() {
        this->setEditTriggers(View::DoubleClicked | View::EditKeyPressed | View::AnyKeyPressed | View::SelectedClicked);
        this->setTabKeyNavigation(false);
        this->verticalHeader()->setDefaultSectionSize(this->fontMetrics().height() + 8);
    }
    void keyPressEvent(QKeyEvent* event) override {
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!enter || event->modifiers() & ~Qt::KeypadModifier) return View::keyPressEvent(event);
        if (this->state() == View::EditingState) return;  // the editor's; it must not press the window's button
        const QModelIndex at = this->currentIndex();
        if (!at.isValid() || !this->edit(at, View::EditKeyPressed, event)) event->ignore();
    }
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override {
        const QModelIndex at = this->currentIndex();
        View::closeEditor(editor, hint);
        if (hint != QAbstractItemDelegate::SubmitModelCache || !at.isValid()) return;
        if (const QModelIndex next = at.siblingAtRow(at.row() + 1); next.isValid()) this->setCurrentIndex(next);
    }
};
