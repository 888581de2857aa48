#pragma once

#include "platform/host/ui/ElementPicker.h"

class QSqlDatabase;

/// The bus picker: nodes of the base network.
class WinDlgCalBusChoose : public ElementPicker {
    Q_OBJECT
  public:
    /// \param mode          not used, all nodes are in one table
    /// \param loadFlowCase  not used, as mode
    /// \param selected      the bus that is the current one at first
    /// \param physicalOnly  bus bars only
    WinDlgCalBusChoose(int mode, int loadFlowCase, QSqlDatabase* database, const QString& selected, bool physicalOnly,
                       QWidget* parent = nullptr, const char* name = nullptr, bool modal = true, uint flags = 0);

    /// Empty when none was chosen.
    [[nodiscard]] QString GetName() const { return taken().value_or(host::PickRow()).name; }
};
