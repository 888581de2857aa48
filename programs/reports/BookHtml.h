#pragma once

#include <QByteArray>
#include <optional>

#include "programs/reports/BookRequest.h"

/// A calculation book as one HTML page in UTF-8 that needs nothing else, for screen and print.
/// \return nothing, with a message, when there are no results
std::optional<QByteArray> bookHtml(const BookRequest& request);

/// Writes bookHtml() to a file.
/// \return false with a message when there are no results or the file cannot be written; an older file then stays
bool exportBookHtml(const BookRequest& request, const QString& file);
