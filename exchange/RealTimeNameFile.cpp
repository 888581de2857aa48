#include "exchange/RealTimeNameFile.h"

#include <filesystem>

#include "exchange/TextFile.h"

namespace exchange {

std::string format(const RealTimeName& name) { return "\"" + name.name + "\",  \"" + name.path + "\",  \r\n"; }

RealTimeName parseRealTimeName(std::string_view text, const std::string& file) {
    constexpr std::string_view kBetween = "\",  \"";
    Lines lines(text, file);
    if (!lines.next()) throw FormatError(file, 0, "is empty");
    const auto line = lines.line();
    const auto between = line.find(kBetween, 1);
    const auto last = line.rfind('"');
    if (!line.starts_with('"') || between == std::string_view::npos || last < between + kBetween.size())
        throw FormatError(file, 1, "a name and a path in quotes are expected");
    const auto path = between + kBetween.size();
    return {std::string(line.substr(1, between - 1)), std::string(line.substr(path, last - path))};
}

std::string realTimeFile(const RealTimeName& name) { return (std::filesystem::path(name.path) / "tables.db").string(); }

}  // namespace exchange
