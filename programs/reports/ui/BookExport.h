#pragma once

#include "programs/reports/BookHtml.h"
#include "programs/reports/BookRequest.h"

/// Writes a calculation book as a PDF on A4, with page numbers, a contents page, links, and an outline of its relays,
/// parts and rules.
/// \return false with a message when there are no results or the file cannot be written; an older file then stays
bool exportBookPdf(const BookRequest& request, const QString& file);
