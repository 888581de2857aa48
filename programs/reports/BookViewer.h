#pragma once

#include <QString>

/// Shows a calculation book: starts "NotePad", which lies beside the program or on the search path, on a file.
/// \return false when it cannot be started (told in the dock)
bool showBook(const QString& file);
