#pragma once

#include "platform/host/ui/ElementPicker.h"

class QSqlDatabase;

/// The picker of generators, capacitors and reactors.
class WinDlgCalEleTerm1Choose : public ElementPicker {
    Q_OBJECT
  public:
    /// \param table     "CDB_GENERAT" or "CDB_PCAPREA", with or without "BAK"
    /// \param column    that has the name, "ID_Name"
    /// \param selected  the element that is the current one at first
    WinDlgCalEleTerm1Choose(QSqlDatabase* database, const QString& table, const QString& column,
                            const QString& selected, QWidget* parent = nullptr, const char* name = nullptr,
                            bool modal = true, uint flags = 0);

    /// Empty when none was chosen.
    [[nodiscard]] QString GetName() const { return taken().value_or(host::PickRow()).name; }
    [[nodiscard]] QString GetNodeName() const { return taken().value_or(host::PickRow()).i; }
};
