#include "programs/frame/Messages.h"

#include <QtGlobal>

#include "platform/host/WinDockFeedback.h"

namespace {

void show(const QString& text, int dockLevel) {
    WinDockFeedback::ShowMessage(text.toUtf8().constData(), "", "", "", dockLevel);
}

}  // namespace

void ReportError(const QString& text, int level) {
    if (text.isEmpty() || level == 2) return;
    if (level == 0) return show(text, WinDockFeedback::Error);
    if (level == 1) return show(text, WinDockFeedback::Warning);
    qWarning("无法处理的错误信息：%s", qUtf8Printable(text));
}

void ReportSuccess(const QString& text, int level) {
    if (text.isEmpty() || level == 2) return;
    if (level == 0 || level == 1) return show(text, WinDockFeedback::Information);
    qWarning("无法处理的成功信息：%s", qUtf8Printable(text));
}
