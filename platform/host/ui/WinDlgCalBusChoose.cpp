#include "platform/host/ui/WinDlgCalBusChoose.h"

#include <QSqlDatabase>

WinDlgCalBusChoose::WinDlgCalBusChoose(int, int, QSqlDatabase* database, const QString& selected, bool physicalOnly,
                                       QWidget* parent, const char* name, bool modal, uint flags)
    : ElementPicker(Buses, parent, name ? name : "WinDlgCalBusChoose", modal, flags) {
    setWindowTitle(tr("选择母线"));
    setRows(host::busRows(database ? database->connectionName() : QString(), physicalOnly));
    preselect(selected);
}
