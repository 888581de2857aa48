#include "exchange/RuleFaultFile.h"

namespace exchange {

namespace {

void need(Lines& lines, const char* what) {
    if (!lines.next()) throw FormatError(lines.file(), lines.lineNo(), std::string(what) + " is missing at the end");
}

RuleSection parseSection(Lines& lines) {
    need(lines, "a rule line");
    const Fields head = lines.fields();
    RuleSection section{head.whole(0), head.whole(1), {}, false, {}};
    need(lines, "a line of operating modes");
    section.modes = parseModeNumbers(lines.fields(), head.whole(2));
    section.withoutModes = lines.line().empty();
    while (lines.next()) {
        const Fields fields = lines.fields();
        if (isSectionEnd(fields)) return section;
        section.faults.push_back({fields.whole(0), parseFault(fields)});
    }
    head.fail("the end line of the rule is missing");
}

RelayRules parseGroup(Lines& lines) {
    RelayRules group;
    group.rno = lines.fields().whole(1);
    need(lines, "a part line");
    const Fields part = lines.fields();
    group.pno = part.notNegative(0);
    for (int sections = part.whole(1); sections > 0; --sections) group.sections.push_back(parseSection(lines));
    return group;
}

std::string formatSection(const RuleSection& section) {
    std::string text = "    ";
    for (const int field : {section.ruleNo, section.parameterVector, static_cast<int>(section.modes.size())})
        text += std::to_string(field) + ",   ";
    text += "\r\n" + formatModes(section.withoutModes ? "" : "  ", section.modes);
    for (const auto& fault : section.faults) text += formatFault("    ", fault.rMode, fault.row);
    return text + kSectionEnd;
}

}  // namespace

std::string format(const RelayRules& group) {
    std::string text = "1,   " + std::to_string(group.rno) + ",   1,   \r\n";
    text += "   " + std::to_string(group.pno) + ",   " + std::to_string(group.sections.size()) + ",   1,\r\n";
    for (const auto& section : group.sections) text += formatSection(section);
    return text;
}

std::vector<RelayRules> parseRelayRules(std::string_view text, const std::string& file) {
    std::vector<RelayRules> groups;
    for (Lines lines(text, file); lines.next();)
        if (!lines.blank()) groups.push_back(parseGroup(lines));
    return groups;
}

}  // namespace exchange
