#include "platform/import/InputFile.h"

#include "exchange/TextFile.h"
#include "platform/import/Import.h"

namespace import {

std::string readInput(const std::filesystem::path& path) {
    try {
        return exchange::readAll(path);
    } catch (const exchange::FormatError& error) {
        throw ImportError("", 0, error.what());
    }
}

}  // namespace import
