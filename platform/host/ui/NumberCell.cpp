#include "platform/host/ui/NumberCell.h"

#include <QLineEdit>

namespace host {

QString halfWidth(QString text) {
    static const QString wide = QStringLiteral("０１２３４５６７８９．。＋－−Ｅｅ　");
    static const QString narrow = QStringLiteral("0123456789..+--Ee ");
    for (QChar& character : text)
        if (const auto found = wide.indexOf(character); found >= 0) character = narrow[found];
    return text;
}

void acceptFullWidth(QLineEdit* edit) {
    QObject::connect(edit, &QLineEdit::textEdited, edit, [edit](const QString& text) {
        const QString narrow = halfWidth(text);
        if (narrow == text) return;
        const int at = edit->cursorPosition();
        edit->setText(narrow);
        edit->setCursorPosition(at);
    });
}

QLineEdit* NumberCell::numberEdit(QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setFrame(false);
    edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    acceptFullWidth(edit);
    return edit;
}

QWidget* NumberCell::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const {
    return numberEdit(parent);
}

void NumberCell::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
}

}  // namespace host
