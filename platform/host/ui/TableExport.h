#pragma once

#include <QString>
#include <QtGlobal>

class QTableView;

namespace host {

/// Role under which a model gives what a cell is outside of its table: a number where it shows the text of one, a text
/// that it shows only once. A cell without it is what it shows.
inline constexpr int ExportRole = Qt::UserRole + 100;

// What a table shows, heads first: hidden columns and rows are left out, columns stand as the user sees them.

/// Tabs between cells, a line for each row.
QString shownText(const QTableView& table);
/// UTF-8 with a byte order mark, fields quoted as RFC 4180 has it. A text that a spreadsheet would take for a formula
/// begins with an apostrophe; figures never do.
/// \param error  what went wrong, with the file's name; there is no half file then, and an old one stays
bool writeCsv(const QTableView& table, const QString& file, QString* error);
/// An Office Open XML workbook with one sheet: numbers as numbers, heads bold and frozen, columns as wide as in the
/// table, a filter on each. Fails as writeCsv() does.
bool writeXlsx(const QTableView& table, const QString& sheet, const QString& file, QString* error);

}  // namespace host
