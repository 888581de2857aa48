#pragma once

/// Makes the settings of the loaded case, RLY_RLYOBJ_TEM, the relays' settings of record, RLY_RDZ. One transaction
/// each; false leaves RLY_RDZ as it was. The line length of a relay and the relays outside the case are never touched.
namespace SettingStore {

/// New values become current, the values they replace become the backup.
bool saveChangingBackup();
/// New values become current, the backup of each setting stays.
bool saveKeepingBackup();

}  // namespace SettingStore
