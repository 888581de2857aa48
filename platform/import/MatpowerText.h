#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace import {

/// One matrix of a MATPOWER case: its rows and the line each stands on.
struct CaseMatrix {
    std::size_t columns = 0;
    std::vector<double> values;
    std::vector<int> lines;
    [[nodiscard]] std::size_t rows() const { return lines.size(); }
    [[nodiscard]] double at(std::size_t row, std::size_t column) const { return values[row * columns + column]; }
};

/// The parts of a MATPOWER case file (format version 2) that describe the network.
struct CaseText {
    double baseMva = 0;
    CaseMatrix bus, gen, branch;
    std::vector<std::string> busNames;
};

/// Parses the assignments to baseMVA, bus, gen, branch and bus_name; other statements are passed over.
/// \throws ImportError when one of the first four is missing, a matrix is cut off, its rows differ in length or are
///         shorter than the format says, or a cell is not a number
CaseText parseCase(std::string_view text, const std::string& file);

}  // namespace import
