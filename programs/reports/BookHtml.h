#pragma once

#include "programs/reports/BookRequest.h"

/// Writes a calculation book as one HTML file that needs nothing else, for screen and print.
/// \return false with a message when there are no results or the file cannot be written; an older file then stays
bool exportBookHtml(const BookRequest& request, const QString& file);
