#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/import/CsvTable.h"

/// The flat table of a fault study, looked up by what a row is about.
namespace cases {

/// Rows of a table by column name.
using Row = std::map<std::string, std::string>;

inline std::vector<Row> rowsOf(const std::string& text, const std::string& file) {
    const import::CsvTable table = import::parseCsv(text, file);
    std::vector<Row> rows;
    for (const auto& record : table.records) {
        Row& row = rows.emplace_back();
        for (std::size_t c = 0; c < record.cells.size(); ++c) row[table.header.cells[c]] = record.cells[c];
    }
    return rows;
}

class FaultTable {
  public:
    explicit FaultTable(const std::string& text) {
        for (Row& row : rowsOf(text, "answer")) {
            const std::string about =
                row["record"] == "fault" || row["record"] == "voltage"
                    ? row["record"]
                    : row["record"] + ":" + row["name"] + (row["end"].empty() ? "" : ":") + row["end"];
            rows_[key(row["place"], row["kind"], about)] = std::move(row);
        }
    }

    /// \param about     "fault", "voltage", "branch:NAME:END", "source:NAME", "bus:NAME", "ground_loop:NAME:END" ..
    /// \param quantity  a column, "max" (of the phases) or "3zero"
    /// \throws std::out_of_range when there is no such row or number
    [[nodiscard]] double value(const std::string& place, const std::string& kind, const std::string& about,
                               const std::string& quantity) const {
        const auto row = rows_.find(key(place, kind, about));
        if (row == rows_.end()) throw std::out_of_range("no row " + key(place, kind, about));
        if (quantity == "3zero") return 3 * number(row->second, "zero");
        if (quantity != "max") return number(row->second, quantity);
        return std::max({number(row->second, "a"), number(row->second, "b"), number(row->second, "c")});
    }

  private:
    static std::string key(const std::string& place, const std::string& kind, const std::string& about) {
        return place + " " + kind + " " + about;
    }
    static double number(const Row& row, const std::string& column) {
        const auto cell = row.find(column);
        if (cell == row.end() || cell->second.empty()) throw std::out_of_range("no number in column " + column);
        return std::stod(cell->second);
    }

    std::map<std::string, Row> rows_;
};

}  // namespace cases
