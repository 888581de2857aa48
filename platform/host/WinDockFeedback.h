#pragma once

#include <functional>

/// The host's message dock. Without a receiver messages go to standard error.
class WinDockFeedback {
  public:
    enum Level { Information = -1, Diagram = 1, Warning = 2, Error = 3 };

    /// One line. \param text  UTF-8 \param level  one of Level
    static void ShowMessage(const char* text, const char*, const char*, const char*, int level);

    using Receiver = std::function<void(const char* text, int level)>;
    /// Takes over all messages; an empty function gives them back to standard error.
    static void setReceiver(Receiver receiver);
};
