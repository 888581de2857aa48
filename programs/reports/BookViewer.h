#pragma once

#include <QString>

/// Shows a calculation book: starts "NotePad" on a file.
/// \param folder  where it lies, empty: beside the program; else it is looked for on the search path
/// \return false when it cannot be started (told in the dock)
bool showBook(const QString& file, const QString& folder = {});
