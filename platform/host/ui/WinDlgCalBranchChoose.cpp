#include "platform/host/ui/WinDlgCalBranchChoose.h"

#include <QSqlDatabase>

WinDlgCalBranchChoose::WinDlgCalBranchChoose(int mode, QSqlDatabase* database, const QList<QString>& tables,
                                             QWidget* parent, const char* name, bool modal, uint flags)
    : WinDlgCalBranchChoose(mode, database, tables, {}, parent, name, modal, flags) {}

WinDlgCalBranchChoose::WinDlgCalBranchChoose(int, QSqlDatabase* database, const QList<QString>& tables,
                                             const QList<int>& kinds, QWidget* parent, const char* name, bool modal,
                                             uint flags)
    : ElementPicker(Branches, parent, name ? name : "WinDlgCalBranchChoose", modal, flags),
      connection_(database ? database->connectionName() : QString()),
      tables_(tables),
      kinds_(kinds) {
    setWindowTitle(tr("选择支路"));
}

int WinDlgCalBranchChoose::ChooseBranch(const QString& name, const QString& iName, const QString& jName) {
    QList<QString> tables;
    for (const QString& table : std::as_const(tables_))
        tables << (table.endsWith("_0") ? table.chopped(1) + QString::number(loadFlowCase_) : table);
    setRows(host::branchRows(connection_, tables, kinds_));
    preselect(name, iName, jName);
    exec();
    const host::PickRow chosen = taken().value_or(host::PickRow());
    ElementName = chosen.name;
    INodeName = chosen.i;
    JNodeName = chosen.j;
    return taken() ? 0 : 1;
}
