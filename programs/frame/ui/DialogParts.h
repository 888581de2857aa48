#pragma once

#include <QWidget>

class QDialogButtonBox;
class QPushButton;

/// A widget with its object name.
template <class Widget>
Widget* named(const char* name, QWidget* parent) {
    auto* widget = new Widget(parent);
    widget->setObjectName(name);
    return widget;
}

/// The row of buttons at the foot of a dialog; Enter presses the first.
QDialogButtonBox* buttonRow(QPushButton* ensure, QPushButton* cancel);
