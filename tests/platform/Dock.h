#pragma once

#include <QStringList>

#include "platform/host/WinDockFeedback.h"

/// Collects what reaches the dock.
class Dock {
  public:
    Dock() {
        WinDockFeedback::setReceiver([this](const char* text, int) { lines << QString::fromUtf8(text); });
    }
    ~Dock() { WinDockFeedback::setReceiver({}); }

    QStringList lines;
};
