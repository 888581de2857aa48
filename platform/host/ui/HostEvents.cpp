#include "platform/host/ui/HostEvents.h"

#include <QPointer>
#include <QWidget>

namespace {

QPointer<QWidget>& registered() {
    static QPointer<QWidget> widget;
    return widget;
}

}  // namespace

QWidget* host::mainWidget() { return registered(); }

void host::setMainWidget(QWidget* widget) { registered() = widget; }
