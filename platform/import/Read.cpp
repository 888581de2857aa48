#include "platform/import/Import.h"

namespace import {

namespace {

bool isPlainFolder(const std::filesystem::path& input) { return std::filesystem::exists(input / "nodes.csv"); }

}  // namespace

host::NetworkModel read(const std::filesystem::path& input, const Options& options, Report& report) {
    if (!std::filesystem::exists(input)) throw ImportError(input.string(), 0, "文件不存在");
    if (isPlainFolder(input)) return readCsv(input, options, report);
    if (input.extension() == ".m") return readMatpower(input, options, report);
    return readCgmes(input, options, report);
}

}  // namespace import
