#include <algorithm>

#include "platform/import/Import.h"
#include "platform/import/InputFile.h"

namespace import {

namespace {

using Reader = host::NetworkModel (*)(const std::filesystem::path&, const Options&, Report&);

bool holds(const std::filesystem::path& folder, std::string_view extension) {
    const std::filesystem::directory_iterator files(folder);
    return std::any_of(begin(files), end(files),
                       [&](const auto& file) { return file.path().extension() == extension; });
}

/// XML begins with "<", an archive with "PK"; a MATPOWER case assigns to the fields of mpc.
Reader readerOf(const std::filesystem::path& file) {
    const std::string text = readInput(file);
    const std::size_t begin = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    const std::size_t first = text.find_first_not_of(" \t\r\n", begin);
    if (text.starts_with("PK") || (first != std::string::npos && text[first] == '<')) return readCgmes;
    if (text.find("mpc.") != std::string::npos || file.extension() == ".m") return readMatpower;
    throw ImportError(file.filename().string(), 0, "不是 CSV 目录、CGMES 模型或 MATPOWER 算例");
}

}  // namespace

host::NetworkModel read(const std::filesystem::path& input, const Options& options, Report& report) {
    try {
        if (!std::filesystem::exists(input)) throw ImportError(input.string(), 0, "文件不存在");
        if (!std::filesystem::is_directory(input)) return readerOf(input)(input, options, report);
        return (holds(input, ".csv") ? readCsv : readCgmes)(input, options, report);
    } catch (const std::filesystem::filesystem_error& error) {
        throw ImportError(input.string(), 0, error.what());
    }
}

}  // namespace import
