#pragma once

#include <string>
#include <string_view>

namespace exchange {

/// RTDB.INC: name and path of the real-time directory, the path relative to the working directory.
struct RealTimeName {
    std::string name;
    std::string path;
};

std::string format(const RealTimeName& name);
/// \throws FormatError
RealTimeName parseRealTimeName(std::string_view text, const std::string& file);

/// The file in the real-time directory that holds the real-time tables: `path`/tables.db.
std::string realTimeFile(const RealTimeName& name);

}  // namespace exchange
