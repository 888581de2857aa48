#include "platform/host/ui/CCalcObject.h"

#include <QCoreApplication>
#include <QWidget>

#include "platform/host/ui/HostEvents.h"

void CCalcObject::PostCustomEvent2MainWidget(int event, void* data) {
    if (QWidget* window = host::mainWidget())
        QCoreApplication::postEvent(window, new host::DataCustomEvent(event, data));
    else
        delete static_cast<int*>(data);
}
