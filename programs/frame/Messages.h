#pragma once

#include <QString>

/// A line in the host's dock: level 0 error, 1 warning, 2 nothing. Another level only warns the developer.
void ReportError(const QString& text, int level);
/// A line in the host's dock: level 0 and 1 information, 2 nothing. Empty text shows nothing in either.
void ReportSuccess(const QString& text, int level);
