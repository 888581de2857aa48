#pragma once

#include <QString>

/// Unit of a setting in books, by its kind.
QString bookUnit(int vType);
/// Unit of a variable of a rule as books show it, by the number of its quantity (docs/rule-language.md).
QString bookVariableUnit(int vType);
