#include "programs/study/ImportedNetwork.h"

#include "platform/host/BaseTables.h"
#include "programs/study/ModeStore.h"

bool storeImportedNetwork(const host::NetworkModel& network) {
    return host::storeNetwork(network) && ModeStore::saveImported(network.modes);
}
