#pragma once

#include "programs/reports/BookContent.h"

// What decided a variable, in words. Names stand as they are, not escaped.

/// "最大方式，甲线 距 甲站 35% 处单相短路接地，检修 乙变（两绕组变压器）"
QString decisionWords(const BookDecision& decided);
/// A number with its unit; a dash where there is none.
QString quantityWords(std::optional<double> value, const QString& unit);
/// What a variable's mode chose, one entry per choice; empty for the relay's own data.
QStringList choiceWords(const BookVariable& variable, int rType);
