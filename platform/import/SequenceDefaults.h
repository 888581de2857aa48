#pragma once

#include "platform/import/Import.h"

namespace import {

/// Gives zero-sequence data to what has none (NaN): lines R0 + jX0 = 3 (R + jX), transformers Z0 = Z1, generators half
/// of Xd''. Each default is reported once per kind of element with its count.
/// \throws ImportError when data are missing and Options::defaultSequenceData is off
void completeSequenceData(host::NetworkModel& model, const Options& options, Report& report);

}  // namespace import
