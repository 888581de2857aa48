#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace import {

/// One XML document of an exchange and the name it is told by (for a member of an archive: archive!member).
struct CimDocument {
    std::string name;
    std::string bytes;
};

/// The XML documents of a folder (with its subfolders), a zip archive (archives inside it included) or one file.
/// \throws ImportError when a file or an archive cannot be read or there is no XML document
std::vector<CimDocument> readDocuments(const std::filesystem::path& input);

}  // namespace import
