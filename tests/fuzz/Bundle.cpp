#include "tests/fuzz/Bundle.h"

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "exchange/TextFile.h"

namespace fuzz {

namespace {

std::filesystem::path ownDirectory() {
    auto pattern = (std::filesystem::temp_directory_path() / "fuzz_XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    return pattern;
}

}  // namespace

std::map<std::string, std::string> filesOf(std::string_view bundle) {
    std::map<std::string, std::string> files;
    std::string* current = nullptr;
    while (!bundle.empty()) {
        const auto end = bundle.find('\n');
        const auto line = bundle.substr(0, end == std::string_view::npos ? bundle.size() : end + 1);
        bundle.remove_prefix(line.size());
        if (line.starts_with('@'))
            current = &files[std::string(line.substr(1, line.find_last_not_of("\r\n")))];
        else if (current != nullptr)
            current->append(line);
    }
    return files;
}

Workplace::Workplace(std::map<std::string, std::string> good) : directory_(ownDirectory()), good_(std::move(good)) {
    for (const auto& [name, bytes] : good_) put(name, bytes);
}

Workplace::~Workplace() {
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

void Workplace::lay(std::string_view bundle) {
    for (const auto& [name, bytes] : laid_) {
        const auto good = good_.find(name);
        if (good != good_.end())
            put(name, good->second);
        else
            std::filesystem::remove(directory_ / name);
    }
    laid_ = filesOf(bundle);
    std::erase_if(laid_, [&](const auto& file) {
        const auto& name = file.first;
        return good_.empty() ? name.empty() || name.find_first_of("/\\") != std::string::npos || name[0] == '.' ||
                                   name.find('\0') != std::string::npos || name.size() > 60
                             : !good_.contains(name);
    });
    for (const auto& [name, bytes] : laid_) put(name, bytes);
}

std::filesystem::path Workplace::put(const std::string& name, std::string_view bytes) {
    if (!exchange::write(directory_ / name, bytes)) throw std::runtime_error("cannot write " + name);
    return directory_ / name;
}

}  // namespace fuzz
