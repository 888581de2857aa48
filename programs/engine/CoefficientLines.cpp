#include "programs/engine/CoefficientLines.h"

#include <algorithm>

namespace {

constexpr int kMainBranch = 0, kRelay = 8;

std::string_view stripped(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// Only two fields of each line are wanted, after every engine run.
std::string_view field(std::string_view line, int number) {
    for (; number > 0; --number) {
        const auto comma = line.find(',');
        if (comma == std::string_view::npos) return {};
        line.remove_prefix(comma + 1);
    }
    return stripped(line.substr(0, line.find(',')));
}

}  // namespace

void CoefficientLines::take(std::string_view file) {
    while (!file.empty()) {
        const std::size_t end = std::min(file.find('\n'), file.size());
        const std::string_view line = stripped(file.substr(0, end));
        file.remove_prefix(std::min(end + 1, file.size()));
        const std::string_view mainBranch = field(line, kMainBranch);
        if (line.empty() || mainBranch == "0") continue;
        const auto [known, isNew] =
            at_.try_emplace(std::string(mainBranch).append(",").append(field(line, kRelay)), lines_.size());
        if (isNew)
            lines_.emplace_back(line);
        else
            lines_[known->second] = line;
    }
}

void CoefficientLines::clear() {
    lines_.clear();
    at_.clear();
}

std::string CoefficientLines::file() const {
    std::string all;
    for (const std::string& line : lines_) all.append(line).append("\r\n");
    return all;
}
