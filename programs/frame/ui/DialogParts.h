#pragma once

#include <QWidget>

class QDialog;
class QDialogButtonBox;
class QPushButton;
class QSplitter;

/// A widget with its object name.
template <class Widget>
Widget* named(const char* name, QWidget* parent) {
    auto* widget = new Widget(parent);
    widget->setObjectName(name);
    return widget;
}

/// The row of buttons at the foot of a dialog; Enter presses the first.
QDialogButtonBox* buttonRow(QPushButton* ensure, QPushButton* cancel);

/// Gives a splitter the sizes that the user gave it last, and remembers those he gives it: under the object names of
/// the window and the splitter.
void rememberSizes(QSplitter* splitter, const QString& window);
/// Gives a dialog the size and the place that it had last, under its object name; before that a size that is wanted,
/// less where the screen is smaller.
void rememberPlace(QDialog* dialog, QSize wanted);
