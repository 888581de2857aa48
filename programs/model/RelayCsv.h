#pragma once

#include <QVector>
#include <string>

#include "programs/model/RelayStore.h"

/// Relays to be installed, from a comma-separated table. Columns: `element`, `side` (I, J, 1, 2) and `type` (number or
/// name of the relay type), and, when wanted, `i_node`, `j_node`, `ct`, `pt`.
/// \throws import::ImportError with file and line for an unknown or missing column, a bad value, or a place that the
///         network does not have or has more than once
QVector<RelayRequest> readRelayCsv(const std::string& file);
