#pragma once

#include <QStyledItemDelegate>

class QLineEdit;

namespace host {

/// Full-width digits, points, signs and exponents as their half-width characters; an ideographic full stop is a point.
QString halfWidth(QString text);
/// Lets a line edit take full-width digits: they turn half-width as they are typed or pasted.
void acceptFullWidth(QLineEdit* edit);

/// A cell that holds a number: right aligned, its editor takes full-width digits.
class NumberCell : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    static QLineEdit* numberEdit(QWidget* parent);

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace host
