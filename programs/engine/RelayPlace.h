#pragma once

#include "programs/engine/RowCursor.h"

/// Where a relay stands, in the network's numbers.
struct RelayPlace {
    bool found = false;
    bool atBus = false;  ///< at a bus, or at an element with one node
    int node = 0;        ///< the relay's own node
    int idNo = 0, iNo = 0, jNo = 0;

    static RelayPlace of(const SettingRow& row);
};
