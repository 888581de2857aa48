#include "platform/import/Import.h"

#include "platform/host/Text.h"

namespace import {

namespace {

std::string placed(const std::string& file, int line, const std::string& what) {
    if (file.empty()) return what;
    return line > 0 ? file + ":" + std::to_string(line) + ": " + what : file + ": " + what;
}

}  // namespace

ImportError::ImportError(const std::string& file, int line, const std::string& what)
    : std::runtime_error(placed(file, line, what)) {}

std::string kindText(Finding::Kind kind) {
    static const std::string texts[] = {Text::say("读入"), Text::say("取缺省值"), Text::say("缺少"), Text::say("可疑"),
                                        Text::say("改动")};
    return texts[int(kind)];
}

void Report::add(Finding::Kind kind, std::string subject, std::string text, int count) {
    findings.push_back({kind, std::move(subject), std::move(text), count});
}

}  // namespace import
