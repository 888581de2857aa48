#pragma once

#include "programs/engine/RuleData.h"
#include "programs/reports/BookContent.h"

/// Gives the parts of a book what their settings came to, with the sensitivities.
/// \return false when a table cannot be read
bool readBookSettings(const RuleData& rules, const RelayTypeInfo& type, BookContent& content);
