#pragma once

#include "platform/host/NetworkModel.h"

/// Replaces the network of the open project by one that an importer read, with its operating modes.
/// \return false on failure; the dock then has the reason
bool storeImportedNetwork(const host::NetworkModel& network);
