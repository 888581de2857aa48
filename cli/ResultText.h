#pragma once

#include "programs/workflow/ResultTable.h"

namespace cli {

// The settings of a case on standard output: rounded for reading, or with all their figures.
void printTable(const QVector<ResultRow>& rows);
void printCsv(const QVector<ResultRow>& rows);
void printJson(const QVector<ResultRow>& rows);

}  // namespace cli
