#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace import {

/// One record of a comma-separated table and the line it begins on.
struct CsvRecord {
    int line = 0;
    std::vector<std::string> cells;
};

/// A comma-separated table (RFC 4180): fields may stand in double quotes, a doubled quote inside them is one quote.
/// A byte order mark, LF or CR LF, and a missing last line end are accepted; empty lines are passed over.
struct CsvTable {
    CsvRecord header;
    std::vector<CsvRecord> records;
};

/// \param file  for messages
/// \throws ImportError for a stray or open quote, a record with another number of fields than the header, no header,
///         or bytes that are not UTF-8
CsvTable parseCsv(std::string_view text, const std::string& file);

/// Appends a record, quoting fields where needed, with LF at its end.
void appendCsv(std::string& text, const std::vector<std::string>& cells);

}  // namespace import
