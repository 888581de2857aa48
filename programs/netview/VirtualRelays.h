#pragma once

/// Puts a virtual relay at every line end that lies on a T node and has none yet, whatever its state. A row that is
/// there stays as it is. \return false when the database refused; the dock then has the reason
bool SearchDumRelay();
