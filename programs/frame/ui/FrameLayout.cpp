#include "programs/frame/ui/FrameLayout.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QWidget>

FrameLayout fillWithFrame(QWidget* window, QWidget* frame) {
    if (window && !window->layout()) {
        auto* whole = new QVBoxLayout(window);
        whole->setContentsMargins(0, 0, 0, 0);
        whole->addWidget(frame);
    }
    auto* rows = new QVBoxLayout(frame);
    rows->setContentsMargins(10, 5, 10, 8);
    FrameLayout made{new QHBoxLayout, new QVBoxLayout, new QHBoxLayout};
    made.tools->setSpacing(1);
    rows->addLayout(made.tools);
    rows->addLayout(made.body, 1);
    rows->addLayout(made.buttons);
    return made;
}
