#pragma once

/// Copies of the working tables as they stood when a run window opened. A restore is one transaction and needs every
/// copy to exist.
namespace RunShadows {

bool build();
bool restore();
void drop();

}  // namespace RunShadows
