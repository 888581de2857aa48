#include <algorithm>

#include "platform/host/Text.h"
#include "platform/import/Import.h"
#include "platform/import/InputFile.h"

namespace import {

namespace {

bool holds(const std::filesystem::path& folder, std::string_view extension) {
    const std::filesystem::directory_iterator files(folder);
    return std::any_of(begin(files), end(files),
                       [&](const auto& file) { return file.path().extension() == extension; });
}

/// XML begins with "<", an archive with "PK"; a MATPOWER case assigns to the fields of mpc.
InputKind kindOfFile(const std::filesystem::path& file) {
    const std::string text = readInput(file);
    const std::size_t begin = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    const std::size_t first = text.find_first_not_of(" \t\r\n", begin);
    if (text.starts_with("PK") || (first != std::string::npos && text[first] == '<')) return InputKind::Cgmes;
    if (text.find("mpc.") != std::string::npos || file.extension() == ".m") return InputKind::Matpower;
    throw ImportError(file.filename().string(), 0, Text::say("不是 CSV 目录、CGMES 模型或 MATPOWER 算例"));
}

}  // namespace

InputKind kindOf(const std::filesystem::path& input) {
    try {
        if (!std::filesystem::exists(input)) throw ImportError(input.string(), 0, Text::say("文件不存在"));
        if (!std::filesystem::is_directory(input)) return kindOfFile(input);
        return holds(input, ".csv") ? InputKind::Csv : InputKind::Cgmes;
    } catch (const std::filesystem::filesystem_error& error) {
        throw ImportError(input.string(), 0, error.what());
    }
}

host::NetworkModel read(const std::filesystem::path& input, const Options& options, Report& report) {
    constexpr decltype(&readCsv) readers[] = {readCsv, readCgmes, readMatpower};
    try {
        return readers[int(kindOf(input))](input, options, report);
    } catch (const std::filesystem::filesystem_error& error) {
        throw ImportError(input.string(), 0, error.what());
    }
}

}  // namespace import
