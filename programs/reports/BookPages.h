#pragma once

#include <QDateTime>

#include "programs/reports/BookContent.h"
#include "programs/workflow/ResultTable.h"

/// What books for reading on screen and paper tell beyond the plain text.
struct BookPages {
    BookContent content;
    QHash<QPair<QPair<int, int>, QString>, ResultRow> table;  ///< by relay, part, setting; none in the sensitivity book
    QHash<QPair<QPair<int, int>, int>, QString> reasons;      ///< why a rule had no result, by relay, part, rule
};

/// \return nothing, with a message, when the tables cannot be read or there are no results
std::optional<BookPages> readBookPages(const BookRequest& request);

/// The body of a book in HTML that is well-formed XML: contents, overview, then each relay with its parts and rules.
/// \param at  date and time of the book
QString bookBody(const BookPages& pages, const QDateTime& at);
