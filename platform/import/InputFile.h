#pragma once

#include <filesystem>
#include <string>

namespace import {

/// The whole of an input file. \throws ImportError when it cannot be read
std::string readInput(const std::filesystem::path& path);

}  // namespace import
