#pragma once

class QHBoxLayout;
class QVBoxLayout;
class QWidget;

/// Rows of a dialog's frame.
struct FrameLayout {
    QHBoxLayout* tools;    ///< above
    QVBoxLayout* body;     ///< the dialog's own widgets; takes the room
    QHBoxLayout* buttons;  ///< below
};
/// Lays the rows out in `frame` and lets it fill a window that has no layout yet.
FrameLayout fillWithFrame(QWidget* window, QWidget* frame);
