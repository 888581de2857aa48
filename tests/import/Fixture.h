#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/import/Import.h"

namespace import_test {

/// A folder of its own for each test, removed afterwards.
class Folder {
  public:
    Folder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "import_XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::filesystem::path write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << text;
        return path_ / name;
    }
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

/// A text with its first occurrence of `from` replaced. \throws std::runtime_error when there is none
inline std::string spoiled(std::string text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    if (at == std::string::npos) throw std::runtime_error("no " + from);
    return text.replace(at, from.size(), to);
}

/// The message of the ImportError that a call throws; "accepted" when it throws none.
template <class Call>
std::string refusal(Call call) {
    try {
        call();
    } catch (const import::ImportError& error) {
        return error.what();
    }
    return "accepted";
}

/// The count told for a kind and subject, 0 when nothing is told.
inline int told(const import::Report& report, import::Finding::Kind kind, const std::string& subject) {
    int count = 0;
    for (const auto& f : report.findings)
        if (f.kind == kind && f.subject == subject) count += f.count;
    return count;
}

template <class Element>
const Element& named(const std::vector<Element>& elements, const std::string& name) {
    const auto found = std::find_if(elements.begin(), elements.end(), [&](const Element& e) { return e.name == name; });
    if (found == elements.end()) throw std::runtime_error("no element " + name);
    return *found;
}

/// A public network beside the checkout, or below the folder that the environment names.
inline std::filesystem::path shared(const std::string& name) {
    const char* const folder = std::getenv("MORVANE_SHARED_NETWORKS");
    return std::filesystem::path(folder ? folder : MORVANE_SHARED_NETWORKS) / name;
}

}  // namespace import_test
