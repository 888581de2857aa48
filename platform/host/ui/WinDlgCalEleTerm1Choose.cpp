#include "platform/host/ui/WinDlgCalEleTerm1Choose.h"

#include <QSqlDatabase>

WinDlgCalEleTerm1Choose::WinDlgCalEleTerm1Choose(QSqlDatabase* database, const QString& table, const QString& column,
                                                 const QString& selected, QWidget* parent, const char* name, bool modal,
                                                 uint flags)
    : ElementPicker(OneEnded, parent, name ? name : "WinDlgCalEleTerm1Choose", modal, flags) {
    setWindowTitle(table.startsWith("CDB_GENERAT") ? tr("选择发电机") : tr("选择并联电容器或电抗器"));
    setRows(host::oneEndedRows(database ? database->connectionName() : QString(), table, column));
    preselect(selected);
}
