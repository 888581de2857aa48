#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;

/// A line with a button "..." behind it.
class EditButton : public QWidget {
    Q_OBJECT
  public:
    explicit EditButton(QWidget* parent = nullptr, const char* name = nullptr, uint flags = 0);

    [[nodiscard]] QSize sizeHint() const override { return {185, 20}; }

    QLineEdit* lineEdit;
    QPushButton* pushButton;
};
