#pragma once

#include <QStringList>
#include <QVector>

#include "programs/workflow/PickerResults.h"

/// The installed relays of one type, as the relay picker and the command line choose among them.
namespace RelaySelection {

/// Those in service, by element and side.
QVector<SelectedRly> inService(int rTypeNo);
/// All of the network, those switched off included, by number.
QVector<SelectedRly> ofNetwork(int rTypeNo);
/// Those on elements with a node of a voltage level, likewise.
/// \param level  nominal voltage in kV \return false with a message for a level that is none
bool ofLevel(int rTypeNo, double level, QVector<SelectedRly>* relays);

/// Nominal voltages of the base network in kV, ascending.
QStringList voltageLevels();

}  // namespace RelaySelection
