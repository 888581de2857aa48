#pragma once

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <limits>
#include <set>

#include "platform/host/Text.h"
#include "platform/import/CsvColumns.h"
#include "platform/import/CsvTable.h"
#include "platform/import/Import.h"
#include "platform/import/InputFile.h"

/// Records from and to the text of a file, by the list of columns.
namespace import::csv {

/// A cell with its place, for messages.
struct Cell {
    const std::string& text;
    const std::string& file;
    int line;
    std::string_view column;
    [[noreturn]] void fail(const std::string& what) const {
        throw ImportError(file, line, Text::say("列 ") + std::string(column) + Text::say("：") + what);
    }
};

void store(const Cell& cell, Need need, std::string& field);
/// Finite decimal numbers only; an empty optional cell gives NaN.
void store(const Cell& cell, Need need, double& field);
void store(const Cell& cell, Need need, int& field);
/// "1" and "0".
void store(const Cell& cell, Need need, bool& field);

std::string cellOf(const std::string& value);
/// The shortest text that reads back as the same number; empty for NaN.
std::string cellOf(double value);
std::string cellOf(int value);
std::string cellOf(bool value);

/// A column of a file by its name; one that may be absent need not be there.
struct WantedColumn {
    std::string_view name;
    bool mayBeAbsent = false;
};
inline constexpr std::size_t kAbsent = static_cast<std::size_t>(-1);

/// Place of each wanted column in the header. \throws ImportError for a column unknown, missing or named twice
std::vector<std::size_t> columnPlaces(const CsvTable& table, const std::vector<WantedColumn>& wanted,
                                      const std::string& file);

/// The records of one file of a folder; none when the file is absent.
/// \throws ImportError with file and line
template <class Row>
std::vector<Row> readRows(const std::filesystem::path& folder) {
    const std::string file(FileOf<Row>::name());
    if (!std::filesystem::exists(folder / file)) return {};
    const CsvTable table = parseCsv(readInput(folder / file), file);
    std::vector<WantedColumn> wanted;
    for (const auto& column : FileOf<Row>::columns()) wanted.push_back({column.name, column.need == Need::Absent});
    const std::vector<std::size_t> places = columnPlaces(table, wanted, file);
    std::vector<Row> rows;
    for (const CsvRecord& record : table.records) {
        Row row{};
        row.line = record.line;
        for (std::size_t c = 0; c < places.size(); ++c) {
            if (places[c] == kAbsent) continue;
            const auto& column = FileOf<Row>::columns()[c];
            const Cell cell{record.cells[places[c]], file, record.line, column.name};
            std::visit([&](auto field) { store(cell, column.need, row.*field); }, column.field);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

template <class Row>
std::string textOf(const std::vector<Row>& rows) {
    std::string text;
    std::vector<std::string> cells;
    for (const auto& column : FileOf<Row>::columns()) cells.emplace_back(column.name);
    appendCsv(text, cells);
    for (const Row& row : rows) {
        cells.clear();
        for (const auto& column : FileOf<Row>::columns())
            cells.push_back(std::visit([&](auto field) { return cellOf(row.*field); }, column.field));
        appendCsv(text, cells);
    }
    return text;
}

}  // namespace import::csv
