#pragma once

/// Copies of the working tables as they stood when a run window opened. A restore is one transaction and needs every
/// copy to exist.
namespace RunShadows {

/// Claims the runs of the project for this program until its connection ends, however it ends.
/// \return false when another program still has the claim after some seconds
bool claim();
/// Takes the working tables back that a run left behind without its end, and drops its copies. To be called with the
/// claim. \return what it found; None also for copies that were not complete, which no run had begun to need
enum class Leftover { None, Restored, Failed };
Leftover recover();

bool build();
bool restore();
void drop();

}  // namespace RunShadows
