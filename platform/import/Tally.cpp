#include "platform/import/Tally.h"

#include <algorithm>

#include "platform/host/Text.h"

namespace import {

namespace {
constexpr int namesTold = 5;
}

void Tally::note(Finding::Kind kind, const std::string& subject, const std::string& text, const std::string& name) {
    auto sort = std::find_if(sorts_.begin(), sorts_.end(),
                             [&](const Sort& s) { return s.kind == kind && s.subject == subject && s.text == text; });
    if (sort == sorts_.end()) sort = sorts_.insert(sort, Sort{kind, subject, text, {}, 0});
    if (sort->count++ < namesTold) sort->names += (sort->names.empty() ? std::string() : Text::say("、")) + name;
}

void Tally::tell(Report& report) const {
    for (const Sort& s : sorts_)
        report.add(s.kind, s.subject,
                   s.text + Text::say("：") + s.names + (s.count > namesTold ? Text::say(" 等") : ""), s.count);
}

}  // namespace import
