#include "platform/host/WinDockFeedback.h"

#include <cstdio>
#include <utility>

namespace {

WinDockFeedback::Receiver& receiverInUse() {
    static WinDockFeedback::Receiver receiver;
    return receiver;
}

}  // namespace

void WinDockFeedback::ShowMessage(const char* text, const char*, const char*, const char*, int level) {
    if (receiverInUse()) return receiverInUse()(text, level);
    std::fprintf(stderr, "%s\n", text);
}

void WinDockFeedback::setReceiver(Receiver receiver) { receiverInUse() = std::move(receiver); }
